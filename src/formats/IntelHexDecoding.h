// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "formats/DecodedRecords.h"

/// Takes the records of Intel HEX, of all six types, one by one.
class IntelHexDecoding {
public:
    /// Takes the record \a bytes of line \a line into \a decoded; what is wrong with it stands in
    /// its troubles then. True if it is the end record.
    bool take(RecordBytes bytes, qint64 line, DecodedRecords &decoded);

private:
    void takeData(RecordBytes bytes, qint64 line, DecodedRecords &decoded);

    qint64 base_ = 0;
    bool segmented_ = false;
};
