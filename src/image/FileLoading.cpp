#include "image/FileLoading.h"

#include "image/HugePages.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringDecoder>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// One read() takes at most this much, so that no single call is cut by the system's own limit.
constexpr qint64 largestRead = qint64(256) << 20;

struct Descriptor {
    explicit Descriptor(int opened) : number(opened) {}
    ~Descriptor() {
        if (number >= 0)
            ::close(number);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    const int number;
};

LoadFailure systemFailure(int error) {
    return {qt_error_string(error)};
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

} // namespace

std::variant<ByteBuffer, LoadFailure> loadWholeFile(const QString &path, qint64 limit) {
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
    const Descriptor file(::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (file.number < 0 || ::fstat(file.number, &status) != 0)
        return systemFailure(errno);
    if (const auto refusal = refusalOf(status, limit))
        return *refusal;
    return readAll(file.number, status.st_size);
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
