// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/WindowMemory.h"

#include "base/Log.h"
#include "settings/StoredValue.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QVariantMap>

#include <utility>

namespace {

constexpr qsizetype maxRecentFiles = 8;
const QString geometryKey = QStringLiteral("window/geometry");
const QString splitterKey = QStringLiteral("window/splitter");
const QString gridPercentKey = QStringLiteral("views/gridPercent");
const QString consolePercentKey = QStringLiteral("views/consolePercent");
const QString wrapsConsoleKey = QStringLiteral("views/wrapsConsole");
const QString showsBothKey = QStringLiteral("views/showsBoth");
const QString movesOnKey = QStringLiteral("views/movesOn");
const QString showsConsoleKey = QStringLiteral("views/showsConsole");
const QString panelLookKey = QStringLiteral("views/filePanels");
const QString recentKey = QStringLiteral("files/recent");
constexpr qsizetype maxRecentDevices = 10;
const QString recentDevicesKey = QStringLiteral("devices/recent");
const QString trustedToolKey = QStringLiteral("trustedTool");

QString folderKeyOf(PanelPurpose purpose) {
    switch (purpose) {
    case PanelPurpose::Open:
        return QStringLiteral("folders/open");
    case PanelPurpose::Save:
        return QStringLiteral("folders/save");
    case PanelPurpose::Tool:
        break;
    }
    return QStringLiteral("folders/tool");
}

QVariant read(const IniFile &file, const QString &key) {
    const IniFile::Outcome outcome = file.read();
    return outcome ? outcome->value(key) : QVariant();
}

} // namespace

WindowMemory::WindowMemory(const QString &filePath, Log *log) : file_(filePath), log_(log) {
    QObject::connect(&file_.saving(), &BoundedSaving::refused, &file_.saving(),
                     [this](const Failure &failure) { sayLost(failure); });
}

void WindowMemory::write(const QVariantMap &values) {
    const QDeadlineTimer deadline(patience);
    IniFile::Outcome outcome = file_.change(values, deadline);
    if (IniFile::isDamaged(outcome)) {
        const Result<QString> copy = file_.moveAside();
        if (const Failure *failure = copy.failure())
            return sayLost(*failure);
        if (log_)
            log_->write(QStringLiteral("what VELM remembered could not be read; it is kept as ") +
                        *copy);
        outcome = file_.change(values, deadline);
    }
    if (const IniFile::Trouble *trouble = outcome.failure())
        sayLost(trouble->failure);
}

void WindowMemory::write(const QString &key, const QVariant &value) {
    write(QVariantMap{{key, value}});
}

// The newest comes first, and the oldest go beyond the limit. In a damaged file there are none.
void WindowMemory::remember(const QString &key, const QString &newest, qsizetype limit) {
    const IniFile::Outcome outcome = file_.read();
    if (!outcome && !IniFile::isDamaged(outcome))
        return sayLost(outcome.failure()->failure);
    QStringList all = outcome ? storedValue::list(outcome->value(key)) : QStringList();
    all.removeAll(newest);
    all.prepend(newest);
    write(key, all.mid(0, limit));
}

void WindowMemory::sayLost(const Failure &failure) {
    if (!log_ || std::exchange(saidLost_, true))
        return;
    log_->write(QStringLiteral("what VELM remembers cannot be saved in %1: "
                               "%2")
                    .arg(file_.path(), failure.reason));
}

QByteArray WindowMemory::geometry() const {
    return read(file_, geometryKey).toByteArray();
}

void WindowMemory::setGeometry(const QByteArray &geometry) {
    write(geometryKey, geometry);
}

QByteArray WindowMemory::splitterState() const {
    return read(file_, splitterKey).toByteArray();
}

void WindowMemory::setSplitterState(const QByteArray &state) {
    write(splitterKey, state);
}

ViewChoices WindowMemory::viewChoices() const {
    const auto number = [this](const QString &key, int otherwise) {
        bool isNumber = false;
        const int value = read(file_, key).toString().toInt(&isNumber);
        return isNumber ? value : otherwise;
    };
    const ViewChoices usual;
    return {number(gridPercentKey, usual.gridPercent),
            number(consolePercentKey, usual.consolePercent),
            number(wrapsConsoleKey, usual.wrapsConsole) != 0,
            number(showsConsoleKey, usual.showsConsole) != 0,
            number(showsBothKey, usual.showsBoth) != 0,
            number(movesOnKey, usual.movesOn) != 0};
}

void WindowMemory::setViewChoices(const ViewChoices &choices) {
    write(QVariantMap{{gridPercentKey, choices.gridPercent},
                      {consolePercentKey, choices.consolePercent},
                      {wrapsConsoleKey, int(choices.wrapsConsole)},
                      {showsConsoleKey, int(choices.showsConsole)},
                      {showsBothKey, int(choices.showsBoth)},
                      {movesOnKey, int(choices.movesOn)}});
}

QString WindowMemory::lastFolder(PanelPurpose purpose) const {
    return read(file_, folderKeyOf(purpose)).toString();
}

void WindowMemory::setLastFolder(PanelPurpose purpose, const QString &folder) {
    write(folderKeyOf(purpose), folder);
}

QByteArray WindowMemory::panelLook() const {
    return read(file_, panelLookKey).toByteArray();
}

void WindowMemory::setPanelLook(const QByteArray &look) {
    write(panelLookKey, look);
}

QStringList WindowMemory::recentFiles() const {
    return storedValue::list(read(file_, recentKey));
}

void WindowMemory::addRecentFile(const QString &path) {
    remember(recentKey, path, maxRecentFiles);
}

QStringList WindowMemory::recentDevices() const {
    return storedValue::list(read(file_, recentDevicesKey));
}

void WindowMemory::addRecentDevice(const QString &device) {
    remember(recentDevicesKey, device, maxRecentDevices);
}

std::optional<QString> WindowMemory::trustedTool() const {
    return storedValue::text(read(file_, trustedToolKey));
}

void WindowMemory::setTrustedTool(const QString &tool) {
    write(trustedToolKey, storedValue::encoded(tool));
}
