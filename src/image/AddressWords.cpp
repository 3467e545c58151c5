// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/AddressWords.h"

#include "base/Digits.h"
#include "image/RowText.h"

#include <QCoreApplication>

namespace {

class AddressWording {
    Q_DECLARE_TR_FUNCTIONS(AddressWords)

public:
    static QString noAddress(const QString &typed) {
        return tr("\u201c%1\u201d is no address: it takes hexadecimal digits, or decimal ones "
                  "behind #.")
            .arg(typed);
    }

    static QString noLength(const QString &typed) {
        return tr("\u201c%1\u201d is no length: it takes hexadecimal digits, or decimal ones "
                  "behind #.")
            .arg(typed);
    }

    static QString noByte(const QString &typed, const QString &last) {
        return tr("There is no byte at %1: the last one is at %2.").arg(typed, last);
    }

    static QString rangeTrouble(RangeTrouble trouble, const QString &first, const QString &end,
                                const QString &last) {
        switch (trouble) {
        case RangeTrouble::NoBytes:
            return tr("There are no bytes.");
        case RangeTrouble::FirstUnread:
            return noAddress(first);
        case RangeTrouble::LastUnread:
            return noAddress(end);
        case RangeTrouble::LengthUnread:
            return noLength(end);
        case RangeTrouble::FirstBeyond:
            return noByte(first, last);
        case RangeTrouble::LastBeyond:
            return noByte(end, last);
        case RangeTrouble::LengthBeyond:
            return tr("There are not as many bytes from %1 on: the last one is at %2.")
                .arg(first, last);
        case RangeTrouble::LastBeforeFirst:
            return tr("The last byte, at %1, is before the first, at %2.").arg(end, first);
        case RangeTrouble::LengthZero:
            break;
        }
        return tr("A length of 0 selects nothing.");
    }
};

} // namespace

QString addressWords(quint64 offset) {
    return hexDigits(offset, rowText::shortestAddress);
}

QString noAddressWords(const QString &typed) {
    return AddressWording::noAddress(typed.trimmed());
}

QString noByteWords(const QString &typed, qint64 count) {
    return AddressWording::noByte(typed.trimmed(), addressWords(count - 1));
}

QString rangeTroubleWords(RangeTrouble trouble, const TypedRange &typed, qint64 count) {
    const QString last = count > 0 ? addressWords(count - 1) : QString();
    return AddressWording::rangeTrouble(trouble, typed.first.trimmed(), typed.end.trimmed(), last);
}
