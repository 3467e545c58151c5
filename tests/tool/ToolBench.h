// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/MainQueue.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "support/RecordingConsole.h"
#include "support/RecordingLog.h"
#include "tool/ScriptedMiniPro.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>

/// Everything around a tool run in a test: settings of its own, a folder for the temporary files,
/// and the tool's double, whose behaviour is chosen by name.
class ToolBench {
public:
    ToolBench() : settings(folder.filePath(QStringLiteral("test.conf"))) {
        using namespace settingsKeys;
        settings.registerDefaults(startupDefaults());
        settings.setValue(device, QStringLiteral("AT28C256"));
        settings.setValue(temp_output_file, path("temp.bin"));
        settings.setValue(temp_read_from_chip_file, path("temp_read.bin"));
        settings.setValue(temp_search_results_file, path("temp_sr.bin"));
        settings.setValue(temp_logic_chip_test_results_file, path("temp_logtest.bin"));
        work.mkpath(QStringLiteral("."));
    }

    /// A file in the folder of the temporary files, which is the tool's working folder.
    QString path(const char *name) const { return work.filePath(QLatin1String(name)); }

    /// The command that starts the double as \a behaviour; quoted, as the tool's path goes to the
    /// shell as it stands.
    static QString doubleAs(const char *behaviour) {
        return QStringLiteral("'" TOOL_DOUBLE "' ") + QLatin1String(behaviour);
    }
    void useDouble(const char *behaviour) {
        settings.setValue(settingsKeys::miniproLocation, doubleAs(behaviour));
    }

    std::unique_ptr<ScriptedMiniPro> newRun() {
        auto run = std::make_unique<ScriptedMiniPro>(settings, log, queue);
        run->setOutputView(&console);
        return run;
    }

    /// Everything that the main queue holds, done.
    static void serviceQueue() { QCoreApplication::sendPostedEvents(); }

    /// The log without the lines that name the command.
    QStringList linesOfOutput() const {
        QStringList lines;
        for (const QString &line : log.lines)
            if (line.startsWith(u"| "))
                lines.append(line.mid(2));
        return lines;
    }

    /// How many descriptors this process has open, beside those of settings, and of their folder,
    /// that a slow disk has not taken yet. A run has none of a folder.
    static qsizetype openDescriptors() {
        const QFileInfoList open =
            QDir(QStringLiteral("/proc/self/fd"))
                .entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
        return std::count_if(open.begin(), open.end(), [](const QFileInfo &descriptor) {
            const QString file = descriptor.symLinkTarget();
            return !file.contains(u"test.conf") && !file.endsWith(u" (deleted)") &&
                   !QFileInfo(file).isDir();
        });
    }

    QTemporaryDir folder;
    QDir work{folder.filePath(QStringLiteral("work"))};
    SettingsStore settings;
    RecordingLog log;
    MainQueue queue;
    RecordingConsole console;
};
