// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "orders/Arrangement.h"

#include <QString>
#include <QStringList>

// What is said of parts, chips and orders.

/// A chip that bytes may be for.
struct ChipSize {
    QString name;     ///< of the device
    qint64 bytes = 0; ///< that it holds
};

/// What one of the parts that \a lanes make is called, in the name of its file too: even and odd,
/// or by its number.
QString partName(const Lanes &lanes, int part);
/// The names of all of them.
QStringList partNames(const Lanes &lanes);
/// \a path without the ending of a format.
QString withoutEnding(const QString &path);
/// The path of the file for \a part if \a path is the one for all of them, whose ending gives way
/// to \a extension.
QString partPath(const QString &path, const Lanes &lanes, int part, const QString &extension);

/// The name of the whole that \a partName, without an ending, is a part of: without "even", "odd",
/// "low", "high" or a number at its end.
QString wholeName(const QString &partName);

/// A length in KiB, or in bytes where that is no whole number.
QString chipSizeWords(qint64 bytes);

/// One part that is to go into a chip.
struct LabelledPart {
    QString name; ///< of the program
    Lanes lanes;
    int part = 0;
    bool lowByteLast = false; ///< the last part is on the lowest data lines
    qint64 length = 0;        ///< in bytes
    quint32 crc32 = 0;
};

/// What to write on the chip for \a part: which it is, its checksum, and what fits it: \a chip if
/// that has just its length, else the usual EPROM of that length.
QString labelWords(const LabelledPart &part, const ChipSize &chip);

/// That \a length bytes with that checksum come out of an arrangement.
QString inOrderWords(qint64 length, quint32 crc32);

/// Why parts of \a lengths cannot be arranged, as a sentence.
QString whyNotWords(NoArrangement why, const Arrangement &arrangement,
                    const QList<qint64> &lengths);
