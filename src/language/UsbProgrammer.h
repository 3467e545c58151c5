// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// A chip programmer that the system sees.
struct UsbProgrammer {
    /// What this user may do with its device node.
    enum class Access {
        /// Open it for writing, as the tool has to.
        Granted,
        /// The node is there, for others.
        Refused,
        /// There is no node, as in a sandbox.
        NoNode
    };
    /// The model, or the models that look alike, as "TL866II+, T48 or T56".
    QString name;
    /// The IDs of maker and model: four hexadecimal digits each, in lower case.
    QString vendorId;
    QString productId;
    /// The path of its device node.
    QString node;
    Access access = Access::Granted;
};

/// The line for udev that lets whoever sits at the computer use \a programmer.
QString udevRuleFor(const UsbProgrammer &programmer);
