// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// What sentences of a run are made of.

/// \a sentence and what follows it, which may be empty, as one text.
QString joined(const QString &sentence, const QString &following);
