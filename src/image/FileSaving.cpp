#include "image/FileSaving.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>

namespace {

// A nearly full disk takes a part of the bytes; only the next call tells why it takes no more.
bool writeFully(QSaveFile &file, const QByteArray &bytes) {
    for (qint64 done = 0; done < bytes.size();) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

} // namespace

std::optional<QString> saveWholeFile(const QString &path, const QByteArray &bytes) {
    // The new file takes the place of whatever has the name, a device node included.
    const QFileInfo target(path);
    if (target.exists() && !target.isFile())
        return QCoreApplication::translate("FileSaving", "Not a regular file");
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                         writeFully(file, bytes) && file.commit();
    if (written)
        return std::nullopt;
    const QString reason = file.errorString();
    return reason.isEmpty() ? qt_error_string(EIO) : reason;
}
