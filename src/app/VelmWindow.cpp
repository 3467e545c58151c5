// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/VelmWindow.h"

#include "app/BlockWiring.h"
#include "app/ChipWiring.h"
#include "app/ComparisonWiring.h"
#include "app/FactsWiring.h"
#include "app/ToolAtStart.h"
#include "app/WindowMenus.h"
#include "app/WindowWiring.h"
#include "files/FileStamp.h"
#include "imageviews/SideBySide.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "tool/ScriptedMiniPro.h"
#include "views/RepeatControls.h"
#include "views/RunsMenu.h"
#include "widgets/ConsoleView.h"
#include "widgets/WindowFront.h"

#include "ui_MainWindow.h"

#include <QScopedValueRollback>
#include <QScreen>

#include <utility>
#include <variant>

namespace {

/// As large as the window is made for, where the screen has room for that, for its frame, and for
/// a panel: under Wayland nobody tells how much of the screen that takes.
QSize firstSize(const QWidget &window) {
    constexpr QSize frameAndPanel(16, 96);
    const QSize room = window.screen()->availableSize() - frameAndPanel;
    return window.size().boundedTo(room).expandedTo(window.minimumSizeHint());
}

} // namespace

VelmWindow::VelmWindow(const Surroundings &surroundings)
    : settings_(surroundings.settings),
      mayUseFolder_(surroundings.mayUseFolder),
      memory_(surroundings.memoryPath, &surroundings.log),
      toolTrust_(surroundings.settings, memory_),
      messages_(*window_.controls().messageLine),
      gate_(work_, messages_),
      binder_(surroundings.settings),
      favourites_(surroundings.settings, surroundings.log),
      files_({surroundings.panels, memory_, surroundings.log, messages_, gate_}),
      searcher_(surroundings.settings, toolTrust_, surroundings.log, queue_, surroundings.beep,
                work_),
      searchPanel_(searcher_, &window_),
      delegate_({surroundings.settings, toolTrust_, surroundings.log, queue_, surroundings.beep,
                 work_, messages_, gate_, files_, surroundings.mayUseFolder}),
      chipInquiry_({surroundings.settings, toolTrust_, work_}),
      knownDevices_(surroundings.settings, memory_),
      deviceOffers_(knownDevices_, *window_.controls().uaTextField, searchPanel_),
      logicSeries_({work_, gate_, [this] { return settings_.stringValue(settingsKeys::device); },
                    [this](RunPress press) {
                        return delegate_.testLogic(window_.controls().btn_logic, press);
                    },
                    [this] { return shownReport(); }}),
      fileImport_({window_, delegate_, files_, settings_, gate_, messages_, chipInquiry_}),
      fileExport_({window_, delegate_, files_, settings_, gate_, messages_, chipInquiry_}),
      otherMemories_({window_, delegate_, files_, chipInquiry_, settings_, work_, gate_, messages_,
                      surroundings.mayUseFolder}),
      commandExtent_({window_, settings_, chipInquiry_, otherMemories_}),
      nextSteps_({window_, delegate_, surroundings.settings, files_, gate_}),
      verdictLine_(runLog_, messages_, [this] { return shownNow(); }),
      progressView_(*window_.controls().busy),
      runControls_(window_.controls()),
      viewControls_(window_.controls()) {
    wireMainWindow(
        window_, delegate_,
        {binder_, favourites_, searcher_, searchPanel_, work_, messages_, gate_, files_});
    searcher_.setFolderGuard(surroundings.mayUseFolder);
    followAll(makeMenus());
}

VelmWindow::~VelmWindow() {
    // Closing the window asks the controller about a cell that is open, and it goes first.
    window_.controls().tableview->entries().commit();
    settings_.setGuard({});
}

WindowMenus VelmWindow::makeMenus() {
    WindowMenus menus = makeWindowMenus(window_, delegate_, work_, gate_, files_);
    fileImport_.addEntry(menus);
    fileExport_.addEntry(menus);
    otherMemories_.addEntries(menus);
    wireBlocks({window_, delegate_, files_, gate_, messages_}, menus);
    runControls_.setActions(menus.offWhileRunning, menus.stop);
    return menus;
}

void VelmWindow::followAll(const WindowMenus &menus) {
    settings_.setGuard([this] { return work_.isIdle(); });
    connect(&settings_, &SettingsStore::changeRefused, this, [this] { gate_.refuses(); });
    connect(&work_, &WorkState::changed, this, &VelmWindow::workChanged);
    followVerdicts();
    followRuns();
    followImages(menus);
    followChips();
    followLogicTests();
    followLatePrinters();
    window_.setCloseGuard([this] { return preparesToClose(); });
    connect(&window_, &MainWindow::closing, this, &VelmWindow::closeDown);
    followSettings();
}

bool VelmWindow::start() {
    if (isInOthersFolder())
        return false;
    claimSettings();
    delegate_.applicationDidFinishLaunching();
    // It may have been missing until now, and another start with it.
    if (isInOthersFolder())
        return false;
    lookForTool(*this, settings_, messages_, nextSteps_);
    restoreWindow();
    window_.show();
    return true;
}

// The program is about to end with its window: one that came back would have nothing behind it.
void VelmWindow::raise() {
    if (!closed_)
        bringUp(window_);
}

void VelmWindow::askToEnd() {
    if (!isAtRest() && endRefused_) {
        closeWhenIdle_ = true;
        logicSeries_.stop();
        delegate_.stopRun();
        return;
    }
    const QScopedValueRollback asked(askedFromOutside_, true);
    window_.close();
}

// Between the runs of a series nothing runs, and yet it goes on.
bool VelmWindow::isAtRest() const {
    return work_.isIdle() && !logicSeries_.isRunning();
}

// Ending the program in the middle of a run would leave a chip half written, and its socket may
// stay powered.
bool VelmWindow::preparesToClose() {
    if (!isAtRest()) {
        endRefused_ = true;
        sayThatItStaysOpen();
        return false;
    }
    gate_.commitPendingInput();
    return !delegate_.edits().refusesToLose(askedFromOutside_ ? SecondPress::Presser::Program
                                                              : SecondPress::Presser::Hand);
}

void VelmWindow::sayThatItStaysOpen() {
    messages_.say(
        Topic::Busy,
        tr("%1, so the window stays open. Stop it first.").arg(whatIsRunning(work_.now())));
}

void VelmWindow::workChanged(Work now) {
    if (now == Work::Idle && !isAtRest())
        return;
    runControls_.show(now);
    if (now != Work::Idle)
        return;
    messages_.happened(Event::WorkEnded);
    endRefused_ = false;
    if (std::exchange(closeWhenIdle_, false))
        queue_.async([this] { window_.close(); });
}

void VelmWindow::followVerdicts() {
    verdictLine_.setOffer([this](const NextStep &step) { return nextSteps_.buttonFor(step); });
    connect(&delegate_, &AppDelegate::runEnded, &runLog_, &RunLog::add);
    connect(&delegate_, &AppDelegate::imageToBurnChanged, &verdictLine_, &VerdictLine::refresh);
    connect(&settings_, &SettingsStore::valueChanged, &verdictLine_, &VerdictLine::refresh);
}

void VelmWindow::followRuns() {
    Ui::MainWindow &c = window_.controls();
    c.verdictHeading->setRuns(runLog_);
    new RunsMenu(*c.btn_runs, runLog_, *c.textView);
    connect(&delegate_, &AppDelegate::runMade, &progressView_,
            qOverload<ScriptedMiniPro *>(&RunProgressView::follow));
    connect(&searcher_, &device_searcher::runMade, &progressView_, &RunProgressView::followSearch);
    c.nextCommand->setSettings(settings_);
    for (QPushButton *button : {c.btn_read, c.btn_verify, c.btn_write, c.btn_logic})
        c.nextCommand->follow(button, Operation(button->property("tag").toInt()));
    connect(c.btn_copy_command, &QToolButton::clicked, c.nextCommand, &NextCommand::copyAll);
}

void VelmWindow::followImages(const WindowMenus &menus) {
    ImageComparison &comparison = makeComparison(window_, delegate_);
    addDifferenceSteps(*menus.edit, window_, comparison, messages_);
    SideBySide &sideBySide = makeSideBySide(window_, delegate_, comparison);
    viewControls_.addEntries(*menus.view, *sideBySide.action());
    markEdits(window_, delegate_);
    readyEdits(window_, delegate_);
    wireFacts(window_, delegate_, runLog_, {settings_, comparison});
}

void VelmWindow::followChips() {
    wireChip(window_, delegate_, chipInquiry_, nextSteps_);
    connect(&delegate_, &AppDelegate::runEnded, &knownDevices_, [this](const RunRecord &run) {
        if (!std::holds_alternative<NoSuchDevice>(chipInquiry_.known()))
            knownDevices_.wasUsed(run.device);
    });
    connect(&searcher_, &device_searcher::listed, &knownDevices_, &KnownDevices::wereListed);
}

void VelmWindow::followLogicTests() {
    Ui::MainWindow &c = window_.controls();
    c.logicResults->follow(
        {*c.tabview, *c.tableview, [this] { return shownReport(); }, logicSeries_});
    connect(&delegate_, &AppDelegate::shownContentChanged, c.logicResults,
            &LogicResultsView::takeReport);
    connect(&delegate_, &AppDelegate::runEnded, c.logicResults, &LogicResultsView::takeRun);
    connect(&delegate_, &AppDelegate::runEnded, &logicSeries_, &LogicSeries::takeRun);
    connect(
        c.logicResults, &LogicResultsView::saveRequested, this,
        [this](const UserFiles::Document &document) { files_.saveDocument(&window_, document); });
    connect(c.logicResults->repeatControls(), &RepeatControls::repeatRequested, &logicSeries_,
            &LogicSeries::begin);
    connect(c.btn_stop, &QPushButton::clicked, &logicSeries_, &LogicSeries::stop);
    connect(&logicSeries_, &LogicSeries::changed, this, &VelmWindow::showSeries);
}

LogicReport VelmWindow::shownReport() const {
    LogicReport shown;
    shown.headers = delegate_.state().logictest_headers;
    shown.rows = delegate_.state().logictest_rows;
    return shown;
}

// The controls stay as they are between two runs; the last one gives them back.
void VelmWindow::showSeries() {
    if (!logicSeries_.tally().failures().isEmpty() && !logicSeries_.isRunning())
        messages_.sayTrouble(Topic::LogicSeries, logicSeries_.sentences());
    else
        messages_.say(Topic::LogicSeries, logicSeries_.sentences());
    if (isAtRest())
        workChanged(Work::Idle);
}

std::optional<ShownNow> VelmWindow::shownNow() const {
    if (!work_.isIdle())
        return std::nullopt;
    const QString imageFile = resolvedPathOf(settings_, settingsKeys::temp_output_file);
    return ShownNow{settings_.stringValue(settingsKeys::device), delegate_.imageRevision(),
                    FileStamp::mark(imageFile)};
}

void VelmWindow::followLatePrinters() {
    connect(&delegate_, &AppDelegate::runMade, &latePrinters_, &LatePrinters::watch);
    connect(&searcher_, &device_searcher::runMade, &latePrinters_, &LatePrinters::watch);
    connect(&latePrinters_, &LatePrinters::anyChanged, &runControls_, &RunControls::showLeftovers);
    connect(&latePrinters_, &LatePrinters::anyChanged, this, &VelmWindow::saySomethingStillPrints);
    connect(window_.controls().btn_stop, &QPushButton::clicked, &latePrinters_,
            &LatePrinters::stop);
}

void VelmWindow::saySomethingStillPrints(bool some) {
    messages_.say(
        Topic::Leftovers,
        some ? tr("Something that the programmer tool left behind has printed after its end. Stop "
                  "ends it.")
             : QString());
}

// A panel that stayed open would keep the program alive without its window.
void VelmWindow::closeDown() {
    closed_ = true;
    const QList<QDialog *> panels = window_.findChildren<QDialog *>();
    for (QDialog *panel : panels)
        panel->reject();
    memory_.setGeometry(window_.saveGeometry());
    memory_.setSplitterState(window_.controls().splitter->saveState());
    memory_.setViewChoices(viewControls_.choices());
    files_.rememberLook();
    delegate_.applicationWillTerminate();
}

void VelmWindow::restoreWindow() {
    if (!window_.restoreGeometry(memory_.geometry()))
        window_.resize(firstSize(window_));
    viewControls_.setChoices(memory_.viewChoices());
    window_.controls().splitter->restoreState(memory_.splitterState());
}

bool VelmWindow::isInOthersFolder() const {
    return mayUseFolder_.isAnotherWindows();
}

// Not before the workspace is this window's: another one may be at work with the file.
void VelmWindow::claimSettings() {
    settings_.claimFile();
    if (const auto &unread = settings_.unreadFile())
        messages_.say(unread->movedTo ? Topic::SettingsKept : Topic::SettingsNotRead,
                      unread->sentence);
}

void VelmWindow::followSettings() {
    connect(&settings_, &SettingsStore::savingWorksAgain, this,
            [this] { messages_.happened(Event::SettingsSaved); });
    connect(&settings_, &SettingsStore::problem, this,
            [this](const QString &sentence) { messages_.sayTrouble(Topic::Settings, sentence); });
    connect(&settings_, &SettingsStore::keptAside, this,
            [this](const QString &sentence) { messages_.say(Topic::SettingsKept, sentence); });
}
