// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/TemporaryWorkspace.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include "support/FileHelpers.h"
#include "support/RecordingLog.h"

#include <QDir>
#include <QTemporaryDir>

/// A temporary workspace in a home folder of its own, with the registered defaults, and short
/// names for its four files.
struct WorkspaceFixture {
    WorkspaceFixture() {
        qputenv("HOME", QFile::encodeName(home.path()));
        qunsetenv("XDG_DATA_HOME");
        settings.registerDefaults(settingsKeys::startupDefaults());
    }

    QString folder() const { return home.filePath(QStringLiteral(".local/share/VELM")); }
    QString output() const { return folder() + QStringLiteral("/temp.bin"); }
    QString read() const { return folder() + QStringLiteral("/temp_read.bin"); }
    QString search() const { return folder() + QStringLiteral("/temp_sr.bin"); }
    QString logic() const { return folder() + QStringLiteral("/temp_logtest.bin"); }
    /// The names in the temporary folder, hidden ones included, in one line.
    QString names() const {
        return QDir(folder())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
            .join(u' ');
    }

    QTemporaryDir home;
    SettingsStore settings{home.filePath(QStringLiteral("velm.conf"))};
    RecordingLog log;
    TemporaryWorkspace workspace{settings, log};
};
