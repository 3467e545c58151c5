// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/ImageComparison.h"

#include "base/TurnOfWork.h"
#include "image/BytesAsText.h"

#include <utility>

ImageComparison::ImageComparison(Source source, QObject *parent)
    : QObject(parent), source_(std::move(source)) {
    connect(&turns_, &QTimer::timeout, this, &ImageComparison::turn);
}

bool ImageComparison::isTheSame(const ComparedImages &images) const {
    return read_.is(images.read, images.revision) && toBurn_.is(images.toBurn, images.revision);
}

void ImageComparison::refresh() {
    const ComparedImages images = source_();
    const bool isSame = isTheSame(images);
    if (isSame && images.shown == shown_)
        return;
    shown_ = images.shown;
    if (!isSame) {
        read_ = {images.read, images.revision};
        toBurn_ = {images.toBurn, images.revision};
        reader_ = {};
        isDone_ = false;
        turns_.start(0);
    }
    emit changed();
}

void ImageComparison::turn() {
    const ByteBuffer read = read_.bytes();
    const ByteBuffer toBurn = toBurn_.bytes();
    isDone_ = reader_.advance(viewOf(read), viewOf(toBurn), maxBytesInTurn);
    if (!isDone_)
        return;
    turns_.stop();
    emit changed();
}

bool ImageComparison::hasBoth() const {
    return lengthOf(read_.bytes()) > 0 && lengthOf(toBurn_.bytes()) > 0;
}

std::optional<ImageDifferences> ImageComparison::differences() const {
    return isDone_ && hasBoth() ? std::optional(reader_.differences()) : std::nullopt;
}

qint64 ImageComparison::extraBytes() const {
    const qint64 extra = lengthOf(read_.bytes()) - lengthOf(toBurn_.bytes());
    return shown_ == ShownTab::Read ? extra : -extra;
}

bool ImageComparison::coversAllToBurn() const {
    return lengthOf(toBurn_.bytes()) <= lengthOf(read_.bytes());
}

std::optional<qint64> ImageComparison::nextFrom(qint64 offset) const {
    const ByteBuffer read = read_.bytes();
    const ByteBuffer toBurn = toBurn_.bytes();
    return isDone_ ? reader_.next(viewOf(read), viewOf(toBurn), offset)
                   : nextDifference(viewOf(read), viewOf(toBurn), offset);
}

std::optional<qint64> ImageComparison::previousFrom(qint64 offset) const {
    const ByteBuffer read = read_.bytes();
    const ByteBuffer toBurn = toBurn_.bytes();
    return isDone_ ? reader_.previous(viewOf(read), viewOf(toBurn), offset)
                   : previousDifference(viewOf(read), viewOf(toBurn), offset);
}

std::optional<ImageComparison::Pair> ImageComparison::pairAt(qint64 offset) const {
    const ByteBuffer read = read_.bytes();
    const ByteBuffer toBurn = toBurn_.bytes();
    const bool inBoth = offset >= 0 && offset < lengthOf(read) && offset < lengthOf(toBurn);
    if (!isShown() || !inBoth)
        return std::nullopt;
    const Pair pair{quint8(viewOf(read)[offset]), quint8(viewOf(toBurn)[offset])};
    return pair.read != pair.toBurn ? std::optional(pair) : std::nullopt;
}

ByteMark ImageComparison::markAt(qint64 offset) const {
    return {.differs = pairAt(offset).has_value()};
}

// What the other image has at \a pair, told of a byte of the data read (\a ofRead) or to burn.
QString ImageComparison::words(const Pair &pair, bool ofRead) {
    const QString text = byteDigits(ofRead ? pair.toBurn : pair.read);
    return ofRead ? tr("%1 in the data to burn").arg(text)
                  : tr("%1 in the data read from the chip").arg(text);
}

QString ImageComparison::wordsAt(qint64 offset) const {
    const std::optional<Pair> pair = pairAt(offset);
    return pair ? words(*pair, shown_ == ShownTab::Read) : QString();
}

QString ImageComparison::Beside::wordsAt(qint64 offset) const {
    const std::optional<Pair> pair = comparison_.pairAt(offset);
    return pair ? words(*pair, comparison_.shown_ != ShownTab::Read) : QString();
}
