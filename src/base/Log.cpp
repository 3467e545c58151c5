// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/Log.h"

#include <QtGlobal>

#include <cerrno>
#include <unistd.h>

namespace {

// A single write keeps an event in one piece when several programs share the terminal; only a
// partial write (a full pipe) makes a second one necessary.
void writeToStandardError(const QString &text) {
    QByteArray line = text.toUtf8();
    line.append('\n');
    const char *next = line.constData();
    auto left = static_cast<size_t>(line.size());
    while (left > 0) {
        const ssize_t written = ::write(STDERR_FILENO, next, left);
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return;
        }
        next += written;
        left -= static_cast<size_t>(written);
    }
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
