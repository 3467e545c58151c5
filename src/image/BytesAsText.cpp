// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/BytesAsText.h"

#include "base/Digits.h"
#include "base/Units.h"
#include "base/VisibleText.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace {

const QString &digitsOf(char byte) {
    return byteDigits(quint8(byte));
}

/// The bytes one by one, each as \a text has it.
template <typename Text>
QStringList each(QByteArrayView bytes, Text text) {
    QStringList texts;
    for (const char byte : bytes)
        texts << text(byte);
    return texts;
}

/// The bytes line by line, each as \a text has it.
template <typename Text>
QStringList eachLine(QByteArrayView bytes, Text text) {
    QStringList lines;
    for (qsizetype at = 0; at < bytes.size(); at += bytesInRow)
        lines << text(bytes.sliced(at, std::min<qsizetype>(bytesInRow, bytes.size() - at)));
    return lines;
}

QString hexadecimalText(QByteArrayView bytes) {
    const auto line = [](QByteArrayView part) { return each(part, digitsOf).join(u' '); };
    return eachLine(bytes, line).join(u'\n');
}

QString cArray(QByteArrayView bytes) {
    if (bytes.isEmpty())
        return {};
    const auto element = [](char byte) { return QStringLiteral("0x") + digitsOf(byte) + u','; };
    const auto line = [&](QByteArrayView part) {
        return QStringLiteral("    ") + each(part, element).join(u' ') + u'\n';
    };
    return QStringLiteral("const unsigned char data[%1] = {\n").arg(bytes.size()) +
           eachLine(bytes, line).join(QString()) + QStringLiteral("};");
}

QString pythonCharacter(char byte) {
    if (byte == '"' || byte == '\\')
        return u'\\' + QString(QLatin1Char(byte));
    const QLatin1Char character(byte);
    return isPrintableAscii(character) ? QString(character)
                                       : QStringLiteral("\\x") + digitsOf(byte);
}

QString pythonBytes(QByteArrayView bytes) {
    const auto literal = [](QByteArrayView part) {
        return QStringLiteral("b\"") + each(part, pythonCharacter).join(QString()) + u'"';
    };
    if (bytes.size() <= bytesInRow)
        return literal(bytes);
    const auto line = [&](QByteArrayView part) {
        return QStringLiteral("    ") + literal(part) + u'\n';
    };
    return QStringLiteral("(\n") + eachLine(bytes, line).join(QString()) + u')';
}

QString characters(QByteArrayView bytes) {
    QString text = QString::fromLatin1(bytes);
    const auto isControl = [](QChar unit) { return unit.category() == QChar::Other_Control; };
    std::replace_if(text.begin(), text.end(), isControl, u' ');
    return text;
}

} // namespace

// All of them are made once, since a page of the grid asks for hundreds.
const QString &byteDigits(quint8 byte) {
    static const auto texts = [] {
        std::array<QString, 256> all;
        for (size_t value = 0; value < all.size(); ++value)
            all[value] = hexDigits(qint64(value), hexDigitsInByte);
        return all;
    }();
    return texts[byte];
}

QString bytesAsText(QByteArrayView bytes, ByteNotation notation) {
    switch (notation) {
    case ByteNotation::Hexadecimal:
        return hexadecimalText(bytes);
    case ByteNotation::CArray:
        return cArray(bytes);
    case ByteNotation::PythonBytes:
        return pythonBytes(bytes);
    case ByteNotation::Characters:
        break;
    }
    return characters(bytes);
}
