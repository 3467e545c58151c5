// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Painted.h"
#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Samples.h"
#include "subjects/ToolRunFolder.h"

#include "app/VelmWindow.h"
#include "base/Log.h"
#include "control/FilePanels.h"
#include "files/HugePages.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "widgets/TabView.h"

#include "ui_MainWindow.h"

#include <QCoreApplication>
#include <QFile>

#include <stdexcept>

namespace {

constexpr qint64 readSize = 64 * mebibyte;
constexpr qint64 openedSize = 256 * mebibyte;
constexpr int rounds = 7;
constexpr QSize windowSize(1024, 700);

const QString readTab = QStringLiteral("0");
const QString burnTab = QStringLiteral("1");

/// Tells when the tool has ended, which the program logs.
class EndLog final : public Log {
public:
    void write(const QString &text) override {
        if (text == QLatin1String("Task terminated"))
            sinceEnd.restart();
    }
    Stopwatch sinceEnd;
};

class NoPanels final : public FilePanels {
public:
    void begin(QWidget *, const FilePanelRequest &,
               std::function<void(const QString &path)>) override {}
};

/// The whole window, with a tool that "reads" a file.
class WindowRuns {
public:
    WindowRuns() {
        qputenv("SHELL", "/bin/sh");
        velm_.start();
        velm_.window().resize(windowSize);
        showPainted(velm_.window());
    }

    /// Gives the chip a content of \a size bytes.
    QString makeFile(const QString &name, qint64 size) const {
        const QString file = folder_.path(name);
        writeFile(file, randomBytes(size));
        return file;
    }

    void readFrom(const QString &file) {
        folder_.useTool("cp '" + file.toUtf8() + "' '" +
                        folder_.path(QStringLiteral("workspace/temp_read.bin")).toUtf8() + "'\n");
    }

    /// From the end of the tool until the first page of what it read is painted.
    double read(qint64 size) {
        return untilPage(size, [this] { controls().btn_read->click(); });
    }

    /// From the choice of a file until the first page of the image to burn is painted.
    double open(const QString &file, qint64 size) {
        return untilPage(size, [this, file] {
            log_.sinceEnd.restart();
            velm_.delegate().openBinary(file);
        });
    }

    /// Whether the image to burn is composed from what was read.
    void useReadData(bool use) {
        controls().btn_combine_read_data->setChecked(use);
        QCoreApplication::processEvents();
    }

    void selectTab(const QString &identifier) {
        controls().tabview->selectTabViewItem(identifier);
        QCoreApplication::processEvents();
    }

private:
    Ui::MainWindow &controls() { return velm_.window().controls(); }

    // Does \a work, and waits for the grid to paint the \a size bytes that come of it.
    template <typename Work>
    double untilPage(qint64 size, const Work &work) {
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
        const double taken = log_.sinceEnd.milliseconds();
        QObject::disconnect(connection);
        if (model->rowCount() != size / bytesInRow + 1)
            throw std::runtime_error("the grid does not show what was read");
        return taken;
    }

    ToolRunFolder folder_;
    EndLog log_;
    NoPanels panels_;
    VelmWindow velm_{
        {folder_.settings(), log_, panels_, [] {}, folder_.path(QStringLiteral("state.conf"))}};
};

// The whole file into a buffer, by one call.
double readOnce(const QString &path, qint64 size) {
    const Stopwatch stopwatch;
    QByteArray bytes = uninitializedBytes(size);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
        file.read(bytes.data(), size) != size)
        throw std::runtime_error("the file cannot be read");
    return stopwatch.milliseconds();
}

void benchRead(Table &table, WindowRuns &runs) {
    const QString file = runs.makeFile(QStringLiteral("chip.bin"), readSize);
    runs.readFrom(file);
    runs.selectTab(readTab);
    runs.useReadData(true);
    const auto medians = interleaved(
        rounds, {[&] { return runs.read(readSize); }, [&] { return readOnce(file, readSize); }});
    table.compare("Read of 64 MiB, tool's end to first page", milliseconds(medians[0]),
                  {"one read()", milliseconds(medians[1])});
}

void benchOpen(Table &table, WindowRuns &runs) {
    const QString file = runs.makeFile(QStringLiteral("opened.bin"), openedSize);
    runs.selectTab(burnTab);
    runs.useReadData(false);
    const auto medians = interleaved(rounds, {[&] { return runs.open(file, openedSize); },
                                              [&] { return readOnce(file, openedSize); }});
    table.compare("binary of 256 MiB opened to first page, in the window", milliseconds(medians[0]),
                  {"one read()", milliseconds(medians[1])});
}

} // namespace

void benchWindow(Table &table) {
    WindowRuns runs;
    benchRead(table, runs);
    benchOpen(table, runs);
}
