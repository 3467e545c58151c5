// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// How what the clipboard holds comes into the data to burn.

#include "app/BlockActions.h"

#include "blocks/PasteWords.h"
#include "control/ActionGate.h"
#include "control/AppDelegate.h"
#include "control/Messages.h"
#include "grid/GridSteps.h"
#include "grid/GridView.h"
#include "image/AddressWords.h"
#include "image/BlockWords.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <new>
#include <optional>
#include <utility>

namespace {

/// Nothing if there is not enough memory for it. QClipboard::text() goes through bytes and back, a
/// third of a second for 100 MB.
std::optional<QString> clipboardText() {
    try {
        const QMimeData *held = QGuiApplication::clipboard()->mimeData();
        return held ? held->text() : QString();
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

} // namespace

void BlockActions::paste(PastedText::As as) {
    if (refusesElseCommits())
        return;
    const auto place = placeForBytes();
    if (!place)
        return with_.messages.say(Topic::BlockRefused,
                                  tr("Put the cursor on the first byte to paste over."));
    const std::optional<QString> text = clipboardText();
    if (!text)
        return sayNoMemory();
    if (text->isEmpty())
        return with_.messages.say(Topic::BlockRefused, tr("There is no text on the clipboard."));
    read({*text, as, *place, with_.delegate.imageRevision()});
}

void BlockActions::read(const Paste &paste) {
    paste_ = paste;
    reading_.read(paste.text, paste.as);
    if (reading_.isReading())
        with_.messages.say(Topic::Clipboard, tr("Reading the clipboard\u2026"));
}

void BlockActions::takeText(const PastedText &text) {
    with_.messages.happened(Event::ClipboardRead);
    const Paste paste = std::exchange(paste_, {});
    if (refusesToPaste(paste.revision))
        return;
    const auto bytes = text.result();
    if (const PasteTrouble *trouble = bytes.failure())
        offerCharacters(paste, *trouble);
    else if (bytes->size() > imageSize() - paste.offset)
        offerLength(paste, *bytes);
    else
        overwrite(paste.offset, *bytes);
}

bool BlockActions::refusesToPaste(quint64 revision) {
    return refusesUnless(mayPaste(revision));
}

// What is pasted is meant for the image of \a revision. Committing an open entry makes it another.
Result<void, QString> BlockActions::mayPaste(quint64 revision) {
    if (with_.gate.isClosed())
        return tr("Nothing was pasted, since the tool was at work.");
    with_.gate.commitPendingInput();
    if (revision != with_.delegate.imageRevision())
        return tr("The data to burn have changed meanwhile: nothing was pasted.");
    const auto here = mayChangeHere();
    if (const QString *why = here.failure())
        return tr("Nothing was pasted. %1").arg(*why);
    return {};
}

void BlockActions::forgetText() {
    with_.messages.happened(Event::ClipboardRead);
    paste_ = {};
    sayNoMemory();
}

void BlockActions::sayNoMemory() {
    with_.messages.say(Topic::BlockRefused,
                       tr("There is not enough memory for what is on the clipboard."));
}

void BlockActions::offerCharacters(const Paste &paste, const PasteTrouble &trouble) {
    Messages::Action offer;
    if (paste.as == PastedText::As::Bytes)
        offer = {tr("Paste characters"), [this, paste] {
                     read({paste.text, PastedText::As::Characters, paste.offset, paste.revision});
                 }};
    with_.messages.say(Topic::BlockRefused,
                       tr("Nothing was pasted at %1. %2")
                           .arg(addressWords(paste.offset), pasteTroubleWords(trouble)),
                       offer);
}

void BlockActions::offerLength(const Paste &paste, const QByteArray &bytes) {
    with_.messages.say(
        Topic::BlockRefused,
        tr("Nothing was pasted: %1").arg(doNotFitWords(bytes.size(), paste.offset, imageSize())),
        {tr("Paste and lengthen"), [this, offset = paste.offset, revision = paste.revision, bytes] {
             if (!with_.gate.refuses() && !refusesToPaste(revision))
                 overwrite(offset, bytes);
         }});
}

// The cursor goes on behind what was pasted, or to its last byte where there is no cell behind: if
// it stayed, the same key would overwrite all of it.
void BlockActions::overwrite(qint64 offset, const QByteArray &bytes) {
    const BlockChange change = overwriteOf(offset, bytes, imageSize());
    if (!this->change({change, tr("paste"), pastedWords(change.written())}))
        return;
    const GridModel &model = *grid().gridModel();
    const QModelIndex next = cellOfByte(model, change.written().end());
    grid().moveTo(next.isValid() ? next : cellOfByte(model, change.written().end() - 1));
}
