#include "image/FileSaving.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>

namespace {

// A nearly full disk takes a part of the bytes; only the next call tells why it takes no more.
bool writeFully(QFileDevice &file, const QByteArray &bytes) {
    for (qint64 done = 0; done < bytes.size();) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

QString reasonOf(const QFileDevice &file) {
    const QString reason = file.errorString();
    return reason.isEmpty() ? qt_error_string(EIO) : reason;
}

std::optional<QString> saveToDisk(const QString &path, const QByteArray &bytes) {
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                         writeFully(file, bytes) && file.commit();
    return written ? std::nullopt : std::optional(reasonOf(file));
}

// QSaveFile always waits for the disk, which takes longer than everything else that an edit of one
// byte does.
std::optional<QString> saveToCache(const QFileInfo &target, const QByteArray &bytes) {
    const QString path = target.isSymLink() ? target.symLinkTarget() : target.absoluteFilePath();
    QTemporaryFile file(path + QStringLiteral(".XXXXXX"));
    if (!file.open() || !writeFully(file, bytes) || !file.flush())
        return reasonOf(file);
    if (target.exists())
        file.setPermissions(target.permissions());
    const QByteArray from = QFile::encodeName(file.fileName());
    if (::rename(from.constData(), QFile::encodeName(path).constData()) != 0)
        return qt_error_string(errno);
    file.setAutoRemove(false);
    return std::nullopt;
}

} // namespace

std::optional<QString> saveWholeFile(const QString &path, const QByteArray &bytes,
                                     Durability durability) {
    // The new file takes the place of whatever has the name, a device node included.
    const QFileInfo target(path);
    if (target.exists() && !target.isFile())
        return QCoreApplication::translate("FileSaving", "Not a regular file");
    if (target.fileName().isEmpty() || path.contains(QChar::Null))
        return qt_error_string(ENOENT);
    return durability == Durability::ProgramEnd ? saveToCache(target, bytes)
                                                : saveToDisk(path, bytes);
}
