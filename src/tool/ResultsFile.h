// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QByteArrayView>
#include <QString>

class Log;

/// Appends \a bytes to the regular file \a path, which is created if it is missing; opened and
/// closed within the call. If there is no file afterwards the log says so. After a failure some of
/// the bytes may be written.
Result<void> appendToResultsFile(const QString &path, QByteArrayView bytes, Log &log);

/// Removes the file at \a path and logs whether that worked. Without a file there nothing is
/// logged, and only a link of somebody else's that leads nowhere is removed.
void prepareResultsFile(const QString &path, Log &log);
