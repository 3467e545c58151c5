// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/RecordFormat.h"

#include "base/Utf8.h"
#include "formats/RecordText.h"

#include <algorithm>

namespace {

bool beginsRecord(QByteArrayView behindMark) {
    const auto end = std::find_if(behindMark.begin(), behindMark.end(),
                                  [](char digit) { return valueOfHexDigit(digit) < 0; });
    return end - behindMark.begin() >= 2 || (end != behindMark.end() && endsLine(*end));
}

} // namespace

std::optional<RecordFormat> formatOfMark(char mark) {
    if (mark == ':')
        return RecordFormat::IntelHex;
    if (mark == 'S' || mark == 's')
        return RecordFormat::SRecord;
    return std::nullopt;
}

std::optional<RecordFormat> recordFormatOf(QByteArrayView bytes) {
    QByteArrayView looked = bytes.first(std::min(bytes.size(), maxFormatBytes));
    if (looked.startsWith(utf8::byteOrderMark))
        looked = looked.sliced(utf8::byteOrderMark.size());
    const auto mark = std::find_if_not(looked.begin(), looked.end(), [](char character) {
        return endsLine(character) || isBlank(character);
    });
    if (mark == looked.end())
        return std::nullopt;
    const auto format = formatOfMark(*mark);
    return format && beginsRecord(looked.sliced(mark + 1 - looked.begin())) ? format : std::nullopt;
}
