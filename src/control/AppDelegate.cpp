// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Start-up, the image to burn, and the files that come and go.

#include "control/AppDelegate.h"

#include "base/Log.h"
#include "base/MainQueue.h"
#include "control/CompositionForm.h"
#include "image/ImageComposition.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "tool/ScriptedMiniPro.h"
#include "widgets/ConsoleView.h"

AppDelegate::AppDelegate(const Surroundings &surroundings)
    : with_(surroundings),
      workspace_(with_.defaults, with_.log, with_.mayUseFolder),
      secondPress_(with_.messages),
      burnFile_(state_.output_data, workspace_, with_.defaults, with_.messages, with_.gate),
      consent_({with_.defaults, with_.toolTrust, with_.messages, secondPress_, with_.gate,
                with_.mayUseFolder, burnFile_}),
      edits_(state_.output_data),
      offers_({edits_, with_.messages, secondPress_, with_.gate,
               [this] { return imageControls(outlets, with_.defaults); }}),
      openedBinary_(state_.opened_bin_data, with_.messages, with_.gate),
      panelHost_(outlets, with_.defaults, with_.queue, with_.messages, with_.gate) {
    connect(&offers_, &EditOffers::stepped, this, &AppDelegate::showStep);
    connect(&offers_, &EditOffers::changed, this, &AppDelegate::showBlock);
    connect(&openedBinary_, &OpenedBinary::reloadAsked, this, [this] {
        load_opened_binary();
        build_and_reload();
    });
}

void AppDelegate::applicationDidFinishLaunching() {
    state_.retainArray = {};
    state_.retainArray.reserve(ScriptedMiniPro::expectedRuns);
    with_.defaults.registerDefaults(settingsKeys::startupDefaults());
    clear_temp_files(this);
    load_opened_binary();
    build_output_data(this);
    burnFile_.sayIfShared();
    showSelectedTab();
}

void AppDelegate::load_opened_binary() {
    openedBinary_.load(with_.defaults.stringValue(settingsKeys::binary));
}

void AppDelegate::build_output_data(QObject *) {
    edits_.keepReplaced();
    CompositionInputs inputs = compositionInputs(outlets, with_.defaults);
    inputs.read_from_chip_data = state_.read_from_chip_data;
    inputs.opened_bin_data = state_.opened_bin_data;
    state_.output_data = nullptr;
    const Composition composition = composeImage(inputs);
    for (const QString &line : composition.log)
        with_.log.write(line);
    if (composition.image)
        state_.output_data = *composition.image;
    edits_.composed({.revision = revisions_.ofComposition(inputs, composition),
                     .madeWith = imageControls(outlets, with_.defaults),
                     .source = sourceOfBytes(inputs, composition)});
    write_output_data_to_temp_file(this);
    noteImageChanged();
    offers_.sayComposed({compositionRemarks(inputs, composition).join(u' '), !composition.image});
}

// What was said or asked was about the image that was there before.
void AppDelegate::noteImageChanged() {
    secondPress_.withdraw();
    with_.messages.happened(Event::ImageChanged);
    if (lengthOf(state_.output_data) > 0)
        with_.messages.happened(Event::ImageHasBytes);
    offers_.sayForgotten();
    emit imageToBurnChanged();
}

void AppDelegate::build_and_reload() {
    build_output_data(this);
    with_.queue.async([this] { showSelectedTab(); });
}

void AppDelegate::handleControl(QObject *sender) {
    with_.log.write(QStringLiteral("handleControl:"));
    if (!with_.gate.refuses() && composes(outlets, sender))
        build_and_reload();
}

void AppDelegate::appendToOutputView(const QString &text) {
    with_.queue.async([console = QPointer<ConsoleView>(outlets.textView), text] {
        if (console)
            console->appendText(text);
    });
}

void AppDelegate::browseBinaryFile(QObject *) {
    with_.files.openBinary(window_, [this](const QString &path) { openBinary(path); });
}

void AppDelegate::openBinary(const QString &path) {
    if (with_.gate.refusesElseCommits())
        return;
    with_.defaults.setValue(settingsKeys::binary, path);
    load_opened_binary();
    build_and_reload();
    with_.files.addRecent(path);
}

void AppDelegate::export_read_from_chip_data(QObject *) {
    with_.files.saveReadData(window_, readOrigin_.device(),
                             {[this] { return state_.read_from_chip_data; },
                              [this](const ByteBuffer &bytes) { offers_.noteSaved(bytes); }});
}

void AppDelegate::export_output_data(QObject *) {
    with_.files.saveDataToBurn(window_, with_.defaults.stringValue(settingsKeys::device),
                               {[this] { return state_.output_data; },
                                [this](const ByteBuffer &bytes) { offers_.noteSaved(bytes); }});
}
