// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>

#include <optional>

/// How text stands for bytes at addresses.
enum class RecordFormat { IntelHex, SRecord };

/// The format of what begins with, or is, \a bytes; nothing if they are no such text. A byte-order
/// mark, blanks and line ends at the beginning are passed over. Then ":" or "S" (of either case)
/// and two hexadecimal digits make it text, for a first record may be damaged; so does one of them
/// that nothing but hexadecimal digits follows up to a line end, which is how the programmer tool
/// judges. Looks at no more than the first 64 KiB.
std::optional<RecordFormat> recordFormatOf(QByteArrayView bytes);
