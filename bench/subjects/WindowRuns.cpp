// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "subjects/WindowRuns.h"

#include "instruments/Painted.h"
#include "subjects/Samples.h"

#include "base/Units.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "settings/SettingsKeys.h"
#include "widgets/ConsoleView.h"
#include "widgets/TabView.h"

#include "ui_MainWindow.h"

#include <QAction>
#include <QCoreApplication>
#include <QTextBlock>

#include <stdexcept>

namespace {

constexpr QSize windowSize(1024, 700);

} // namespace

WindowRuns::WindowRuns() {
    qputenv("SHELL", "/bin/sh");
    velm_.start();
    velm_.window().resize(windowSize);
    showPainted(velm_.window());
}

QString WindowRuns::makeFile(const QString &name, const QByteArray &content) const {
    const QString file = folder_.path(name);
    writeFile(file, content);
    return file;
}

void WindowRuns::readFrom(const QString &file) {
    folder_.useTool("cp '" + file.toUtf8() + "' '" +
                    folder_.path(QStringLiteral("workspace/temp_read.bin")).toUtf8() + "'\n");
}

double WindowRuns::read(qint64 size) {
    untilPage(size, [this] { controls().btn_read->click(); });
    return log_.sinceEnd.milliseconds();
}

double WindowRuns::pressRead(qint64 size) {
    const Stopwatch stopwatch;
    read(size);
    return stopwatch.milliseconds();
}

double WindowRuns::longestGap(Operation operation) {
    LoopWatch loop;
    loop.restart();
    (operation == LogicOperation ? controls().btn_logic : controls().btn_read)->click();
    const auto showsTheEnd = [this] {
        return controls().textView->document()->lastBlock().text().contains(u"minipro has exited");
    };
    while (!velm_.work().isIdle() || !showsTheEnd())
        QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    return loop.longestGap();
}

double WindowRuns::open(const QString &file, qint64 size) {
    const Stopwatch stopwatch;
    untilPage(size, [this, file] { velm_.delegate().openBinary(file); });
    return stopwatch.milliseconds();
}

double WindowRuns::composeAnew(qint64 size) {
    const Stopwatch stopwatch;
    Ui::MainWindow &c = controls();
    QAbstractButton *other = c.btn_pad_ff->isChecked() ? c.btn_pad_00 : c.btn_pad_ff;
    untilPage(size, [other] { other->click(); });
    return stopwatch.milliseconds();
}

void WindowRuns::padFrom(qint64 start, qint64 size) {
    constexpr int base = 16;
    using namespace settingsKeys;
    folder_.settings().setValue(rom_start_address, QString::number(start, base));
    folder_.settings().setValue(pad_to, QString::number(size / kibibyte));
    controls().btn_pad->setChecked(true);
    QCoreApplication::processEvents();
}

void WindowRuns::useReadData(bool use) {
    controls().btn_combine_read_data->setChecked(use);
    QCoreApplication::processEvents();
}

void WindowRuns::selectTab(const QString &identifier) {
    controls().tabview->selectTabViewItem(identifier);
    QCoreApplication::processEvents();
}

void WindowRuns::trigger(const QKeySequence &keys) {
    for (QAction *action : velm_.window().findChildren<QAction *>())
        if (action->shortcuts().contains(keys))
            return action->trigger();
    throw std::runtime_error("no menu entry has these keys");
}

GridView &WindowRuns::grid() {
    return *controls().tableview;
}

// Does \a work, and waits for the grid to paint the \a size bytes that come of it.
void WindowRuns::untilPage(qint64 size, const std::function<void()> &work) {
    const GridModel *model = controls().tableview->gridModel();
    PaintWatch watch(*controls().tableview->viewport());
    bool reset = false;
    const auto connection = QObject::connect(model, &GridModel::modelReset, model, [&] {
        reset = true;
        watch.arm();
    });
    work();
    while (!reset)
        QCoreApplication::processEvents();
    watch.wait();
    QObject::disconnect(connection);
    if (model->rowCount() != size / bytesInRow + 1)
        throw std::runtime_error("the grid does not show what was read");
}
