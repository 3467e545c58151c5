// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/UsbProgrammer.h"

#include <QList>
#include <QString>

#include <optional>

/// Where the system tells what is plugged in.
struct UsbFolders {
    QString devices = QStringLiteral("/sys/bus/usb/devices");
    QString nodes = QStringLiteral("/dev/bus/usb");
};

/// The programmers that are plugged in; nothing (absent) where the system does not tell. Opens no
/// device: the answer disturbs no run.
std::optional<QList<UsbProgrammer>> pluggedProgrammers(const UsbFolders &folders = {});
