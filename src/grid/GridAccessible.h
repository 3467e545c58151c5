// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QModelIndex>
#include <QQueue>

class GridView;

/// The grid as assistive technology sees it: a table whose children are its cells row by row,
/// then the titles of the columns and, while an entry is typed, the area that holds the editor.
///
/// A cell stands for a place in the table and reads the contents when it is asked, so it stays
/// good across reloads. Cells are made when they are asked for, and the oldest go when there are
/// many; changes are announced for those that there are.
class GridAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit GridAccessible(GridView *view);
    ~GridAccessible() override;
    GridAccessible(const GridAccessible &) = delete;
    GridAccessible &operator=(const GridAccessible &) = delete;

    void *interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override;
    int rowCount() const override;
    int columnCount() const override;
    QString columnDescription(int column) const override;
    /// The address of a row of bytes, the name of a row of results.
    QString rowDescription(int row) const override;

    int selectedCellCount() const override;
    /// The first of the selected cells; a selection may be larger than any list.
    QList<QAccessibleInterface *> selectedCells() const override;
    /// Always 0: columns are not selected as such.
    int selectedColumnCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    int selectedRowCount() const override;
    /// The first of the selected rows.
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int column) override;
    bool unselectRow(int row) override;
    bool unselectColumn(int) override { return false; }

    void modelChange(QAccessibleTableModelChangeEvent *event) override;

    /// The title of \a column.
    QAccessibleInterface *headerCell(int column) const;

private:
    /// A cell that was handed out, and the name that was told of it last.
    struct HandedOut {
        QAccessible::Id id = 0;
        QString name;
    };

    GridView *view() const;
    bool isEditing() const;
    QAccessibleInterface *placed(int row, int column) const;
    QList<QAccessibleInterface *> cellsOfBlock() const;
    void dropOldest() const;
    bool changeRowSelection(int row, bool selected);

    mutable QHash<qint64, HandedOut> handedOut_;
    mutable QQueue<qint64> order_;
};

/// Tells assistive technology that the cursor has come to \a cell.
void tellCursor(GridView &view, const QModelIndex &cell);
/// Tells assistive technology where the cursor of \a view is, once it has heard that the view has
/// the focus: the toolkit tells of the table alone.
void tellCursorSoon(GridView &view);
/// Tells assistive technology that other rows or bytes are selected.
void tellSelection(GridView &view);

/// Makes every GridView accessible as a table. To be called once, before the first window.
void installGridAccessibility();
