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

namespace {

class ToolAtStartWording {
    Q_DECLARE_TR_FUNCTIONS(ToolAtStart)

public:
    static QString install(const QString &tool) {
        return tr("The programmer tool %1 is not there. Install minipro, from the packages of your "
                  "system or from its sources, or choose where it is.")
            .arg(tool);
    }
    static QString takeOther(const QString &tool, const QString &other) {
        return tr("The programmer tool %1 is not there, but %2 is.").arg(tool, other);
    }
    static QString use(const QString &other) { return tr("Use %1").arg(other); }
};

} // namespace

void lookForTool(QObject &window, SettingsStore &settings, Messages &messages,
                 const NextStepButtons &steps) {
    const QString tool = settings.stringValue(settingsKeys::miniproLocation);
    if (!isKnownToBeMissing(tool))
        return;
    const QString other = QStandardPaths::findExecutable(QStringLiteral("minipro"));
    if (other.isEmpty())
        messages.say(Topic::Tool, ToolAtStartWording::install(tool),
                     steps.buttonFor(nextSteps::ChooseTool{}));
    else
        messages.say(Topic::Tool, ToolAtStartWording::takeOther(tool, other),
                     {ToolAtStartWording::use(other), [&settings, other] {
                          settings.setValue(settingsKeys::miniproLocation, shellWord(other));
                      }});
    QObject::connect(&settings, &SettingsStore::valueChanged, &window,
                     [&messages](const QString &key) {
                         if (key == settingsKeys::miniproLocation)
                             messages.happened(Event::ToolChanged);
                     });
}
