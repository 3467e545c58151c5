// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/RunsMenu.h"

#include "base/BoundedText.h"
#include "base/NumberWords.h"
#include "base/ShownName.h"
#include "base/TimeWords.h"
#include "control/VerdictWords.h"
#include "language/RunLog.h"
#include "views/SideWindow.h"
#include "widgets/ConsoleView.h"
#include "widgets/MenuButton.h"
#include "widgets/MenuText.h"

#include <QDialog>
#include <QMenu>
#include <QPlainTextEdit>

#include <algorithm>

namespace {

constexpr int recordColumns = 80;
constexpr int recordLines = 16;

QString recordOf(const RunRecord &run) {
    const QStringList lines = {
        RunsMenu::tr("Device: %1").arg(shownName(run.device)),
        RunsMenu::tr("Result: %1").arg(boundedText(run.outcome.words())),
        RunsMenu::tr("Begun: %1").arg(momentWords(run.startedAt)),
        RunsMenu::tr("Ended: %1").arg(momentWords(run.endedAt)),
        RunsMenu::tr("Length of the image: %1 bytes").arg(grouped(run.imageLength)),
        RunsMenu::tr("Command: %1").arg(boundedText(run.commandLine)),
        RunsMenu::tr("Exit status: %1").arg(run.status),
    };
    return lines.join(u'\n');
}

} // namespace

RunsMenu::RunsMenu(MenuButton &button, const RunLog &runs, ConsoleView &console)
    : QObject(&button), button_(button), runs_(runs), console_(console) {
    auto *menu = new QMenu(&button);
    button.setMenu(menu);
    button.setEnabled(false);
    connect(&runs, &RunLog::added, this, &RunsMenu::fill);
}

void RunsMenu::fill() {
    QMenu *menu = button_.menu();
    menu->clear();
    const QList<RunRecord> &runs = runs_.records();
    const qsizetype oldest = std::max<qsizetype>(runs.size() - maxEntries, 0);
    for (qsizetype run = runs.size() - 1; run >= oldest; --run)
        menu->addAction(menuText(headingOf(runs[run])), this, [this, run] { show(run); });
    button_.setEnabled(!runs.isEmpty());
}

void RunsMenu::show(qsizetype number) {
    console_.visibleAction()->setChecked(true);
    console_.showRun(number);
    const RunRecord &run = runs_.records()[number];
    auto *text = new QPlainTextEdit(recordOf(run));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setAccessibleName(tr("Record"));
    QDialog *window =
        makeSideWindow(button_.window(), QStringLiteral("runRecord"), headingOf(run), text);
    window->resize(recordColumns * text->fontMetrics().averageCharWidth(),
                   recordLines * text->fontMetrics().lineSpacing());
    window->show();
}
