// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QTabBar>

/// An item of a TabView.
struct TabViewItem {
    /// What tells the item apart; empty if there is no item.
    QString identifier;

    bool operator==(const TabViewItem &) const = default;
};

Q_DECLARE_METATYPE(TabViewItem)

/// A row of tabs whose items are told apart by identifiers, never by position or title. It shows
/// no pages: what a selection means is up to whoever listens.
///
/// Whichever way another tab comes to the front (mouse, wheel, keyboard, assistive technology or
/// the program), whoever has something to finish for the old item is told while that is still the
/// selected one. Assistive technology speaks the new item's title, wherever the focus is.
class TabView final : public QTabBar {
    Q_OBJECT

public:
    explicit TabView(QWidget *parent = nullptr);

    /// Adds an item at the end. The first item is selected; nothing is emitted for that.
    /// \a identifier must not be empty nor be there already.
    void addTabViewItem(const QString &identifier, const QString &title);
    /// The selected item; its identifier is empty if there are no items. While
    /// aboutToSelectTabViewItem() is heard, it is the item that is left.
    TabViewItem selectedTabViewItem() const;
    /// Selects the item \a identifier; an unknown one leaves the selection as it is.
    void selectTabViewItem(const QString &identifier);

signals:
    /// \a item will be selected next; selectedTabViewItem() is still the one before.
    void aboutToSelectTabViewItem(const TabViewItem &item);
    /// The user or the program selected another item.
    void didSelectTabViewItem(const TabViewItem &item);

private:
    TabViewItem itemInFront() const;
    void followBar();

    TabViewItem selected_;
    bool adding_ = false;
};
