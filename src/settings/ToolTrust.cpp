// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/ToolTrust.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "settings/WindowMemory.h"

#include <chrono>

// Where the tool is set both are written, and the window is held up for as long as both wait.
static_assert(SettingsStore::patience + WindowMemory::patience <= std::chrono::milliseconds(100));

ToolTrust::ToolTrust(SettingsStore &settings, WindowMemory &memory)
    : memory_(memory), trusted_(memory.trustedTool()) {
    connect(&settings, &SettingsStore::valueSet, this, [this, &settings](const QString &key) {
        if (key == settingsKeys::miniproLocation)
            trust(settings.stringValue(key));
    });
}

bool ToolTrust::covers(const QString &tool) const {
    return tool == trusted_ ||
           tool == settingsKeys::startupDefaults().value(settingsKeys::miniproLocation).toString();
}

void ToolTrust::trust(const QString &tool) {
    if (covers(tool))
        return;
    trusted_ = tool;
    memory_.setTrustedTool(tool);
}
