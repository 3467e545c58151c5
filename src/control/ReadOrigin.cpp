// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/ReadOrigin.h"

#include "control/OperationRun.h"
#include "files/FileStamp.h"
#include "language/RunRecord.h"

#include <utility>

// Bytes that look alike need not be of the same chip: only a file that a failed Read has not
// touched holds those of the Read before.
void ReadOrigin::take(const RunRecord &record, const ReadFile &file, bool isWhole) {
    bytes_ = file.bytes ? *file.bytes : nullptr;
    const QString before = std::exchange(fileMark_, FileStamp::text(FileStamp::of(file.path)));
    if (!isWhole && fileMark_ == before)
        return;
    device_ = file.length() > 0 ? record.device : QString();
    endedAt_ = isWhole ? record.endedAt : QDateTime();
}

std::optional<ReadOrigin::GoodRead> ReadOrigin::of(const ByteBuffer &bytes) const {
    if (!bytes || endedAt_.isNull() || !isSameBuffer(bytes, bytes_))
        return std::nullopt;
    return GoodRead{device_, endedAt_};
}
