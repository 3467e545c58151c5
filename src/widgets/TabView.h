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
/// no pages: what a selection means is up to who listens.
class TabView final : public QTabBar {
    Q_OBJECT

public:
    explicit TabView(QWidget *parent = nullptr);

    /// Adds an item at the end. The first item is selected; nothing is emitted for that.
    /// \a identifier must not be empty nor be there already.
    void addTabViewItem(const QString &identifier, const QString &title);
    /// The selected item; its identifier is empty if there are no items.
    TabViewItem selectedTabViewItem() const;
    /// Selects the item \a identifier; an unknown one leaves the selection as it is.
    void selectTabViewItem(const QString &identifier);

signals:
    /// The user or the program selected another item.
    void didSelectTabViewItem(const TabViewItem &item);

private:
    void noteSelection(int index);

    bool adding_ = false;
};
