// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/TabView.h"

#include "widgets/Announcement.h"

#include <QScopedValueRollback>

TabView::TabView(QWidget *parent) : QTabBar(parent) {
    setExpanding(false);
    connect(this, &QTabBar::currentChanged, this, &TabView::followBar);
}

void TabView::addTabViewItem(const QString &identifier, const QString &title) {
    const QScopedValueRollback guard(adding_, true);
    setTabData(addTab(title), identifier);
    selected_ = itemInFront();
    // A bar that is not shown yet does not tell its layout that it has grown.
    updateGeometry();
}

TabViewItem TabView::selectedTabViewItem() const {
    return selected_;
}

void TabView::selectTabViewItem(const QString &identifier) {
    for (int index = 0; index < count(); ++index)
        if (tabData(index).toString() == identifier)
            setCurrentIndex(index);
}

TabViewItem TabView::itemInFront() const {
    return {tabData(currentIndex()).toString()};
}

// The bar tells of a change only when it has happened, so the selection follows it in two steps.
void TabView::followBar() {
    if (adding_ || itemInFront() == selected_)
        return;
    emit aboutToSelectTabViewItem(itemInFront());
    // Whoever heard of it may have selected something else.
    if (itemInFront() == selected_)
        return;
    selected_ = itemInFront();
    emit didSelectTabViewItem(selected_);
    // While it has the focus, assistive technology follows it by itself.
    if (isVisible() && !hasFocus())
        Announcement::make(tabText(currentIndex()), this);
}
