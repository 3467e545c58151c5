// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

#include <optional>

class SettingsStore;
class WindowMemory;

/// Which text of the programmer tool, a command for the shell, comes from the user. A settings file
/// may be somebody else's, and the tool in it their command. The default is trusted, and the text
/// that was last set in this program or that the user has let run; the memory keeps it for the
/// next start.
class ToolTrust final : public QObject {
    Q_OBJECT

public:
    /// Follows what is set in \a settings, not what their file comes to hold in other ways. Both
    /// must outlive it.
    ToolTrust(SettingsStore &settings, WindowMemory &memory);

    /// True if the shell may have \a tool without a question.
    bool covers(const QString &tool) const;
    /// The user has set \a tool or let it run: it is the one that is trusted now.
    void trust(const QString &tool);

private:
    WindowMemory &memory_;
    /// Kept here as well, for a memory that forgets at once.
    std::optional<QString> trusted_;
};
