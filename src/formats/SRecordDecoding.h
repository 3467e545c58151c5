// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "formats/DecodedRecords.h"

/// Takes the records of an S-record text, S0 to S9, one by one.
class SRecordDecoding {
public:
    /// Takes the record of \a type, the character behind the "S", with \a bytes, of line \a line
    /// into \a decoded; what is wrong with it stands in its troubles then. True if it is an end
    /// record.
    bool take(char type, RecordBytes bytes, qint64 line, DecodedRecords &decoded);
};
