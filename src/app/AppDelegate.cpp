// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Start-up, the image to burn and what the window says about it.

#include "app/AppDelegate.h"

#include "app/CompositionRemarks.h"
#include "base/Log.h"
#include "base/MainQueue.h"
#include "base/WorkState.h"
#include "files/FileLoading.h"
#include "grid/GridView.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "tool/ScriptedMiniPro.h"
#include "widgets/ConsoleView.h"
#include "widgets/TabView.h"

#include <QAbstractButton>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>

namespace {

constexpr qsizetype expectedRuns = 10;

} // namespace

AppDelegate::AppDelegate(SettingsStore &defaults, Log &log, MainQueue &queue,
                         std::function<void()> beep, UserFiles &files, WorkState &work,
                         Messages &messages, const ActionGate &gate)
    : defaults_(defaults),
      log_(log),
      queue_(queue),
      beep_(std::move(beep)),
      files_(files),
      work_(work),
      messages_(messages),
      gate_(gate),
      workspace_(defaults, log) {
    connect(&defaults_, &SettingsStore::valueChanged, this, &AppDelegate::settingChanged);
    connect(&edits_, &HandEdits::imageChanged, this, &AppDelegate::showStep);
    connect(&openedBinary_, &OpenedBinary::reloadAsked, this, &AppDelegate::reloadOpenedBinary);
}

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
    openedBinary_.load(defaults_.stringValue(settingsKeys::binary));
}

void AppDelegate::createTempDirectory(QObject *) {
    workspace_.createTempDirectory();
}

void AppDelegate::write_output_data_to_temp_file(QObject *) {
    const Result<void> written = workspace_.write_output_data_to_temp_file(state_.output_data);
    QString sentence;
    if (!written && state_.output_data) {
        const QString path = resolvedPathOf(defaults_, settingsKeys::temp_output_file);
        sentence =
            QFileInfo(path).size() > 0
                ? tr("The data to burn could not be written to %1, which still holds an older "
                     "image: %2")
                : tr("The data to burn could not be written to %1, so nothing is left to burn: %2");
        sentence = sentence.arg(QDir::toNativeSeparators(path), written.failure()->reason);
    }
    messages_.say(Topic::Workspace, sentence);
}

// A path that has come to name another file gets the image at once, or a Write would burn what
// happens to lie there.
void AppDelegate::settingChanged(const QString &key) {
    if (key == settingsKeys::temp_output_file && imageRevision() != 0 && work_.isIdle())
        write_output_data_to_temp_file(this);
}

void AppDelegate::reloadOpenedBinary() {
    if (gate_.refusesElseCommits())
        return;
    load_opened_binary();
    build_and_reload();
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

ImageControls AppDelegate::imageControls(const CompositionInputs &inputs) const {
    return {.binary = defaults_.stringValue(settingsKeys::binary),
            .rom_start_address = inputs.rom_start_address,
            .pad_to = inputs.pad_to,
            .combineReadData = inputs.combineReadData,
            .pad = inputs.pad,
            .padWithZero = inputs.padWithZero};
}

void AppDelegate::build_output_data(QObject *) {
    edits_.keepReplaced();
    const CompositionInputs inputs = compositionInputs();
    state_.output_data = nullptr;
    const Composition composition = composeImage(inputs);
    for (const QString &line : composition.log)
        log_.write(line);
    state_.output_data = composition.image;
    edits_.composed({.revision = revisions_.ofComposition(inputs, composition),
                     .madeWith = imageControls(inputs)});
    write_output_data_to_temp_file(this);
    const QString remarks = compositionRemarks(inputs, composition).join(QLatin1Char(' '));
    if (composition.refused)
        messages_.sayTrouble(Topic::Composition, remarks);
    else
        messages_.say(Topic::Composition, remarks);
    noteImageChanged();
    sayReplacedEdits();
    sayRestoredEdits(0);
}

// What was said about the image that was there speaks of it no more.
void AppDelegate::noteImageChanged() {
    secondPress_.withdraw();
    messages_.happened(Event::ImageChanged);
    if (lengthOf(state_.output_data) > 0)
        messages_.happened(Event::ImageHasBytes);
    emit imageToBurnChanged();
}

void AppDelegate::build_and_reload() {
    build_output_data(this);
    queue_.async([this] {
        tabView_didSelectTabViewItem(outlets.tabview, outlets.tabview->selectedTabViewItem());
    });
}

void AppDelegate::handleControl(QObject *sender) {
    log_.write(QStringLiteral("handleControl:"));
    if (gate_.refuses())
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

QString AppDelegate::selectedTab() const {
    return outlets.tabview->selectedTabViewItem().identifier;
}
