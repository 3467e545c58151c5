// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>
#include <QString>

class Log;

/// Appends \a bytes to the regular file \a path, which is created if it is missing; opened and
/// closed within the call. If there is no file afterwards the log says so; every other failure
/// is quiet, since the bytes are on the console in any case.
void appendToResultsFile(const QString &path, QByteArrayView bytes, Log &log);

/// Removes the file at \a path and logs whether that worked. Without a file there nothing is
/// logged, and only a link of somebody else's that leads nowhere is removed.
void prepareResultsFile(const QString &path, Log &log);
