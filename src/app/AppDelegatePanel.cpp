// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Hosting the device search panel.

#include "app/AppDelegate.h"

#include "base/MainQueue.h"
#include "devices/device_searcher.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QDialog>

namespace {

constexpr int confirmed = 1;
constexpr int cancelled = 0;
const QString customSuffix = QStringLiteral("(custom)");

} // namespace

void AppDelegate::showListPanel(QObject *) {
    if (gate_.refuses())
        return;
    QDialog *panel = outlets.searchDevicesWindow;
    connect(panel, &QDialog::finished, this, &AppDelegate::searchPanelEnded, Qt::UniqueConnection);
    panel->open();
}

void AppDelegate::deviceSearchPanelOK(QObject *) {
    if (gate_.refuses())
        return;
    outlets.searchDevicesWindow->done(confirmed);
}

void AppDelegate::deviceSearchPanelCancel(QObject *) {
    outlets.searchDevicesWindow->done(cancelled);
}

void AppDelegate::searchPanelEnded(int code) {
    if (code != confirmed)
        return;
    queue_.async([this] {
        const std::optional<QString> name = outlets.devicesearcher->selectedItem(this);
        if (name && defaults_.setValue(settingsKeys::device, *name))
            offerToRemoveCustomSuffix(*name);
    });
}

// The tool marks a user's own devices in its list with a suffix that is no part of their names.
void AppDelegate::offerToRemoveCustomSuffix(const QString &name) {
    messages_.happened(Event::DeviceChanged);
    if (!name.endsWith(customSuffix))
        return;
    const QString plain = name.chopped(customSuffix.size());
    messages_.say(Topic::Device,
                  tr("The tool marks %1 as custom; the mark is no part of the name.").arg(plain),
                  {tr("Remove “(custom)”"), [this, plain] {
                       if (defaults_.setValue(settingsKeys::device, plain))
                           messages_.happened(Event::DeviceChanged);
                   }});
}
