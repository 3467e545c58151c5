// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/ImageFit.h"

#include "language/ImageEncoding.h"

#include <variant>

namespace {

std::optional<qint64> lengthFor(const DeviceAnswer &answer) {
    const auto *description = std::get_if<DeviceDescription>(&answer);
    return description ? description->imageLength() : std::nullopt;
}

} // namespace

std::optional<ImageFit> fitOf(const ByteBuffer &image, const DeviceAnswer &answer) {
    const std::optional<qint64> needed = lengthFor(answer);
    const qint64 length = lengthOf(image);
    if (!needed || length == 0 || encodingForTool(*image) != ImageEncoding::Raw)
        return std::nullopt;
    return ImageFit{length - *needed,
                    length < *needed ? nextSteps::PadTo::toReach(*needed) : std::nullopt};
}
