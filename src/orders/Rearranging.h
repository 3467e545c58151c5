// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "orders/Arrangement.h"

#include <QByteArray>
#include <QByteArrayView>

#include <utility>

/// Arranges bytes in as many turns as the caller likes, in one pass.
class Rearranging {
public:
    /// Of parts of \a lengths, in bytes, which it must be possible to arrange. Throws
    /// std::bad_alloc if there is not enough memory for what goes out.
    Rearranging(const Arrangement &arrangement, const QList<qint64> &lengths);

    /// Goes on by at most \a max bytes, rounded up to a few, of \a parts, which must be the same at
    /// each call. True once all is arranged.
    bool advance(const QList<QByteArrayView> &parts, qsizetype max);

    /// What goes out, once all is arranged.
    QList<QByteArray> takeParts() { return std::exchange(parts_, {}); }

private:
    void arrange(const QList<QByteArrayView> &parts, qsizetype size);
    void repeat(qsizetype max);

    Arrangement arrangement_;
    qsizetype length_;      ///< of the whole
    qsizetype splitLength_; ///< of each part that goes out, before it is repeated
    qsizetype at_ = 0;      ///< in the whole
    qsizetype repeated_;    ///< how much of each part is there, once all is split
    QByteArray slice_;      ///< of the whole
    QList<QByteArray> parts_;
};

/// What becomes of \a parts, by the same rules, at once.
QList<QByteArray> rearranged(const Arrangement &arrangement, const QList<QByteArrayView> &parts);
