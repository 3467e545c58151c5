// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/ImageRevisions.h"

#include "files/ByteBuffer.h"

#include <algorithm>

namespace {

/// Somebody who tries controls comes back to one of the last few images.
constexpr size_t maxKnown = 64;

} // namespace

ImageRevisions::Origin ImageRevisions::originOf(const CompositionInputs &inputs,
                                                const Composition &composition) {
    const ByteBuffer &source = inputs.sourceBytes(composition.source);
    Origin origin;
    origin.length = composition.image ? (*composition.image)->size() : -1;
    if (lengthOf(source) > 0) {
        origin.source = source;
        origin.hasSource = true;
        if (composition.source == CompositionSource::OpenedBinary)
            origin.start = inputs.startAddress();
    }
    const bool pads = origin.length > lengthOf(source);
    origin.padsWithZero = pads && inputs.padWithZero;
    return origin;
}

bool ImageRevisions::Origin::isSameAs(const Origin &other) const {
    return hasSource == other.hasSource && source.lock() == other.source.lock() &&
           start == other.start && length == other.length && padsWithZero == other.padsWithZero;
}

quint64 ImageRevisions::ofComposition(const CompositionInputs &inputs,
                                      const Composition &composition) {
    Origin origin = originOf(inputs, composition);
    const auto same = std::find_if(known_.begin(), known_.end(),
                                   [&](const Origin &known) { return known.isSameAs(origin); });
    if (same != known_.end())
        return same->revision;
    if (known_.size() == maxKnown)
        known_.erase(known_.begin());
    origin.revision = ++last_;
    known_.push_back(origin);
    return origin.revision;
}
