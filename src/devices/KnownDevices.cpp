// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/KnownDevices.h"

#include "base/ShownName.h"
#include "base/VisibleText.h"
#include "language/CustomMark.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "settings/WindowMemory.h"

#include <algorithm>

namespace {

/// Names that the tool lists are plain; only others take a closer look.
bool showsAsItIs(const QString &name) {
    const bool allPlain = std::all_of(name.begin(), name.end(), isPrintableAscii);
    return name.size() <= longestShownName && (allPlain || shownName(name) == name);
}

QStringList once(QStringList names) {
    names.removeIf([](const QString &name) { return name.isEmpty() || !showsAsItIs(name); });
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
    QStringList names = likely();
    for (const QStringList &search : searches_)
        for (const QString &name : search)
            names.append(withoutCustomMark(name));
    return once(names);
}

void KnownDevices::wasUsed(const QString &device) {
    if (device.isEmpty() || memory_.recentDevices().value(0) == device)
        return;
    memory_.addRecentDevice(device);
    emit changed();
}

void KnownDevices::wereListed(const QStringList &names) {
    searches_.prepend(names.mid(0, maxListed));
    searches_ = searches_.mid(0, maxSearches);
    emit changed();
}
