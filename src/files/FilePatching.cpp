// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FilePatching.h"

#include "base/FileDescriptor.h"
#include "files/SystemName.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isTheFile(int descriptor, const FileStamp &known) {
    struct stat facts = {};
    return ::fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_nlink == 1 &&
           FileStamp::from(facts) == known;
}

} // namespace

Result<FileStamp> patchFile(const QString &path, const FileStamp &known, const QByteArray &bytes,
                            ByteRange changed) {
    const Result<QByteArray> name = systemName(path);
    if (!name)
        return *name.failure();
    const FileDescriptor file(
        ::open(name->constData(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen())
        return Failure::ofSystem(errno);
    if (!isTheFile(file.get(), known))
        return Failure::ofSystem(ESTALE);
    const qint64 end =
        bytes.size() > known.size ? bytes.size() : std::min<qint64>(changed.end(), bytes.size());
    const qint64 start = std::clamp<qint64>(changed.offset, 0, std::min(known.size, end));
    if (bytes.size() < known.size && ::ftruncate(file.get(), bytes.size()) != 0)
        return Failure::ofSystem(errno);
    const Result<void> written =
        writeAllAt(file.get(), start, QByteArrayView(bytes).sliced(start, end - start));
    if (const Failure *failure = written.failure())
        return *failure;
    struct stat facts = {};
    if (::fstat(file.get(), &facts) != 0)
        return Failure::ofSystem(errno);
    return FileStamp::from(facts);
}
