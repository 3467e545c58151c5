// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"

#include <QByteArrayView>

#include <optional>

/// How text stands for bytes at addresses.
enum class RecordFormat { IntelHex, SRecord };

/// The format whose records begin with \a mark.
std::optional<RecordFormat> formatOfMark(char mark);

/// How many bytes recordFormatOf() needs at most; no less than encodingForTool() does.
inline constexpr qsizetype maxFormatBytes = 64 * kibibyte;

/// The format of what begins with, or is, \a bytes; nothing if they are no such text. A byte-order
/// mark, blanks and line ends at the beginning are passed over. Then ":" or "S" (of either case)
/// and two hexadecimal digits make it text, for a first record may be damaged; so does one of them
/// that nothing but hexadecimal digits follows up to a line end.
///
/// This is what somebody may have meant as records. All that the programmer tool decodes is among
/// it; but the tool takes no byte-order mark, blanks, small "s" or damage in the first line.
///
/// Looks at no more than the first maxFormatBytes bytes.
std::optional<RecordFormat> recordFormatOf(QByteArrayView bytes);
