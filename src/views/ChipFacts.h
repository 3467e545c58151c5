// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "devices/ImageFit.h"
#include "language/DeviceDescription.h"
#include "widgets/FittingLine.h"

#include <optional>

/// What the tool knows of the device, in one line beside the field: it can be selected, and is
/// empty where nothing is known. The tool tip has all of it. The room that it asks for does not
/// depend on what it says: the field beside it must not change its size while it is typed into.
class ChipFacts final : public FittingLine {
    Q_OBJECT

public:
    using FittingLine::FittingLine;

    /// Says what \a answer is, and how the data to burn fit.
    void say(const DeviceAnswer &answer, const std::optional<ImageFit> &fit);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    QString fittingText() const override;
};
