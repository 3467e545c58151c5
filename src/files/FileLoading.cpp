// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileLoading.h"

#include "base/FileDescriptor.h"
#include "files/HugePages.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringDecoder>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

// One read() takes at most this much, so that no single call is cut by the system's own limit.
constexpr qint64 largestRead = qint64(256) << 20;

constexpr qint64 comparedAtOnce = qint64(1) << 20;

struct OpenedFile {
    FileDescriptor descriptor;
    qint64 size = 0;
};

LoadFailure systemFailure(int error) {
    return {qt_error_string(error), error};
}

std::optional<LoadFailure> refusalOf(const struct stat &status, qint64 limit) {
    if (S_ISDIR(status.st_mode))
        return systemFailure(EISDIR);
    if (!S_ISREG(status.st_mode))
        return LoadFailure{QCoreApplication::translate("FileLoading", "Not a regular file")};
    if (status.st_size > limit)
        return systemFailure(EFBIG);
    return std::nullopt;
}

// Reads up to size bytes; returns how many there were, or the error as a negative number.
qint64 readFully(int file, char *bytes, qint64 size) {
    qint64 total = 0;
    while (total < size) {
        const auto wanted = static_cast<size_t>(std::min(size - total, largestRead));
        const ssize_t got = ::read(file, bytes + total, wanted);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return -errno;
        if (got == 0)
            break;
        total += got;
    }
    return total;
}

std::variant<ByteBuffer, LoadFailure> readAll(int file, qint64 size) {
    try {
        auto buffer = std::make_shared<QByteArray>(uninitializedBytes(size));
        const qint64 got = readFully(file, buffer->data(), size);
        if (got < 0)
            return systemFailure(static_cast<int>(-got));
        buffer->truncate(got);
        return buffer;
    } catch (const std::bad_alloc &) {
        return systemFailure(ENOMEM);
    }
}

std::variant<OpenedFile, LoadFailure> openRegularFile(const QString &path, qint64 limit) {
    const QByteArray name = QFile::encodeName(path);
    if (name.contains('\0'))
        return systemFailure(ENOENT);
    // Asked before opening, because opening alone lets a FIFO's writer go on or rewinds a tape,
    // and again after it, because the file may have been exchanged meanwhile.
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0)
        return systemFailure(errno);
    if (const auto refusal = refusalOf(status, limit))
        return *refusal;
    FileDescriptor file(::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0)
        return systemFailure(errno);
    if (const auto refusal = refusalOf(status, limit))
        return *refusal;
    return OpenedFile{std::move(file), status.st_size};
}

bool readsAs(int file, QByteArrayView bytes) {
    QByteArray chunk(std::min(comparedAtOnce, qint64(bytes.size())), Qt::Uninitialized);
    while (!bytes.isEmpty()) {
        const qint64 wanted = std::min(qint64(chunk.size()), qint64(bytes.size()));
        if (readFully(file, chunk.data(), wanted) != wanted ||
            std::memcmp(chunk.constData(), bytes.data(), static_cast<size_t>(wanted)) != 0)
            return false;
        bytes = bytes.sliced(wanted);
    }
    return true;
}

} // namespace

std::variant<ByteBuffer, LoadFailure> loadWholeFile(const QString &path, qint64 limit) {
    const auto file = openRegularFile(path, limit);
    if (const auto *failure = std::get_if<LoadFailure>(&file))
        return *failure;
    const auto &opened = std::get<OpenedFile>(file);
    return readAll(opened.descriptor.get(), opened.size);
}

bool fileHolds(const QString &path, QByteArrayView bytes) {
    const auto file = openRegularFile(path, bytes.size());
    const auto *opened = std::get_if<OpenedFile>(&file);
    return opened && opened->size == bytes.size() && readsAs(opened->descriptor.get(), bytes);
}

std::variant<QString, LoadFailure> loadUtf8Text(const QString &path, qint64 limit) {
    const auto loaded = loadWholeFile(path, limit);
    if (const auto *failure = std::get_if<LoadFailure>(&loaded))
        return *failure;
    const QByteArray &bytes = *std::get<ByteBuffer>(loaded);
    if (!bytes.isValidUtf8())
        return LoadFailure{QCoreApplication::translate("FileLoading", "Not valid UTF-8 text")};
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return QString(decoder(bytes));
}
