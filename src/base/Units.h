// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// 1 KiB in bytes; nearly all chips have a whole number of them.
inline constexpr qint64 kibibyte = 1024;
