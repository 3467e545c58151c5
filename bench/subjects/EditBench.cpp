// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Memory.h"
#include "instruments/Painted.h"
#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Samples.h"
#include "subjects/WindowRuns.h"

#include "base/HugePages.h"
#include "grid/CellEditor.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "image/BlockChange.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QUndoStack>

#include <cstring>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr qint64 smallSize = 64 * 1024;
constexpr qint64 largeSizes[] = {16 * mebibyte, 256 * mebibyte, 1024 * mebibyte};
constexpr qint64 zerosSize = 256 * mebibyte;
constexpr qint64 filledSize = 256 * mebibyte;
constexpr int rounds = 31;
constexpr int firstRounds = 3;
constexpr double maxTimesTheSmall = 2;
constexpr double maxTimesTheCopy = 1.5;
/// From the opening of a cell to the Enter key, of fingers that are quick: two digits and Enter.
constexpr double typedWithin = 450;

void press(QWidget &widget, int key, const QString &text = {}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&widget, &event);
}

/// A window whose image to burn is edited in its middle.
class EditedWindow {
public:
    explicit EditedWindow(const QByteArray &content)
        : size_(content.size()), file_(window_.makeFile(QStringLiteral("edited.bin"), content)) {
        window_.selectTab(burnTabIdentifier());
        openFile();
    }

    /// Opens the file anew, so that the image shares its bytes.
    void openFile() {
        window_.open(file_, size_);
        window_.grid().showAddress(size_ / 2);
        QCoreApplication::processEvents();
    }

    /// From the Enter key that ends an entry, typed by fingers, until it is painted.
    double editByHand() {
        CellEditor &editor = typeEntry();
        const Stopwatch typing;
        while (typing.milliseconds() < typedWithin)
            QCoreApplication::processEvents();
        return untilPainted([&] { press(editor, Qt::Key_Return); });
    }
    /// The same of an entry that came at once.
    double edit() {
        CellEditor &editor = typeEntry();
        return untilPainted([&] { press(editor, Qt::Key_Return); });
    }
    qint64 size() const { return size_; }
    double undo() {
        return untilPainted([this] { window_.trigger(QKeySequence(QKeySequence::Undo)); });
    }
    /// Takes back what it has made again, for the next round to begin with what was opened.
    double redo() {
        const double taken = untilPainted([this] { window_.trigger(QKeySequence::Redo); });
        undo();
        return taken;
    }
    /// Fills all bytes with a value that is another one each time.
    double fill() {
        const RepeatedBytes content{QByteArray(1, char(++value_))};
        EditOffers &edits = window_.velm().delegate().edits();
        return untilPainted([&] {
            edits.change({fillOf({0, size_}, content), QString(), QString()});
        });
    }

private:
    /// Another value each time: one that is there already is no edit.
    CellEditor &typeEntry() {
        constexpr int bytes = 0x80;
        constexpr int base = 16;
        GridView &grid = window_.grid();
        press(grid, Qt::Key_F2);
        CellEditor *editor = grid.entries().editor();
        if (!editor)
            throw std::runtime_error("no cell opens");
        const QString there = editor->text();
        QString entry;
        do {
            value_ = (value_ + 1) % bytes;
            entry = QString::number(bytes + value_, base).toUpper();
        } while (entry == there);
        editor->selectAll();
        editor->insert(entry);
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

/// Random bytes are no text, and zeros are without the edit of a round.
struct Subject {
    std::string name;
    std::unique_ptr<EditedWindow> window;
};

std::vector<Subject> makeSubjects() {
    std::vector<Subject> subjects;
    subjects.push_back({"64 KiB", std::make_unique<EditedWindow>(randomBytes(smallSize))});
    for (const qint64 size : largeSizes)
        subjects.push_back({sizeName(size), std::make_unique<EditedWindow>(randomBytes(size))});
    subjects.push_back({sizeName(zerosSize) + " of zeros",
                        std::make_unique<EditedWindow>(QByteArray(zerosSize, 0))});
    return subjects;
}

double copyOnce(qint64 size) {
    static const QByteArray bytes(size, 'x');
    const Stopwatch stopwatch;
    QByteArray copy = uninitializedBytes(size);
    std::memcpy(copy.data(), bytes.constData(), size_t(size));
    return stopwatch.milliseconds();
}

void benchFirstEdit(Table &table, EditedWindow &window, qint64 size, const Subject &small) {
    const auto first = [](EditedWindow &opened, double (EditedWindow::*way)()) {
        return [&opened, way] {
            opened.openFile();
            touchMemory(opened.size());
            return (opened.*way)();
        };
    };
    const auto medians = interleaved(
        firstRounds, {first(window, &EditedWindow::edit), first(window, &EditedWindow::editByHand),
                      first(*small.window, &EditedWindow::editByHand), [&] {
                          touchMemory(size);
                          return copyOnce(size);
                      }});
    const std::string name = "first edit of an opened file of " + sizeName(size);
    table.compare(name + ", Enter to pixels, typed at once", milliseconds(medians[0]),
                  {"one copy", milliseconds(medians[3])}, maxTimesTheCopy);
    table.compare(name + ", Enter to pixels, typed by hand", milliseconds(medians[1]),
                  {small.name, milliseconds(medians[2])}, maxTimesTheSmall);
}

double fillOnce(qint64 size, int value) {
    static QByteArray bytes(size, 'x');
    const Stopwatch stopwatch;
    std::memset(bytes.data(), value, size_t(size));
    return stopwatch.milliseconds();
}

/// What is replaced is kept, and the file is written: three passes over the bytes at the least.
void benchFill(Table &table, EditedWindow &window) {
    int value = 0;
    const auto medians = interleaved(firstRounds, {[&] {
                                                       touchMemory(filledSize);
                                                       const double taken = window.fill();
                                                       window.undo();
                                                       return taken;
                                                   },
                                                   [&] { return fillOnce(filledSize, ++value); }});
    table.compare("filling " + sizeName(filledSize) + ", to pixels", milliseconds(medians[0]),
                  {"memset", milliseconds(medians[1])});
}

} // namespace

void benchEdit(Table &table) {
    const std::vector<Subject> subjects = makeSubjects();
    const std::pair<const char *, double (EditedWindow::*)()> steps[] = {
        {"Enter", &EditedWindow::edit},
        {"undo", &EditedWindow::undo},
        {"redo", &EditedWindow::redo},
    };
    std::vector<Job> jobs;
    for (const auto &[key, step] : steps)
        for (const Subject &subject : subjects)
            jobs.emplace_back(
                [&window = *subject.window, step = step] { return (window.*step)(); });
    const auto medians = interleaved(rounds, jobs);
    size_t row = 0;
    for (const auto &[key, step] : steps) {
        const Peer small{subjects.front().name, milliseconds(medians[row++])};
        for (size_t index = 1; index < subjects.size(); ++index)
            table.compare("an edit, " + std::string(key) + " to pixels in " + subjects[index].name,
                          milliseconds(medians[row++]), small, maxTimesTheSmall);
    }
    benchFill(table, *subjects[2].window);
    constexpr size_t largest = std::size(largeSizes);
    benchFirstEdit(table, *subjects[largest].window, largeSizes[largest - 1], subjects.front());
}
