// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "instruments/LoopWatch.h"
#include "instruments/Stopwatch.h"
#include "subjects/ToolRunFolder.h"

#include "app/VelmWindow.h"
#include "base/Log.h"
#include "control/FilePanels.h"
#include "language/CommandLine.h"

#include <QKeySequence>

#include <functional>

class GridView;

/// Tells when the tool has ended, which the program logs.
class EndLog final : public Log {
public:
    void write(const QString &text) override {
        if (text == u"Task terminated")
            sinceEnd.restart();
    }
    Stopwatch sinceEnd;
};

class NoPanels final : public FilePanels {
public:
    void begin(QWidget *, const FilePanelRequest &,
               std::function<void(const QString &path)>) override {}
    QByteArray look() const override { return {}; }
    void setLook(const QByteArray &) override {}
};

/// The whole window, with a tool that "reads" a file.
class WindowRuns {
public:
    WindowRuns();

    /// Writes \a content into a file and gives its path.
    QString makeFile(const QString &name, const QByteArray &content) const;
    /// Makes the tool read \a file.
    void readFrom(const QString &file);

    /// Makes \a script the tool.
    void useTool(const QByteArray &script) { folder_.useTool(script); }
    /// How long the event loop did not come round at most, in milliseconds, from the press of the
    /// button of \a operation, Read or Logic test, until the console shows the run's end.
    double longestGap(Operation operation);

    /// From the end of the tool until the first page of what it read is painted.
    double read(qint64 size);
    /// The same from the press of the button on.
    double pressRead(qint64 size);
    /// The command that the window starts, the tool's arguments left out.
    std::string toolCommand() const { return folder_.toolCommand(); }
    /// From the choice of a file until the first page of the image to burn is painted.
    double open(const QString &file, qint64 size);

    /// From a click on the other pad byte until the image that is composed with it is painted.
    double composeAnew(qint64 size);

    /// Lets the image begin with \a start pad bytes and have \a size bytes, whole kibibytes.
    void padFrom(qint64 start, qint64 size);
    /// Whether the image to burn is composed from what was read.
    void useReadData(bool use);
    void selectTab(const QString &identifier);
    /// Does what the menu entry with the shortcut \a keys does. Throws if there is none.
    void trigger(const QKeySequence &keys);

    VelmWindow &velm() { return velm_; }
    GridView &grid();

private:
    Ui::MainWindow &controls() { return velm_.window().controls(); }
    void untilPage(qint64 size, const std::function<void()> &work);

    ToolRunFolder folder_;
    EndLog log_;
    NoPanels panels_;
    VelmWindow velm_{
        {folder_.settings(), log_, panels_, [] {}, folder_.path(QStringLiteral("state.conf"))}};
};
