// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>

/// The platform's font for bytes and addresses, whose letters are all of one width. A theme may
/// name one whose letters are not, or that is not installed: another one is taken then.
QFont fixedFont();

/// \a wanted if its letters are of one width, else another font of its size whose letters are;
/// \a wanted if there is none.
QFont fixedFontInsteadOf(const QFont &wanted);
