// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

class CellEditor;
class QAction;

/// Opens the grid's cells for typing. It paints nothing: the view paints its rows itself.
class GridDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit GridDelegate(QObject *parent);

    /// The editor that was opened last, as long as it exists.
    CellEditor *lastEditor() const { return editor_; }

    /// The choice whether two digits end an entry that a key has opened.
    QAction *moveOnAction() const { return moveOn_; }

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

signals:
    /// An editor was made for a cell that may take an entry; characters take none.
    void entryBegins() const;
    /// A changed entry is handed to the model next.
    void entryEnds() const;

protected:
    /// Ends an entry at the very key press of Enter: the toolkit would do so later, and keys that
    /// were pressed meanwhile would land in the entry that is over.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Ends the entry that is typed by carrying it out.
    void takeEntry();

    QAction *moveOn_;
    mutable QPointer<CellEditor> editor_;
};
