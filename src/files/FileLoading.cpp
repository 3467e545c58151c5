// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileLoading.h"

#include "base/FileDescriptor.h"
#include "base/HugePages.h"
#include "files/FileOwnership.h"
#include "files/SystemName.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <new>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

/// One read() takes at most this much, so that no single call is cut by the system's own limit.
constexpr qint64 largestRead = 256 * mebibyte;

constexpr qsizetype comparedAtOnce = 64 * kibibyte;

struct OpenedFile {
    FileDescriptor descriptor;
    qint64 size = 0;
};

/// Reads up to \a size bytes; returns how many there were.
Result<qint64> readFully(int file, char *bytes, qint64 size) {
    qint64 total = 0;
    while (total < size) {
        const auto wanted = size_t(std::min(size - total, largestRead));
        const ssize_t got = ::read(file, bytes + total, wanted);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return Failure::ofSystem(errno);
        if (got == 0)
            break;
        total += got;
    }
    return total;
}

Result<ByteBuffer> readAll(int file, qint64 size) {
    try {
        auto buffer = std::make_shared<QByteArray>(uninitializedBytes(size));
        const Result<qint64> got = readFully(file, buffer->data(), size);
        if (const Failure *failure = got.failure())
            return *failure;
        buffer->truncate(*got);
        return buffer;
    } catch (const std::bad_alloc &) {
        return Failure::ofSystem(ENOMEM);
    }
}

Result<OpenedFile> openRegularFile(const QString &path, qint64 limit) {
    const Result<QByteArray> name = systemName(path);
    if (const Failure *failure = name.failure())
        return *failure;
    if (QFileInfo(path).isDir())
        return Failure::ofSystem(EISDIR);
    Result<FileDescriptor> file = openRegular(*name, O_RDONLY);
    if (const Failure *failure = file.failure())
        return *failure;
    struct stat status = {};
    if (::fstat(file->get(), &status) != 0)
        return Failure::ofSystem(errno);
    if (status.st_size > limit)
        return Failure::ofSystem(EFBIG);
    return OpenedFile{*std::move(file), status.st_size};
}

/// The failure to open says that there is no file, or none that would have been taken.
bool isNoSuchFile(const Failure &failure) {
    constexpr int noRegularFile = 0; // the system has no number for it
    const int error = failure.systemError;
    return saysMissing(error) || error == EISDIR || error == EFBIG || error == noRegularFile;
}

Result<bool> readsAs(int file, QByteArrayView bytes) {
    std::array<char, comparedAtOnce> chunk; // filled before it is read
    while (!bytes.isEmpty()) {
        const qsizetype wanted = std::min(comparedAtOnce, bytes.size());
        const Result<qint64> got = readFully(file, chunk.data(), wanted);
        if (const Failure *failure = got.failure())
            return *failure;
        if (*got != wanted || std::memcmp(chunk.data(), bytes.data(), size_t(wanted)) != 0)
            return false;
        bytes = bytes.sliced(wanted);
    }
    return true;
}

} // namespace

Result<ByteBuffer> loadWholeFile(const QString &path, qint64 limit) {
    const Result<OpenedFile> opened = openRegularFile(path, limit);
    if (const Failure *failure = opened.failure())
        return *failure;
    return readAll(opened->descriptor.get(), opened->size);
}

Result<ByteBuffer> loadOwnFile(const QString &path, qint64 limit) {
    const Result<void> may = mayFollow(path);
    return may ? loadWholeFile(path, limit) : *may.failure();
}

Result<bool> fileHolds(const QString &path, QByteArrayView bytes) {
    const Result<OpenedFile> opened = openRegularFile(path, bytes.size());
    if (const Failure *failure = opened.failure())
        return isNoSuchFile(*failure) ? Result<bool>(false) : *failure;
    return opened->size == bytes.size() ? readsAs(opened->descriptor.get(), bytes) : false;
}

Result<QString> loadUtf8Text(const QString &path, qint64 limit) {
    const Result<ByteBuffer> loaded = loadOwnFile(path, limit);
    if (const Failure *failure = loaded.failure())
        return *failure;
    const QByteArray &bytes = **loaded;
    if (!bytes.isValidUtf8())
        return Failure{QCoreApplication::translate("FileLoading", "Not valid UTF-8 text"), EILSEQ};
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    try {
        return QString(decoder(bytes));
    } catch (const std::bad_alloc &) {
        return Failure::ofSystem(ENOMEM);
    }
}
