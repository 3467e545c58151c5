// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QModelIndex>

class GridView;

/// A place of the grid that assistive technology may hold on to: a cell, or the title of a column
/// where the row is headerRow. It names its contents of the moment. It belongs to the grid's
/// GridAccessible and goes with it.
class GridAccessiblePlace : public QAccessibleInterface {
public:
    static constexpr int headerRow = -1;

    GridAccessiblePlace(GridView &view, int row, int column);

    int row() const { return row_; }
    int column() const { return column_; }

    QObject *object() const override { return nullptr; }
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void setText(QAccessible::Text, const QString &) override {}

protected:
    ~GridAccessiblePlace() override = default;
    GridView &view() const { return view_; }

private:
    GridView &view_;
    int row_;
    int column_;
};

/// The title of a column.
class GridAccessibleTitle final : public GridAccessiblePlace {
public:
    GridAccessibleTitle(GridView &view, int column);

    bool isValid() const override;
    QString text(QAccessible::Text text) const override;
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::ColumnHeader; }
    QAccessible::State state() const override;
};

/// A cell. Its name is what it shows; a failure, or that there is no byte, is its description.
/// Pressing it opens it for typing where it may be edited.
class GridAccessibleCell final : public GridAccessiblePlace,
                                 public QAccessibleTableCellInterface,
                                 public QAccessibleActionInterface {
public:
    using GridAccessiblePlace::GridAccessiblePlace;

    void *interface_cast(QAccessible::InterfaceType type) override;
    bool isValid() const override;
    QString text(QAccessible::Text text) const override;
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QAccessible::State state() const override;

    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    int columnIndex() const override { return column(); }
    int rowIndex() const override { return row(); }
    QList<QAccessibleInterface *> columnHeaderCells() const override;
    /// The first cell of the row, which holds its address.
    QList<QAccessibleInterface *> rowHeaderCells() const override;
    bool isSelected() const override;
    QAccessibleInterface *table() const override { return parent(); }

    QStringList actionNames() const override;
    void doAction(const QString &action) override;
    QStringList keyBindingsForAction(const QString &action) const override;

private:
    QModelIndex index() const;
    bool isEditable() const;
};
