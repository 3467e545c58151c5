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
