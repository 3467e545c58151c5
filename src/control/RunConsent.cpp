// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/RunConsent.h"

#include "control/ActionGate.h"
#include "control/BurnFile.h"
#include "control/SecondPress.h"
#include "files/FileStamp.h"
#include "language/Sentences.h"
#include "settings/FilePaths.h"
#include "settings/SettingsStore.h"
#include "settings/ToolTrust.h"

#include <optional>
#include <utility>

// What the tool writes there would take the place of what it wrote for the other window.
bool RunConsent::refusesForeignFolder() const {
    const Result<void> ours = with_.mayUseFolder();
    if (const Failure *failure = ours.failure()) {
        with_.secondPress.withdraw();
        with_.messages.sayTrouble(Topic::ImageFile,
                                  folderMayNotBeUsed(temporaryFolder(with_.settings), *failure));
    }
    return !ours;
}

bool RunConsent::asks(BurnSituation burn, quint64 revision, RunPress press) {
    const QString confirmed = std::exchange(confirmed_, QString());
    if (refusesForeignFolder())
        return true;
    const ToolSettings tool = ToolSettings::readFrom(with_.settings);
    burn.command = {operationCommand(burn.operation, tool), oddCharacters(burn.operation, tool),
                    !with_.toolTrust.covers(tool.tool)};
    const std::optional<BurnDoubt> doubt = doubtAbout(burn);
    if (!doubt) {
        with_.secondPress.withdraw();
        return false;
    }
    SecondPress::Question question;
    question.thing =
        QStringLiteral("%1 %2 %3 %4 %5 %6")
            .arg(doubt->key, QString::number(burn.operation), QString::number(revision), burn.path,
                 FileStamp::mark(burn.path), burn.command.command);
    question.sentence = doubt->sentence;
    if (doubt->canWriteAgain && burn.hasImage)
        question.action = {tr("Write the image file again"), [this] { writeAgain(); }};
    const bool isConfirmed = press == RunPress::Repeated && question.thing == confirmed;
    if (!isConfirmed && !with_.secondPress.confirms(question))
        return true;
    confirmed_ = question.thing;
    with_.toolTrust.trust(tool.tool);
    return false;
}

void RunConsent::writeAgain() const {
    if (with_.gate.refuses())
        return;
    with_.secondPress.withdraw();
    with_.burnFile.writeAgain();
}
