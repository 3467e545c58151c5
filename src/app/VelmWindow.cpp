#include "app/VelmWindow.h"

#include "app/WindowMenus.h"
#include "app/WindowWiring.h"
#include "settings/SettingsStore.h"
#include "widgets/ConsoleView.h"

#include "ui_MainWindow.h"

VelmWindow::VelmWindow(const Surroundings &surroundings)
    : m_memory(surroundings.memoryPath),
      m_binder(surroundings.settings),
      m_favourites(surroundings.settings, surroundings.log),
      m_searcher(surroundings.settings, surroundings.log, m_queue, surroundings.beep),
      m_searchPanel(m_searcher, &m_window),
      m_delegate(surroundings.settings, surroundings.log, m_queue, surroundings.beep,
                 surroundings.panels, m_memory),
      m_runControls(m_window.controls()) {
    wireMainWindow(m_window, m_delegate, {m_binder, m_favourites, m_searcher, m_searchPanel});
    const WindowMenus menus = makeWindowMenus(m_window, m_delegate);
    m_runControls.setActions(menus.offWhileRunning, menus.stop);
    connect(&m_delegate, &AppDelegate::runInProgressChanged, this, &VelmWindow::runChanged);
    m_window.setCloseGuard([this] { return mayClose(); });
    connect(&m_window, &MainWindow::closing, this, &VelmWindow::rememberWindow);
    reportSettingsTrouble(surroundings.settings);
}

VelmWindow::~VelmWindow() = default;

void VelmWindow::start() {
    m_delegate.applicationDidFinishLaunching();
    restoreWindow();
    m_window.show();
}

void VelmWindow::raise() {
    m_window.setWindowState(m_window.windowState() & ~Qt::WindowMinimized);
    m_window.show();
    m_window.raise();
    m_window.activateWindow();
}

void VelmWindow::askToEnd() {
    if (m_delegate.runInProgress() && m_endRefused) {
        m_closeAfterRun = true;
        m_delegate.stopRun();
        return;
    }
    m_window.close();
}

// Ending the program in the middle of a run would leave a chip half written, and its socket may
// stay powered.
bool VelmWindow::mayClose() {
    if (!m_delegate.runInProgress()) {
        m_delegate.commitPendingInput();
        return true;
    }
    m_endRefused = true;
    m_window.controls().messageLine->setNotice(
        QStringLiteral("busy"), MessageLine::Severity::Warning,
        tr("The programmer tool is running, so the window stays open. Stop it first."));
    return false;
}

void VelmWindow::runChanged(bool running) {
    m_runControls.setRunning(running);
    if (running)
        return;
    m_endRefused = false;
    if (m_closeAfterRun)
        m_queue.async([this] { m_window.close(); });
}

void VelmWindow::rememberWindow() {
    m_memory.setGeometry(m_window.saveGeometry());
    m_memory.setSplitterState(m_window.controls().splitter->saveState());
    m_delegate.applicationWillTerminate();
}

void VelmWindow::restoreWindow() {
    m_window.restoreGeometry(m_memory.geometry());
    m_window.controls().splitter->restoreState(m_memory.splitterState());
}

void VelmWindow::reportSettingsTrouble(SettingsStore &settings) {
    MessageLine *line = m_window.controls().messageLine;
    const QString topic = QStringLiteral("settings");
    if (!settings.damagedCopyPath().isEmpty())
        line->setNotice(topic, MessageLine::Severity::Warning,
                        tr("The settings file was damaged; VELM starts with its defaults. The "
                           "damaged file is kept as %1.")
                            .arg(settings.damagedCopyPath()));
    connect(&settings, &SettingsStore::problem, line, [line, topic](const QString &sentence) {
        line->setNotice(topic, MessageLine::Severity::Problem, sentence);
    });
    connect(m_window.controls().textView, &ConsoleView::trimmed, line, [line] {
        line->setNotice(QStringLiteral("console"), MessageLine::Severity::Information,
                        tr("The console is full: its oldest text has gone."));
    });
}
