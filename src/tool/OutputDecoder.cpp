// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/OutputDecoder.h"

#include <QStringDecoder>

namespace {

constexpr uchar firstContinuation = 0x80;
constexpr uchar lastContinuation = 0xBF;
constexpr int bitsPerContinuation = 6;
constexpr uchar continuationBits = 0x3F;

/// How many bytes a character that begins with \a byte has; 1 for what begins none.
int lengthOfCharacter(uchar byte) {
    if (byte >= 0xC2 && byte <= 0xDF)
        return 2;
    if (byte >= 0xE0 && byte <= 0xEF)
        return 3;
    if (byte >= 0xF0 && byte <= 0xF4)
        return 4;
    return 1;
}

/// Where the character begins that \a bytes end within; their size if they end behind one.
qsizetype startOfUnfinishedCharacter(QByteArrayView bytes) {
    const qsizetype size = bytes.size();
    for (qsizetype back = 1; back <= 3 && back <= size; ++back) {
        const auto byte = static_cast<uchar>(bytes[size - back]);
        if (byte < firstContinuation || byte > lastContinuation)
            return lengthOfCharacter(byte) > back ? size - back : size;
    }
    return size;
}

/// Without ConvertInitialBom a byte-order mark would be dropped.
QString decodeValid(QByteArrayView bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom);
    return decoder(bytes);
}

} // namespace

QString OutputDecoder::decode(QByteArrayView bytes) {
    QString text;
    qsizetype next = 0;
    for (; missing_ > 0 && next < bytes.size(); ++next)
        decodeByte(static_cast<uchar>(bytes[next]), text);

    const QByteArrayView rest = bytes.sliced(next);
    const qsizetype whole = startOfUnfinishedCharacter(rest);
    if (rest.first(whole).isValidUtf8()) {
        text += decodeValid(rest.first(whole));
        next += whole;
    }
    if (next < bytes.size())
        text.reserve(text.size() + bytes.size() - next);
    for (; next < bytes.size(); ++next)
        decodeByte(static_cast<uchar>(bytes[next]), text);
    return text;
}

QString OutputDecoder::flush() {
    QString text;
    if (missing_ > 0)
        replaceBroken(text);
    return text;
}

void OutputDecoder::decodeByte(uchar byte, QString &text) {
    if (missing_ > 0 && (byte < lowest_ || byte > highest_))
        replaceBroken(text);
    if (missing_ == 0) {
        startCharacter(byte, text);
        return;
    }
    lowest_ = firstContinuation;
    highest_ = lastContinuation;
    character_ = (character_ << bitsPerContinuation) | (byte & continuationBits);
    if (--missing_ > 0)
        return;
    if (QChar::requiresSurrogates(character_)) {
        text += QChar(QChar::highSurrogate(character_));
        text += QChar(QChar::lowSurrogate(character_));
    } else {
        text += QChar(static_cast<char16_t>(character_));
    }
}

void OutputDecoder::startCharacter(uchar byte, QString &text) {
    if (byte < firstContinuation) {
        text += QChar(ushort(byte));
        return;
    }
    const int length = lengthOfCharacter(byte);
    if (length == 1) {
        text += QChar(QChar::ReplacementCharacter);
        return;
    }
    missing_ = length - 1;
    character_ = byte & (continuationBits >> missing_);
    lowest_ = byte == 0xE0 ? 0xA0 : byte == 0xF0 ? 0x90 : firstContinuation;
    highest_ = byte == 0xED ? 0x9F : byte == 0xF4 ? 0x8F : lastContinuation;
}

void OutputDecoder::replaceBroken(QString &text) {
    missing_ = 0;
    lowest_ = firstContinuation;
    highest_ = lastContinuation;
    text += QChar(QChar::ReplacementCharacter);
}
