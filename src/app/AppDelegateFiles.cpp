// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Bringing a binary in, saving the two images, choosing a device.

#include "app/AppDelegate.h"

#include "app/UserFiles.h"
#include "files/SuggestedName.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

void AppDelegate::browseBinaryFile(QObject *) {
    files_.openBinary(outlets.window, [this](const QString &path) { openBinary(path); });
}

void AppDelegate::openBinary(const QString &path) {
    if (gate_.refusesElseCommits())
        return;
    defaults_.setValue(settingsKeys::binary, path);
    load_opened_binary();
    build_and_reload();
    files_.addRecent(path);
}

void AppDelegate::export_read_from_chip_data(QObject *) {
    files_.saveImage(outlets.window,
                     {.emptyLogLine = QStringLiteral("first read the chip!"),
                      .emptyTopic = Topic::NothingRead,
                      .emptySentence = tr("First read the chip: there is nothing to save yet."),
                      .suggestedName = suggestedName(readDevice_, QStringLiteral(".bin")),
                      .bytes = [this] { return state_.read_from_chip_data; },
                      .saved = [this](const ByteBuffer &bytes) { noteSaved(bytes); }});
}

void AppDelegate::export_output_data(QObject *) {
    const QString device = defaults_.stringValue(settingsKeys::device);
    files_.saveImage(outlets.window,
                     {.emptyLogLine = QStringLiteral("first create some data!"),
                      .emptyTopic = Topic::NothingToBurn,
                      .emptySentence = tr("First create some data: open a binary or read a chip."),
                      .suggestedName = suggestedName(device, QStringLiteral("-burn.bin")),
                      .bytes = [this] { return state_.output_data; },
                      .saved = [this](const ByteBuffer &bytes) { noteSaved(bytes); }});
}

void AppDelegate::noteSaved(const ByteBuffer &bytes) {
    if (bytes != state_.output_data)
        return;
    edits_.noteSaved();
    secondPress_.withdraw();
}

void AppDelegate::showListPanel(QObject *) {
    panelHost_.show();
}

void AppDelegate::deviceSearchPanelOK(QObject *) {
    panelHost_.confirm();
}

void AppDelegate::deviceSearchPanelCancel(QObject *) {
    panelHost_.cancel();
}
