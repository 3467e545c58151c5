// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/FileImport.h"

#include "app/MainWindow.h"
#include "app/WindowMenus.h"
#include "base/Result.h"
#include "control/ActionGate.h"
#include "control/AppDelegate.h"
#include "control/CompositionForm.h"
#include "control/Messages.h"
#include "control/UserFiles.h"
#include "devices/ChipInquiry.h"
#include "files/FreeName.h"
#include "files/PrivateFolder.h"
#include "files/StampedFile.h"
#include "files/SuggestedName.h"
#include "files/UnfinishedFile.h"
#include "formats/RecordFormat.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/FileDropArea.h"
#include "widgets/MenuEntry.h"

#include "ui_MainWindow.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>

#include <utility>

namespace {

/// True if the file at \a path begins as text of records does. Not if it is no regular file or
/// cannot be read; opening it says so.
bool beginsAsRecords(const QString &path) {
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) &&
           recordFormatOf(file.read(maxFormatBytes));
}

} // namespace

FileImport::FileImport(const ExchangeSurroundings &surroundings) : with_(surroundings) {
    removeAllUnfinished(importFolder());
    auto *drops = new FileDropArea(tr("Drop the file here to open it"),
                                   with_.window.controls().sideArea->viewport());
    connect(drops, &FileDropArea::dropped, this, &FileImport::open, Qt::QueuedConnection);
    connect(&with_.delegate.openedBinary(), &OpenedBinary::importAsked, this, &FileImport::load);
    connect(&with_.settings, &SettingsStore::valueChanged, this, [this](const QString &key) {
        if (key == settingsKeys::binary)
            sources_.clear();
    });
}

void FileImport::addEntry(WindowMenus &menus) {
    menus.offWhileRunning << addMenuEntry(*menus.file, tr("&Import\u2026"), Qt::CTRL | Qt::Key_I,
                                          this, &FileImport::choose, menus.behindOpen);
}

void FileImport::choose() {
    with_.files.openForImport(&with_.window, [this](const QString &path) { load(path); });
}

void FileImport::open(const QString &path) {
    if (beginsAsRecords(path))
        load(path);
    else
        with_.delegate.openBinary(path);
}

void FileImport::load(const QString &path) {
    if (with_.gate.refuses())
        return;
    with_.messages.happened(Event::ImportAsked);
    const Result<StampedFile> loaded = loadStamped(path);
    if (const Failure *failure = loaded.failure())
        with_.messages.say(Topic::Import,
                           tr("%1 could not be read, so nothing was imported: %2")
                               .arg(QDir::toNativeSeparators(path), failure->reason));
    else
        show(*loaded);
}

void FileImport::show(const StampedFile &file) {
    const quint8 fill = compositionInputs(with_.delegate.outlets, with_.settings).padByte();
    auto *window = new ImportWindow(file, {fill, knownChip(with_)}, &with_.window);
    connect(window, &ImportWindow::rawChosen, this,
            [this, window] { openBinary(window->path(), *window); });
    connect(window, &ImportWindow::imageChosen, this,
            [this, window](const ByteBuffer &image) { take(image, *window); });
    connect(window, &ImportWindow::partAsked, this, [this, window] { choosePart(*window); });
    connect(&with_.chip, &ChipInquiry::changed, window,
            [this, window] { window->setChip(knownChip(with_)); });
    window->show();
}

void FileImport::choosePart(ImportWindow &window) {
    with_.files.openForImport(&window, [shown = QPointer(&window)](const QString &path) {
        if (!shown)
            return;
        const Result<StampedFile> loaded = loadStamped(path);
        if (const Failure *failure = loaded.failure())
            shown->showProblem(tr("%1 could not be read: %2")
                                   .arg(QDir::toNativeSeparators(path), failure->reason));
        else
            shown->addPart(*loaded);
    });
}

void FileImport::take(const ByteBuffer &image, ImportWindow &from) {
    const QString folder = importFolder();
    const QString name = suggestedName(from.name(), {});
    if (const Result<void> made = makePrivateFolder(folder); !made)
        return from.showProblem(tr("%1 could not be written: %2")
                                    .arg(QDir::toNativeSeparators(folder), made.failure()->reason));
    const auto saved = saveUnderFreeName(folder, name, QStringLiteral(".bin"), *image);
    if (const UnsavedTogether *unsaved = saved.failure())
        return from.showProblem(
            tr("%1 could not be written: %2").arg(unsaved->path, unsaved->failure.reason));
    const QString &path = *saved;
    const QList<ImportWindow::Source> sources = from.sources();
    openBinary(path, from);
    if (with_.settings.stringValue(settingsKeys::binary) == path)
        watchSources(sources);
}

void FileImport::openBinary(const QString &path, ImportWindow &from) {
    if (with_.gate.refuses())
        return from.showProblem(tr("%1: nothing was opened.").arg(with_.gate.whatCloses()));
    from.close();
    with_.delegate.openBinary(path);
}

void FileImport::watchSources(const QList<ImportWindow::Source> &sources) {
    sources_.clear();
    writtenSources_.clear();
    for (const ImportWindow::Source &source : sources) {
        auto watch = std::make_unique<OpenedFileWatch>();
        watch->watch(source.path, source.stamp);
        connect(
            watch.get(), &OpenedFileWatch::stateChanged, this,
            [this, path = source.path](OpenedFileWatch::State state) { noteOnDisk(path, state); });
        sources_.push_back(std::move(watch));
    }
}

// A file that has gone is no trouble: its bytes were kept.
void FileImport::noteOnDisk(const QString &source, OpenedFileWatch::State state) {
    const bool wasSaid = !writtenSources_.isEmpty();
    writtenSources_.removeAll(source);
    if (state == OpenedFileWatch::State::Changed)
        writtenSources_.append(source);
    if (!writtenSources_.isEmpty())
        sayWritten(writtenSources_.last());
    else if (wasSaid)
        with_.messages.happened(Event::ImportsOnDisk);
}

// With several parts there is no button: one of them alone is not what was imported.
void FileImport::sayWritten(const QString &source) {
    Messages::Action again;
    if (sources_.size() == 1)
        again = {tr("Import again"), [this, source] { load(source); }};
    with_.messages.say(
        Topic::ImportedFile,
        tr("%1 has been written since it was imported.").arg(QDir::toNativeSeparators(source)),
        again);
}
