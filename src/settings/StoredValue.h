// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

/// How the settings' values stand in the INI file, so that each comes back exactly and a person
/// can still read and write them: a text as a text, a boolean as true or false, a list as its
/// entries with commas between them.
namespace storedValue {

/// What to hand to the INI file for \a value (a bool, a QString or a QStringList).
QVariant encoded(const QVariant &value);

/// \a stored, as the INI file gave it, read as a text; nothing if it is no text at all. A value
/// with bare commas, which only a person writes, reads as its parts joined by ", ".
std::optional<QString> text(const QVariant &stored);
/// \a stored read as a boolean: true, yes, on and 1 against false, no, off and 0, in any case;
/// nothing for any other text.
std::optional<bool> boolean(const QVariant &stored);
/// \a stored read as a list: an empty text is the empty list, any other text a list of one.
QStringList list(const QVariant &stored);

} // namespace storedValue
