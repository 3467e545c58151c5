// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// How TerminalText reads its input: which units are text, which control, and which belong to a
// sequence.

#include "widgets/TerminalText.h"

#include <QChar>

#include <algorithm>
#include <optional>

namespace {

constexpr char16_t bell = 0x07;
constexpr char16_t backspace = 0x08;
constexpr char16_t tab = 0x09;
constexpr char16_t carriageReturn = 0x0d;
constexpr char16_t cancel = 0x18;
constexpr char16_t substitute = 0x1a;
constexpr char16_t escape = 0x1b;

/// More parameters than any real sequence has: what goes on longer is not one.
constexpr qsizetype longestParameters = 64;

bool isC0(char16_t unit) {
    return unit < 0x20;
}

bool isControl(char16_t unit) {
    return isC0(unit) || (unit >= 0x7f && unit <= 0x9f);
}

/// Text documents take these for the borders of paragraphs and frames, not for characters.
bool isDocumentBorder(char16_t unit) {
    return unit == 0x2028 || unit == 0x2029 || unit == 0xfdd0 || unit == 0xfdd1;
}

bool isPlain(char16_t unit) {
    return !isControl(unit) && !isDocumentBorder(unit);
}

qsizetype plainLength(QStringView text) {
    const auto end = std::find_if_not(text.utf16(), text.utf16() + text.size(), isPlain);
    return end - text.utf16();
}

bool isIntermediate(char16_t unit) {
    return unit >= 0x20 && unit <= 0x2f;
}

bool isParameter(char16_t unit) {
    return unit >= 0x20 && unit <= 0x3f;
}

bool isFinal(char16_t unit) {
    return unit >= 0x40 && unit <= 0x7e;
}

bool startsControlString(char16_t unit) {
    return QStringView(u"]PX^_").contains(QChar(unit));
}

/// The number of an erase sequence; nothing if it is no plain one.
std::optional<int> eraseMode(const QString &parameters) {
    if (parameters.isEmpty())
        return 0;
    bool ok = false;
    const int mode = parameters.toInt(&ok);
    return ok ? std::optional<int>(mode) : std::nullopt;
}

} // namespace

void TerminalText::feed(QStringView piece) {
    for (qsizetype at = 0; at < piece.size();)
        at += consume(piece.sliced(at));
}

qsizetype TerminalText::consume(QStringView rest) {
    const char16_t unit = rest.front().unicode();
    switch (state_) {
    case State::Text:
        if (const qsizetype length = plainLength(rest)) {
            write(rest.first(length));
            return length;
        }
        control(unit);
        break;
    case State::Escape:
    case State::EscapeIntermediate:
        afterEscape(unit);
        break;
    case State::Sequence:
        inSequence(unit);
        break;
    case State::String:
    case State::StringEscape:
        inString(unit);
        break;
    }
    return 1;
}

void TerminalText::control(char16_t unit) {
    switch (unit) {
    case lineFeed:
        finishLine();
        break;
    case carriageReturn:
        cursor_ = floor_;
        break;
    case backspace:
        cursor_ = std::max(floor_, cursor_ - 1);
        break;
    case tab:
        write(u"\t");
        break;
    case cancel:
    case substitute:
        state_ = State::Text;
        break;
    case escape:
        state_ = State::Escape;
        break;
    default:
        if (isDocumentBorder(unit))
            write(u"\ufffd");
    }
}

void TerminalText::afterEscape(char16_t unit) {
    if (isC0(unit)) {
        control(unit);
        return;
    }
    const bool first = state_ == State::Escape;
    state_ = State::Text;
    held_.clear();
    if (isIntermediate(unit))
        state_ = State::EscapeIntermediate;
    else if (first && unit == u'[')
        state_ = State::Sequence;
    else if (first && startsControlString(unit))
        state_ = State::String;
    else if (isPlain(unit) && unit > 0x7f)
        write(QStringView(&unit, 1));
}

void TerminalText::inSequence(char16_t unit) {
    if (isC0(unit)) {
        control(unit);
    } else if (isParameter(unit) && held_.size() < longestParameters) {
        held_.append(QChar(unit));
    } else {
        state_ = State::Text;
        if (isFinal(unit))
            endSequence(unit);
        else if (isPlain(unit))
            write(QStringView(&unit, 1));
    }
}

void TerminalText::endSequence(char16_t final) {
    const std::optional<int> mode = eraseMode(held_);
    if (final == u'K' && mode)
        eraseInLine(*mode);
    else if (final == u'J' && mode)
        eraseInDisplay(*mode);
}

void TerminalText::inString(char16_t unit) {
    const bool afterEscapeUnit = state_ == State::StringEscape;
    state_ = State::String;
    if (unit == bell || unit == cancel || unit == substitute || (afterEscapeUnit && unit == u'\\'))
        state_ = State::Text;
    else if (afterEscapeUnit)
        restartAfterEscape(unit);
    else if (unit == escape)
        state_ = State::StringEscape;
    else if (held_.size() < longestControlString)
        held_.append(QChar(unit));
    else
        giveUpString(unit);
}

// An escape inside of a control string that does not end it begins another sequence.
void TerminalText::restartAfterEscape(char16_t unit) {
    state_ = State::Escape;
    afterEscape(unit);
}

void TerminalText::giveUpString(char16_t unit) {
    state_ = State::Text;
    held_.clear();
    feed(QStringView(&unit, 1));
}
