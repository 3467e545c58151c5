// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/ReadOrigin.h"

#include "control/OperationRun.h"
#include "files/FileStamp.h"
#include "language/RunRecord.h"

#include <utility>

void ReadOrigin::expect(const QString &path) {
    before_ = FileStamp::look(path);
}

// Bytes that look alike need not be of the same chip: only a file that a failed Read has not
// touched holds those of the Read before. One that it has not touched either, and that is not known
// from before, as at another path, may be of any chip.
void ReadOrigin::take(const RunRecord &record, const ReadFile &file, bool isWhole) {
    bytes_ = file.bytes ? *file.bytes : nullptr;
    const FileStamp::Look now = FileStamp::look(file.path);
    const std::optional<FileStamp::Look> ofBytesBefore = std::exchange(loaded_, now);
    const bool isWritten = now && before_ && *now != *before_;
    const bool isAsLoadedBefore = ofBytesBefore && *ofBytesBefore && now && *now == **ofBytesBefore;
    if (!isWhole && !isWritten && isAsLoadedBefore)
        return;
    const bool isOfThisRead = file.length() > 0 && (isWhole || isWritten);
    device_ = isOfThisRead ? record.device : QString();
    endedAt_ = isWhole ? record.endedAt : QDateTime();
}

std::optional<ReadOrigin::GoodRead> ReadOrigin::of(const ByteBuffer &bytes) const {
    if (!bytes || endedAt_.isNull() || !isSameBuffer(bytes, bytes_))
        return std::nullopt;
    return GoodRead{device_, endedAt_};
}
