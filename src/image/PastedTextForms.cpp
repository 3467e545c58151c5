// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// The texts with a grammar of their own: arrays, literals and rows.

#include "image/PastedText.h"

#include "base/Digits.h"
#include "base/Units.h"
#include "files/TextLines.h"
#include "image/RowText.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace {

/// A byte of a row and the blank behind it.
constexpr qsizetype rowCell = rowText::missingByte.size() + 1;
/// Longer than what stands behind an array or a row.
constexpr qsizetype longestEnd = 256;

bool isWordUnit(QChar unit) {
    return unit.isLetterOrNumber() || unit == u'_';
}

/// How many of the first units of \a text are digits to \a base, at most \a most.
qsizetype digitsIn(QStringView text, int base, qsizetype most) {
    qsizetype count = 0;
    while (count < std::min(text.size(), most) && digitValue(text[count], base))
        ++count;
    return count;
}

/// The byte that \a word is as a number of C, if it is one.
std::optional<int> byteOfNumber(QStringView word) {
    /// In characters, as in 0x000000FF: what a number of 32 bits takes, however small it is.
    constexpr qsizetype longestNumber = 10;
    const bool isHex = word.startsWith(u"0x", Qt::CaseInsensitive);
    const QStringView digits = isHex ? word.sliced(2) : word;
    const int base = isHex ? hexadecimal : decimal;
    const bool isOctal = !isHex && digits.size() > 1 && digits.startsWith(u'0');
    // Of digits alone: the toolkit takes a second prefix as well.
    const bool isNumber = !digits.isEmpty() && word.size() <= longestNumber && !isOctal &&
                          digitsIn(digits, base, digits.size()) == digits.size();
    const quint64 value = isNumber ? digits.toULongLong(nullptr, base) : 0;
    return isNumber && value <= maxByte ? std::optional(int(value)) : std::nullopt;
}

/// The byte that a backslash and \a letter stand for, if they stand for one.
std::optional<int> byteOfEscape(QChar letter) {
    struct Escape {
        char16_t letter;
        char byte;
    };
    constexpr std::array escapes = {Escape{u'\\', '\\'}, Escape{u'\'', '\''}, Escape{u'"', '"'},
                                    Escape{u'n', '\n'},  Escape{u'r', '\r'},  Escape{u't', '\t'},
                                    Escape{u'a', '\a'},  Escape{u'b', '\b'},  Escape{u'f', '\f'},
                                    Escape{u'v', '\v'}};
    const auto *found = std::find_if(escapes.begin(), escapes.end(), [&](const Escape &escape) {
        return escape.letter == letter.unicode();
    });
    return found == escapes.end() ? std::nullopt : std::optional<int>(found->byte);
}

} // namespace

void PastedText::takeArray() {
    if (place_ == Place::Outside)
        return takeArrayEnd();
    if (takeComment())
        return;
    const QChar unit = text_.at(at_);
    if (unit.isSpace() || unit == u',')
        return pass(1);
    if (unit != u'}')
        return takeNumber();
    place_ = Place::Outside;
    pass(1);
}

bool PastedText::takeComment() {
    if (place_ == Place::Inside) {
        const bool isBlock = rest().startsWith(u"/*");
        if (!isBlock && !rest().startsWith(u"//"))
            return false;
        place_ = isBlock ? Place::BlockComment : Place::LineComment;
        pass(2);
        return true;
    }
    const bool isBlock = place_ == Place::BlockComment;
    const bool ends = isBlock ? rest().startsWith(u"*/") : lineEndAt(text_, at_) > 0;
    if (ends)
        place_ = Place::Inside;
    pass(ends && isBlock ? 2 : 1);
    return true;
}

void PastedText::takeNumber() {
    const QStringView ahead = rest().first(std::min(rest().size(), longestEnd));
    const auto *end = std::find_if_not(ahead.begin(), ahead.end(), isWordUnit);
    const QStringView word = ahead.first(std::distance(ahead.begin(), end));
    const std::optional<int> byte = byteOfNumber(word);
    if (!byte)
        return fail(Kind::NoValue);
    append(*byte);
    pass(word.size());
}

// Tools that write arrays like to declare their length behind them.
void PastedText::takeArrayEnd() {
    static const QRegularExpression end(
        QStringLiteral(R"(\A\s*;?\s*(?:[A-Za-z_][\w\s]*=\s*\d+\s*;)?\s*\z)"));
    if (rest().size() > longestEnd || !end.match(rest().toString()).hasMatch())
        return fail(Kind::BehindEnd);
    pass(rest().size());
}

void PastedText::takeLiteral() {
    if (place_ == Place::Inside)
        return takeLiteralCharacter();
    const QChar unit = text_.at(at_);
    if (unit.isSpace() || unit == u'(' || unit == u')' ||
        (unit == u'\\' && lineEndAt(text_, at_ + 1) > 0))
        return pass(1);
    const bool isStart = unit.toLower() == u'b' && rest().size() > 1 &&
                         (text_.at(at_ + 1) == u'\'' || text_.at(at_ + 1) == u'"');
    if (!isStart)
        return fail(Kind::NoValue);
    quote_ = text_.at(at_ + 1);
    place_ = Place::Inside;
    pass(2);
}

void PastedText::takeLiteralCharacter() {
    constexpr char16_t lastAscii = 0x7F;
    const QChar unit = text_.at(at_);
    if (unit == u'\\')
        return takeEscape();
    if (lineEndAt(text_, at_) > 0)
        return fail(Kind::NoEnd);
    if (unit == quote_)
        place_ = Place::Outside;
    else if (unit.unicode() > lastAscii)
        return fail(Kind::NoValue);
    else
        append(unit.unicode());
    pass(1);
}

void PastedText::takeEscape() {
    /// Digits, as C has them.
    constexpr qsizetype maxOctal = 3;
    const QStringView behind = rest().sliced(1);
    if (behind.isEmpty())
        return fail(Kind::NoEnd);
    if (const qsizetype lineEnd = lineEndAt(text_, at_ + 1); lineEnd > 0)
        return pass(1 + lineEnd);
    const qsizetype octals = digitsIn(behind, octal, maxOctal);
    const bool isHex = behind.front() == u'x' && digitsIn(behind.sliced(1), hexadecimal, 2) == 2;
    std::optional<int> byte = byteOfEscape(behind.front());
    qsizetype units = 1;
    if (octals > 0) {
        byte = behind.first(octals).toInt(nullptr, octal);
        units = octals;
    } else if (isHex) {
        byte = behind.sliced(1, 2).toInt(nullptr, hexadecimal);
        units = 3;
    }
    if (!byte || *byte > maxByte)
        return fail(Kind::NoValue);
    append(*byte);
    pass(1 + units);
}

void PastedText::takeRow() {
    const QStringView ahead = rest().first(std::min(rest().size(), longestEnd));
    const auto *end = std::find_if(ahead.begin(), ahead.end(),
                                   [](QChar unit) { return unit == u'\n' || unit == u'\r'; });
    if (end == ahead.end() && ahead.size() < rest().size())
        return fail(Kind::NoRow);
    const QStringView line = ahead.first(std::distance(ahead.begin(), end));
    const qsizetype addressDigits = digitsIn(line, hexadecimal, line.size());
    const qsizetype cellsAt = addressDigits + rowText::gap.size();
    const bool isBlank = line.trimmed().isEmpty();
    const bool isRow = addressDigits > 0 && addressDigits <= rowText::longestAddress &&
                       line.size() >= cellsAt + bytesInRow * rowCell - 1 &&
                       line.sliced(addressDigits).startsWith(rowText::gap);
    if (!isBlank && !isRow)
        return fail(Kind::NoRow);
    if (isRow) {
        const quint64 address = line.first(addressDigits).toULongLong(nullptr, hexadecimal);
        if (address != address_.value_or(address))
            return fail(Kind::RowsApart);
        address_ = address + bytesInRow;
        if (!takeRowBytes(line.sliced(cellsAt)))
            return fail(Kind::NoRow);
    }
    pass(line.size() + lineEndAt(text_, at_ + line.size()));
}

// False if \a cells do not begin with the bytes of a row, or there were places without a byte
// before them.
bool PastedText::takeRowBytes(QStringView cells) {
    for (int place = 0; place < bytesInRow; ++place) {
        const QStringView cell = cells.sliced(place * rowCell, rowCell - 1);
        const bool isLast = place + 1 == bytesInRow;
        if (!isLast && cells[place * rowCell + rowCell - 1] != rowText::blank)
            return false;
        if (cell == rowText::missingByte) {
            rowsEnded_ = true;
            continue;
        }
        if (rowsEnded_ || digitsIn(cell, hexadecimal, 2) < 2)
            return false;
        append(cell.toInt(nullptr, hexadecimal));
    }
    return true;
}
