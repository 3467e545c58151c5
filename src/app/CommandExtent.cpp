// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/CommandExtent.h"

#include "app/MainWindow.h"
#include "app/OtherMemoriesActions.h"
#include "devices/ChipInquiry.h"
#include "language/CommandLine.h"
#include "language/KnownMemories.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "views/NextCommand.h"
#include "widgets/PlainToolTip.h"

#include "ui_MainWindow.h"

#include <QLabel>

#include <algorithm>

namespace {

QString withWords(const QString &tip, const QString &words) {
    return words.isEmpty() ? tip : tip + u'\n' + words;
}

} // namespace

// It stands where the command is read before a press. Its room is always the same, since the
// pointer changes its words on the way to a button.
CommandExtent::CommandExtent(const Surroundings &surroundings)
    : with_(surroundings),
      label_(new QLabel(with_.window.controls().centralwidget)),
      verifyTip_(with_.window.controls().btn_verify->toolTip()),
      writeTip_(with_.window.controls().btn_write->toolTip()) {
    const Ui::MainWindow &c = with_.window.controls();
    label_->setObjectName(QStringLiteral("commandExtent"));
    c.operationRow->insertWidget(c.operationRow->indexOf(c.btn_copy_command), label_);
    const QFontMetrics metrics = label_->fontMetrics();
    label_->setMinimumWidth(std::max(metrics.horizontalAdvance(tr("code memory alone")),
                                     metrics.horizontalAdvance(tr("all memories"))));
    connect(c.nextCommand, &QLineEdit::textChanged, this, &CommandExtent::show);
    connect(&with_.settings, &SettingsStore::valueChanged, this, &CommandExtent::show);
    connect(&with_.inquiry, &ChipInquiry::changed, this, &CommandExtent::show);
    connect(&with_.memories, &OtherMemoriesActions::readTaken, this, &CommandExtent::show);
    show();
}

void CommandExtent::show() {
    const Ui::MainWindow &c = with_.window.controls();
    const NextCommand *next = c.nextCommand;
    const QString words = choosesMemory(with_.settings.stringValue(settingsKeys::miniproLocation))
                              ? QString()
                              : codeAloneWords(with_.memories.known());
    label_->setHidden(words.isEmpty());
    setPlainToolTip(*label_, words);
    c.btn_verify->setToolTip(withWords(verifyTip_, words));
    c.btn_write->setToolTip(withWords(writeTip_, words));
    switch (next->nextOperation()) {
    case ReadOperation:
        return label_->setText(tr("all memories"));
    case VerifyOperation:
    case WriteOperation:
        return label_->setText(tr("code memory alone"));
    case LogicOperation:
        break;
    }
    label_->clear();
}
