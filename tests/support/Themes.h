// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QPalette>

/// Palettes of the kinds of themes that users have, for tests of what must be readable in each.
inline QPalette themePalette(const QColor &window, const QColor &base, const QColor &alternate,
                             const QColor &text) {
    QPalette palette(window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, alternate);
    palette.setColor(QPalette::Button, window);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(role, text);
    return palette;
}

inline QPalette lightPalette() {
    return themePalette(QColor(0xef, 0xef, 0xef), QColor(0xff, 0xff, 0xff),
                        QColor(0xf5, 0xf5, 0xf5), QColor(0x10, 0x10, 0x10));
}

inline QPalette darkPalette() {
    return themePalette(QColor(0x2b, 0x2b, 0x2b), QColor(0x1e, 0x1e, 0x1e),
                        QColor(0x26, 0x26, 0x26), QColor(0xee, 0xee, 0xee));
}

inline QPalette greyPalette() {
    return themePalette(QColor(0x6c, 0x6c, 0x6c), QColor(0x60, 0x60, 0x60),
                        QColor(0x68, 0x68, 0x68), QColor(0xff, 0xff, 0xff));
}
