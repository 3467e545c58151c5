// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/TurnedWork.h"
#include "base/Units.h"
#include "files/ByteBuffer.h"

#include <QObject>

#include <memory>

/// Gives an image bytes of its own where it shares them with another buffer, as it does with the
/// file that it was made of. The first change would have to copy them all, which takes a third of
/// a second for 1 GiB: here that is done a little in every turn of the event loop, while the entry
/// is being typed.
class CopyAhead final : public QObject {
    Q_OBJECT

public:
    /// What has fewer bytes is copied at once by the change that needs it.
    static constexpr qsizetype minSize = 4 * mebibyte;

    explicit CopyAhead(QObject *parent = nullptr);

    /// \a image, and no other any more, is about to be changed. Nothing happens if it is small or
    /// its bytes are its own, nor where there is no memory: the change itself tells of that.
    void begin(const ByteBuffer &image);
    /// The change comes now: copies what is left.
    void finish();
    /// No change comes.
    void giveUp();

private:
    bool isStillShared() const;
    bool copyPiece();
    void take();

    std::weak_ptr<QByteArray> image_;
    QByteArray shared_;
    QByteArray copy_;
    qsizetype copied_ = 0;
    TurnedWork work_;
};
