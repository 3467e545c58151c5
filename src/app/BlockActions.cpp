// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/BlockActions.h"

#include "app/MainWindow.h"
#include "app/WindowMenus.h"
#include "blocks/FillWindow.h"
#include "blocks/InsertFileWindow.h"
#include "control/ActionGate.h"
#include "control/AppDelegate.h"
#include "control/Messages.h"
#include "control/UserFiles.h"
#include "files/ByteBuffer.h"
#include "files/StampedFile.h"
#include "grid/GridSteps.h"
#include "grid/GridView.h"
#include "grid/ShownTab.h"
#include "image/BlockWords.h"

#include "ui_MainWindow.h"
#include "widgets/MenuEntry.h"
#include "widgets/MenuKeys.h"
#include "widgets/WindowFront.h"

#include <QDir>
#include <QFileInfo>

BlockActions::BlockActions(const Surroundings &surroundings, QObject *parent)
    : QObject(parent), with_(surroundings) {
    connect(&reading_, &PasteReading::finished, this, &BlockActions::takeText);
    connect(&reading_, &PasteReading::outOfMemory, this, &BlockActions::forgetText);
}

QAction *BlockActions::addEntry(WindowMenus &menus, const QString &text, const QString &toolTip,
                                void (BlockActions::*action)()) {
    QAction *entry = addMenuEntry(*menus.edit, text, {}, this, action, menus.behindCopy);
    entry->setToolTip(toolTip);
    menus.offWhileRunning << entry;
    return entry;
}

void BlockActions::addEntries(WindowMenus &menus) {
    // The keys mean something else in a field.
    const auto setGridKey = [this](QAction *entry, const QKeySequence &key) {
        entry->setShortcut(key);
        entry->setShortcutContext(Qt::WidgetShortcut);
        grid().addAction(entry);
    };
    menus.edit->insertSeparator(menus.behindCopy);
    setGridKey(addEntry(menus, tr("Pas&te"),
                        tr("Write the bytes that the clipboard holds as text over those from the "
                           "cursor on"),
                        &BlockActions::pasteBytes),
               QKeySequence(Qt::CTRL | Qt::Key_V));
    addEntry(menus, tr("Paste c&haracters"),
             tr("Write the characters on the clipboard over the bytes from the cursor on"),
             &BlockActions::pasteCharacters);
    addEntry(menus, tr("F&ill\u2026"), tr("Fill bytes with a pattern, or with random ones"),
             &BlockActions::fill);
    setGridKey(addEntry(menus, tr("&Write 00"), tr("Fill the selected bytes with 00"),
                        &BlockActions::writeZeros),
               menuKeys::writeZeros);
    addEntry(menus, tr("Insert a fil&e\u2026"), tr("Take the bytes of a file in at an address"),
             &BlockActions::insertFile);
    menus.edit->setToolTipsVisible(true);
}

GridView &BlockActions::grid() const {
    return *with_.window.controls().tableview;
}

qint64 BlockActions::imageSize() const {
    return lengthOf(with_.delegate.state().output_data);
}

Result<void, QString> BlockActions::mayChangeHere() const {
    if (shownTab(*with_.window.controls().tabview) == ShownTab::ToBurn)
        return {};
    return tr("Only the data to burn can be changed: show them first (%1).")
        .arg(keyWords(menuKeys::showDataToBurn));
}

std::optional<qint64> BlockActions::placeForBytes() const {
    const QList<ByteRange> selected = grid().selection().ranges();
    const qint64 size = imageSize();
    if (selected.size() == 1)
        return selected.first().offset;
    const bool isBehindLast = byteOfCell(grid().currentIndex()) == size;
    return size == 0 || (selected.isEmpty() && isBehindLast) ? std::optional(size) : std::nullopt;
}

bool BlockActions::refusesElseCommits() {
    if (with_.gate.refusesElseCommits())
        return true;
    with_.messages.happened(Event::BlockAsked);
    return refusesUnless(mayChangeHere());
}

// True, and said, if something speaks against it.
bool BlockActions::refusesUnless(const Result<void, QString> &allowed) {
    if (const QString *why = allowed.failure())
        with_.messages.say(Topic::BlockRefused, *why);
    return !allowed;
}

bool BlockActions::change(const EditOffers::Block &block) {
    return with_.delegate.edits().change(block);
}

void BlockActions::writeZeros() {
    if (refusesElseCommits())
        return;
    const ByteRange selected = grid().selection().bytes();
    if (selected.length == 0)
        with_.messages.say(Topic::BlockRefused,
                           grid().selection().ranges().isEmpty()
                               ? tr("No byte is selected.")
                               : tr("The selected rows do not follow each other."));
    else
        with_.delegate.edits().writeZeros(selected);
}

void BlockActions::fill() {
    if (refusesElseCommits())
        return;
    const qint64 size = imageSize();
    if (size == 0)
        return with_.messages.say(Topic::BlockRefused, tr("There are no bytes to fill."));
    showFillWindow();
    const ByteRange selected = grid().selection().bytes();
    // A single byte is just the cursor: filling runs from there to the end.
    fillWindow_->offer(selected.length == 1 ? ByteRange{selected.offset, size - selected.offset}
                                            : selected,
                       byteOfCell(grid().currentIndex()).value_or(selected.offset));
}

void BlockActions::showFillWindow() {
    if (!fillWindow_) {
        fillWindow_ = new FillWindow(imageSize(), &with_.window);
        connect(fillWindow_, &FillWindow::chosen, this, &BlockActions::fillBytes);
        connect(&with_.delegate, &AppDelegate::imageToBurnChanged, fillWindow_,
                [this] { fillWindow_->setImageSize(imageSize()); });
    }
    bringUp(*fillWindow_);
}

void BlockActions::fillBytes(ByteRange where, const BlockContent &content) {
    const auto allowed = mayChangeHere();
    if (const QString *why = allowed.failure())
        return fillWindow_->showProblem(*why);
    if (with_.delegate.edits().fill(where, content))
        fillWindow_->close();
    else
        fillWindow_->showProblem(tr("Nothing was filled: the main window says why."));
}

void BlockActions::insertFile() {
    if (refusesElseCommits())
        return;
    with_.files.openForInsertion(&with_.window, [this](const QString &path) { loadFile(path); });
}

void BlockActions::loadFile(const QString &path) {
    if (refusesElseCommits())
        return;
    const Result<StampedFile> loaded = loadStamped(path);
    if (const Failure *failure = loaded.failure())
        return with_.messages.say(Topic::BlockRefused,
                                  tr("%1 could not be read, so nothing was inserted: %2")
                                      .arg(QDir::toNativeSeparators(path), failure->reason));
    if (insertWindow_)
        insertWindow_->close();
    insertWindow_ = new InsertFileWindow(*loaded, placeForBytes(), imageSize(), &with_.window);
    connect(insertWindow_, &InsertFileWindow::chosen, this, &BlockActions::insert);
    connect(&with_.delegate, &AppDelegate::imageToBurnChanged, insertWindow_,
            [this, window = insertWindow_.data()] { window->setImageSize(imageSize()); });
    insertWindow_->show();
}

void BlockActions::insert(const BlockChange &change) {
    const auto allowed = mayChangeHere();
    if (const QString *why = allowed.failure())
        return insertWindow_->showProblem(*why);
    const QString name = QFileInfo(insertWindow_->path()).fileName();
    const ByteRange written = change.written();
    const bool overwrites = change.replaced > 0;
    if (!this->change(
            {change, tr("insertion"),
             overwrites ? fileWrittenWords(name, written) : fileInsertedWords(name, written)}))
        return insertWindow_->showProblem(tr("Nothing was inserted: the main window says why."));
    insertWindow_->close();
    grid().selection().select(written);
}
