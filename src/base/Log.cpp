// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/Log.h"

#include "base/FileDescriptor.h"

#include <QtGlobal>

#include <tuple>
#include <unistd.h>

namespace {

/// A single write keeps an event in one piece when several programs share the terminal; only a
/// partial write (a full pipe) makes a second one necessary.
void writeToStandardError(const QString &text) {
    // There is nowhere to say that it failed.
    std::ignore = writeAll(STDERR_FILENO, text.toUtf8() + '\n');
}

void handleToolkitMessage(QtMsgType, const QMessageLogContext &, const QString &text) {
    writeToStandardError(text);
}

} // namespace

void StandardErrorLog::write(const QString &text) {
    writeToStandardError(text);
}

void StandardErrorLog::installForToolkit() {
    qInstallMessageHandler(handleToolkitMessage);
}
