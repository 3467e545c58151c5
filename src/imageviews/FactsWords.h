// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "files/OpenedFileWatch.h"
#include "image/ImageComposition.h"
#include "inspect/ImageDifferences.h"
#include "inspect/ImageFacts.h"

#include <QDateTime>
#include <QString>

#include <optional>

// What the facts line says of an image, in pieces. Each is translated, and empty where there is
// nothing to say.

/// Where data read from a chip come from: the \a device, and \a when as told on the day \a today.
QString readOriginWords(const QString &device, const QDateTime &when, const QDate &today);

/// Where the data to burn come from: \a source, the file at \a binaryPath if they are of an opened
/// one (and how that file is on the disk by now), and \a edits made by hand.
QString burnOriginWords(std::optional<CompositionSource> source, const QString &binaryPath,
                        OpenedFileWatch::State onDisk, int edits);

/// The checksums of \a facts; an ellipsis stands for each while they are not known.
QString checksumWords(const std::optional<ImageFacts> &facts);

/// How many \a differences there are to the other image, with an ellipsis while that is not known,
/// and how many \a extraBytes this one has; it has fewer if they are below 0.
QString differenceWords(const std::optional<ImageDifferences> &differences, qint64 extraBytes);

/// Whether a chip that can only lose bits, and holds the bytes that were read, can be burned
/// without erasing it. Nothing is to be said if the images are the same; \a isWhole if all bytes
/// to burn could be compared.
QString erasureWords(const ImageDifferences &differences, bool isWhole);

/// A remark on an image that is all 0xFF or all 0x00; \a isRead if it was read from a chip.
QString blankRemark(const ImageFacts &facts, bool isRead);

/// The \a byte at \a address: hexadecimal, decimal, binary, and its character if it is one of ASCII
/// that can be seen.
QString byteWords(qint64 address, quint8 byte);

/// The \a block that is selected, of at least one byte: its addresses, its size and the checksums
/// in its \a facts.
QString blockWords(ByteRange block, const std::optional<ImageFacts> &facts);
