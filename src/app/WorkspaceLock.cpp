#include "app/WorkspaceLock.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr int keyDigits = 16;

// The same folder may be reached over links, and may not exist yet: what exists of the path is
// made canonical, so that the key is the same before and after the folder is first created.
QString canonicalName(const QString &folder) {
    QString existing = QDir::cleanPath(QDir().absoluteFilePath(folder));
    QString rest;
    while (!QFileInfo::exists(existing) && existing != QLatin1String("/")) {
        rest.prepend(QLatin1Char('/') + QFileInfo(existing).fileName());
        existing = QFileInfo(existing).path();
    }
    return QFileInfo(existing).canonicalFilePath() + rest;
}

QString lockKey(const QString &folder) {
    const QByteArray digest =
        QCryptographicHash::hash(canonicalName(folder).toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex().left(keyDigits));
}

} // namespace

WorkspaceLock::WorkspaceLock(const QString &temporaryFolder, const QString &runtimeFolder)
    : base_(runtimeFolder + QLatin1String("/velm-") + lockKey(temporaryFolder)) {}

WorkspaceLock::~WorkspaceLock() {
    if (file_ >= 0)
        ::close(file_);
}

WorkspaceLock::Outcome WorkspaceLock::take() {
    const QByteArray path = QFile::encodeName(base_ + QLatin1String(".lock"));
    const int file = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file < 0) {
        problem_ = QString::fromLocal8Bit(std::strerror(errno));
        return Outcome::Unavailable;
    }
    if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
        file_ = file;
        return Outcome::Taken;
    }
    const int error = errno;
    ::close(file);
    if (error == EWOULDBLOCK)
        return Outcome::HeldByAnother;
    problem_ = QString::fromLocal8Bit(std::strerror(error));
    return Outcome::Unavailable;
}

QString WorkspaceLock::socketPath() const {
    return base_ + QLatin1String(".socket");
}
