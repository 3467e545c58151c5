// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/RecordPart.h"

#include "formats/ImageFlattening.h"
#include "formats/RecordReader.h"

#include <new>

namespace {

Result<ByteBuffer, PartTrouble> read(const QByteArray &text, RecordFormat format, quint8 fill) {
    if (text.size() > largestPartText)
        return PartTrouble::NeedsUser;
    RecordReader reader(format);
    while (!reader.advance(text, text.size() + 1))
        continue;
    const DecodedRecords &decoded = reader.decoded();
    const qint64 base = usualBase(decoded.bytes);
    if (!decoded.troubles.isEmpty() || !canBeFlattened(decoded.bytes, base) ||
        decoded.bytes.end() - base > largestPartImage)
        return PartTrouble::NeedsUser;
    ImageFlattening image(decoded.bytes, base, char(fill));
    while (!image.advance(largestPartImage))
        continue;
    return image.image();
}

} // namespace

Result<ByteBuffer, PartTrouble> bytesOfRecordPart(const QByteArray &text, RecordFormat format,
                                                  quint8 fill) {
    try {
        return read(text, format, fill);
    } catch (const std::bad_alloc &) {
        return PartTrouble::NoMemory;
    }
}
