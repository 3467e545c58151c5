// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QChar>
#include <QString>
#include <QStringView>

/// Printable ASCII, the blank included.
constexpr bool isPrintableAscii(QChar character) {
    return character >= u' ' && character <= u'~';
}

/// \a text with a blank for each control character and each separator of lines.
QString onOneLine(QString text);

/// \a character as it is; or if nothing is seen of it where it stands in a text, it looks like a
/// space and is another, or it changes the order of others, as an escape: "\x1b", "\u202e",
/// "\U000e0001".
QString visibleCharacter(char32_t character);

/// The whole of \a text in such characters: it looks like what it says.
QString visibleText(QStringView text);
