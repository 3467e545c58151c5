// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/FileExport.h"

#include "app/MainWindow.h"
#include "app/WindowMenus.h"
#include "control/ActionGate.h"
#include "control/AppDelegate.h"
#include "control/Messages.h"
#include "control/UserFiles.h"
#include "files/SuggestedName.h"
#include "grid/GridColumns.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include "ui_MainWindow.h"

#include <QMenu>

namespace {

/// What files of a format are called, and end in.
struct FileType {
    QString name;
    QString extension;
};

FileType fileType(std::optional<RecordFormat> format) {
    if (!format)
        return {FileExport::tr("Binary images"), QStringLiteral("bin")};
    return *format == RecordFormat::IntelHex
               ? FileType{FileExport::tr("Intel HEX files"), QStringLiteral("hex")}
               : FileType{FileExport::tr("S-record files"), QStringLiteral("srec")};
}

} // namespace

FileExport::FileExport(const ExchangeSurroundings &surroundings) : with_(surroundings) {}

void FileExport::addEntry(WindowMenus &menus) {
    auto *entry = new QAction(tr("E&xport\u2026"), this);
    entry->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    entry->setAutoRepeat(false);
    connect(entry, &QAction::triggered, this, &FileExport::show, Qt::QueuedConnection);
    menus.file->insertAction(menus.behindSave, entry);
    menus.offWhileRunning << entry;
}

void FileExport::show() {
    if (with_.gate.refuses())
        return;
    if (!shown_)
        makeWindow();
    shown_->showNormal();
    shown_->raise();
    shown_->activateWindow();
}

void FileExport::makeWindow() {
    const QString tab = with_.window.controls().tabview->selectedTabViewItem().identifier;
    const auto image =
        tab == readTabIdentifier() ? ExportWindow::Image::Read : ExportWindow::Image::ToBurn;
    shown_ = new ExportWindow([this](ExportWindow::Image which) { return bytesOf(which); }, image,
                              &with_.window);
    connect(shown_, &ExportWindow::aboutToWrite, this, &FileExport::prepare);
    connect(shown_, &ExportWindow::written, this, &FileExport::save);
    connect(&with_.delegate, &AppDelegate::imageToBurnChanged, shown_, &ExportWindow::refresh);
    connect(&with_.delegate, &AppDelegate::runEnded, shown_, &ExportWindow::refresh);
}

ByteBuffer FileExport::bytesOf(ExportWindow::Image image) const {
    const AppDelegate::State &state = with_.delegate.state();
    return image == ExportWindow::Image::ToBurn ? state.output_data : state.read_from_chip_data;
}

/// What is being typed belongs to the image.
void FileExport::prepare() {
    if (!with_.gate.isClosed())
        with_.gate.commitPendingInput();
    revision_ = with_.delegate.imageRevision();
}

void FileExport::save(const ExportWindow::Content &content) {
    if (with_.gate.refuses())
        return;
    with_.messages.happened(Event::SavingBegan);
    const FileType type = fileType(content.format);
    UserFiles::Document document;
    document.title = tr("Export");
    document.suggestedName =
        suggestedName(with_.settings.stringValue(settingsKeys::device), u'.' + type.extension);
    document.typeName = type.name;
    document.extension = type.extension;
    document.bytes = [bytes = content.bytes] { return bytes; };
    const bool isTheImage = content.isWhole && content.image == ExportWindow::Image::ToBurn;
    document.saved = [this, isTheImage, revision = revision_] {
        if (isTheImage && revision == with_.delegate.imageRevision())
            with_.delegate.edits().noteSaved(with_.delegate.state().output_data);
        if (shown_)
            shown_->close();
    };
    with_.files.saveDocument(&with_.window, document);
}
