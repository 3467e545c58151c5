// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class TabView;

/// What a tab of the window shows.
enum class ShownTab { None, Read, ToBurn, LogicTest };

/// What the tab with \a identifier shows; nothing if there is none.
ShownTab tabOf(const QString &identifier);
/// What the selected one of \a tabs shows.
ShownTab shownTab(const TabView &tabs);

/// What stands above the grid as long as \a tab has nothing else to say of what it shows.
QString labelOf(ShownTab tab);

/// True if \a tab shows an image.
constexpr bool showsImage(ShownTab tab) {
    return tab == ShownTab::Read || tab == ShownTab::ToBurn;
}
