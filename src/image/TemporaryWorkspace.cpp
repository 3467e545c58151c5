// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/TemporaryWorkspace.h"

#include "base/Log.h"
#include "files/FileLoading.h"
#include "files/FileOwnership.h"
#include "files/FilePatching.h"
#include "files/FileRemoval.h"
#include "files/FileSaving.h"
#include "files/PrivateFolder.h"
#include "files/SystemName.h"
#include "image/OtherMemories.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <tuple>
#include <utility>

namespace {

/// Through a link of somebody else's the image would replace a file that nobody meant.
Result<void> save(const QString &path, const ByteBuffer &image) {
    if (!image)
        return Failure{QCoreApplication::translate("TemporaryWorkspace", "There is no image")};
    const Result<LinkKind> link = linkAt(path);
    if (const Failure *failure = link.failure())
        return *failure;
    if (*link == LinkKind::Foreign)
        return foreignLink();
    // One that is put there from now on has not been looked at.
    const Links links = *link == LinkKind::Own ? Links::Followed : Links::Replaced;
    return saveWholeFile(path, *image, Durability::ProgramEnd, links);
}

QString printable(const QString &text) {
    return text.isNull() ? loggedForNone.toString() : text;
}

} // namespace

TemporaryWorkspace::TemporaryWorkspace(const SettingsStore &settings, Log &log, FolderGuard mayUse)
    : settings_(settings), log_(log), mayUse_(std::move(mayUse)) {}

void TemporaryWorkspace::createTempDirectory() {
    // Whoever writes into it says why that did not work.
    std::ignore = makeFolder();
}

Result<void> TemporaryWorkspace::makeFolder() {
    const QString folder = temporaryFolder(settings_);
    if (QFileInfo::exists(folder))
        return {};
    const Result<void> made = makePrivateFolder(folder);
    if (!made)
        log_.write(QStringLiteral("error creating temp directory"));
    return made;
}

Result<void> TemporaryWorkspace::write_output_data_to_temp_file(const ByteBuffer &output_data) {
    const Result<void> made = makeFolder();
    const QString path = resolvedPathOf(settings_, settingsKeys::temp_output_file);
    const Result<void> ours = mayUse();
    lastWrite_ = ours ? save(path, output_data) : ours;
    if (!made && !lastWrite_ && ours)
        lastWrite_ = made;
    if (!lastWrite_)
        log_.write(QStringLiteral("error writing to temp file"));
    if (!lastWrite_ && ours)
        std::ignore = clearFile(path);
    const std::optional<FileStamp> stamp = FileStamp::of(path);
    const Result<QString> place = behindLinks(path);
    written_ =
        lastWrite_ && stamp && place ? std::optional(Written{path, *place, *stamp}) : std::nullopt;
    return lastWrite_;
}

Result<void> TemporaryWorkspace::write_output_data_to_temp_file(const ByteBuffer &output_data,
                                                                ByteRange changed) {
    if (output_data && patch(*output_data, changed))
        return lastWrite_;
    return write_output_data_to_temp_file(output_data);
}

bool TemporaryWorkspace::patch(const QByteArray &bytes, ByteRange changed) {
    const QString path = resolvedPathOf(settings_, settingsKeys::temp_output_file);
    if (!written_ || written_->path != path || !mayFollow(path))
        return false;
    const Result<QString> place = behindLinks(path);
    if (!place || written_->place != *place)
        return false;
    const Result<FileStamp> patched = patchFile(written_->place, written_->stamp, bytes, changed);
    if (!patched)
        return false;
    written_->stamp = *patched;
    lastWrite_ = {};
    return true;
}

Result<bool> TemporaryWorkspace::outputFileHolds(const ByteBuffer &output_data) const {
    const QString path = resolvedPathOf(settings_, settingsKeys::temp_output_file);
    // Whoever put it there can lead it elsewhere before the tool reads.
    if (const Result<void> may = mayFollow(path); !may)
        return *may.failure();
    return output_data ? fileHolds(path, *output_data) : isMissing(path);
}

QStringList TemporaryWorkspace::sharedFolders() const {
    QStringList folders = temporaryFolders(settings_);
    folders.removeIf([](const QString &folder) { return !othersMayWriteInto(folder); });
    return folders;
}

void TemporaryWorkspace::clear_temp_files() {
    if (isMissing(temporaryFolder(settings_)) || !mayUse())
        return;
    removeUnfinishedSaves(resolvedPathOf(settings_, settingsKeys::temp_output_file));
    removeOtherMemoryFiles(settings_);
    const QString keys[] = {settingsKeys::temp_output_file, settingsKeys::temp_read_from_chip_file,
                            settingsKeys::temp_search_results_file};
    // One error for the three: people compare these lines with those of older runs.
    Result<void> result;
    for (const QString &key : keys) {
        if (auto removed = removeFile(resolvedPathOf(settings_, key)); !removed)
            result = std::move(removed);
        if (const Failure *failure = result.failure())
            log_.write(QStringLiteral("error removing ") + printable(settings_.stringValue(key)) +
                       QStringLiteral(" : ") + failure->reason);
    }
}
