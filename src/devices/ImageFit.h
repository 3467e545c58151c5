// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "language/DeviceDescription.h"
#include "language/NextStep.h"

#include <optional>

/// How the size of an image compares with that of a chip.
struct ImageFit {
    /// By how many bytes the image is longer than the chip; negative where it is shorter.
    qint64 excess = 0;
    /// With what the image fills the chip; nothing if it does so already, is longer, or nothing
    /// does.
    std::optional<nextSteps::PadTo> padTo;

    friend bool operator==(const ImageFit &, const ImageFit &) = default;
};

/// Compares \a image with the device that the tool has answered about. Nothing if there are no
/// bytes, the chip's size is not known for sure, or the tool would decode the image.
std::optional<ImageFit> fitOf(const ByteBuffer &image, const DeviceAnswer &answer);
