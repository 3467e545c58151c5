// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "settings/IniFile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <chrono>
#include <optional>

class Log;

/// What a file panel is opened for. Each kind begins in the folder where it was used last.
enum class PanelPurpose { Open, Save, Tool };

/// How the user has the views of the window.
struct ViewChoices {
    int gridPercent = 100; ///< size of the letters, in percent of the usual
    int consolePercent = 100;
    bool wrapsConsole = false;
    bool showsConsole = true;
    bool showsBoth = true; ///< both images beside each other, where there is room
    bool movesOn = true;   ///< two digits typed into a cell end its entry

    friend bool operator==(const ViewChoices &, const ViewChoices &) = default;
};

/// What the program remembers for itself between runs (never the user's settings): where the
/// window stood, which folders and devices were used last, which tool was trusted. Kept in an INI
/// file of its own; a file that is missing, damaged or read-only means that nothing is remembered,
/// and a line in the log.
class WindowMemory {
public:
    /// How long a change waits for another program and for the disk, which may follow.
    static constexpr std::chrono::milliseconds patience{20};

    /// Uses the INI file at the absolute \a filePath. The first time that it cannot be written,
    /// \a log, if there is one, says so.
    explicit WindowMemory(const QString &filePath, Log *log = nullptr);

    QByteArray geometry() const;
    void setGeometry(const QByteArray &geometry);

    QByteArray splitterState() const;
    void setSplitterState(const QByteArray &state);

    ViewChoices viewChoices() const;
    void setViewChoices(const ViewChoices &choices);

    /// The folder that the file panel for \a purpose showed last; empty if none.
    QString lastFolder(PanelPurpose purpose) const;
    void setLastFolder(PanelPurpose purpose, const QString &folder);

    /// How the file panels looked last, in the toolkit's own form; empty if that is not known.
    QByteArray panelLook() const;
    void setPanelLook(const QByteArray &look);

    /// Files opened lately, the newest first, at most eight.
    QStringList recentFiles() const;
    /// Nothing is remembered where the older ones cannot be read, so that they are not lost.
    void addRecentFile(const QString &path);

    /// The devices that the tool was run for lately, the newest first, at most ten.
    QStringList recentDevices() const;
    void addRecentDevice(const QString &device);

    /// The text of the programmer tool that the user has set or let run; nothing if none was.
    std::optional<QString> trustedTool() const;
    void setTrustedTool(const QString &tool);

private:
    void write(const QVariantMap &values);
    void write(const QString &key, const QVariant &value);
    void remember(const QString &key, const QString &newest, qsizetype limit);
    void sayLost(const Failure &failure);

    IniFile file_;
    Log *log_;
    bool saidLost_ = false;
};
