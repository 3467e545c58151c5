// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Bringing a binary in, saving the two images and the console's text.

#include "app/AppDelegate.h"

#include "app/FilePanels.h"
#include "app/WindowMemory.h"
#include "base/Log.h"
#include "files/FileSaving.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/ConsoleView.h"

#include <QFileInfo>
#include <QMainWindow>
#include <QRegularExpression>

namespace {

const QString openPurpose = QStringLiteral("open");
const QString savePurpose = QStringLiteral("save");

// A device name may hold characters that a file name cannot, or that a shell or another system
// would trip over.
QString fileNameFor(const QString &device, const QString &suffix) {
    static const QRegularExpression unfit(QStringLiteral("[^A-Za-z0-9@._+=-]+"));
    QString name = device.trimmed().replace(unfit, QStringLiteral("_"));
    if (name.isEmpty() || name.startsWith(QLatin1Char('.')))
        name.prepend(QStringLiteral("chip"));
    return name + suffix;
}

} // namespace

void AppDelegate::browseBinaryFile(QObject *) {
    if (gate_.refuses())
        return;
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Open;
    request.title = tr("Open binary");
    request.typeName = tr("Binary images");
    request.extensions = {QStringLiteral("bin"), QStringLiteral("hex"), QStringLiteral("rom"),
                          QStringLiteral("crt")};
    beginPanel(openPurpose, request, [this](const QString &path) { openBinary(path); });
}

void AppDelegate::openBinary(const QString &path) {
    if (gate_.refusesElseCommits())
        return;
    defaults_.setValue(settingsKeys::binary, path);
    memory_.addRecentFile(path);
    load_opened_binary();
    build_and_reload();
    emit recentFilesChanged();
}

QStringList AppDelegate::recentFiles() const {
    return memory_.recentFiles();
}

void AppDelegate::export_read_from_chip_data(QObject *) {
    exportImage(&State::read_from_chip_data, Topic::NothingRead,
                QStringLiteral("first read the chip!"),
                tr("First read the chip: there is nothing to save yet."),
                fileNameFor(readDevice_, QStringLiteral(".bin")));
}

void AppDelegate::export_output_data(QObject *) {
    exportImage(
        &State::output_data, Topic::NothingToBurn, QStringLiteral("first create some data!"),
        tr("First create some data: open a binary or read a chip."),
        fileNameFor(defaults_.stringValue(settingsKeys::device), QStringLiteral("-burn.bin")));
}

// The buffer is looked up again when the user confirms: an edit made while the panel was open is
// saved with the rest.
void AppDelegate::exportImage(ByteBuffer State::*image, Topic emptyTopic,
                              const QString &emptyLogLine, const QString &emptySentence,
                              const QString &suggestedName) {
    if (gate_.refusesElseCommits())
        return;
    messages_.happened(Event::SavingBegan);
    if (lengthOf(state_.*image) == 0) {
        log_.write(emptyLogLine);
        messages_.say(emptyTopic, emptySentence);
        return;
    }
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Save;
    request.title = tr("Save");
    request.suggestedName = suggestedName;
    request.typeName = tr("Binary images");
    request.extensions = {QStringLiteral("bin")};
    beginPanel(savePurpose, request, [this, image](const QString &path) { exportTo(path, image); });
}

// A composition may have been refused since the panel was opened: what is absent replaces no file.
void AppDelegate::exportTo(const QString &path, ByteBuffer State::*image) {
    const ByteBuffer bytes = state_.*image;
    if (!bytes) {
        log_.write(QStringLiteral("error writing to ") + path);
        messages_.sayTrouble(
            Topic::Saving,
            tr("There are no bytes to save any more: %1 was left as it is.").arg(path));
        return;
    }
    if (!saveBytes(path, *bytes) || bytes != state_.output_data)
        return;
    edits_.noteSaved();
    secondPress_.withdraw();
}

void AppDelegate::saveConsole() {
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Save;
    request.title = tr("Save console");
    request.suggestedName = QStringLiteral("console.txt");
    request.typeName = tr("Text files");
    request.extensions = {QStringLiteral("txt")};
    beginPanel(savePurpose, request, [this](const QString &path) {
        saveBytes(path, outlets.textView->storedText().toUtf8());
    });
}

void AppDelegate::beginPanel(const QString &purpose, FilePanelRequest request,
                             std::function<void(const QString &)> chosen) {
    request.folder = memory_.lastFolder(purpose);
    panels_.begin(window_, request,
                  [this, purpose, chosen = std::move(chosen)](const QString &path) {
                      memory_.setLastFolder(purpose, QFileInfo(path).path());
                      chosen(path);
                  });
}

bool AppDelegate::saveBytes(const QString &path, const QByteArray &bytes) {
    const std::optional<QString> failure = saveWholeFile(path, bytes);
    if (!failure) {
        messages_.say(Topic::Saving, tr("Saved %1.").arg(path));
        return true;
    }
    log_.write(QStringLiteral("error writing to ") + path);
    messages_.sayTrouble(Topic::Saving, tr("%1 could not be written: %2").arg(path, *failure));
    return false;
}
