// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// That another window has \a folder, through which files are exchanged with the tool (translated).
QString folderOfAnotherWindow(const QString &folder);

/// \a sentence and what follows it, which may be empty, as one text.
QString joinedSentences(const QString &sentence, const QString &following);
