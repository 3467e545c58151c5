// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/ResultsFile.h"

#include "base/FileDescriptor.h"
#include "base/Log.h"
#include "files/FileOwnership.h"
#include "files/FileRemoval.h"
#include "files/FileRights.h"
#include "files/SystemName.h"
#include "tool/ForeignLinks.h"

#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <tuple>
#include <unistd.h>

namespace {

/// Non-blocking, because opening a FIFO would wait for a reader. It is opened anew for each piece
/// of the report, so its owner must be able to.
Result<FileDescriptor> openedForAppending(const QByteArray &name, int furtherFlags) {
    constexpr int flags = O_WRONLY | O_APPEND | O_CLOEXEC | O_NONBLOCK;
    return openOrMake(name, flags | furtherFlags, modeOfNewFiles);
}

/// Through a link of somebody else's the report would go where nobody meant. So a link is only
/// followed once it has been looked at, and one that comes meanwhile is not.
Result<FileDescriptor> openForAppending(const QString &path) {
    const Result<QByteArray> name = systemName(path);
    if (!name)
        return *name.failure();
    Result<FileDescriptor> file = openedForAppending(*name, O_NOFOLLOW);
    if (file || file.failure()->systemError != ELOOP)
        return file;
    if (const Result<void> may = mayFollow(path); !may)
        return *may.failure();
    return openedForAppending(*name, 0);
}

} // namespace

Result<void> appendToResultsFile(const QString &path, QByteArrayView bytes, Log &log) {
    const Result<FileDescriptor> file = openForAppending(path);
    if (const Failure *failure = file.failure()) {
        if (!QFileInfo::exists(path))
            log.write(QStringLiteral("temp file not created at ") + path);
        return *failure;
    }
    return isRegular(*file) ? writeAll(file->get(), bytes) : notRegularFile();
}

Result<void> prepareResultsFile(const QString &path, Log &log) {
    if (isMissing(path)) {
        // A link that leads nowhere is no file, and nothing is said of it.
        std::ignore = removeForeignLinks({path});
        return {};
    }
    const Result<void> removed = removeFile(path);
    log.write((removed ? QStringLiteral("removed file at path: ")
                       : QStringLiteral("unable to remove temp file at path: ")) +
              path);
    if (removed)
        return {};
    if (const Result<void> may = mayFollow(path); !may)
        return may;
    return emptyFile(path);
}

void ReportKeeper::begin(const QString &path, Log &log) {
    const Result<void> prepared = prepareResultsFile(path, log);
    if (const Failure *failure = prepared.failure())
        written_ = ReportTrouble{*failure, true};
}

void ReportKeeper::keep(const QString &path, QByteArrayView chunk, Log &log) {
    const Result<void> appended =
        appendToResultsFile(path, written_ ? chunk : QByteArrayView(), log);
    if (const Failure *failure = appended.failure(); failure && written_)
        written_ = ReportTrouble{*failure};
}
