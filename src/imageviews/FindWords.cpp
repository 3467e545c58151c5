// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/FindWords.h"

#include "base/NumberWords.h"

#include <QCoreApplication>

namespace {

class FindWording {
    Q_DECLARE_TR_FUNCTIONS(FindWords)
};

} // namespace

QString countWords(const FindState &state) {
    if (state.where != FindState::Where::Image)
        return {};
    if (!state.hits)
        return FindWording::tr("counting\u2026");
    const QString hits = grouped(*state.hits);
    if (*state.hits == 0)
        return FindWording::tr("not found");
    if (state.number > 0)
        return FindWording::tr("%1 of %2", "hit, hits").arg(grouped(state.number), hits);
    return *state.hits == 1 ? FindWording::tr("1 hit") : FindWording::tr("%1 hits").arg(hits);
}

QString remarkWords(const FindState &state) {
    if (state.where == FindState::Where::Results)
        return FindWording::tr("There are no bytes among the logic test results.");
    if (state.where == FindState::Where::NoBytes)
        return FindWording::tr("There are no bytes to search.");
    switch (state.wrap) {
    case FindState::Wrap::FromBeginning:
        return FindWording::tr("Went on from the beginning.");
    case FindState::Wrap::FromEnd:
        return FindWording::tr("Went on from the end.");
    case FindState::Wrap::None:
        break;
    }
    return {};
}

QString troubleWords(const PatternTrouble &trouble) {
    switch (trouble.kind) {
    case PatternTrouble::Kind::HalfByte:
        return FindWording::tr("\u201c%1\u201d ends with half a byte.").arg(trouble.part);
    case PatternTrouble::Kind::NoDigits:
        return FindWording::tr("\u201c%1\u201d is not hexadecimal.").arg(trouble.part);
    case PatternTrouble::Kind::NoByte:
        return FindWording::tr("\u201c%1\u201d takes more than 8 bits.").arg(trouble.part);
    case PatternTrouble::Kind::TooLong:
        break;
    }
    return FindWording::tr("More than %1 bytes cannot be searched for.")
        .arg(grouped(BytePattern::longest));
}
