// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// \a text as an entry of a menu, which takes a single "&" for the mark of a mnemonic.
inline QString menuText(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}
