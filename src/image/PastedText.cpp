// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/PastedText.h"

#include "base/Digits.h"
#include "base/Units.h"
#include "files/ByteBuffer.h"
#include "files/TextLines.h"
#include "image/RowText.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

/// As much of the beginning of a text as tells what it is.
constexpr qsizetype looked = 4096;
/// The longest part of a text that is told when it was not understood.
constexpr qsizetype longestPart = 16;

bool isGap(QChar unit) {
    return unit.isSpace() || unit == u',';
}

/// Where the first match of \a pattern in \a text ends; nothing if there is none.
std::optional<qsizetype> endOfMatch(const QString &pattern, const QString &text) {
    const QRegularExpressionMatch match = QRegularExpression(pattern).match(text);
    return match.hasMatch() ? std::optional(match.capturedEnd()) : std::nullopt;
}

/// Before the first number of an array: a declaration, which comments may precede.
const QString arrayStart = QStringLiteral(
    R"(\A(?:\s|/\*(?s:.*?)\*/|//[^\r\n]*[\r\n])*(?:[A-Za-z_][\w\s*:<>,\[\]]*=\s*)?\{)");
/// Before the "b" of a bytes literal: a name and a parenthesis.
const QString literalStart = QStringLiteral(R"(\A\s*(?:[A-Za-z_]\w*\s*=\s*)?\(?\s*(?=[bB]['"]))");
const QString rowStart = QStringLiteral(R"(\A\s*(?=[0-9A-F]{%3,%4}%1(?:(?:[0-9A-F]{2}|%2) ){16} ))")
                             .arg(rowText::gap, rowText::missingByte)
                             .arg(rowText::shortestAddress)
                             .arg(rowText::longestAddress);

} // namespace

PastedText::PastedText(QString text, As as)
    : text_(std::move(text)), form_(as == As::Characters ? Form::Characters : Form::Hex) {
    if (form_ == Form::Hex)
        recognise();
}

void PastedText::recognise() {
    const QString beginning = text_.first(std::min(text_.size(), looked));
    const auto begins = [&](const QString &pattern, Form form) {
        const auto end = endOfMatch(pattern, beginning);
        if (!end)
            return false;
        form_ = form;
        pass(*end);
        return true;
    };
    if (begins(arrayStart, Form::Array))
        place_ = Place::Inside;
    else if (!begins(literalStart, Form::Literal))
        begins(rowStart, Form::Rows);
}

bool PastedText::advance(qsizetype max) {
    const qsizetype stop = at_ + std::min(max, text_.size() - at_);
    while (!done_ && at_ < stop)
        takeOne();
    if (!done_ && at_ == text_.size())
        finish();
    return done_;
}

void PastedText::takeOne() {
    switch (form_) {
    case Form::Hex:
        takeHex();
        break;
    case Form::Array:
        takeArray();
        break;
    case Form::Literal:
        takeLiteral();
        break;
    case Form::Rows:
        takeRow();
        break;
    case Form::Characters:
        takeCharacter();
        break;
    }
    if (bytes_.size() > largestImage)
        fail(Kind::TooMany);
}

Result<QByteArray, PasteTrouble> PastedText::result() const {
    if (trouble_)
        return *trouble_;
    return bytes_;
}

void PastedText::finish() {
    if (form_ == Form::Hex)
        endGroup();
    if (place_ != Place::Outside)
        fail(Kind::NoEnd);
    else if (bytes_.isEmpty())
        fail(Kind::NoBytes);
    done_ = true;
}

void PastedText::pass(qsizetype units) {
    for (; units > 0; --units, ++at_)
        if (text_.at(at_) <= u'\r' && lineEndAt(text_, at_) == 1) {
            ++line_;
            lineStart_ = at_ + 1;
        }
}

void PastedText::fail(Kind kind) {
    done_ = true;
    if (trouble_)
        return;
    const QStringView ahead = rest().first(std::min(rest().size(), longestPart));
    const auto end = std::find_if(ahead.begin(), ahead.end(), isGap);
    trouble_ = {kind, line_, at_ - lineStart_ + 1,
                ahead.first(std::distance(ahead.begin(), end)).toString()};
}

void PastedText::takeCharacter() {
    const char16_t unit = text_.at(at_).unicode();
    if (unit > maxByte)
        return fail(Kind::NoCharacter);
    append(unit);
    pass(1);
}

void PastedText::takeHex() {
    const QChar unit = text_.at(at_);
    if (isGap(unit)) {
        endGroup();
        if (!done_)
            pass(1);
        return;
    }
    if (group_ < 0) {
        group_ = at_;
        prefixed_ = rest().startsWith(u"0x", Qt::CaseInsensitive);
        digits_ = 0;
        if (prefixed_)
            return pass(2);
    }
    const std::optional<int> digit = digitValue(unit, hexadecimal);
    if (!digit)
        return fail(Kind::NoDigit);
    if (++digits_ % 2 == 1)
        half_ = *digit;
    else
        append(half_ * hexadecimal + *digit);
    pass(1);
}

// "0x5" is how an array writes a byte; of "123" nobody knows which digit is missing.
void PastedText::endGroup() {
    if (group_ < 0)
        return;
    const bool isWhole = digits_ % 2 == 0 && digits_ > 0;
    if (prefixed_ && digits_ == 1)
        append(half_);
    else if (!isWhole) {
        at_ = group_;
        return fail(digits_ == 0 ? Kind::NoDigit : Kind::OddDigit);
    }
    group_ = -1;
}
