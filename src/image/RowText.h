// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

/// How a row of the grid is written as text, and read again: address, sixteen bytes, characters.
namespace rowText {
/// The digits of an address: an offset that needs more than the fewest has as many as it needs.
inline constexpr int shortestAddress = 4;
inline constexpr int longestAddress = 16;
/// Between the address, the bytes and the characters.
inline constexpr QStringView gap = u"  ";
/// Between two bytes.
inline constexpr char16_t blank = u' ';
/// In the place of a byte that is not there; as long as one.
inline constexpr QStringView missingByte = u"XX";
} // namespace rowText
