// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/FileFormats.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

class FormatWording {
    Q_DECLARE_TR_FUNCTIONS(FileFormats)
};

} // namespace

std::array<FileFormat, 3> fileFormats() {
    return {{{RecordFormat::IntelHex, FormatWording::tr("Intel HEX"),
              FormatWording::tr("Intel HEX files"), QStringLiteral("hex")},
             {RecordFormat::SRecord, FormatWording::tr("Motorola S-record"),
              FormatWording::tr("S-record files"), QStringLiteral("srec")},
             {std::nullopt, FormatWording::tr("Raw bytes"), {}, QStringLiteral("bin")}}};
}

FileFormat fileFormatOf(std::optional<RecordFormat> records) {
    const auto formats = fileFormats();
    return *std::find_if(formats.begin(), formats.end(),
                         [&](const FileFormat &format) { return format.records == records; });
}
