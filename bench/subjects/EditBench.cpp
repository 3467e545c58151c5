// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Painted.h"
#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Samples.h"
#include "subjects/WindowRuns.h"

#include "files/HugePages.h"
#include "grid/CellEditor.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QUndoStack>

#include <cstring>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr qint64 smallSize = 64 * 1024;
constexpr qint64 largeSizes[] = {16 * mebibyte, 256 * mebibyte, 1024 * mebibyte};
constexpr int rounds = 31;
constexpr int firstRounds = 3;
constexpr double mostTimesTheSmall = 2;
constexpr double mostTimesTheCopy = 1.5;

void press(QWidget &widget, int key, const QString &text = {}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&widget, &event);
}

/// A window whose image to burn is edited in its middle.
class EditedWindow {
public:
    explicit EditedWindow(qint64 size)
        : size_(size), file_(window_.makeFile(QStringLiteral("edited.bin"), size)) {
        window_.selectTab(burnTabIdentifier());
        openFile();
    }

    /// Opens the file anew, so that the image shares its bytes.
    void openFile() {
        window_.open(file_, size_);
        window_.grid().showAddress(size_ / 2);
        QCoreApplication::processEvents();
    }

    /// From the Enter key that ends an entry until it is painted.
    double edit() {
        CellEditor &editor = typeEntry();
        return untilPainted([&] { press(editor, Qt::Key_Return); });
    }
    double undo() {
        return untilPainted([this] { window_.trigger(QKeySequence(QKeySequence::Undo)); });
    }
    double redo() {
        return untilPainted([this] { window_.trigger(QKeySequence::Redo); });
    }

private:
    // Another value each time: one that is there already is no edit.
    CellEditor &typeEntry() {
        constexpr int bytes = 0x80;
        constexpr int base = 16;
        GridView &grid = window_.grid();
        press(grid, Qt::Key_F2);
        CellEditor *editor = grid.openEditor();
        if (!editor)
            throw std::runtime_error("no cell opens");
        value_ = (value_ + 1) % bytes;
        editor->selectAll();
        editor->insert(QString::number(bytes + value_, base));
        QCoreApplication::processEvents();
        return *editor;
    }

    template <typename Work>
    double untilPainted(const Work &work) {
        const QUndoStack &history = window_.velm().delegate().edits().history();
        PaintWatch watch(*window_.grid().viewport());
        bool changed = false;
        const auto connection =
            QObject::connect(&history, &QUndoStack::indexChanged, window_.grid().viewport(), [&] {
                changed = true;
                watch.arm();
            });
        const Stopwatch stopwatch;
        work();
        while (!changed)
            QCoreApplication::processEvents();
        watch.wait();
        const double taken = stopwatch.milliseconds();
        QObject::disconnect(connection);
        return taken;
    }

    WindowRuns window_;
    qint64 size_;
    QString file_;
    int value_ = 0;
};

std::string sizeName(qint64 size) {
    constexpr qint64 mebibytesInGibibyte = 1024;
    const qint64 mebibytes = size / mebibyte;
    return mebibytes < mebibytesInGibibyte
               ? std::to_string(mebibytes) + " MiB"
               : std::to_string(mebibytes / mebibytesInGibibyte) + " GiB";
}

using Windows = std::vector<std::unique_ptr<EditedWindow>>;

void addRows(Table &table, const std::string &what, const double *medians) {
    const Peer small{"64 KiB", milliseconds(medians[0])};
    for (size_t index = 0; index < std::size(largeSizes); ++index)
        table.compare(what + " to pixels in " + sizeName(largeSizes[index]),
                      milliseconds(medians[index + 1]), small, mostTimesTheSmall);
}

double copyOnce(qint64 size) {
    static const QByteArray bytes(size, 'x');
    const Stopwatch stopwatch;
    QByteArray copy = uninitializedBytes(size);
    std::memcpy(copy.data(), bytes.constData(), static_cast<size_t>(size));
    return stopwatch.milliseconds();
}

void benchFirstEdit(Table &table, EditedWindow &window, qint64 size) {
    const auto medians = interleaved(firstRounds, {[&] {
                                                       window.openFile();
                                                       return window.edit();
                                                   },
                                                   [&] { return copyOnce(size); }});
    table.compare("first edit of an opened file of " + sizeName(size) + ", Enter to pixels",
                  milliseconds(medians[0]), {"one copy", milliseconds(medians[1])},
                  mostTimesTheCopy);
}

} // namespace

void benchEdit(Table &table) {
    Windows windows;
    windows.push_back(std::make_unique<EditedWindow>(smallSize));
    for (const qint64 size : largeSizes)
        windows.push_back(std::make_unique<EditedWindow>(size));
    std::vector<Job> jobs;
    for (double (EditedWindow::*const step)() :
         {&EditedWindow::edit, &EditedWindow::undo, &EditedWindow::redo})
        for (const auto &window : windows)
            jobs.emplace_back([&window = *window, step] { return (window.*step)(); });
    const auto medians = interleaved(rounds, jobs);
    addRows(table, "an edit, Enter", medians.data());
    addRows(table, "an edit, undo", medians.data() + windows.size());
    addRows(table, "an edit, redo", medians.data() + 2 * windows.size());
    benchFirstEdit(table, *windows.back(), largeSizes[std::size(largeSizes) - 1]);
}
