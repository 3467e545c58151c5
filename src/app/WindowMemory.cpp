#include "app/WindowMemory.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace {

constexpr qsizetype recentFileLimit = 8;
const QString geometryKey = QStringLiteral("window/geometry");
const QString splitterKey = QStringLiteral("window/splitter");
const QString folderKey = QStringLiteral("folders/%1");
const QString recentKey = QStringLiteral("files/recent");

QVariant read(const QString &filePath, const QString &key) {
    return QSettings(filePath, QSettings::IniFormat).value(key);
}

void write(const QString &filePath, const QString &key, const QVariant &value) {
    QDir().mkpath(QFileInfo(filePath).path());
    QSettings(filePath, QSettings::IniFormat).setValue(key, value);
}

} // namespace

WindowMemory::WindowMemory(const QString &filePath) : m_filePath(filePath) {}

QByteArray WindowMemory::geometry() const {
    return read(m_filePath, geometryKey).toByteArray();
}

void WindowMemory::setGeometry(const QByteArray &geometry) {
    write(m_filePath, geometryKey, geometry);
}

QByteArray WindowMemory::splitterState() const {
    return read(m_filePath, splitterKey).toByteArray();
}

void WindowMemory::setSplitterState(const QByteArray &state) {
    write(m_filePath, splitterKey, state);
}

QString WindowMemory::lastFolder(const QString &purpose) const {
    return read(m_filePath, folderKey.arg(purpose)).toString();
}

void WindowMemory::setLastFolder(const QString &purpose, const QString &folder) {
    write(m_filePath, folderKey.arg(purpose), folder);
}

QStringList WindowMemory::recentFiles() const {
    return read(m_filePath, recentKey).toStringList();
}

void WindowMemory::addRecentFile(const QString &path) {
    QStringList files = recentFiles();
    files.removeAll(path);
    files.prepend(path);
    write(m_filePath, recentKey, files.mid(0, recentFileLimit));
}
