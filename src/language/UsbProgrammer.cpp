// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/UsbProgrammer.h"

QString udevRuleFor(const UsbProgrammer &programmer) {
    return QStringLiteral("SUBSYSTEM==\"usb\", ATTR{idVendor}==\"%1\", ATTR{idProduct}==\"%2\", "
                          "MODE=\"0660\", TAG+=\"uaccess\"")
        .arg(programmer.vendorId, programmer.productId);
}
