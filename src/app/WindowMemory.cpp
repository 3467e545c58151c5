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

WindowMemory::WindowMemory(const QString &filePath) : filePath_(filePath) {}

QByteArray WindowMemory::geometry() const {
    return read(filePath_, geometryKey).toByteArray();
}

void WindowMemory::setGeometry(const QByteArray &geometry) {
    write(filePath_, geometryKey, geometry);
}

QByteArray WindowMemory::splitterState() const {
    return read(filePath_, splitterKey).toByteArray();
}

void WindowMemory::setSplitterState(const QByteArray &state) {
    write(filePath_, splitterKey, state);
}

QString WindowMemory::lastFolder(const QString &purpose) const {
    return read(filePath_, folderKey.arg(purpose)).toString();
}

void WindowMemory::setLastFolder(const QString &purpose, const QString &folder) {
    write(filePath_, folderKey.arg(purpose), folder);
}

QStringList WindowMemory::recentFiles() const {
    return read(filePath_, recentKey).toStringList();
}

void WindowMemory::addRecentFile(const QString &path) {
    QStringList files = recentFiles();
    files.removeAll(path);
    files.prepend(path);
    write(filePath_, recentKey, files.mid(0, recentFileLimit));
}
