// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/DevicePanelHost.h"

#include "base/MainQueue.h"
#include "base/NumberWords.h"
#include "base/ShownName.h"
#include "control/ActionGate.h"
#include "control/AppDelegateOutlets.h"
#include "control/Messages.h"
#include "devices/device_searcher.h"
#include "language/CustomMark.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QDialog>

#include <optional>

namespace {

constexpr int confirmedCode = 1;
constexpr int cancelledCode = 0;

} // namespace

DevicePanelHost::DevicePanelHost(const AppDelegateOutlets &outlets, SettingsStore &defaults,
                                 MainQueue &queue, Messages &messages, const ActionGate &gate)
    : outlets_(outlets), defaults_(defaults), queue_(queue), messages_(messages), gate_(gate) {
    const auto noteDevice = [this](const QString &key) {
        if (key == settingsKeys::device)
            messages_.happened(Event::DeviceChanged);
    };
    connect(&defaults, &SettingsStore::valueChanged, this, noteDevice);
    // Whoever chooses the same device again has seen what was said of it.
    connect(&defaults, &SettingsStore::valueSet, this, noteDevice);
}

void DevicePanelHost::show() {
    if (gate_.refuses())
        return;
    QDialog *panel = outlets_.searchDevicesWindow;
    connect(panel, &QDialog::finished, this, &DevicePanelHost::panelClosed, Qt::UniqueConnection);
    panel->open();
}

void DevicePanelHost::confirm() {
    if (!gate_.refuses())
        outlets_.searchDevicesWindow->done(confirmedCode);
}

void DevicePanelHost::cancel() {
    outlets_.searchDevicesWindow->done(cancelledCode);
}

void DevicePanelHost::panelClosed(int code) {
    if (code != confirmedCode)
        return;
    queue_.async([this] {
        const std::optional<QString> name = outlets_.devicesearcher->selectedItem(this);
        if (name && name->size() > longestShownName)
            sayTooLong(name->size());
        else if (name && defaults_.setValue(settingsKeys::device, *name))
            offerToRemoveCustomSuffix(*name);
    });
}

// Nobody can have chosen a name that is too long to be seen whole.
void DevicePanelHost::sayTooLong(qsizetype length) {
    messages_.say(Topic::Device, tr("A name of %1 characters is no device's; the device is still "
                                    "the one that it was.")
                                     .arg(grouped(length)));
}

void DevicePanelHost::offerToRemoveCustomSuffix(const QString &name) {
    const QString plain = withoutCustomMark(name);
    if (plain == name)
        return;
    messages_.say(Topic::Device,
                  tr("The tool marks %1 as custom; the mark is no part of the name.").arg(plain),
                  {tr("Remove \u201c%1\u201d").arg(customMark),
                   [this, plain] { defaults_.setValue(settingsKeys::device, plain); }});
}
