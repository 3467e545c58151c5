// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QVariant>

/// How a value is spelled behind "key=" in an INI file: as the toolkit's QSettings spells it, so
/// that each reads what the other wrote.
namespace iniValue {

/// The spelling of \a value, a QString, a QStringList of two entries or more, or a QByteArray: one
/// line of valid UTF-8 without control characters, whatever is in the value. Halves of surrogate
/// pairs are kept.
QByteArray encoded(const QVariant &value);

/// The value spelled \a characters: a QString, for bare commas the QStringList of what is between
/// them, for "@ByteArray(…)" a QByteArray. What stands for no value or for an object of the
/// toolkit ("@Invalid()", "@Rect(…)", "@Variant(…)") is an invalid value; objects are never made.
/// Broken escapes are left out, nothing else is.
QVariant decoded(QByteArrayView characters);

} // namespace iniValue
