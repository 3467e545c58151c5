// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "formats/DecodedRecords.h"
#include "formats/RecordFormat.h"

#include <QString>
#include <QStringList>

/// What is wrong, as a sentence that names the line.
QString troubleWords(const RecordTrouble &trouble);
/// What was found in a text of \a format: how much, where, what begins there, what is wrong; a line
/// for each. Of many ranges and troubles the first ones are named and the others counted.
QStringList foundWords(RecordFormat format, const DecodedRecords &decoded);
/// What is said of a file whose \a size bytes are taken as they are.
QString rawWords(qint64 size);
/// What the image will be that begins with address \a base, or why there is none.
QString imageWords(const DecodedRecords &decoded, qint64 base, quint8 fill);
