// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/OutputDecoder.h"

#include <QStringDecoder>

namespace {

/// Where the character begins that \a bytes end within; their size if they end behind one.
qsizetype startOfUnfinishedCharacter(QByteArrayView bytes) {
    const qsizetype size = bytes.size();
    for (qsizetype back = 1; back <= 3 && back <= size; ++back) {
        const auto byte = uchar(bytes[size - back]);
        if (!utf8::isContinuation(byte))
            return utf8::lengthOfCharacter(byte) > back ? size - back : size;
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
        decodeByte(uchar(bytes[next]), text);

    const QByteArrayView rest = bytes.sliced(next);
    const qsizetype whole = startOfUnfinishedCharacter(rest);
    if (rest.first(whole).isValidUtf8()) {
        text += decodeValid(rest.first(whole));
        next += whole;
    }
    if (next < bytes.size())
        text.reserve(text.size() + bytes.size() - next);
    for (; next < bytes.size(); ++next)
        decodeByte(uchar(bytes[next]), text);
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
    lowest_ = utf8::firstContinuation;
    highest_ = utf8::lastContinuation;
    character_ = (character_ << utf8::bitsPerContinuation) | (byte & utf8::continuationBits);
    if (--missing_ > 0)
        return;
    if (QChar::requiresSurrogates(character_)) {
        text += QChar(QChar::highSurrogate(character_));
        text += QChar(QChar::lowSurrogate(character_));
    } else {
        text += QChar(char16_t(character_));
    }
}

void OutputDecoder::startCharacter(uchar byte, QString &text) {
    if (byte < utf8::firstContinuation) {
        text += QChar(char16_t(byte));
        return;
    }
    const int length = utf8::lengthOfCharacter(byte);
    if (length == 1) {
        text += QChar(QChar::ReplacementCharacter);
        return;
    }
    missing_ = length - 1;
    character_ = utf8::bitsOfFirst(byte, length);
    lowest_ = byte == 0xE0 ? 0xA0 : byte == 0xF0 ? 0x90 : utf8::firstContinuation;
    highest_ = byte == 0xED ? 0x9F : byte == 0xF4 ? 0x8F : utf8::lastContinuation;
}

void OutputDecoder::replaceBroken(QString &text) {
    missing_ = 0;
    lowest_ = utf8::firstContinuation;
    highest_ = utf8::lastContinuation;
    text += QChar(QChar::ReplacementCharacter);
}
