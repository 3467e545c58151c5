// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "base/Units.h"
#include "files/ByteBuffer.h"

#include <QString>
#include <QStringList>

#include <optional>

/// Which bytes an image was made from.
enum class CompositionSource { ReadData, OpenedBinary };

/// Everything that an output image is made from, as it is at the moment of composing.
struct CompositionInputs {
    ByteBuffer read_from_chip_data;
    ByteBuffer opened_bin_data;
    /// Hexadecimal text: where in the image the opened binary is placed, in bytes.
    QString rom_start_address;
    /// Decimal text: the least size of the image, in kibibytes.
    QString pad_to;
    /// Whether the image is stretched to pad_to at all.
    bool pad = false;
    /// Whether data read from the chip, if there is any, comes before the opened binary.
    bool combineReadData = false;
    /// Whether the pad byte is 0x00; else it is 0xFF.
    bool padWithZero = false;

    quint8 padByte() const { return padWithZero ? 0x00 : erasedByte; }
    /// What pad_to asks for in bytes, whether or not it is stretched to: 0 without a number there.
    qint32 padSize() const;
    /// The number in rom_start_address; 0 without one.
    quint32 startAddress() const;
    /// The bytes of \a source; null while there are none.
    const ByteBuffer &sourceBytes(CompositionSource source) const;
};

/// Why no image was made.
struct RefusedComposition {
    enum class Reason { NegativePad, TooLarge, NoMemory };

    Reason reason = Reason::TooLarge;
    /// The size in bytes that the inputs ask for; negative for NegativePad.
    qint64 askedSize = 0;

    friend bool operator==(const RefusedComposition &, const RefusedComposition &) = default;
};

/// An output image, or the reason why there is none.
using ComposedImage = Result<ByteBuffer, RefusedComposition>;

/// What came of a composition.
struct Composition {
    /// A new object in every case.
    ComposedImage image;
    CompositionSource source = CompositionSource::OpenedBinary;
    /// The events of the composition, in order, for the caller to log.
    QStringList log;
};

/// Composes the bytes to burn: the data read from the chip, or the opened binary at its start
/// address in a buffer of pad bytes, stretched with pad bytes if that is asked for. An image of
/// more than largestImage bytes is refused.
Composition composeImage(const CompositionInputs &inputs);

/// Which bytes are in \a composition, made from \a inputs; nothing if it is padding alone, or was
/// refused.
std::optional<CompositionSource> sourceOfBytes(const CompositionInputs &inputs,
                                               const Composition &composition);
