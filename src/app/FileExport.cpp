// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/FileExport.h"

#include "app/MainWindow.h"
#include "app/WindowMenus.h"
#include "base/Result.h"
#include "control/ActionGate.h"
#include "control/AppDelegate.h"
#include "control/FilePanels.h"
#include "control/Messages.h"
#include "control/UserFiles.h"
#include "devices/ChipInquiry.h"
#include "exchange/FileFormats.h"
#include "files/SavingTogether.h"
#include "files/SuggestedName.h"
#include "grid/ShownTab.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/MenuEntry.h"
#include "widgets/WindowFront.h"

#include "ui_MainWindow.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>

FileExport::FileExport(const ExchangeSurroundings &surroundings) : with_(surroundings) {}

void FileExport::addEntry(WindowMenus &menus) {
    menus.offWhileRunning << addMenuEntry(*menus.file, tr("E&xport\u2026"), Qt::CTRL | Qt::Key_E,
                                          this, &FileExport::show, menus.behindSave);
}

void FileExport::show() {
    if (with_.gate.refuses())
        return;
    if (!shown_)
        makeWindow();
    bringUp(*shown_);
}

void FileExport::makeWindow() {
    const ShownTab tab = shownTab(*with_.window.controls().tabview);
    const auto image =
        tab == ShownTab::Read ? ExportWindow::Image::Read : ExportWindow::Image::ToBurn;
    shown_ = new ExportWindow({[this](ExportWindow::Image which) { return bytesOf(which); }, image,
                               offeredPath(), knownChip(with_)},
                              &with_.window);
    connect(shown_, &ExportWindow::aboutToWrite, this, &FileExport::prepare);
    connect(shown_, &ExportWindow::written, this, &FileExport::save);
    connect(shown_, &ExportWindow::nameAsked, this, &FileExport::chooseNames);
    connect(&with_.delegate, &AppDelegate::imageToBurnChanged, shown_, &ExportWindow::refresh);
    connect(&with_.delegate, &AppDelegate::readDataTaken, shown_, &ExportWindow::refresh);
    connect(&with_.chip, &ChipInquiry::changed, shown_,
            [this] { shown_->setChip(knownChip(with_)); });
}

ByteBuffer FileExport::bytesOf(ExportWindow::Image image) const {
    const AppDelegate::State &state = with_.delegate.state();
    return image == ExportWindow::Image::ToBurn ? state.output_data : state.read_from_chip_data;
}

// What is being typed belongs to the image.
void FileExport::prepare() {
    if (!with_.gate.isClosed())
        with_.gate.commitPendingInput();
    revision_ = with_.delegate.imageRevision();
}

// Where the files of a split may go: named after the opened binary, or else the device.
QString FileExport::offeredPath() const {
    const QString binary = with_.settings.stringValue(settingsKeys::binary);
    const QString name = binary.isEmpty() ? with_.settings.stringValue(settingsKeys::device)
                                          : QFileInfo(binary).completeBaseName();
    return with_.files.folderForSaving() + u'/' + suggestedName(name, {});
}

void FileExport::chooseNames() {
    with_.files.chooseNames(shown_, shown_->name(), [shown = shown_](const QString &path) {
        if (shown)
            shown->setName(path);
    });
}

void FileExport::save(const ExportWindow::Content &content) {
    if (with_.gate.refuses())
        return;
    with_.messages.happened(Event::SavingBegan);
    const bool isTheImage = content.isWhole && content.image == ExportWindow::Image::ToBurn;
    const auto saved = [this, isTheImage, revision = revision_] {
        if (isTheImage && revision == with_.delegate.imageRevision())
            with_.delegate.edits().noteSaved(with_.delegate.state().output_data);
        if (shown_)
            shown_->close();
    };
    if (content.paths.isEmpty())
        saveOne(content, saved);
    else if (saveAll(content))
        saved();
}

void FileExport::saveOne(const ExportWindow::Content &content, const std::function<void()> &saved) {
    const FileFormat format = fileFormatOf(content.format);
    UserFiles::Document document;
    document.title = tr("Export");
    document.suggestedName =
        suggestedName(with_.settings.stringValue(settingsKeys::device), u'.' + format.ending);
    document.typeName = format.records ? format.filesName : fileTypes::binaryImages();
    document.extension = format.ending;
    document.bytes = [bytes = content.files.first()] { return bytes; };
    document.saved = saved;
    with_.files.saveDocument(&with_.window, document);
}

bool FileExport::saveAll(const ExportWindow::Content &content) {
    QList<FileToSave> files;
    for (qsizetype i = 0; i < content.paths.size(); ++i)
        files.append({content.paths[i], content.files[i]});
    const Result<void, UnsavedTogether> saved = with_.files.saveTogether(
        files, content.mayReplace ? Replacing::Allowed : Replacing::Refused,
        content.labels.split(u'\n').join(QStringLiteral("; ")),
        {tr("Copy labels"),
         [labels = content.labels] { QGuiApplication::clipboard()->setText(labels); }});
    if (const UnsavedTogether *unsaved = saved.failure(); unsaved && shown_)
        shown_->showProblem(UserFiles::wordsFor(*unsaved));
    return bool(saved);
}
