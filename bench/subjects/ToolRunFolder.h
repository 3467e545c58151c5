// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "settings/SettingsStore.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <string>

/// A folder with settings of its own, in which a shell script stands in for the programmer tool.
class ToolRunFolder {
public:
    ToolRunFolder();

    QString path(const QString &name) const { return folder_.filePath(name); }
    /// Makes \a script, run by /bin/sh with the tool's arguments, the programmer tool.
    void useTool(const QByteArray &script);
    /// The command that useTool() has put into the settings.
    std::string toolCommand() const;
    SettingsStore &settings() { return settings_; }

private:
    QTemporaryDir folder_;
    SettingsStore settings_;
};
