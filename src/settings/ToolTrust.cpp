// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/ToolTrust.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "settings/WindowMemory.h"

#include <chrono>

// Nothing that changes a setting remembers more than choosing a tool does: the folder that it is
// in, and that it is trusted. The window is held up for as long as all of it waits.
static_assert(SettingsStore::patience + 2 * WindowMemory::patience <=
              std::chrono::milliseconds(100));

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
