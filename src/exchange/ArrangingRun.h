// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/TurnedWork.h"
#include "files/ByteBuffer.h"
#include "inspect/ImageFacts.h"
#include "orders/Rearranging.h"

#include <QObject>

#include <optional>

/// Arranges bytes and counts the checksums of what comes in and goes out, on turns of the event
/// loop that are shorter than a frame.
class ArrangingRun final : public QObject {
    Q_OBJECT

public:
    /// What comes in: \a range of \a bytes, which are not null. start() must be called again when
    /// they change.
    struct Source {
        ByteBuffer bytes;
        ByteRange range;
    };

    /// What came of it.
    struct Outcome {
        QList<quint32> sourceChecksums; ///< CRC-32
        QList<QByteArray> parts;        ///< none if a whole source comes out as it stands
        QList<quint32> checksums;       ///< CRC-32 of the parts
    };

    explicit ArrangingRun(QObject *parent = nullptr);

    /// Begins with \a sources, which it must be possible to arrange, instead of what it did
    /// before. done() or outOfMemory() follows.
    void start(const QList<Source> &sources, const Arrangement &arrangement);
    /// Forgets what it did.
    void stop();
    bool isRunning() const { return work_.isRunning(); }
    /// What came of it; null before it is done.
    const Outcome *outcome() const { return isDone_ ? &outcome_ : nullptr; }

signals:
    void done();
    /// There is not enough memory for what goes out.
    void outOfMemory();

private:
    bool isWholeAsItStands() const;
    bool advance();
    bool count(const QList<QByteArrayView> &parts, QList<quint32> &checksums);

    QList<Source> sources_;
    Arrangement arrangement_;
    std::optional<Rearranging> rearranging_;
    ImageFactsReader facts_; ///< of the part that is being counted
    Outcome outcome_;
    bool isDone_ = false;
    TurnedWork work_;
};
