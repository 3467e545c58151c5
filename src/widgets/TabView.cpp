#include "widgets/TabView.h"

#include <QScopedValueRollback>

TabView::TabView(QWidget *parent) : QTabBar(parent) {
    setExpanding(false);
    connect(this, &QTabBar::currentChanged, this, &TabView::noteSelection);
}

void TabView::addTabViewItem(const QString &identifier, const QString &title) {
    const QScopedValueRollback guard(adding_, true);
    setTabData(addTab(title), identifier);
    // A bar that is not shown yet does not tell its layout that it has grown.
    updateGeometry();
}

TabViewItem TabView::selectedTabViewItem() const {
    return {tabData(currentIndex()).toString()};
}

void TabView::selectTabViewItem(const QString &identifier) {
    for (int index = 0; index < count(); ++index)
        if (tabData(index).toString() == identifier)
            setCurrentIndex(index);
}

void TabView::noteSelection(int index) {
    if (!adding_ && index >= 0)
        emit didSelectTabViewItem(selectedTabViewItem());
}
