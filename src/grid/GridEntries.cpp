// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridEntries.h"

#include "grid/EntryEnd.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "widgets/EnterKey.h"

#include <QAction>
#include <QKeyEvent>

GridEntries::GridEntries(GridView &view)
    : QStyledItemDelegate(&view),
      view_(view),
      moveOn_(new QAction(tr("&Move on after two digits"), this)) {
    moveOn_->setCheckable(true);
}

bool GridEntries::commit() {
    const bool wasOpen = editor_;
    if (wasOpen)
        carryOut(NoHint);
    return wasOpen;
}

void GridEntries::carryOut(EndEditHint hint) {
    CellEditor *editor = editor_;
    emit commitData(editor);
    emit closeEditor(editor, hint);
}

void GridEntries::endEntry() {
    carryOut(SubmitModelCache);
}

void GridEntries::noteOpenedByKey(const QModelIndex &index) {
    if (CellEditor *editor = editor_; editor && index.column() != charactersColumn)
        editor->setEndsWithTwoDigits(moveOn_->isChecked());
}

void GridEntries::noteEdit(const CellEdit &edit) {
    if (CellEditor *editor = editor_)
        editor->setEdit(edit);
}

QModelIndex GridEntries::cellAfter(QWidget *editor, EndEditHint hint) const {
    const auto *field = qobject_cast<CellEditor *>(editor);
    const QModelIndex cell = view_.currentIndex();
    return field && cell.isValid() ? cellAfterEntry(*view_.gridModel(), cell, *field, hint)
                                   : QModelIndex();
}

void GridEntries::goOnTo(const QModelIndex &next) {
    emit entryCloses();
    if (next.isValid())
        view_.moveTo(next);
}

QWidget *GridEntries::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                   const QModelIndex &index) const {
    editor_ = new CellEditor(parent);
    editor_->setAccessibleName(tr("Entry"));
    editor_->setAccessibleDescription(
        index.model()
            ->headerData(index.column(), Qt::Horizontal, Qt::AccessibleTextRole)
            .toString());
    connect(editor_.data(), &CellEditor::twoDigitsTyped, this, &GridEntries::endEntry);
    if (index.column() != charactersColumn)
        emit entryBegins();
    return editor_;
}

// The toolkit deletes it later; from now on it is no longer open.
void GridEntries::destroyEditor(QWidget *editor, const QModelIndex &index) const {
    if (editor == editor_)
        editor_ = nullptr;
    QStyledItemDelegate::destroyEditor(editor, index);
}

void GridEntries::setEditorData(QWidget *editor, const QModelIndex &index) const {
    // While an entry is typed the contents may change below it; the entry stays the user's.
    auto *field = static_cast<CellEditor *>(editor);
    if (!field->isChanged())
        field->open(index.data(Qt::EditRole).toString());
}

void GridEntries::setModelData(QWidget *editor, QAbstractItemModel *model,
                               const QModelIndex &index) const {
    auto *field = static_cast<CellEditor *>(editor);
    if (!field->isChanged())
        return;
    const QString entry = field->text();
    field->setCommitted();
    emit entryEnds();
    model->setData(index, entry, Qt::EditRole);
}

void GridEntries::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                       const QModelIndex &) const {
    // A cell scrolled far away may lie beyond what a widget's position can tell.
    QRect cell = option.rect;
    if (!cell.intersects(editor->parentWidget()->rect()))
        cell.moveBottom(-1);
    static_cast<CellEditor *>(editor)->placeAt(cell);
}

bool GridEntries::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::KeyPress && watched == editor_) {
        if (isEnter(*static_cast<const QKeyEvent *>(event))) {
            endEntry();
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}
