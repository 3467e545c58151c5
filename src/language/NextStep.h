// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "files/ByteBuffer.h"

#include <QString>

#include <optional>
#include <variant>

/// What the program itself can do next about a run's end, if the user wants it.
namespace nextSteps {

/// Pads the data to burn to the chip's size, in KiB.
struct PadTo {
    qint64 kibibytes = 0;

    /// The step to \a size bytes; nothing if no number of KiB, or no image, is that large.
    static std::optional<PadTo> toReach(qint64 size) {
        return size % kibibyte == 0 && size <= largestImage ? std::optional(PadTo{size / kibibyte})
                                                            : std::nullopt;
    }
    friend bool operator==(const PadTo &, const PadTo &) = default;
};
struct RemoveWriteProtection {};
struct ChooseTool {};
struct CopyUdevRule {
    QString rule;
};
/// Shows the byte of the data to burn, by its offset, that differs from the chip's.
struct ShowDifference {
    qint64 address = 0;
};
struct ReadAgain {};

} // namespace nextSteps

using NextStep =
    std::variant<nextSteps::PadTo, nextSteps::RemoveWriteProtection, nextSteps::ChooseTool,
                 nextSteps::CopyUdevRule, nextSteps::ShowDifference, nextSteps::ReadAgain>;
