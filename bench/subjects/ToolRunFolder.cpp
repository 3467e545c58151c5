// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "subjects/ToolRunFolder.h"

#include "subjects/Samples.h"

#include "settings/SettingsKeys.h"

#include <QDir>

ToolRunFolder::ToolRunFolder() : settings_(path(QStringLiteral("velm.conf"))) {
    using namespace settingsKeys;
    const auto keep = [this](const QString &key, const QString &name) {
        settings_.setValue(key, path(QStringLiteral("workspace/") + name));
    };
    settings_.registerDefaults(startupDefaults());
    settings_.setValue(device, QStringLiteral("W27C512@DIP28"));
    keep(temp_output_file, QStringLiteral("temp.bin"));
    keep(temp_read_from_chip_file, QStringLiteral("temp_read.bin"));
    keep(temp_search_results_file, QStringLiteral("temp_sr.bin"));
    keep(temp_logic_chip_test_results_file, QStringLiteral("temp_logtest.bin"));
    QDir().mkpath(path(QStringLiteral("workspace")));
}

void ToolRunFolder::useTool(const QByteArray &script) {
    const QString tool = path(QStringLiteral("tool.sh"));
    writeFile(tool, script);
    settings_.setValue(settingsKeys::miniproLocation, QStringLiteral("/bin/sh '%1'").arg(tool));
}

std::string ToolRunFolder::toolCommand() const {
    return settings_.stringValue(settingsKeys::miniproLocation).toStdString();
}
