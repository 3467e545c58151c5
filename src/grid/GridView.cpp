// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridView.h"

#include "grid/GridAccessible.h"
#include "grid/GridCopying.h"
#include "grid/GridDrag.h"
#include "grid/GridEntries.h"
#include "grid/GridHeader.h"
#include "grid/GridPainter.h"
#include "grid/GridSelection.h"
#include "grid/GridSteps.h"
#include "widgets/FixedFont.h"
#include "widgets/ViewPlace.h"

#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <utility>

GridView::GridView(QWidget *parent)
    : QAbstractItemView(parent),
      header_(new GridHeader(this)),
      entries_(new GridEntries(*this)),
      selection_(new GridSelection(*this)),
      copying_(new GridCopying(*this)) {
    setLayoutDirection(Qt::LeftToRight);
    setItemDelegate(entries_);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(usualEditTriggers);
    setAlternatingRowColors(true);
    // Tab goes on to the next control: the way through millions of cells has no end.
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setFont(fixedFont());
    connect(header_, &QHeaderView::sectionResized, this, [this] {
        updateGeometries();
        viewport()->update();
    });
    new GridDrag(*this, *selection_);
    connect(selection_, &GridSelection::blockChanged, this, [this] { tellSelection(*this); });
    applyFont();
}

void GridView::setSource(GridSource &source) {
    delete std::exchange(model_, nullptr);
    model_ = new GridModel(source, this, this);
    model_->reloadData();
    setModel(model_);
}

void GridView::setModel(QAbstractItemModel *model) {
    QAbstractItemView::setModel(model);
    header_->setModel(model);
}

QHeaderView *GridView::header() const {
    return header_;
}

void GridView::setHeading(GridHeading heading) {
    if (model_ && heading != model_->heading()) {
        selection_->end();
        model_->setHeading(heading);
    }
    viewport()->update();
}

void GridView::reloadData() {
    if (!model_)
        return;
    const ViewPlace before = placeOf(*this);
    const ByteBlock selected = selection_->block();
    model_->reloadData();
    updateGeometries();
    returnTo(before, *this);
    selection_->restore(selected);
    viewport()->update();
}

void GridView::showChange(ByteRange changed) {
    if (!model_)
        return;
    if (!model_->showChange(changed))
        return reloadData();
    // The bytes shown may be fewer in as many rows.
    selection_->restore(selection_->block());
}

void GridView::showEdit(const CellEdit &edit, ByteRange changed) {
    showChange(changed);
    entries_->noteEdit(edit);
}

bool GridView::showAddress(qint64 offset) {
    if (!model_ || model_->heading() != GridHeading::Bytes)
        return false;
    const QModelIndex cell = cellOfByte(*model_, offset);
    if (!cell.isValid())
        return false;
    moveTo(cell);
    scrollTo(cell, PositionAtCenter);
    return true;
}

void GridView::moveTo(const QModelIndex &index) {
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                 QItemSelectionModel::Rows);
}

void GridView::selectAll() {
    if (!selection_->selectAll())
        QAbstractItemView::selectAll();
}

bool GridView::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) {
    const bool opens = QAbstractItemView::edit(index, trigger, event);
    if (opens && trigger == AnyKeyPressed)
        entries_->noteOpenedByKey(index);
    return opens;
}

void GridView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) {
    const QModelIndex next = entries_->cellAfter(editor, hint);
    QAbstractItemView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    entries_->goOnTo(next);
}

void GridView::currentChanged(const QModelIndex &current, const QModelIndex &previous) {
    QAbstractItemView::currentChanged(current, previous);
    viewport()->update();
    selection_->takeCursor();
    if (hasFocus() && current.isValid())
        tellCursor(*this, current);
}

void GridView::focusInEvent(QFocusEvent *event) {
    QAbstractItemView::focusInEvent(event);
    tellCursorSoon(*this);
}

void GridView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) {
    QAbstractItemView::selectionChanged(selected, deselected);
    selection_->takeRows();
    // A block tells of itself, and takes the place of rows.
    if (!selection_->hasBlock())
        tellSelection(*this);
}

void GridView::paintEvent(QPaintEvent *event) {
    if (!model_)
        return;
    QPainter painter(viewport());
    const QRect area = event->rect();
    const GridPainter rowPainter(*this, painter);
    const GridRows shown = shownRows();
    const qint64 last = std::min<qint64>(shown.at(area.bottom()), rows() - 1);
    for (qint64 row = std::max<qint64>(shown.at(area.top()), 0); row <= last; ++row)
        rowPainter.paintRow(int(row), shown.edgeOf(row), area);
    hint_.paint(painter);
}

void GridView::addMarks(const GridMarks &marks) {
    if (!model_)
        return;
    model_->addMarks(marks);
    refreshMarks();
}

void GridView::refreshMarks() {
    viewport()->update();
}

void GridView::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Copy)) {
        copying_->copy();
        event->accept();
        return;
    }
    if (!selection_->press(*event))
        QAbstractItemView::keyPressEvent(event);
}

void GridView::keyboardSearch(const QString &) {}

void GridView::changeEvent(QEvent *event) {
    QAbstractItemView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        applyFont();
}
