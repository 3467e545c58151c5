// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/ChipFacts.h"

#include "base/JoinedWords.h"
#include "views/ChipFactsWords.h"
#include "widgets/PlainToolTip.h"

namespace {

/// What the field keeps free on both sides of its text; in pixels.
constexpr int innerMargins = 8;
/// As in "262,144 bytes, DIP32 · data too long by 262,144"; on a small screen less has room.
constexpr int usualLetters = 46;
constexpr int minLetters = 8;

} // namespace

void ChipFacts::say(const DeviceAnswer &answer, const std::optional<ImageFit> &fit) {
    FittingLine::say(joined({chipWords(answer), fitWords(fit)}));
    const QString known = joinedWords({wholeText(), programmersWords(answer)}, u"\n");
    setPlainToolTip(*this,
                    known.isEmpty() ? tr("What the programmer tool knows of the device") : known);
}

QString ChipFacts::fittingText() const {
    return fontMetrics().elidedText(wholeText(), Qt::ElideRight, width() - innerMargins);
}

QSize ChipFacts::sizeHint() const {
    return {usualLetters * fontMetrics().averageCharWidth() + innerMargins,
            QLineEdit::sizeHint().height()};
}

QSize ChipFacts::minimumSizeHint() const {
    return {minLetters * fontMetrics().averageCharWidth() + innerMargins,
            QLineEdit::minimumSizeHint().height()};
}
