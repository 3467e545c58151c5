// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// 1 KiB in bytes; nearly all chips have a whole number of them.
inline constexpr qint64 kibibyte = 1024;
inline constexpr qint64 mebibyte = 1024 * kibibyte;
inline constexpr qint64 gibibyte = 1024 * mebibyte;

inline constexpr int bitsInByte = 8;

/// The highest value of a byte, and of a character of Latin-1.
inline constexpr int maxByte = 0xFF;

/// What erased memory reads as.
inline constexpr quint8 erasedByte = 0xFF;

/// Bytes in a row of a hex dump.
inline constexpr int bytesInRow = 16;
