// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

#include <optional>
#include <variant>

/// One of a chip's memories.
struct MemorySection {
    /// What the tool counts it in; a word has 16 bits.
    enum class Unit { Bytes, Words, Bits };

    qint64 count = 0;
    Unit unit = Unit::Bytes;

    /// How long a file of it is in bytes; nothing where that is not known for sure, as for what is
    /// counted in bits.
    std::optional<qint64> bytes() const;

    friend bool operator==(const MemorySection &, const MemorySection &) = default;
};

/// What the tool says of a device.
struct DeviceDescription {
    /// The name as the tool spells it.
    QString name;
    /// The memory that an image is for, and behind it others of the chip; empty for a logic IC, and
    /// where the tool's words are not understood.
    QList<MemorySection> sections;
    /// The package or what stands for it, in the tool's words; empty if it says nothing.
    QString package;
    /// The programmers that support the device; empty if the tool says nothing.
    QString programmers;
    /// How many vectors a logic IC is tested with; nothing for other devices.
    std::optional<int> vectors;

    /// The length of an image that fills the chip; nothing if it is not known for sure.
    std::optional<qint64> imageLength() const;

    friend bool operator==(const DeviceDescription &, const DeviceDescription &) = default;
};

/// The tool knows no device of the name that it was asked about.
struct NoSuchDevice {
    friend bool operator==(const NoSuchDevice &, const NoSuchDevice &) = default;
};

/// What the tool knows of a device; std::monostate while there is no answer.
using DeviceAnswer = std::variant<std::monostate, NoSuchDevice, DeviceDescription>;

/// What the tool has answered to descriptionCommand() with \a text, in either of its dialects, and
/// the exit status \a status. Without its lists the tool knows nothing, and there is no answer.
DeviceAnswer readDeviceAnswer(const QString &text, int status);
