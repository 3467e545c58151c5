// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "app/CommandExtent.h"
#include "app/DeviceOffers.h"
#include "app/FileExport.h"
#include "app/FileImport.h"
#include "app/MainWindow.h"
#include "app/NextStepButtons.h"
#include "app/OtherMemoriesActions.h"
#include "app/RunControls.h"
#include "app/ViewControls.h"
#include "base/MainQueue.h"
#include "base/WorkState.h"
#include "control/AppDelegate.h"
#include "control/LogicSeries.h"
#include "control/Messages.h"
#include "control/UserFiles.h"
#include "control/VerdictLine.h"
#include "devices/ChipInquiry.h"
#include "devices/DeviceSearchPanel.h"
#include "devices/KnownDevices.h"
#include "devices/UAStringManager.h"
#include "devices/device_searcher.h"
#include "files/FolderGuard.h"
#include "language/RunLog.h"
#include "settings/ToolTrust.h"
#include "settings/WindowMemory.h"
#include "tool/LatePrinters.h"
#include "views/RunProgressView.h"
#include "widgets/KeyBinder.h"

#include <functional>
#include <optional>

struct WindowMenus;

/// The whole program but for its process: the window, its controller and what binds the two, put
/// together from what a process, a test or a demonstration supplies.
class VelmWindow final : public QObject {
    Q_OBJECT

public:
    /// What the window takes from outside; all must outlive it.
    struct Surroundings {
        SettingsStore &settings;
        Log &log;
        FilePanels &panels;
        std::function<void()> beep;
        QString memoryPath; ///< file of what the program remembers for itself
        /// Says whether the folder of the temporary files is this program's; without it, it is.
        FolderGuard mayUseFolder = {};
    };

    explicit VelmWindow(const Surroundings &surroundings);
    ~VelmWindow() override;

    /// Starts the controller up and shows the window. False, with nothing shown, if the folder of
    /// temporary files turns out to be another start's.
    bool start();
    /// Opens the file at the absolute \a path, as the binary or, if it is text of records, in an
    /// import window.
    void openFile(const QString &path) { fileImport_.open(path); }
    /// Brings the window to the front; not any more once it has been closed.
    void raise();
    /// Asked to end from outside. Closes the window, unless the tool runs, for an operation or a
    /// search: then the first call is refused in the message line, and the second stops the tool
    /// and closes after its end. Edits that are in no file are asked about in their turn: the call
    /// that follows gives them up.
    void askToEnd();

    MainWindow &window() { return window_; }
    AppDelegate &delegate() { return delegate_; }
    DeviceSearchPanel &searchPanel() { return searchPanel_; }
    const WorkState &work() const { return work_; }
    /// The runs of this start, the oldest first.
    const QList<RunRecord> &runs() const { return runLog_.records(); }

private:
    WindowMenus makeMenus();
    void followAll(const WindowMenus &menus);
    bool isAtRest() const;
    bool preparesToClose();
    void sayThatItStaysOpen();
    void workChanged(Work now);
    void followVerdicts();
    std::optional<ShownNow> shownNow() const;
    void followRuns();
    void followImages(const WindowMenus &menus);
    void followChips();
    void followLogicTests();
    LogicReport shownReport() const;
    void showSeries();
    void followLatePrinters();
    void saySomethingStillPrints(bool some);
    void closeDown();
    void restoreWindow();
    bool isInOthersFolder() const;
    void claimSettings();
    void followSettings();

    SettingsStore &settings_;
    const FolderGuard mayUseFolder_;
    MainQueue queue_;
    WorkState work_;
    LatePrinters latePrinters_;
    WindowMemory memory_;
    ToolTrust toolTrust_;
    MainWindow window_;
    Messages messages_;
    ActionGate gate_;
    KeyBinder binder_;
    UAStringManager favourites_;
    UserFiles files_;
    device_searcher searcher_;
    DeviceSearchPanel searchPanel_;
    AppDelegate delegate_;
    ChipInquiry chipInquiry_;
    KnownDevices knownDevices_;
    DeviceOffers deviceOffers_;
    LogicSeries logicSeries_;
    FileImport fileImport_;
    FileExport fileExport_;
    OtherMemoriesActions otherMemories_;
    CommandExtent commandExtent_;
    RunLog runLog_;
    NextStepButtons nextSteps_;
    VerdictLine verdictLine_;
    RunProgressView progressView_;
    RunControls runControls_;
    ViewControls viewControls_;
    bool endRefused_ = false;
    bool closeWhenIdle_ = false;
    bool askedFromOutside_ = false;
    bool closed_ = false;
};
