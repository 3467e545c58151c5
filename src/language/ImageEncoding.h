// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"

#include <QByteArrayView>
#include <QString>

/// What the programmer tool makes of a file that it is to burn or to compare.
enum class ImageEncoding {
    /// The bytes as they are.
    Raw,
    /// Text of Intel HEX records, which the tool decodes.
    IntelHex,
    /// Text of S-records (Motorola), which the tool decodes.
    SRecord
};

/// How many bytes encodingForTool() needs at most.
inline constexpr qsizetype maxEncodingBytes = 64 * kibibyte;

/// How the tool will take a file that begins with, or is, \a bytes; the file's name and the
/// tool's switches play no part. Line ends at the beginning are passed over; then ":" or "S",
/// hexadecimal digits and nothing else up to a carriage return or line feed make it text.
///
/// This is the tool's own judgement; recordFormatOf() takes more for text than the tool does.
///
/// Looks at no more than the first maxEncodingBytes bytes: no record is nearly as long, so what has
/// not come to a line end by then is Raw.
ImageEncoding encodingForTool(QByteArrayView bytes);

/// The translated name of text in \a encoding, as in "Intel HEX text"; empty for Raw.
QString nameOf(ImageEncoding encoding);
