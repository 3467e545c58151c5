// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/EditOffers.h"

#include "base/NumberWords.h"
#include "control/ActionGate.h"
#include "control/HandEdits.h"
#include "control/Messages.h"
#include "grid/CellEdit.h"
#include "image/AddressWords.h"
#include "image/BlockWords.h"
#include "image/NumberScanning.h"
#include "language/Sentences.h"
#include "widgets/MenuKeys.h"

#include <QLocale>

#include <new>

EditOffers::EditOffers(const Surroundings &surroundings)
    : edits_(surroundings.edits),
      messages_(surroundings.messages),
      secondPress_(surroundings.secondPress),
      gate_(surroundings.gate),
      controls_(surroundings.controls) {}

void EditOffers::undo() {
    step(&HandEdits::undo);
}

void EditOffers::redo() {
    step(&HandEdits::redo);
}

void EditOffers::step(std::optional<ByteRange> (HandEdits::*way)()) {
    if (gate_.refusesElseCommits())
        return;
    const bool wasRestored = edits_.state().isRestored;
    const ByteBuffer image = edits_.image();
    std::optional<ByteRange> made;
    if (!tryEdit([&] { made = (edits_.*way)(); }) || !made)
        return;
    if (edits_.state().isRestored != wasRestored)
        sayHowItCameOut();
    emit stepped(*made);
    if (edits_.image() != image)
        sayReplaced();
}

bool EditOffers::tryEdit(const std::function<void()> &work) {
    try {
        work();
        return true;
    } catch (const std::bad_alloc &) {
        messages_.say(Topic::Entry, noMemoryForEditRemark());
        return false;
    }
}

void EditOffers::restore() {
    if (gate_.refusesElseCommits() || edits_.replaced().isEmpty())
        return;
    const int edits = edits_.replaced().last().state.edits;
    const ByteRange changed = edits_.restore();
    sayHowItCameOut();
    emit stepped(changed);
    sayReplaced();
    sayRestored(edits);
    emit restored();
}

bool EditOffers::change(const Block &block) {
    if (gate_.refusesElseCommits())
        return false;
    messages_.happened(Event::BlockAsked);
    const auto possible = edits_.image() ? canBeMade(block.change, edits_.image()->size())
                                         : Result<void, BlockTrouble>(BlockTrouble::BehindEnd);
    if (const BlockTrouble *trouble = possible.failure()) {
        messages_.say(Topic::BlockRefused, blockTroubleWords(*trouble));
        return false;
    }
    std::optional<ByteRange> made;
    if (!tryEdit([&] { made = edits_.change(block.change, block.name); }))
        return false;
    if (made)
        emit changed(*made);
    messages_.happened(Event::BlockDone);
    messages_.say(Topic::Block, made ? block.done
                                     : tr("There was nothing to change: the bytes are like that "
                                          "already."));
    return true;
}

bool EditOffers::writeZeros(ByteRange bytes) {
    return fill(bytes, RepeatedBytes{QByteArray(1, '\0')});
}

bool EditOffers::fill(ByteRange bytes, const BlockContent &content) {
    return change({fillOf(bytes, content), tr("fill"), filledWords(bytes, content)});
}

const QUndoStack &EditOffers::history() const {
    return edits_.history();
}

ImageState EditOffers::state() const {
    return edits_.state();
}

const EditedBytes &EditOffers::edited() const {
    return edits_.edited();
}

void EditOffers::sayRejected(const QString &entry, qint64 offset) {
    if (scanHexInt(entry) != 0U)
        return messages_.say(Topic::Entry, rejectionRemark(entry));
    messages_.say(Topic::Entry,
                  rejectionRemark(entry) + u' ' +
                      tr("%1 in the grid fills what is selected there with 00.")
                          .arg(keyWords(menuKeys::writeZeros)),
                  {tr("Write 00 at %1").arg(addressWords(offset)), [this, offset] {
                       writeZeros({offset, 1});
                   }});
}

void EditOffers::sayComposed(const CompositionWords &words) {
    lastComposition_ = words;
    sayHowItCameOut();
    sayReplaced();
    sayRestored();
}

// An image that came back is another one: it may have been made of what there is no more.
void EditOffers::sayHowItCameOut() {
    if (edits_.state().isRestored)
        return messages_.takeBack(Topic::Composition);
    if (lastComposition_.isRefused)
        messages_.sayTrouble(Topic::Composition, lastComposition_.remarks);
    else
        messages_.say(Topic::Composition, lastComposition_.remarks);
}

void EditOffers::sayReplaced() {
    if (edits_.replaced().isEmpty())
        return messages_.takeBack(Topic::ReplacedEdits);
    const int edits = edits_.replaced().last().state.edits;
    const QString replaced = edits == 1 ? tr("1 hand edit was replaced.")
                                        : tr("%1 hand edits were replaced.").arg(grouped(edits));
    const QString dropped = edits_.hasDropped()
                                ? tr("Older ones, which are in no file, can no longer be restored.")
                                : QString();
    messages_.say(Topic::ReplacedEdits, joinedSentences(replaced, dropped),
                  {tr("Restore"), [this] { restore(); }});
}

void EditOffers::sayRestored(int edits) {
    QStringList sentences;
    if (edits > 0)
        sentences << (edits == 1 ? tr("1 hand edit was restored.")
                                 : tr("%1 hand edits were restored.").arg(grouped(edits)));
    const QStringList differing = controlsThatDiffer(edits_.state().madeWith, controls_());
    if (!differing.isEmpty())
        sentences << tr("This image was made with other values than these now: %1.")
                         .arg(QLocale().createSeparatedList(differing));
    messages_.say(Topic::RestoredImage, sentences.join(u' '));
}

void EditOffers::sayForgotten() {
    messages_.say(Topic::ForgottenEdits,
                  edits_.hasForgotten() ? tr("Older edits can no longer be taken back: they would "
                                             "have needed too much memory.")
                                        : QString());
}

void EditOffers::noteSaved(const ByteBuffer &bytes) {
    if (bytes != edits_.image())
        return;
    edits_.noteSaved();
    secondPress_.withdraw();
}

bool EditOffers::refusesToLose(SecondPress::Presser presser) {
    const HandEdits::Unsaved edits = edits_.unsaved();
    if (edits.present + edits.replaced == 0)
        return false;
    SecondPress::Question question =
        edits.present > 0 ? aboutPresent(edits.present) : aboutReplaced(edits.replaced);
    question.thing = QStringLiteral("close %1 %2 %3")
                         .arg(QString::number(edits_.state().revision),
                              QString::number(edits.present), QString::number(edits.replaced));
    return !secondPress_.confirms(question, presser);
}

SecondPress::Question EditOffers::aboutPresent(int edits) {
    return {.thing = {},
            .sentence = edits == 1 ? tr("1 hand edit is in no file. Save the data to burn, or "
                                        "close again to give it up.")
                                   : tr("%1 hand edits are in no file. Save the data to burn, or "
                                        "close again to give them up.")
                                         .arg(grouped(edits)),
            .action = {tr("Save data to burn\u2026"), [this] { emit saveAsked(); }}};
}

SecondPress::Question EditOffers::aboutReplaced(int edits) {
    return {.thing = {},
            .sentence = edits == 1 ? tr("1 hand edit that was replaced is in no file. Restore it, "
                                        "or close again to give it up.")
                                   : tr("%1 hand edits that were replaced are in no file. Restore "
                                        "them, or close again to give them up.")
                                         .arg(grouped(edits)),
            .action = {tr("Restore"), [this] { restore(); }}};
}
