// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/ReadOrigin.h"

#include "control/OperationRun.h"
#include "files/FileStamp.h"
#include "language/RunRecord.h"

#include <chrono>
#include <utility>

namespace {

/// The file was written since the run of \a record began. The clock of file systems may be a tick
/// behind.
bool isWrittenBy(const RunRecord &record, const std::optional<FileStamp> &stamp) {
    constexpr std::chrono::milliseconds tick(20);
    const std::chrono::milliseconds begun(record.startedAt.toMSecsSinceEpoch());
    return stamp && stamp->written >= begun - tick;
}

} // namespace

// Bytes that look alike need not be of the same chip: only a file that a failed Read has not
// touched holds those of the Read before. One that it has not touched either, and that is not known
// from before, as at another path, may be of any chip.
void ReadOrigin::take(const RunRecord &record, const ReadFile &file, bool isWhole) {
    bytes_ = file.bytes ? *file.bytes : nullptr;
    const std::optional<FileStamp> stamp = FileStamp::of(file.path);
    const QString before = std::exchange(fileMark_, FileStamp::text(stamp));
    if (!isWhole && fileMark_ == before)
        return;
    const bool isOfThisRead = file.length() > 0 && (isWhole || isWrittenBy(record, stamp));
    device_ = isOfThisRead ? record.device : QString();
    endedAt_ = isWhole ? record.endedAt : QDateTime();
}

std::optional<ReadOrigin::GoodRead> ReadOrigin::of(const ByteBuffer &bytes) const {
    if (!bytes || endedAt_.isNull() || !isSameBuffer(bytes, bytes_))
        return std::nullopt;
    return GoodRead{device_, endedAt_};
}
