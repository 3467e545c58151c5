// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Painted.h"
#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Samples.h"
#include "subjects/ToolRunFolder.h"

#include "base/Log.h"
#include "base/MainQueue.h"
#include "base/WorkState.h"
#include "devices/DeviceListModel.h"
#include "devices/DeviceListView.h"
#include "devices/DeviceSearchPanel.h"
#include "devices/device_searcher.h"
#include "settings/ToolTrust.h"
#include "settings/WindowMemory.h"

#include <QLineEdit>

#include <stdexcept>

namespace {

constexpr int nameCount = 30'000;
constexpr int rounds = 15;
constexpr double mostMilliseconds = 8;

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
        DeviceListView &view = *searcher_.tableview;
        searcher_.list(nullptr);
        PaintWatch watch(*view.viewport());
        watch.wait();
        const double taken = sinceEnd_.milliseconds();
        if (view.model()->rowCount() != nameCount)
            throw std::runtime_error("the list does not hold all names");
        return taken;
    }

private:
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
    const auto medians = interleaved(rounds, {[&] { return search.list(); }});
    table.limit("30,000 names, tool's end to painted list", milliseconds(medians[0]),
                milliseconds(mostMilliseconds));
    table.gap("30,000 names, filter key", "rofi",
              "the list has no filter: a search asks the tool again");
}
