// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <variant>

/// What the program itself can do next about a run's end, if the user wants it.
namespace nextSteps {

/// Pads the data to burn to the chip's size, in KiB.
struct PadTo {
    qint64 kibibytes = 0;
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
