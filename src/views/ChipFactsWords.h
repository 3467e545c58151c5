// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "devices/ImageFit.h"
#include "language/DeviceDescription.h"

#include <QString>

#include <optional>

// What is said beside the device of what the tool knows of it. Each is translated, and empty where
// there is nothing to say.

/// The size and the package of a chip, or that the tool knows no such device.
QString chipWords(const DeviceAnswer &answer);

/// That the data to burn are longer or shorter than the chip.
QString fitWords(const std::optional<ImageFit> &fit);

/// The programmers that support the chip.
QString programmersWords(const DeviceAnswer &answer);
