// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/UserFiles.h"

#include "base/Log.h"
#include "control/ActionGate.h"
#include "files/FileSaving.h"
#include "files/SuggestedName.h"

#include <QFileInfo>

#include <cerrno>
#include <new>

namespace {

/// What \a make gives, unless there is not enough memory for it.
Result<QByteArray> madeBy(const std::function<QByteArray()> &make) {
    try {
        return make();
    } catch (const std::bad_alloc &) {
        return Failure::ofSystem(ENOMEM);
    }
}

} // namespace

UserFiles::UserFiles(const Surroundings &surroundings)
    : panels_(surroundings.panels),
      memory_(surroundings.memory),
      log_(surroundings.log),
      messages_(surroundings.messages),
      gate_(surroundings.gate) {
    panels_.setLook(memory_.panelLook());
}

void UserFiles::openBinary(QWidget *window, const std::function<void(const QString &)> &chosen) {
    if (gate_.refuses())
        return;
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Open;
    request.title = tr("Open binary");
    request.typeName = fileTypes::binaryImages();
    request.extensions = {QStringLiteral("bin"), QStringLiteral("hex"), QStringLiteral("rom"),
                          QStringLiteral("crt")};
    ask(window, PanelPurpose::Open, request, chosen);
}

void UserFiles::openForImport(QWidget *window, const std::function<void(const QString &)> &chosen) {
    openAnyFile(window, PanelPurpose::Open, tr("Import"), chosen);
}

void UserFiles::openForInsertion(QWidget *window,
                                 const std::function<void(const QString &)> &chosen) {
    openAnyFile(window, PanelPurpose::Open, tr("Insert a file"), chosen);
}

void UserFiles::chooseTool(QWidget *window, const std::function<void(const QString &)> &chosen) {
    openAnyFile(window, PanelPurpose::Tool, tr("Choose the programmer tool"), chosen);
}

void UserFiles::openAnyFile(QWidget *window, PanelPurpose purpose, const QString &title,
                            const std::function<void(const QString &)> &chosen) {
    if (gate_.refuses())
        return;
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Open;
    request.title = title;
    ask(window, purpose, request, chosen);
}

void UserFiles::saveReadData(QWidget *window, const QString &device, const Image &image) {
    saveImage(window, image,
              {QStringLiteral("first read the chip!"), Topic::NothingRead,
               tr("First read the chip: there is nothing to save yet.")},
              suggestedName(device, QStringLiteral(".bin")));
}

void UserFiles::saveDataToBurn(QWidget *window, const QString &device, const Image &image) {
    saveImage(window, image,
              {QStringLiteral("first create some data!"), Topic::NothingToBurn,
               tr("First create some data: open a binary or read a chip.")},
              suggestedName(device, QStringLiteral("-burn.bin")));
}

void UserFiles::saveImage(QWidget *window, const Image &image, const Nothing &nothing,
                          const QString &suggestedName) {
    if (gate_.refusesElseCommits())
        return;
    messages_.happened(Event::SavingBegan);
    if (lengthOf(image.bytes()) == 0) {
        log_.write(nothing.logLine);
        messages_.say(nothing.topic, nothing.sentence);
        return;
    }
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Save;
    request.title = tr("Save");
    request.suggestedName = suggestedName;
    request.typeName = fileTypes::binaryImages();
    request.extensions = {QStringLiteral("bin")};
    ask(window, PanelPurpose::Save, request,
        [this, image](const QString &path) { write(path, image); });
}

void UserFiles::saveConsole(QWidget *window, const std::function<QString()> &text) {
    saveDocument(window, {tr("Save console"), QStringLiteral("console.txt"), fileTypes::texts(),
                          QStringLiteral("txt"), [text] { return text().toUtf8(); }});
}

void UserFiles::saveDocument(QWidget *window, const Document &document) {
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Save;
    request.title = document.title;
    request.suggestedName = document.suggestedName;
    request.typeName = document.typeName;
    request.extensions = {document.extension};
    ask(window, PanelPurpose::Save, request,
        [this, bytes = document.bytes, saved = document.saved](const QString &path) {
            if (write(path, madeBy(bytes)))
                saved();
        });
}

QStringList UserFiles::recent() const {
    return memory_.recentFiles();
}

void UserFiles::addRecent(const QString &path) {
    memory_.addRecentFile(path);
    emit recentChanged();
}

void UserFiles::rememberLook() {
    if (panels_.look() != memory_.panelLook())
        memory_.setPanelLook(panels_.look());
}

void UserFiles::ask(QWidget *window, PanelPurpose purpose, FilePanelRequest request,
                    const std::function<void(const QString &)> &chosen) {
    request.folder = memory_.lastFolder(purpose);
    panels_.begin(window, request, [this, purpose, chosen](const QString &path) {
        memory_.setLastFolder(purpose, QFileInfo(path).path());
        chosen(path);
    });
}

// A composition may have been refused since the panel was opened: what is absent replaces no file.
void UserFiles::write(const QString &path, const Image &image) {
    const ByteBuffer bytes = image.bytes();
    if (!bytes)
        return failed(path,
                      tr("There are no bytes to save any more: %1 was left as it is.").arg(path));
    if (write(path, *bytes))
        image.saved(bytes);
}

bool UserFiles::write(const QString &path, const Result<QByteArray> &bytes) {
    const Result<void> saved = bytes ? saveWholeFile(path, *bytes) : Result<void>(*bytes.failure());
    if (const Failure *failure = saved.failure())
        failed(path, tr("%1 could not be written: %2").arg(path, failure->reason));
    else
        messages_.say(Topic::Saving, tr("Saved %1.").arg(path));
    return bool(saved);
}

void UserFiles::failed(const QString &path, const QString &sentence) {
    log_.write(QStringLiteral("error writing to ") + path);
    messages_.sayTrouble(Topic::Saving, sentence);
}
