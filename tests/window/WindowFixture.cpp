// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "settings/SettingsKeys.h"
#include "support/FileHelpers.h"

#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

WindowFixture::WindowFixture() {
    qputenv("SHELL", "/bin/bash");
    qputenv("MINIPRO_SIM_BENCH", QFile::encodeName(path(QStringLiteral("bench"))));
    qputenv("MINIPRO_SIM_PACE", "instant");
    qunsetenv("MINIPRO_SIM_FAULT");
    // What takes two presses takes them at a test's pace; no test but that of it is quick by a
    // slip.
    QApplication::setDoubleClickInterval(0);
    openSettings();
    settings().setValue(settingsKeys::temp_output_file, temporary(QStringLiteral("temp.bin")));
    settings().setValue(settingsKeys::temp_read_from_chip_file,
                        temporary(QStringLiteral("temp_read.bin")));
    settings().setValue(settingsKeys::temp_search_results_file,
                        temporary(QStringLiteral("temp_sr.bin")));
    settings().setValue(settingsKeys::temp_logic_chip_test_results_file,
                        temporary(QStringLiteral("temp_logtest.bin")));
    settings().setValue(settingsKeys::device, QStringLiteral("W27C512@DIP28"));
    useSimulator();
}

WindowFixture::~WindowFixture() = default;

void WindowFixture::openSettings() {
    settings_ = std::make_unique<SettingsStore>(path(QStringLiteral("velm.conf")));
}

void WindowFixture::start() {
    velm_ = std::make_unique<VelmWindow>(VelmWindow::Surroundings{
        *settings_, log, panels, [this] { ++beeps; }, path(QStringLiteral("state.conf")),
        FolderGuard([this] {
            return folderIsAnothers ? folderOfAnotherWindow() : FolderGuard::Answer();
        })});
    velm_->start();
    QVERIFY(QTest::qWaitForWindowExposed(&velm_->window()));
    velm_->window().activateWindow();
}

void WindowFixture::end() {
    velm_->window().close();
    velm_.reset();
    openSettings();
}

QString WindowFixture::write(const QString &name, const QByteArray &bytes) const {
    const QString target = QDir(folder_.path()).absoluteFilePath(name);
    QDir().mkpath(QFileInfo(target).path());
    if (!writeWholeFile(target, bytes))
        qFatal("cannot write %s", qPrintable(target));
    return target;
}

QByteArray WindowFixture::bytesOf(const QString &path) {
    return readWholeFile(path);
}

void WindowFixture::useTool(const QByteArray &script) {
    const QString tool = write(QStringLiteral("tool.sh"), script);
    setTool(QStringLiteral("/bin/sh '%1'").arg(tool));
}

void WindowFixture::useSimulator() {
    setTool(QStringLiteral("'%1'").arg(QStringLiteral(MINIPRO_SIM)));
}

void WindowFixture::setTool(const QString &command) {
    settings().setValue(settingsKeys::miniproLocation, command);
    // A program that runs remembers by itself.
    if (!hasStarted())
        WindowMemory(path(QStringLiteral("state.conf"))).setTrustedTool(command);
}

QString WindowFixture::chipPath(const QString &device) const {
    return path(QStringLiteral("bench/%1.bin").arg(device));
}

void WindowFixture::whileBusy(const std::function<void()> &work) {
    // The first change from now on can only be the beginning of something.
    QObject::connect(
        &velm_->work(), &WorkState::changed, velm_.get(),
        [this, work] { QTimer::singleShot(0, velm_.get(), work); }, Qt::SingleShotConnection);
}

void WindowFixture::settle() {
    QCoreApplication::processEvents();
    controls().textView->flush();
}

QList<QAction *> WindowFixture::recentEntries() {
    for (const QMenu *menu : velm().window().menuBar()->findChildren<QMenu *>())
        if (menu->menuAction()->iconText() == QStringLiteral("Open recent"))
            return menu->actions();
    qFatal("there is no menu Open recent");
}

QStringList WindowFixture::recentFiles() {
    QStringList paths;
    for (const QAction *entry : recentEntries())
        paths.append(entry->iconText());
    return paths;
}

QString WindowFixture::cell(int row, int column) {
    const GridModel *model = controls().tableview->gridModel();
    return model->index(row, column).data().toString();
}

QString WindowFixture::row(int row) {
    QStringList cells;
    for (int column = 0; column < gridColumns; ++column)
        cells.append(cell(row, column));
    return cells.join(u' ');
}
