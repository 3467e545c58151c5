// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "formats/RecordFormat.h"

#include <QString>

#include <array>
#include <optional>

/// What a file of bytes can be.
struct FileFormat {
    std::optional<RecordFormat> records; ///< nothing for the bytes as they are
    QString name;                        ///< translated
    QString filesName;                   ///< what several files of records are called, translated
    QString ending;                      ///< of their names, without a dot
};

/// All of them, in the order in which they are offered.
std::array<FileFormat, 3> fileFormats();
/// The one of \a records.
FileFormat fileFormatOf(std::optional<RecordFormat> records);
