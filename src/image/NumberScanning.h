// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

#include <optional>

/// The leading hexadecimal number of \a text: white space and line ends are skipped, then an
/// optional "0x" or "0X", then digits of either case up to the first other character; the rest is
/// ignored. A number too large for 32 bits gives 0xFFFFFFFF. Nothing if there is no digit; of "0x"
/// without a digit behind it, the zero is the number. \a rest, if given, becomes what is ignored.
std::optional<quint32> scanHexInt(QStringView text, QStringView *rest = nullptr);

/// The leading decimal number of \a text: white space and line ends are skipped, then an optional
/// sign, then ASCII digits up to the first other character; the rest is ignored. A number outside
/// the 32-bit range gives the nearest limit. Nothing if there is no digit.
/// \a rest, if given, becomes what is ignored.
std::optional<qint32> scanInt(QStringView text, QStringView *rest = nullptr);
