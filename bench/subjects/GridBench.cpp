// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Memory.h"
#include "instruments/Painted.h"
#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/ImageSource.h"
#include "subjects/Samples.h"

#include "grid/GridView.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <stdexcept>

namespace {

constexpr QSize viewSize(1024, 700);
constexpr int rounds = 31;
constexpr double maxTimesTheSmall = 2;
constexpr qint64 pagedSmall = 64 * 1024;
constexpr qint64 pagedLarge = 1024 * mebibyte;
/// As much, but for what chance brings.
constexpr double maxTimesTheSmallPage = 1.2;
/// A table that keeps 8 bytes for each row of 16 takes fifty times this.
constexpr double maxMemoryPerByte = 0.01;

/// A shown grid that is given one image after the other.
struct Grid {
    explicit Grid(const Image &image) : source(image) {
        view.setSource(source);
        view.resize(viewSize);
        showPainted(view);
    }

    double resetAndPaint(const Image &image) {
        source.present(image);
        const Stopwatch stopwatch;
        view.reloadData();
        view.viewport()->repaint();
        return stopwatch.milliseconds();
    }

    /// From the key's event until the pixels of the next page are there.
    double pageDown() {
        PaintWatch watch(*view.viewport());
        QKeyEvent press(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
        const int before = view.verticalScrollBar()->value();
        const Stopwatch stopwatch;
        QCoreApplication::sendEvent(&view, &press);
        watch.wait();
        const double taken = stopwatch.milliseconds();
        if (view.verticalScrollBar()->value() == before)
            throw std::runtime_error("the page key does not scroll");
        return taken;
    }

    ImageSource source;
    GridView view;
};

void goToTop(GridView &view) {
    view.moveTo(view.gridModel()->index(0, 1));
    QCoreApplication::processEvents();
    // The first key still moves the cursor down the page that is in view.
    QKeyEvent press(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &press);
    QCoreApplication::processEvents();
}

void benchMemory(Table &table, Grid &grid, const Image &small, const Image &large) {
    grid.resetAndPaint(small);
    const double before = heapInUse();
    grid.resetAndPaint(large);
    table.limit("grid, memory for each byte of 256 MiB",
                bytesPerByte((heapInUse() - before) / double(large.bytes->size())),
                bytesPerByte(maxMemoryPerByte));
}

void benchReset(Table &table, Grid &grid, const std::vector<const Image *> &images) {
    std::vector<Job> jobs;
    for (const Image *image : images)
        jobs.emplace_back([&grid, image] { return grid.resetAndPaint(*image); });
    const auto medians = interleaved(rounds, jobs);
    const Peer small{"1 MiB", milliseconds(medians[0])};
    table.compare("grid, reset + first paint of 16 MiB", milliseconds(medians[1]), small,
                  maxTimesTheSmall);
    table.compare("grid, reset + first paint of 256 MiB", milliseconds(medians[2]), small,
                  maxTimesTheSmall);
}

void benchPageKey(Table &table) {
    const Image small(randomBytes(pagedSmall));
    const Image large(randomBytes(pagedLarge));
    Grid ofSmall(small);
    Grid ofLarge(large);
    goToTop(ofSmall.view);
    goToTop(ofLarge.view);
    const auto medians = interleaved(
        rounds, {[&] { return ofSmall.pageDown(); }, [&] { return ofLarge.pageDown(); }});
    table.compare("grid, page key to pixels in 1 GiB, offscreen", milliseconds(medians[1]),
                  {"in 64 KiB", milliseconds(medians[0])}, maxTimesTheSmallPage);
}

} // namespace

void benchGrid(Table &table) {
    const Image small(randomBytes(1 * mebibyte));
    const Image middle(randomBytes(16 * mebibyte));
    const Image large(randomBytes(256 * mebibyte));
    Grid grid(small);
    benchReset(table, grid, {&small, &middle, &large});
    benchMemory(table, grid, small, large);
    grid.view.hide();
    benchPageKey(table);
}
