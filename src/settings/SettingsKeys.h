// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QVariantMap>

/// Every settings key of the program, each name once.
namespace settingsKeys {

inline const QString miniproLocation = QStringLiteral("miniproLocation");
inline const QString noSizeMismatchError = QStringLiteral("noSizeMismatchError");
inline const QString noIDMismatchError = QStringLiteral("noIDMismatchError");
inline const QString skipErase = QStringLiteral("skipErase");
inline const QString unprotect = QStringLiteral("unprotect");
inline const QString rom_start_address = QStringLiteral("rom_start_address");
inline const QString pad_ff = QStringLiteral("pad_ff");
inline const QString pad_00 = QStringLiteral("pad_00");
inline const QString pad_to = QStringLiteral("pad_to");
inline const QString pad = QStringLiteral("pad");
inline const QString temp_output_file = QStringLiteral("temp_output_file");
inline const QString temp_read_from_chip_file = QStringLiteral("temp_read_from_chip_file");
inline const QString temp_search_results_file = QStringLiteral("temp_search_results_file");
inline const QString temp_logic_chip_test_results_file =
    QStringLiteral("temp_logic_chip_test_results_file");
inline const QString binary = QStringLiteral("binary");
inline const QString device = QStringLiteral("device");
inline const QString favourites = QStringLiteral("favourites");

/// The fourteen defaults that start-up registers (miniproLocation to pad and the four
/// temporary-file keys). binary and device have none; favourites has its own owner.
QVariantMap startupDefaults();

} // namespace settingsKeys
