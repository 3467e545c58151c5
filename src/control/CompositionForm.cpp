// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/CompositionForm.h"

#include "control/AppDelegateOutlets.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QAbstractButton>
#include <QLineEdit>

bool composes(const AppDelegateOutlets &outlets, const QObject *control) {
    const QList<const QObject *> controls = {
        outlets.startAddTextField, outlets.btn_combine_read_data,
        outlets.btn_pad,           outlets.padToTextField,
        outlets.btn_pad_ff,        outlets.btn_pad_00};
    return control && controls.contains(control);
}

CompositionInputs compositionInputs(const AppDelegateOutlets &outlets,
                                    const SettingsStore &settings) {
    CompositionInputs inputs;
    inputs.rom_start_address = settings.stringValue(settingsKeys::rom_start_address);
    inputs.pad_to = settings.stringValue(settingsKeys::pad_to);
    inputs.pad = settings.boolValue(settingsKeys::pad);
    inputs.combineReadData = outlets.btn_combine_read_data->isChecked();
    inputs.padWithZero = outlets.btn_pad_00->isChecked();
    return inputs;
}

ImageControls imageControls(const AppDelegateOutlets &outlets, const SettingsStore &settings) {
    const CompositionInputs inputs = compositionInputs(outlets, settings);
    return {.binary = settings.stringValue(settingsKeys::binary),
            .rom_start_address = inputs.rom_start_address,
            .pad_to = inputs.pad_to,
            .combineReadData = inputs.combineReadData,
            .pad = inputs.pad,
            .padWithZero = inputs.padWithZero};
}
