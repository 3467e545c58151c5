// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QChar>
#include <QStringView>

#include <optional>

/// True for the bytes that end a line of a file.
constexpr bool endsLine(char character) {
    return character == '\r' || character == '\n';
}

/// How many units at \a at of \a text, bytes or characters, end a line of a file: 2 for a carriage
/// return with its line feed, 0 for none.
template <typename View>
constexpr qsizetype lineEndAt(const View &text, qsizetype at) {
    const auto isAt = [&](qsizetype place, QLatin1Char unit) {
        return place < text.size() && text[place] == unit;
    };
    if (isAt(at, QLatin1Char('\r')))
        return isAt(at + 1, QLatin1Char('\n')) ? 2 : 1;
    return isAt(at, QLatin1Char('\n')) ? 1 : 0;
}

/// True for the characters that end a line on their own: line feed, vertical tab, form feed,
/// carriage return, next line (U+0085), line and paragraph separator.
bool isLineBreak(QChar character);

/// A text cut at every single line break: neighbouring ones (a CR LF pair, too) leave an empty
/// line between them, and a final one an empty line behind it. A text without any is one line,
/// the empty text included.
class LineCursor {
public:
    /// The lines refer to the characters of \a text.
    explicit LineCursor(QStringView text) : rest_(text) {}

    /// The next line; nothing behind the last.
    std::optional<QStringView> next();

private:
    std::optional<QStringView> rest_;
};
