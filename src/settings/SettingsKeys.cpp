// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"

namespace settingsKeys {

QVariantMap startupDefaults() {
    const QString folder = QStringLiteral("~/Library/Application Support/VELM/");
    return {
        {miniproLocation, QStringLiteral("/usr/local/bin/minipro")},
        {noSizeMismatchError, true},
        {noIDMismatchError, false},
        {skipErase, false},
        {unprotect, false},
        {rom_start_address, QStringLiteral("0000")},
        {pad_ff, true},
        {pad_00, false},
        {pad_to, QStringLiteral("")},
        {pad, false},
        {temp_output_file, folder + QStringLiteral("temp.bin")},
        {temp_read_from_chip_file, folder + QStringLiteral("temp_read.bin")},
        {temp_search_results_file, folder + QStringLiteral("temp_sr.bin")},
        {temp_logic_chip_test_results_file, folder + QStringLiteral("temp_logtest.bin")},
    };
}

} // namespace settingsKeys
