// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// \a sentence and what follows it, which may be empty, as one text.
QString joinedSentences(const QString &sentence, const QString &following);
