// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/OpenedBinary.h"

#include "base/Result.h"
#include "control/ActionGate.h"
#include "control/BurnDoubt.h"
#include "files/FileLoading.h"
#include "files/FreeName.h"
#include "language/ImageEncoding.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

OpenedBinary::OpenedBinary(ByteBuffer &bytes, Messages &messages, const ActionGate &gate)
    : bytes_(bytes), messages_(messages), gate_(gate) {
    connect(&watch_, &OpenedFileWatch::stateChanged, this, &OpenedBinary::fileChanged);
}

// Opening a file that cannot be read says why.
bool OpenedBinary::isOnDisk(const QString &path) const {
    return bytes_ && holdsAlready(path, *bytes_);
}

void OpenedBinary::load(const QString &path) {
    messages_.happened(Event::BinaryLoading);
    onDisk_ = OpenedFileWatch::State::AsOpened;
    watch_.watch(path);
    if (isOnDisk(path))
        return sayHowItReads(path);
    bytes_ = nullptr;
    if (path.isEmpty())
        return;
    auto loaded = loadWholeFile(path);
    if (const Failure *failure = loaded.failure()) {
        messages_.say(Topic::Binary, tr("The opened binary could not be read: %1 (%2)")
                                         .arg(QDir::toNativeSeparators(path), failure->reason));
        watch_.watch({});
        return;
    }
    bytes_ = *std::move(loaded);
    sayHowItReads(path);
}

void OpenedBinary::sayHowItReads(const QString &path) {
    const QString remark = decodingRemark(encodingForTool(*bytes_), QFileInfo(path).fileName());
    if (!remark.isEmpty())
        messages_.say(Topic::Binary, remark,
                      {tr("Import\u2026"), [this, path] { emit importAsked(path); }});
}

void OpenedBinary::fileChanged(OpenedFileWatch::State state) {
    const bool isChanged = state == OpenedFileWatch::State::Changed;
    // It may have been touched, or written again as it was.
    const bool isSame = isChanged && isOnDisk(watch_.path());
    onDisk_ = isSame ? OpenedFileWatch::State::AsOpened : state;
    sayOnDisk();
    emit onDiskChanged();
}

void OpenedBinary::sayOnDisk() {
    const QString path = QDir::toNativeSeparators(watch_.path());
    switch (onDisk_) {
    case OpenedFileWatch::State::AsOpened:
        return messages_.happened(Event::BinaryOnDisk);
    case OpenedFileWatch::State::Gone:
        return messages_.say(
            Topic::OpenedFile,
            tr("%1 is no longer on the disk; its bytes are still here.").arg(path));
    case OpenedFileWatch::State::Changed:
        return messages_.sayTrouble(Topic::OpenedFile,
                                    tr("%1 has changed on the disk since it was opened.").arg(path),
                                    {tr("Reload"), [this] { askToReload(); }});
    }
}

void OpenedBinary::askToReload() {
    if (!gate_.refusesElseCommits())
        emit reloadAsked();
}
