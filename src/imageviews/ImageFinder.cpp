// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/ImageFinder.h"

#include "base/TurnOfWork.h"
#include "base/Units.h"
#include "grid/GridSteps.h"
#include "grid/GridView.h"

#include <algorithm>
#include <utility>

namespace {

using Kind = HitAnswer::Kind;
using Wrap = FindState::Wrap;

} // namespace

ImageFinder::ImageFinder(QObject *parent) : QObject(parent) {
    connect(&turns_, &QTimer::timeout, this, &ImageFinder::turn);
}

void ImageFinder::follow(GridView &grid, Source shown) {
    grid_ = &grid;
    shown_ = std::move(shown);
    grid.addMarks(*this);
    connect(grid.selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ImageFinder::lookOn);
}

void ImageFinder::setPattern(const BytePattern &pattern) {
    if (pattern == index_.pattern())
        return;
    index_ = HitIndex(pattern);
    beginAnew();
    grid_->refreshMarks();
}

void ImageFinder::beginAnew() {
    index_ = HitIndex(index_.pattern());
    wanted_.reset();
    wrap_ = Wrap::None;
    lookOn();
}

// All marks are drawn anew, since a hit may begin or end in other rows.
void ImageFinder::forget(ByteRange changed) {
    index_.forget(changed.offset, changed.end());
    if (!index_.pattern().isEmpty())
        grid_->refreshMarks();
    lookOn();
}

void ImageFinder::lookOn() {
    if (!turns_.isActive())
        turns_.start(0);
}

void ImageFinder::turn() {
    const ByteBuffer bytes = this->bytes();
    const QByteArrayView image = viewOf(bytes);
    const bool isCounted =
        index_.pattern().isEmpty() || worksForATurn([&] { return index_.advance(image, 1); });
    takeStep(image);
    if (isCounted)
        turns_.stop();
    emit changed();
}

void ImageFinder::step(Direction direction) {
    if (index_.pattern().isEmpty())
        return;
    wanted_ = direction;
    const ByteBuffer bytes = this->bytes();
    takeStep(viewOf(bytes));
    lookOn();
}

void ImageFinder::takeStep(QByteArrayView image) {
    if (!wanted_)
        return;
    const Step step = *wanted_ == Direction::Next ? lookForNext(image) : lookForPrevious(image);
    if (step.answer.kind == Kind::NotYet)
        return;
    wanted_.reset();
    if (step.answer.kind == Kind::Hit) {
        wrap_ = step.wrap;
        wrappedTo_ = step.answer.offset;
        grid_->showAddress(step.answer.offset);
    }
    emit stepped();
}

ImageFinder::Step ImageFinder::lookForNext(QByteArrayView image) const {
    const auto at = cursor();
    const HitAnswer ahead = index_.firstFrom(image, at ? *at + 1 : startOfCursorRow());
    if (ahead.kind != Kind::None)
        return {ahead};
    return {index_.firstFrom(image, 0), Wrap::FromBeginning};
}

ImageFinder::Step ImageFinder::lookForPrevious(QByteArrayView image) const {
    const HitAnswer before = index_.lastBefore(image, cursor().value_or(startOfCursorRow()));
    if (before.kind != Kind::None)
        return {before};
    return {index_.lastBefore(image, image.size()), Wrap::FromEnd};
}

FindState ImageFinder::state() const {
    FindState state;
    if (index_.pattern().isEmpty())
        return state;
    const ByteBuffer bytes = this->bytes();
    const QByteArrayView image = viewOf(bytes);
    if (grid_->gridModel()->heading() != GridHeading::Bytes)
        state.where = FindState::Where::Results;
    else if (image.isEmpty())
        state.where = FindState::Where::NoBytes;
    else
        state.where = FindState::Where::Image;
    state.hits = index_.total();
    const auto at = cursor();
    if (!at)
        return state;
    if (*at == wrappedTo_)
        state.wrap = wrap_;
    if (state.hits && firstHit(image, index_.pattern(), *at, *at + 1))
        state.number = index_.hitsBefore(image, *at) + 1;
    return state;
}

ByteBuffer ImageFinder::bytes() const {
    const bool areShown = grid_->gridModel()->heading() == GridHeading::Bytes;
    return areShown ? shown_() : nullptr;
}

std::optional<qint64> ImageFinder::cursor() const {
    return byteOfCell(grid_->currentIndex());
}

qint64 ImageFinder::startOfCursorRow() const {
    return std::max<qint64>(grid_->currentIndex().row(), 0) * bytesInRow;
}

ByteMark ImageFinder::markAt(qint64 offset) const {
    ByteMark mark;
    if (!index_.pattern().isEmpty()) {
        const ByteBuffer bytes = this->bytes();
        mark.found = isPartOfHit(viewOf(bytes), index_.pattern(), offset);
    }
    return mark;
}

QString ImageFinder::wordsAt(qint64 offset) const {
    return markAt(offset).found ? tr("found") : QString();
}
