// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/WindowMemory.h"

#include "settings/StoredValue.h"

#include <QFile>
#include <QVariantMap>

#include <variant>

namespace {

constexpr qsizetype recentFileLimit = 8;
const QString geometryKey = QStringLiteral("window/geometry");
const QString splitterKey = QStringLiteral("window/splitter");
const QString folderKey = QStringLiteral("folders/%1");
const QString recentKey = QStringLiteral("files/recent");
const QString trustedToolKey = QStringLiteral("trustedTool");

QVariant read(const IniFile &file, const QString &key) {
    const IniFile::Outcome outcome = file.read();
    const auto *values = std::get_if<QVariantMap>(&outcome);
    return values ? values->value(key) : QVariant();
}

void write(const IniFile &file, const QString &key, const QVariant &value) {
    if (!std::holds_alternative<IniFile::Damaged>(file.change({{key, value}})))
        return;
    QFile::remove(file.path());
    file.change({{key, value}});
}

} // namespace

WindowMemory::WindowMemory(const QString &filePath) : file_(filePath) {}

QByteArray WindowMemory::geometry() const {
    return read(file_, geometryKey).toByteArray();
}

void WindowMemory::setGeometry(const QByteArray &geometry) {
    write(file_, geometryKey, geometry);
}

QByteArray WindowMemory::splitterState() const {
    return read(file_, splitterKey).toByteArray();
}

void WindowMemory::setSplitterState(const QByteArray &state) {
    write(file_, splitterKey, state);
}

QString WindowMemory::lastFolder(const QString &purpose) const {
    return read(file_, folderKey.arg(purpose)).toString();
}

void WindowMemory::setLastFolder(const QString &purpose, const QString &folder) {
    write(file_, folderKey.arg(purpose), folder);
}

QStringList WindowMemory::recentFiles() const {
    return storedValue::list(read(file_, recentKey));
}

void WindowMemory::addRecentFile(const QString &path) {
    QStringList files = recentFiles();
    files.removeAll(path);
    files.prepend(path);
    write(file_, recentKey, files.mid(0, recentFileLimit));
}

std::optional<QString> WindowMemory::trustedTool() const {
    return storedValue::text(read(file_, trustedToolKey));
}

void WindowMemory::setTrustedTool(const QString &tool) {
    write(file_, trustedToolKey, storedValue::encoded(tool));
}
