// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>

/// The platform's font for bytes and addresses, whose letters are all of one width. A platform's
/// theme may name one that is none, or that is not installed: another one is taken then.
QFont fixedFont();

/// \a wanted if its letters are of one width, else a font of its size that is like that; \a wanted
/// where there is none.
QFont fixedFontInsteadOf(const QFont &wanted);
