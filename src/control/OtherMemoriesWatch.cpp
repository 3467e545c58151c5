// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/OtherMemoriesWatch.h"

#include "language/RunRecord.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "tool/ScriptedMiniPro.h"

#include <utility>

namespace {

KnownMemories kindsOf(const OtherMemories &memories) {
    return {
        .data = bool(memories.data), .user = bool(memories.user), .fuses = bool(memories.fuseText)};
}

} // namespace

OtherMemoriesWatch::OtherMemoriesWatch(const Surroundings &surroundings) : with_(surroundings) {
    connect(&with_.work, &WorkState::changed, this, &OtherMemoriesWatch::prepareRead);
}

void OtherMemoriesWatch::follow(ScriptedMiniPro *run) {
    run_ = run;
}

// Only once the work begins: the press may be asked about first, and then nothing runs.
void OtherMemoriesWatch::prepareRead(Work now) {
    if (now != Work::Running || !run_ || run_->facts().operation != ReadOperation)
        return;
    if (with_.mayUseFolder())
        removeOtherMemoryFiles(with_.settings);
    const QString readFile = absolutePathOf(with_.settings, settingsKeys::temp_read_from_chip_file);
    run_->setFilesBesideRead(otherMemoryFiles(readFile));
    files_.emplace(readFile);
}

void OtherMemoriesWatch::takeRun(const RunRecord &record, const ByteBuffer &code) {
    const std::optional<OtherMemoryFiles> files = std::exchange(files_, std::nullopt);
    if (!files || record.operation != ReadOperation || !record.outcome.endedWell())
        return;
    OtherMemories others = files->loadNew();
    unread_ = others.unread;
    newest_.reset();
    if (!others.isEmpty()) {
        known_[record.device] = known_.value(record.device) | kindsOf(others);
        newest_ = ReadMemories{record.device, record.endedAt, code, std::move(others)};
    }
    emit readTaken();
}
