// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/ToolAtStart.h"

#include "app/NextStepButtons.h"
#include "control/Messages.h"
#include "language/CommandLine.h"
#include "language/NextStep.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "tool/ToolProgram.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <optional>

namespace {

class ToolAtStartWording {
    Q_DECLARE_TR_FUNCTIONS(ToolAtStart)

public:
    static QString choose(ProgramTrouble trouble, const QString &tool) {
        if (trouble == ProgramTrouble::NotExecutable)
            return tr("The programmer tool %1 is there, but it is no file that you may execute. If "
                      "it is the tool, allow that; else choose where the tool is.")
                .arg(tool);
        return tr("The programmer tool %1 is not there. Install minipro, from the packages of your "
                  "system or from its sources, or choose where it is.")
            .arg(tool);
    }
    static QString takeOther(ProgramTrouble trouble, const QString &tool, const QString &other) {
        if (trouble == ProgramTrouble::NotExecutable)
            return tr("The programmer tool %1 is there, but it is no file that you may execute; %2 "
                      "is.")
                .arg(tool, other);
        return tr("The programmer tool %1 is not there, but %2 is.").arg(tool, other);
    }
    static QString use(const QString &other) { return tr("Use %1").arg(other); }
};

} // namespace

void lookForTool(QObject &window, SettingsStore &settings, Messages &messages,
                 const NextStepButtons &steps) {
    const QString tool = settings.stringValue(settingsKeys::miniproLocation);
    const std::optional<ProgramTrouble> trouble = programTrouble(tool);
    if (!trouble)
        return;
    const QString other = QStandardPaths::findExecutable(QStringLiteral("minipro"));
    if (other.isEmpty())
        messages.say(Topic::Tool, ToolAtStartWording::choose(*trouble, tool),
                     steps.buttonFor(nextSteps::ChooseTool{}));
    else
        messages.say(Topic::Tool, ToolAtStartWording::takeOther(*trouble, tool, other),
                     {ToolAtStartWording::use(other), [&settings, other] {
                          settings.setValue(settingsKeys::miniproLocation, shellWord(other));
                      }});
    QObject::connect(&settings, &SettingsStore::valueChanged, &window,
                     [&messages](const QString &key) {
                         if (key == settingsKeys::miniproLocation)
                             messages.happened(Event::ToolChanged);
                     });
}
