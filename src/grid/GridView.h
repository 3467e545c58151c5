// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "grid/CellEdit.h"
#include "grid/GridEntries.h"
#include "grid/GridHint.h"
#include "grid/GridModel.h"
#include "grid/GridRows.h"
#include "grid/GridSelection.h"

#include <QAbstractItemView>

class GridCopying;
class GridHeader;
class QHeaderView;

/// The window's grid: a hex dump or a table of logic test results of any length. Rows have one
/// height and are scrolled whole, columns pixel by pixel; nothing is kept for a row, so 64
/// million rows open as fast as one.
///
/// The cursor is a cell. Rows are selected, or a block of bytes that follow each other; never both.
/// Typing, F2 and a double-click open a cell that the source allows to be edited. The grid always
/// reads from left to right, as hex dumps do in every language.
class GridView : public QAbstractItemView {
    Q_OBJECT

public:
    /// What opens a cell, where its source allows it.
    static constexpr EditTriggers usualEditTriggers{DoubleClicked | EditKeyPressed | AnyKeyPressed};

    explicit GridView(QWidget *parent = nullptr);

    /// Shows what \a source has, from now on and at every reloadData(). It must live longer than
    /// the view, and is asked with the view as the table.
    void setSource(GridSource &source);
    /// Null before setSource().
    GridModel *gridModel() const { return model_; }
    /// Marks the bytes that \a marks tells as well; they must outlive the view. Does nothing before
    /// setSource().
    void addMarks(const GridMarks &marks);
    /// Draws the marks anew.
    void refreshMarks();
    /// The header above the columns.
    QHeaderView *header() const;

    /// The height of every row, in pixels.
    int rowHeight() const { return rowHeight_; }
    /// Where the rows stand at present.
    GridRows shownRows() const;

    /// Titles the columns by \a heading.
    void setHeading(GridHeading heading);

    /// What is said while the source has nothing to show.
    GridHint &hint() { return hint_; }

    /// Shows the source's contents anew. Scroll position, cursor and selection stay where the
    /// rows still exist.
    void reloadData();
    /// Shows the bytes of \a changed anew, and rows that were added; nothing moves. If there are
    /// fewer rows than before, everything is shown anew.
    void showChange(ByteRange changed);
    /// Shows the bytes of \a changed likewise, all that \a edit has just changed. When Enter or Tab
    /// leaves the cell that it was typed into, the cursor moves on past the bytes written; after a
    /// rejected entry it stays.
    void showEdit(const CellEdit &edit, ByteRange changed);

    /// Makes the cell at \a index the cursor and its row the selection.
    void moveTo(const QModelIndex &index);
    /// Moves the cursor to the byte at \a offset and brings it into view. False, with nothing
    /// changed, if there is no such row.
    bool showAddress(qint64 offset);

    /// The bytes and rows that are selected.
    GridSelection &selection() const { return *selection_; }

    /// What is typed into cells.
    GridEntries &entries() const { return *entries_; }
    using QAbstractItemView::edit;

    /// What puts the selection on the clipboard.
    GridCopying &copying() { return *copying_; }

    QRect visualRect(const QModelIndex &index) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    QModelIndex indexAt(const QPoint &point) const override;
    int sizeHintForColumn(int column) const override;
    int sizeHintForRow(int row) const override;
    /// Does nothing: a search by typing would walk through every row.
    void keyboardSearch(const QString &search) override;
    void setModel(QAbstractItemModel *model) override;
    /// Selects all bytes; all rows where there are none.
    void selectAll() override;

    /// All columns and a page of rows.
    QSize sizeHint() const override;
    /// A few rows, however little of their columns.
    QSize minimumSizeHint() const override;
    QSize viewportSizeHint() const override;

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    int horizontalOffset() const override;
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex &index) const override;
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) override;
    QItemSelectionModel::SelectionFlags
    selectionCommand(const QModelIndex &index, const QEvent *event = nullptr) const override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;

    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QList<int> &roles = {}) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;

    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int rows() const;
    void applyFont();

    GridModel *model_ = nullptr;
    GridHeader *header_;
    GridEntries *entries_;
    GridSelection *selection_;
    GridCopying *copying_;
    GridHint hint_{*this};
    int rowHeight_ = 1;
    bool layingOut_ = false;
};
