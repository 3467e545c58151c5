// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/ImageComposition.h"

#include <QByteArray>

#include <memory>
#include <vector>

/// Numbers composed images, so that one can be told from another without comparing their bytes.
/// Equal numbers mean equal bytes: a composition that puts the same source at the same place among
/// the same pad bytes as an earlier one gets the number of that one.
class ImageRevisions {
public:
    /// The number of the image that \a composition made from \a inputs, 1 or more.
    quint64 ofComposition(const CompositionInputs &inputs, const Composition &composition);

private:
    /// What the bytes of a composition depend on. The source is not kept alive: one that is gone
    /// can be no image's source any more.
    struct Origin {
        std::weak_ptr<const QByteArray> source;
        bool hasSource = false;
        quint32 start = 0;
        qint64 length = 0; ///< of the image in bytes; negative without one
        bool padsWithZero = false;
        quint64 revision = 0;

        bool isSameAs(const Origin &other) const;
    };

    static Origin originOf(const CompositionInputs &inputs, const Composition &composition);

    std::vector<Origin> known_; ///< the newest last
    quint64 last_ = 0;
};
