// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "formats/RecordFormat.h"

#include <QString>

#include <optional>

/// The entries of a choice of formats, in their order.
enum FormatEntry { IntelHexEntry, SRecordEntry, RawEntry };

/// The format of entry \a number; nothing for raw bytes.
inline std::optional<RecordFormat> formatOf(int number) {
    if (number == RawEntry)
        return std::nullopt;
    return number == SRecordEntry ? RecordFormat::SRecord : RecordFormat::IntelHex;
}

/// The entry for \a format.
inline FormatEntry entryOf(std::optional<RecordFormat> format) {
    if (!format)
        return RawEntry;
    return *format == RecordFormat::IntelHex ? IntelHexEntry : SRecordEntry;
}

/// What the names of files of \a format end in, without a dot.
inline QString extensionOf(std::optional<RecordFormat> format) {
    if (!format)
        return QStringLiteral("bin");
    return *format == RecordFormat::IntelHex ? QStringLiteral("hex") : QStringLiteral("srec");
}
