// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/OtherMemoriesActions.h"

#include "app/MainWindow.h"
#include "app/WindowMenus.h"
#include "control/ActionGate.h"
#include "control/AppDelegate.h"
#include "control/FilePanels.h"
#include "control/Messages.h"
#include "control/UserFiles.h"
#include "devices/ChipInquiry.h"
#include "files/SuggestedName.h"
#include "image/OtherMemories.h"
#include "imageviews/MemoriesWords.h"
#include "language/DeviceDescription.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "tool/ScriptedMiniPro.h"
#include "widgets/WindowFront.h"

#include <QMenu>

#include <variant>

namespace {

KnownMemories knownFrom(const DeviceAnswer &answer) {
    const auto *chip = std::get_if<DeviceDescription>(&answer);
    return {.others = chip && chip->sections.size() > 1};
}

UserFiles::Set setOf(const ReadMemories &memories) {
    UserFiles::Set set;
    set.parts = {{QStringLiteral(".bin"), *memories.code}};
    for (const OtherMemory memory : otherMemories) {
        if (const ByteBuffer &bytes = memories.others.bytesOf(memory))
            set.parts.append({endingOf(memory), *bytes});
        else
            set.absentEndings << endingOf(memory);
    }
    return set;
}

} // namespace

OtherMemoriesActions::OtherMemoriesActions(const Surroundings &surroundings)
    : with_(surroundings),
      watch_({with_.settings, with_.work, with_.mayUseFolder}),
      showEntry_(new QAction(tr("Ot&her memories\u2026"), this)),
      saveEntry_(new QAction(tr("Save the se&t\u2026"), this)) {
    showEntry_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    showEntry_->setAutoRepeat(false);
    showEntry_->setToolTip(tr("What the newest Read brought besides code memory"));
    saveEntry_->setToolTip(tr("Save the data read from the chip and its other memories"));
    connect(showEntry_, &QAction::triggered, this, &OtherMemoriesActions::show,
            Qt::QueuedConnection);
    connect(saveEntry_, &QAction::triggered, this, &OtherMemoriesActions::saveSet,
            Qt::QueuedConnection);
    connect(&with_.delegate, &AppDelegate::runMade, this, &OtherMemoriesActions::follow);
    connect(&with_.delegate, &AppDelegate::runEnded, this, [this](const RunRecord &record) {
        watch_.takeRun(record, with_.delegate.state().read_from_chip_data);
    });
    connect(&watch_, &OtherMemoriesWatch::readTaken, this, &OtherMemoriesActions::takeRead);
    connect(&with_.work, &WorkState::changed, this, &OtherMemoriesActions::showState);
    showState();
}

void OtherMemoriesActions::addEntries(const WindowMenus &menus) {
    menus.file->insertAction(menus.behindSave, saveEntry_);
    menus.view->insertAction(menus.behindTabs, showEntry_);
}

KnownMemories OtherMemoriesActions::known() const {
    return watch_.knownOf(with_.settings.stringValue(settingsKeys::device)) |
           knownFrom(with_.inquiry.known());
}

void OtherMemoriesActions::follow(ScriptedMiniPro *run) {
    run->setKnownMemories(known());
    watch_.follow(run);
}

void OtherMemoriesActions::takeRead() {
    emit readTaken();
    sayWhatCame();
    showState();
    if (!shown_)
        return;
    if (watch_.newest())
        shown_->showMemories(*watch_.newest(),
                             codeAloneWords(watch_.knownOf(watch_.newest()->device)));
    else
        shown_->close();
}

void OtherMemoriesActions::sayWhatCame() {
    const QString sentence = unreadWords(watch_.unread());
    if (!watch_.newest()) {
        if (!sentence.isEmpty())
            with_.messages.sayTrouble(Topic::OtherMemories, sentence);
        return;
    }
    const QString came = tr("Also read: %1. Write and Verify leave them out.")
                             .arg(memoriesWords(watch_.newest()->others));
    const Messages::Action look{tr("Show them"), [this] { show(); }};
    if (sentence.isEmpty())
        with_.messages.say(Topic::OtherMemories, came, look);
    else
        with_.messages.sayTrouble(Topic::OtherMemories, came + u' ' + sentence, look);
}

void OtherMemoriesActions::showState() {
    const bool isThere = watch_.newest().has_value();
    showEntry_->setEnabled(isThere);
    saveEntry_->setEnabled(isThere && with_.work.isIdle());
    if (shown_)
        shown_->setSaving(with_.work.isIdle());
}

void OtherMemoriesActions::show() {
    if (!watch_.newest())
        return;
    if (!shown_) {
        shown_ = new MemoriesWindow(&with_.window);
        shown_->setAttribute(Qt::WA_DeleteOnClose);
        connect(shown_, &MemoriesWindow::saveRequested, this, &OtherMemoriesActions::saveSet);
        shown_->showMemories(*watch_.newest(),
                             codeAloneWords(watch_.knownOf(watch_.newest()->device)));
        showState();
    }
    bringUp(*shown_);
}

void OtherMemoriesActions::saveSet() {
    if (with_.gate.refuses() || !watch_.newest())
        return;
    const ReadMemories &memories = *watch_.newest();
    UserFiles::Set set = setOf(memories);
    set.title = tr("Save the set");
    set.suggestedName = suggestedName(memories.device, set.parts.first().ending);
    set.typeName = fileTypes::binaryImages();
    // The window may cover the message line, where the rest is said.
    set.named = [this] {
        if (shown_)
            shown_->close();
    };
    with_.files.saveSet(&with_.window, set);
}
