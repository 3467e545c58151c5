// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/KnownDevices.h"

#include "devices/CustomMark.h"
#include "devices/ShownName.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "settings/WindowMemory.h"

namespace {

QStringList once(QStringList names) {
    names.removeIf([](const QString &name) { return name.isEmpty() || shownName(name) != name; });
    names.removeDuplicates();
    return names;
}

} // namespace

KnownDevices::KnownDevices(const SettingsStore &settings, WindowMemory &memory)
    : settings_(settings), memory_(memory) {
    connect(&settings, &SettingsStore::valueChanged, this, [this](const QString &key) {
        if (key == settingsKeys::favourites)
            emit changed();
    });
}

QStringList KnownDevices::likely() const {
    return once(memory_.recentDevices() + settings_.stringListValue(settingsKeys::favourites));
}

QStringList KnownDevices::all() const {
    return once(likely() + listed_);
}

void KnownDevices::wasUsed(const QString &device) {
    if (device.isEmpty() || memory_.recentDevices().value(0) == device)
        return;
    memory_.addRecentDevice(device);
    emit changed();
}

void KnownDevices::wereListed(const QStringList &names) {
    QStringList listed;
    listed.reserve(names.size());
    for (const QString &name : names)
        listed.append(withoutCustomMark(name));
    listed_ = once(listed + listed_).mid(0, mostListed);
    emit changed();
}
