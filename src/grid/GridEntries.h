// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "grid/CellEdit.h"
#include "grid/CellEditor.h"

#include <QPointer>
#include <QStyledItemDelegate>

class GridView;
class QAction;

/// What is typed into the cells of a grid. A cell is opened for one entry at a time; only an entry
/// that differs from what the cell opened with is handed to the model, and when it ends the cursor
/// goes on past the bytes written. It paints nothing: the view paints its rows itself.
class GridEntries final : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// The entries of \a view, which owns them.
    explicit GridEntries(GridView &view);

    /// The editor that is open at this moment, or null.
    CellEditor *editor() const { return editor_; }
    /// Commits the entry that is being typed, if there is one that differs from what its cell
    /// opened with, and closes its editor. True if an editor was open.
    bool commit();
    /// The choice whether two hexadecimal digits, typed into a cell that a key has opened, end the
    /// entry as Enter does. Off at first, whatever the user has chosen.
    QAction *moveOnAction() const { return moveOn_; }

    /// A key has opened the cell at \a index.
    void noteOpenedByKey(const QModelIndex &index);
    /// \a edit is what the source made of the entry that has just been committed, if one was.
    void noteEdit(const CellEdit &edit);
    /// The cell to go on to when the entry in \a editor ends as \a hint says; invalid if the cursor
    /// stays.
    QModelIndex cellAfter(QWidget *editor, EndEditHint hint) const;
    /// The editor has been closed; the cursor goes on to \a next if that is a cell.
    void goOnTo(const QModelIndex &next);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void destroyEditor(QWidget *editor, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

signals:
    /// A cell opens that may take an entry, as characters do not: an edit is to be expected.
    void entryBegins() const;
    /// A changed entry is handed to the model next.
    void entryEnds() const;
    /// The cell closes; nothing more comes of it.
    void entryCloses();

protected:
    /// Ends an entry at the very key press of Enter: the toolkit would do so later, and keys that
    /// were pressed meanwhile would land in the entry that is over.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void endEntry();
    void carryOut(EndEditHint hint);

    GridView &view_;
    QAction *moveOn_;
    mutable QPointer<CellEditor> editor_;
};
