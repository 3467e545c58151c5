// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/SideBySide.h"

#include "grid/GridView.h"

#include <QEvent>
#include <QItemSelectionModel>
#include <QLabel>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <utility>

namespace {

/// Moves the cursor of \a view to the cell that is where \a index is in the other view.
void moveAlong(GridView &view, const QModelIndex &index) {
    const QModelIndex same = view.model()->index(index.row(), index.column());
    if (same.isValid() && same != view.currentIndex())
        view.moveTo(same);
}

} // namespace

SideBySide::SideBySide(const Views &views, Source source, QObject *parent)
    : QObject(parent), views_(views), source_(std::move(source)) {
    action_.setText(tr("O&ther image beside, where there is room"));
    action_.setCheckable(true);
    action_.setChecked(true);
    connect(&action_, &QAction::toggled, this, &SideBySide::refresh);
    views_.beside.setSource(image_);
    views_.beside.hide();
    views_.heading.hide();
    views_.grid.parentWidget()->installEventFilter(this);
    views_.grid.installEventFilter(this);
    views_.beside.installEventFilter(this);
    followScrolling();
    followCursor();
}

void SideBySide::lead(const std::function<void()> &work) {
    if (leading_ || views_.beside.isHidden())
        return;
    const QScopedValueRollback leading(leading_, true);
    work();
}

// The images may be of different lengths: each goes as far along as it can.
void SideBySide::followScrolling() {
    const auto together = [this](GridView &one, GridView &other) {
        connect(one.verticalScrollBar(), &QScrollBar::valueChanged, this, [this, &other](int row) {
            lead([&other, row] { other.verticalScrollBar()->setValue(row); });
        });
    };
    together(views_.grid, views_.beside);
    together(views_.beside, views_.grid);
}

void SideBySide::followCursor() {
    const auto together = [this](GridView &one, GridView &other) {
        connect(one.selectionModel(), &QItemSelectionModel::currentChanged, this,
                [this, &other](const QModelIndex &index) {
                    if (index.isValid())
                        lead([&other, index] { moveAlong(other, index); });
                });
    };
    together(views_.grid, views_.beside);
    together(views_.beside, views_.grid);
}

bool SideBySide::hasRoom() const {
    // What lies between them is no room, or they would come and go at the very edge.
    constexpr int between = 20;
    const int needed = 2 * views_.grid.sizeHint().width();
    if (views_.beside.isHidden())
        return views_.grid.width() >= needed + between;
    return views_.grid.width() + views_.beside.width() >= needed;
}

void SideBySide::refresh() {
    const std::optional<OtherImage> other =
        action_.isChecked() ? source_() : std::optional<OtherImage>();
    const bool isShown = other && hasRoom();
    if (isShown)
        take(*other);
    views_.heading.setVisible(isShown);
    views_.beside.setVisible(isShown);
    if (!isShown && known_.bytes()) {
        // What is not shown is not kept.
        known_ = {};
        image_.setBytes(nullptr);
    }
}

void SideBySide::take(const OtherImage &other) {
    views_.heading.setText(other.title);
    views_.beside.setAccessibleName(other.title);
    if (known_.is(other.bytes, other.revision))
        return;
    known_ = {other.bytes, other.revision};
    image_.setBytes(other.bytes);
    const QScopedValueRollback leading(leading_, true);
    views_.beside.reloadData();
    views_.beside.verticalScrollBar()->setValue(views_.grid.verticalScrollBar()->value());
}

// The heading begins where its grid does.
void SideBySide::alignHeading() {
    const QWidget *both = views_.grid.parentWidget();
    const QRect beside = views_.beside.geometry();
    views_.heading.setFixedWidth(both->isRightToLeft() ? beside.right() + 1
                                                       : both->width() - beside.left());
}

bool SideBySide::eventFilter(QObject *watched, QEvent *event) {
    if (watched == &views_.grid && event->type() == QEvent::FontChange)
        views_.beside.setFont(views_.grid.font());
    if (watched == &views_.beside) {
        if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
            alignHeading();
        return QObject::eventFilter(watched, event);
    }
    if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange)
        QMetaObject::invokeMethod(this, &SideBySide::refresh, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}
