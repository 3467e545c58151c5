// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridModel.h"
#include "kills/WorkSteps.h"
#include "settings/SettingsKeys.h"
#include "window/WindowFixture.h"

#include <QDir>

#include <cstdlib>
#include <unistd.h>

// velm-at-work FOLDER STEP: starts up in FOLDER, says so in a line, waits for one, and goes
// through the steps from STEP on, with a line before each, until it is killed.

namespace {

void say(const QByteArray &line) {
    if (::write(STDOUT_FILENO, line.constData(), size_t(line.size())) != line.size())
        std::_Exit(EXIT_FAILURE);
}

void waitForAWord() {
    char word = 0;
    if (::read(STDIN_FILENO, &word, 1) != 1)
        std::_Exit(EXIT_FAILURE);
}

void enterText(VelmWindow &velm, int step) {
    velm.window().controls().tabview->selectTabViewItem(burnTabIdentifier());
    QCoreApplication::processEvents();
    GridModel *grid = velm.window().controls().tableview->gridModel();
    grid->setData(grid->index(workSteps::row(step), 1),
                  QString(u'\'' + QString::fromLatin1(workSteps::entered(step))));
}

void take(VelmWindow &velm, SettingsStore &settings, const QDir &folder, int step) {
    AppDelegate &delegate = velm.delegate();
    switch (workSteps::kindOf(step)) {
    case workSteps::Kind::NameDevice:
        settings.setValue(settingsKeys::device, workSteps::device(step));
        break;
    case workSteps::Kind::OpenBinary:
        delegate.openBinary(folder.filePath(workSteps::binaryName(workSteps::binary(step))));
        break;
    case workSteps::Kind::EnterText:
        enterText(velm, step);
        break;
    case workSteps::Kind::Compose:
        delegate.build_and_reload();
        break;
    case workSteps::Kind::Export:
        delegate.export_output_data(nullptr);
        break;
    case workSteps::Kind::ToggleOption:
        velm.window().controls().check_skipErase->click();
        break;
    }
    QCoreApplication::processEvents();
}

} // namespace

int main(int argc, char *argv[]) {
    const QApplication application(argc, argv);
    const QDir folder(QApplication::arguments().value(1));
    int step = QApplication::arguments().value(2).toInt();
    SettingsStore settings(folder.filePath(QStringLiteral("velm.conf")));
    RecordingLog log;
    AnsweringPanels panels;
    panels.answer = folder.filePath(QStringLiteral("exports/export.bin"));
    VelmWindow velm({settings, log, panels, [] {}, folder.filePath(QStringLiteral("state.conf"))});
    velm.start();
    QCoreApplication::processEvents();
    say("up\n");
    waitForAWord();
    for (;; ++step) {
        say(QByteArray::number(step) + '\n');
        take(velm, settings, folder, step);
    }
}
