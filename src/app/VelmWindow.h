#pragma once

#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "app/RunControls.h"
#include "app/WindowMemory.h"
#include "base/MainQueue.h"
#include "devices/DeviceSearchPanel.h"
#include "devices/UAStringManager.h"
#include "devices/device_searcher.h"
#include "widgets/KeyBinder.h"

#include <functional>

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
    };

    explicit VelmWindow(const Surroundings &surroundings);
    ~VelmWindow() override;

    /// Starts the controller up and shows the window.
    void start();
    /// Brings the window to the front.
    void raise();
    /// Asked to end from outside. Closes the window, unless a run is in progress: then the first
    /// call is refused in the message line, and the second stops the run and closes after it.
    void askToEnd();

    MainWindow &window() { return m_window; }
    AppDelegate &delegate() { return m_delegate; }

private:
    bool mayClose();
    void runChanged(bool running);
    void rememberWindow();
    void restoreWindow();
    void reportSettingsTrouble(SettingsStore &settings);

    MainQueue m_queue;
    WindowMemory m_memory;
    MainWindow m_window;
    KeyBinder m_binder;
    UAStringManager m_favourites;
    device_searcher m_searcher;
    DeviceSearchPanel m_searchPanel;
    AppDelegate m_delegate;
    RunControls m_runControls;
    bool m_endRefused = false;
    bool m_closeAfterRun = false;
};
