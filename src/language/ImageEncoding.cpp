// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/ImageEncoding.h"

#include "base/Digits.h"
#include "files/TextLines.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

bool isHexDigit(char character) {
    return digitValue(QLatin1Char(character), hexadecimal).has_value();
}

} // namespace

ImageEncoding encodingForTool(QByteArrayView bytes) {
    const QByteArrayView looked = bytes.first(std::min(bytes.size(), maxEncodingBytes));
    const auto mark = std::find_if_not(looked.begin(), looked.end(), endsLine);
    if (mark == looked.end() || (*mark != ':' && *mark != 'S'))
        return ImageEncoding::Raw;
    const auto end = std::find_if_not(mark + 1, looked.end(), isHexDigit);
    if (end == looked.end() || !endsLine(*end))
        return ImageEncoding::Raw;
    return *mark == ':' ? ImageEncoding::IntelHex : ImageEncoding::SRecord;
}

QString nameOf(ImageEncoding encoding) {
    switch (encoding) {
    case ImageEncoding::IntelHex:
        return QCoreApplication::translate("ImageEncoding", "Intel HEX");
    case ImageEncoding::SRecord:
        return QCoreApplication::translate("ImageEncoding", "S-record");
    case ImageEncoding::Raw:
        break;
    }
    return {};
}
