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
                         std::function<void()> beep, FilePanels &panels, WindowMemory &memory)
    : m_defaults(defaults),
      m_log(log),
      m_queue(queue),
      m_beep(std::move(beep)),
      m_panels(panels),
      m_memory(memory),
      m_workspace(defaults, log) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    m_state.retainArray = {};
    m_state.retainArray.reserve(expectedRuns);
    m_defaults.registerDefaults(settingsKeys::startupDefaults());
    clear_temp_files(this);
    load_opened_binary();
    build_output_data(this);
    tabView_didSelectTabViewItem(outlets.tabview, outlets.tabview->selectedTabViewItem());
}

void AppDelegate::applicationWillTerminate() {}

void AppDelegate::load_opened_binary() {
    const QString path = m_defaults.stringValue(settingsKeys::binary);
    m_state.opened_bin_data = nullptr;
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
    m_state.opened_bin_data = std::get<ByteBuffer>(std::move(loaded));
}

void AppDelegate::createTempDirectory(QObject *) {
    m_workspace.createTempDirectory();
}

void AppDelegate::write_output_data_to_temp_file(QObject *) {
    m_workspace.write_output_data_to_temp_file(m_state.output_data);
    const std::optional<QString> failure = m_workspace.lastWriteProblem();
    QString sentence;
    if (failure && m_state.output_data)
        sentence = tr("The data to burn could not be written to %1, so nothing is left to burn: %2")
                       .arg(resolvedPathOf(m_defaults, settingsKeys::temp_output_file), *failure);
    notice(QStringLiteral("workspace"), MessageLine::Severity::Problem, sentence);
}

void AppDelegate::clear_temp_files(QObject *) {
    m_workspace.clear_temp_files();
}

CompositionInputs AppDelegate::compositionInputs() const {
    CompositionInputs inputs;
    inputs.read_from_chip_data = m_state.read_from_chip_data;
    inputs.opened_bin_data = m_state.opened_bin_data;
    inputs.rom_start_address = m_defaults.stringValue(settingsKeys::rom_start_address);
    inputs.pad_to = m_defaults.stringValue(settingsKeys::pad_to);
    inputs.pad = m_defaults.boolValue(settingsKeys::pad);
    inputs.combineReadData = outlets.btn_combine_read_data->isChecked();
    inputs.padWithZero = outlets.btn_pad_00->isChecked();
    return inputs;
}

void AppDelegate::build_output_data(QObject *) {
    m_emptyWriteAnnounced = false;
    const ByteBuffer edited = m_handEdits > 0 ? m_state.output_data : nullptr;
    m_editHistory.clear();
    m_state.output_data = nullptr;
    const CompositionInputs inputs = compositionInputs();
    const Composition composition = composeImage(inputs);
    for (const QString &line : composition.log)
        m_log.write(line);
    m_state.output_data = composition.image;
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
    m_queue.async([this] {
        tabView_didSelectTabViewItem(outlets.tabview, outlets.tabview->selectedTabViewItem());
    });
}

void AppDelegate::handleControl(QObject *sender) {
    m_log.write(QStringLiteral("handleControl:"));
    const QList<QObject *> compositionControls = {
        outlets.startAddTextField, outlets.btn_combine_read_data,
        outlets.btn_pad,           outlets.padToTextField,
        outlets.btn_pad_ff,        outlets.btn_pad_00};
    if (sender && compositionControls.contains(sender))
        build_and_reload();
}

void AppDelegate::appendToOutputView(const QString &text) {
    m_queue.async([console = QPointer<ConsoleView>(outlets.textView), text] {
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
