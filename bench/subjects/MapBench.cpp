// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Painted.h"
#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/ImageSource.h"
#include "subjects/Samples.h"

#include "base/TurnOfWork.h"
#include "grid/GridView.h"
#include "imageviews/ImageMap.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>

namespace {

constexpr int sizes[] = {64, 256}; // MiB
constexpr QSize windowSize(1024, 700);
constexpr int rounds = 15;
constexpr int pageRounds = 51;
constexpr double maxPasses = 2;
constexpr double maxTimesTheGrid = 1.2;

/// Milliseconds in which the window counts \a image, all its turns together.
double countBlocks(const QByteArray &image) {
    const Stopwatch stopwatch;
    BlockMap map;
    map.begin(image.size());
    while (!map.advance(image, maxBytesInTurn)) {
    }
    return stopwatch.milliseconds();
}

void compareWithMemory(Table &table, const std::string &what, const QByteArray &image) {
    volatile quint64 sum = 0;
    const auto medians = interleaved(rounds, {[&] { return countBlocks(image); },
                                              [&] {
                                                  const Stopwatch stopwatch;
                                                  sum = passOver(image);
                                                  return stopwatch.milliseconds();
                                              }});
    table.compare(what, milliseconds(medians[0]),
                  {"one pass over memory", milliseconds(medians[1])}, maxPasses);
}

/// A shown grid, with a map beside it if that is wanted.
struct Window {
    Window(const Image &image, bool withMap) : source(image) {
        grid.setSource(source);
        auto *layout = new QHBoxLayout(&host);
        layout->addWidget(&grid);
        if (withMap) {
            layout->addWidget(&map);
            map.follow(grid, [&image] { return ShownImage{.bytes = image.bytes, .origin = {}}; });
        }
        host.resize(windowSize);
        showPainted(host);
        while (withMap && !map.wordsAt(map.height()).contains(u':'))
            QCoreApplication::processEvents();
    }

    /// From the key's event until the pixels of the next page are there, and those of the map.
    double pageDown() {
        PaintWatch watch(*grid.viewport());
        QKeyEvent press(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
        const Stopwatch stopwatch;
        QCoreApplication::sendEvent(&grid, &press);
        watch.wait();
        return stopwatch.milliseconds();
    }

    ImageSource source;
    QWidget host;
    GridView grid{&host};
    ImageMap map{&host};
};

void benchPageKey(Table &table, const Image &image) {
    Window alone(image, false);
    Window together(image, true);
    const auto medians = interleaved(
        pageRounds, {[&] { return together.pageDown(); }, [&] { return alone.pageDown(); }});
    table.compare("page key in 256 MiB beside the map", milliseconds(medians[0]),
                  {"the grid alone", milliseconds(medians[1])}, maxTimesTheGrid);
}

} // namespace

void benchMap(Table &table) {
    for (const int size : sizes)
        compareWithMemory(table, "map of " + std::to_string(size) + " MiB",
                          randomBytes(size * mebibyte));
    benchPageKey(table, Image(randomBytes(sizes[1] * mebibyte)));
}
