// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/BurnFile.h"

#include "control/ActionGate.h"
#include "control/Messages.h"
#include "language/ImageEncoding.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QDir>
#include <QFileInfo>

BurnFile::BurnFile(const ByteBuffer &image, TemporaryWorkspace &workspace, SettingsStore &defaults,
                   Messages &messages, const ActionGate &gate)
    : image_(image), workspace_(workspace), defaults_(defaults), messages_(messages), gate_(gate) {
    connect(&defaults, &SettingsStore::valueChanged, this, &BurnFile::followPath);
}

void BurnFile::write() {
    written_ = true;
    sayResult(workspace_.write_output_data_to_temp_file(image_));
}

void BurnFile::write(ByteRange changed) {
    sayResult(workspace_.write_output_data_to_temp_file(image_, changed));
}

void BurnFile::sayResult(const Result<void> &result) {
    if (result || !image_)
        return messages_.happened(Event::ImageWritten);
    const QString path = resolvedPathOf(defaults_, settingsKeys::temp_output_file);
    messages_.say(Topic::Workspace, unwrittenWords(path).arg(QDir::toNativeSeparators(path),
                                                             result.failure()->reason));
}

// What is at \a path need not be of the program, nor a file.
QString BurnFile::unwrittenWords(const QString &path) const {
    const QString unwritten = tr("The data to burn could not be written to %1: %2");
    const Result<bool> isGone = workspace_.outputFileHolds(nullptr);
    if (!isGone)
        return unwritten;
    const QFileInfo file(path);
    if (*isGone || (file.isFile() && file.size() == 0))
        return tr("The data to burn could not be written to %1, so nothing is left to burn: %2");
    if (file.isFile() && workspace_.mayUse())
        return tr("The data to burn could not be written to %1, which still holds something else: "
                  "%2");
    return unwritten;
}

void BurnFile::sayIfShared() {
    const QString folders = workspace_.sharedFolders().join(QStringLiteral(", "));
    if (!folders.isEmpty())
        messages_.say(Topic::SharedFolder,
                      tr("Others may put files into %1, through which chips are read and written.")
                          .arg(QDir::toNativeSeparators(folders)));
}

// A path that has come to name another file gets the image at once, or a Write would burn what
// happens to lie there.
void BurnFile::followPath(const QString &key) {
    if (!isTemporaryFile(key) || !written_ || gate_.isClosed())
        return;
    messages_.happened(Event::FileMoved);
    if (key == settingsKeys::temp_output_file) {
        messages_.happened(Event::ImageMoved);
        write();
    }
    sayIfShared();
}

BurnSituation BurnFile::situation(Operation operation) const {
    BurnSituation burn;
    burn.operation = operation;
    if (!takesImage(operation))
        return burn;
    burn.hasImage = image_ != nullptr;
    burn.imageLength = lengthOf(image_);
    burn.encoding = image_ ? encodingForTool(*image_) : ImageEncoding::Raw;
    burn.path = resolvedPathOf(defaults_, settingsKeys::temp_output_file);
    burn.holdsImage = workspace_.outputFileHolds(image_);
    burn.written = workspace_.lastWrite();
    return burn;
}

void BurnFile::writeAgain() {
    write();
    const Result<bool> holds = workspace_.outputFileHolds(image_);
    if (const Failure *unread = holds.failure())
        messages_.sayTrouble(
            Topic::ImageFile,
            tr("It is not known what the image file holds: %1").arg(unread->reason));
    else if (*holds)
        messages_.say(Topic::ImageFile, tr("The image file holds the data to burn again."));
}
