// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/ExchangeSurroundings.h"

#include "devices/ChipInquiry.h"
#include "language/DeviceDescription.h"

#include <variant>

ChipSize knownChip(const ExchangeSurroundings &with) {
    const DeviceAnswer answer = with.chip.known();
    const auto *device = std::get_if<DeviceDescription>(&answer);
    return device ? ChipSize{device->name, device->imageLength().value_or(0)} : ChipSize();
}
