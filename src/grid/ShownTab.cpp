// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/ShownTab.h"

#include "grid/GridColumns.h"
#include "widgets/TabView.h"

ShownTab tabOf(const QString &identifier) {
    if (identifier == readTabIdentifier())
        return ShownTab::Read;
    if (identifier == burnTabIdentifier())
        return ShownTab::ToBurn;
    return identifier == logicTabIdentifier() ? ShownTab::LogicTest : ShownTab::None;
}

ShownTab shownTab(const TabView &tabs) {
    return tabOf(tabs.selectedTabViewItem().identifier);
}

QString labelOf(ShownTab tab) {
    if (tab == ShownTab::Read)
        return QStringLiteral("Data read from chip:");
    return tab == ShownTab::ToBurn ? QStringLiteral("Data to burn:") : QString();
}
