// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/LoopWatch.h"
#include "instruments/Painted.h"
#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/RawChild.h"
#include "subjects/Samples.h"
#include "subjects/ToolRunFolder.h"

#include "base/Log.h"
#include "base/MainQueue.h"
#include "base/WorkState.h"
#include "devices/DeviceListModel.h"
#include "devices/DeviceListView.h"
#include "devices/DeviceSearchPanel.h"
#include "devices/device_searcher.h"
#include "language/DeviceListing.h"
#include "settings/ToolTrust.h"
#include "settings/WindowMemory.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <stdexcept>

namespace {

constexpr int nameCount = 32'000;
constexpr int rounds = 15;
constexpr double maxMilliseconds = 8;
constexpr double maxLoopGap = 100;
constexpr double maxMoreThanTheTool = 20;

class SilentLog final : public Log {
public:
    void write(const QString &) override {}
};

QByteArray names() {
    QByteArray lines;
    for (int number = 0; number < nameCount; ++number)
        lines += "AT28C" + QByteArray::number(number) + "@SOIC28\n";
    return lines;
}

/// The search panel, with a tool that lists all names.
class Search {
public:
    Search()
        : searcher_(
              folder_.settings(), toolTrust_, log_, queue_, [] {}, work_),
          panel_(searcher_) {
        qputenv("SHELL", "/bin/sh");
        const QString file = folder_.path(QStringLiteral("names"));
        writeFile(file, names());
        folder_.useTool("cat '" + file.toUtf8() + "'\n");
        searcher_.devicesearchterm->setText(QStringLiteral("AT"));
        QObject::connect(&searcher_, &device_searcher::searchRunningChanged, &panel_,
                         [this](bool running) {
                             if (!running)
                                 sinceEnd_.restart();
                         });
        showPainted(panel_);
    }

    /// From the end of the tool until its names are painted.
    double list() {
        pressEnter();
        return sinceEnd_.milliseconds();
    }

    /// From the Enter key until the names are painted.
    double search() {
        const Stopwatch stopwatch;
        pressEnter();
        return stopwatch.milliseconds();
    }

    /// How long the event loop did not come round at most while the longest list came, in
    /// milliseconds.
    double longestGapOfLongestList() {
        const QByteArray line = "AT28C64@SOIC28\n";
        const QString file = folder_.path(QStringLiteral("longest"));
        writeFile(file, line.repeated(maxListLines - 1));
        folder_.useTool("cat '" + file.toUtf8() + "'\n");
        LoopWatch loop;
        loop.restart();
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(searcher_.devicesearchterm, &press);
        PaintWatch watch(*searcher_.tableview->viewport());
        watch.wait();
        QCoreApplication::processEvents();
        if (searcher_.tableview->model()->rowCount() == 0)
            throw std::runtime_error("the list is empty");
        return loop.longestGap();
    }

    /// From a key in the filter until the names that are left are painted.
    double filterKey() {
        auto *filter = panel_.findChild<QLineEdit *>(QStringLiteral("filterField"));
        filter->setText(QStringLiteral("soic "));
        PaintWatch watch(*searcher_.tableview->viewport());
        watch.wait();
        watch.arm();
        const Stopwatch stopwatch;
        filter->insert(QStringLiteral("7"));
        watch.wait();
        const double time = stopwatch.milliseconds();
        const int left = searcher_.tableview->model()->rowCount();
        if (left == 0 || left == nameCount)
            throw std::runtime_error("the filter does not filter");
        filter->clear();
        return time;
    }

    /// The same tool in the same shell, alone.
    double runTool() const {
        const Stopwatch stopwatch;
        runRawChild({"/bin/sh", "-l", "-c",
                     folder_.toolCommand() + " > '" +
                         folder_.path(QStringLiteral("alone")).toStdString() + '\''});
        return stopwatch.milliseconds();
    }

private:
    void pressEnter() {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(searcher_.devicesearchterm, &press);
        DeviceListView &view = *searcher_.tableview;
        PaintWatch watch(*view.viewport());
        watch.wait();
        if (view.model()->rowCount() != nameCount)
            throw std::runtime_error("the list does not hold all names");
    }

    ToolRunFolder folder_;
    WindowMemory memory_{folder_.path(QStringLiteral("state.conf"))};
    ToolTrust toolTrust_{folder_.settings(), memory_};
    SilentLog log_;
    MainQueue queue_;
    WorkState work_;
    device_searcher searcher_;
    DeviceSearchPanel panel_;
    Stopwatch sinceEnd_;
};

} // namespace

void benchDevices(Table &table) {
    Search search;
    const auto medians =
        interleaved(rounds, {[&] { return search.list(); }, [&] { return search.search(); },
                             [&] { return search.runTool(); }});
    table.limit("32,000 names, tool's end to painted list", milliseconds(medians[0]),
                milliseconds(maxMilliseconds));
    table.compare("32,000 names, Enter to painted list", milliseconds(medians[1]),
                  {"shell and tool", milliseconds(medians[2])});
    table.limit("32,000 names, more than shell and tool", milliseconds(medians[1] - medians[2]),
                milliseconds(maxMoreThanTheTool));
    search.list();
    const auto keys = interleaved(rounds, {[&] { return search.filterKey(); }});
    table.limit("32,000 names, filter key to painted list", milliseconds(keys[0]),
                milliseconds(maxMilliseconds));
    table.limit("the longest list, 262,143 names, longest loop gap",
                milliseconds(search.longestGapOfLongestList()), milliseconds(maxLoopGap));
}
