// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridDelegate.h"

#include "grid/CellEditor.h"
#include "grid/GridColumns.h"
#include "grid/GridModel.h"

#include <QAction>
#include <QKeyEvent>

GridDelegate::GridDelegate(QObject *parent)
    : QStyledItemDelegate(parent), moveOn_(new QAction(tr("&Move on after two digits"), this)) {
    moveOn_->setCheckable(true);
}

QWidget *GridDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                    const QModelIndex &index) const {
    editor_ = new CellEditor(parent);
    editor_->setAccessibleName(tr("Entry"));
    editor_->setAccessibleDescription(
        index.model()
            ->headerData(index.column(), Qt::Horizontal, Qt::AccessibleTextRole)
            .toString());
    connect(editor_.data(), &CellEditor::twoDigitsTyped, this, &GridDelegate::takeEntry);
    if (index.column() != charactersColumn)
        emit entryBegins();
    return editor_;
}

void GridDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const {
    // While an entry is typed the contents may change below it; the entry stays the user's.
    auto *field = static_cast<CellEditor *>(editor);
    if (!field->isChanged())
        field->open(index.data(Qt::EditRole).toString());
}

void GridDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                const QModelIndex &index) const {
    auto *field = static_cast<CellEditor *>(editor);
    if (!field->isChanged())
        return;
    const QString entry = field->text();
    field->setCommitted();
    emit entryEnds();
    model->setData(index, entry, Qt::EditRole);
}

void GridDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                        const QModelIndex &) const {
    // A cell scrolled far away may lie beyond what a widget's position can tell.
    QRect cell = option.rect;
    if (!cell.intersects(editor->parentWidget()->rect()))
        cell.moveBottom(-1);
    static_cast<CellEditor *>(editor)->placeAt(cell);
}

bool GridDelegate::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::KeyPress && watched == editor_) {
        const int key = static_cast<const QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            takeEntry();
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

void GridDelegate::takeEntry() {
    CellEditor *editor = editor_;
    emit commitData(editor);
    emit closeEditor(editor, SubmitModelCache);
}
