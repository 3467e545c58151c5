// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/CopyAhead.h"

#include "base/HugePages.h"
#include "base/TurnOfWork.h"

#include <algorithm>
#include <cstring>
#include <new>

CopyAhead::CopyAhead(QObject *parent)
    : QObject(parent), work_([this] { return !isStillShared() || copyPiece(); }) {
    connect(&work_, &TurnedWork::done, this, &CopyAhead::take);
}

void CopyAhead::begin(const ByteBuffer &image) {
    giveUp();
    if (lengthOf(image) < minSize || image->isDetached())
        return;
    try {
        copy_ = uninitializedBytes(image->size());
    } catch (const std::bad_alloc &) {
        return;
    }
    image_ = image;
    shared_ = *image;
    work_.start();
}

void CopyAhead::finish() {
    if (!work_.isRunning())
        return;
    while (isStillShared() && !copyPiece()) {
    }
    take();
}

// False as soon as the image has been changed, made anew or given up.
bool CopyAhead::isStillShared() const {
    const ByteBuffer image = image_.lock();
    return image && image->constData() == shared_.constData() && image->size() == shared_.size();
}

// True if there is nothing left to copy.
bool CopyAhead::copyPiece() {
    const qsizetype count = std::min(bytesInStep, shared_.size() - copied_);
    std::memcpy(copy_.data() + copied_, shared_.constData() + copied_, std::size_t(count));
    copied_ += count;
    return copied_ == shared_.size();
}

void CopyAhead::take() {
    if (const ByteBuffer image = image_.lock(); image && isStillShared())
        image->swap(copy_);
    giveUp();
}

void CopyAhead::giveUp() {
    work_.stop();
    image_.reset();
    shared_ = {};
    copy_ = {};
    copied_ = 0;
}
