// Start-up, the image to burn and what the window says about it.

#include "app/AppDelegate.h"

#include "app/CompositionRemarks.h"
#include "base/Log.h"
#include "base/MainQueue.h"
#include "grid/GridView.h"
#include "image/FileLoading.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "tool/ScriptedMiniPro.h"
#include "widgets/ConsoleView.h"
#include "widgets/KeyBinder.h"
#include "widgets/TabView.h"

#include <QAbstractButton>
#include <QDir>
#include <QLineEdit>

namespace {

constexpr qsizetype expectedRuns = 10;

} // namespace

AppDelegate::AppDelegate(SettingsStore &defaults, Log &log, MainQueue &queue,
                         std::function<void()> beep, FilePanels &panels, WindowMemory &memory,
                         WorkState &work)
    : defaults_(defaults),
      log_(log),
      queue_(queue),
      beep_(std::move(beep)),
      panels_(panels),
      memory_(memory),
      work_(work),
      workspace_(defaults, log) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    state_.retainArray = {};
    state_.retainArray.reserve(expectedRuns);
    defaults_.registerDefaults(settingsKeys::startupDefaults());
    clear_temp_files(this);
    load_opened_binary();
    build_output_data(this);
    tabView_didSelectTabViewItem(outlets.tabview, outlets.tabview->selectedTabViewItem());
}

void AppDelegate::applicationWillTerminate() {}

void AppDelegate::load_opened_binary() {
    const QString path = defaults_.stringValue(settingsKeys::binary);
    state_.opened_bin_data = nullptr;
    outlets.messageLine->clearNotice(QStringLiteral("binary"));
    if (path.isEmpty())
        return;
    auto loaded = loadWholeFile(path);
    if (const auto *failure = std::get_if<LoadFailure>(&loaded)) {
        notice(QStringLiteral("binary"), MessageLine::Severity::Warning,
               tr("The opened binary could not be read: %1 (%2)")
                   .arg(QDir::toNativeSeparators(path), failure->reason));
        return;
    }
    state_.opened_bin_data = std::get<ByteBuffer>(std::move(loaded));
}

void AppDelegate::createTempDirectory(QObject *) {
    workspace_.createTempDirectory();
}

void AppDelegate::write_output_data_to_temp_file(QObject *) {
    workspace_.write_output_data_to_temp_file(state_.output_data);
    const std::optional<QString> failure = workspace_.lastWriteProblem();
    QString sentence;
    if (failure && state_.output_data)
        sentence = tr("The data to burn could not be written to %1, so nothing is left to burn: %2")
                       .arg(resolvedPathOf(defaults_, settingsKeys::temp_output_file), *failure);
    notice(QStringLiteral("workspace"), MessageLine::Severity::Problem, sentence);
}

void AppDelegate::clear_temp_files(QObject *) {
    workspace_.clear_temp_files();
}

CompositionInputs AppDelegate::compositionInputs() const {
    CompositionInputs inputs;
    inputs.read_from_chip_data = state_.read_from_chip_data;
    inputs.opened_bin_data = state_.opened_bin_data;
    inputs.rom_start_address = defaults_.stringValue(settingsKeys::rom_start_address);
    inputs.pad_to = defaults_.stringValue(settingsKeys::pad_to);
    inputs.pad = defaults_.boolValue(settingsKeys::pad);
    inputs.combineReadData = outlets.btn_combine_read_data->isChecked();
    inputs.padWithZero = outlets.btn_pad_00->isChecked();
    return inputs;
}

void AppDelegate::build_output_data(QObject *) {
    emptyWriteAnnounced_ = false;
    const ByteBuffer edited = handEdits_ > 0 ? state_.output_data : nullptr;
    editHistory_.clear();
    state_.output_data = nullptr;
    const CompositionInputs inputs = compositionInputs();
    const Composition composition = composeImage(inputs);
    for (const QString &line : composition.log)
        log_.write(line);
    state_.output_data = composition.image;
    write_output_data_to_temp_file(this);
    const auto severity =
        composition.refused ? MessageLine::Severity::Problem : MessageLine::Severity::Information;
    notice(QStringLiteral("composition"), severity,
           compositionRemarks(inputs, composition).join(QLatin1Char(' ')));
    if (edited)
        offerReplacedEdits(edited);
}

void AppDelegate::build_and_reload() {
    build_output_data(this);
    queue_.async([this] {
        tabView_didSelectTabViewItem(outlets.tabview, outlets.tabview->selectedTabViewItem());
    });
}

void AppDelegate::handleControl(QObject *sender) {
    log_.write(QStringLiteral("handleControl:"));
    if (refusesWhileBusy())
        return;
    const QList<QObject *> compositionControls = {
        outlets.startAddTextField, outlets.btn_combine_read_data,
        outlets.btn_pad,           outlets.padToTextField,
        outlets.btn_pad_ff,        outlets.btn_pad_00};
    if (sender && compositionControls.contains(sender))
        build_and_reload();
}

void AppDelegate::appendToOutputView(const QString &text) {
    queue_.async([console = QPointer<ConsoleView>(outlets.textView), text] {
        if (console)
            console->appendText(text);
    });
}

// An empty sentence takes the topic's notice away.
void AppDelegate::notice(const QString &topic, MessageLine::Severity severity,
                         const QString &sentence) {
    outlets.messageLine->setNotice(topic, severity, sentence);
}

QString AppDelegate::selectedTab() const {
    return outlets.tabview->selectedTabViewItem().identifier;
}
