// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// 1 KiB, in bytes: chips are sized in whole ones, nearly all of them.
inline constexpr qint64 kibibyte = 1024;
