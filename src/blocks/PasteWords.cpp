// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/PasteWords.h"

#include "base/NumberWords.h"
#include "files/ByteBuffer.h"

#include <QCoreApplication>

namespace {

using Kind = PasteTrouble::Kind;

class PasteWording {
    Q_DECLARE_TR_FUNCTIONS(PasteWords)

public:
    static QString what(const PasteTrouble &trouble) {
        switch (trouble.kind) {
        case Kind::NoBytes:
            return tr("There are no bytes in it.");
        case Kind::NoDigit:
            return tr("\u201c%1\u201d is no byte in hexadecimal digits.").arg(trouble.part);
        case Kind::OddDigit:
            return tr("\u201c%1\u201d has an odd number of digits.").arg(trouble.part);
        case Kind::NoValue:
            return tr("\u201c%1\u201d is no byte.").arg(trouble.part);
        case Kind::NoEnd:
            return tr("The end is missing.");
        case Kind::BehindEnd:
            return tr("There is more behind the end.");
        case Kind::NoRow:
            return tr("This is no row of bytes.");
        case Kind::RowsApart:
            return tr("The row at %1 does not follow the one before.").arg(trouble.part);
        case Kind::NoCharacter:
            return tr("\u201c%1\u201d takes more than a byte.").arg(trouble.part);
        case Kind::TooMany:
            return tr("These are more than %1.").arg(boundWords(largestImage));
        }
        return {};
    }

    static QString where(const PasteTrouble &trouble) {
        if (trouble.kind == Kind::NoBytes || trouble.kind == Kind::TooMany)
            return what(trouble);
        return tr("Line %1, character %2: %3")
            .arg(grouped(trouble.line), grouped(trouble.column), what(trouble));
    }
};

} // namespace

QString pasteTroubleWords(const PasteTrouble &trouble) {
    return PasteWording::where(trouble);
}
