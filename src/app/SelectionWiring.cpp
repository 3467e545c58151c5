// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/SelectionWiring.h"

#include "app/MainWindow.h"
#include "base/NumberWords.h"
#include "control/Messages.h"
#include "grid/GridCopying.h"
#include "grid/GridModel.h"
#include "grid/GridSelection.h"
#include "imageviews/SelectRangeWindow.h"
#include "widgets/ConsoleView.h"
#include "widgets/MenuEntry.h"
#include "widgets/TabView.h"
#include "widgets/WindowFront.h"

#include "ui_MainWindow.h"

#include <QCoreApplication>
#include <QItemSelectionModel>
#include <QMenu>

#include <utility>

namespace {

class SelectionWording {
    Q_DECLARE_TR_FUNCTIONS(SelectionWiring)
};

void sayMemoryLacked(Messages &messages) {
    messages.say(Topic::Copy, SelectionWording::tr("There is not enough memory to copy so much."));
}

void sayWhatIsRefused(GridView &grid, Messages &messages) {
    const auto say = [&messages](const QString &sentence, qint64 count, qint64 max) {
        messages.say(Topic::Copy, sentence.arg(grouped(count), grouped(max)));
    };
    QObject::connect(&grid.copying(), &GridCopying::rowsRefused, &grid, [say](qint64 rows) {
        say(SelectionWording::tr(
                "%1 rows are too many to copy: at most %2 can be copied at a time."),
            rows, GridCopying::maxRows);
    });
    QObject::connect(&grid.copying(), &GridCopying::bytesRefused, &grid, [say](qint64 bytes) {
        say(SelectionWording::tr(
                "%1 bytes are too many to copy: at most %2 can be copied at a time."),
            bytes, GridCopying::largest);
    });
    QObject::connect(&grid.copying(), &GridCopying::memoryLacked, &grid,
                     [&messages] { sayMemoryLacked(messages); });
}

/// The grid that has the keyboard, else that of the tab.
GridView &gridInUse(const Ui::MainWindow &c) {
    return c.besideGrid->hasFocus() ? *c.besideGrid : *c.tableview;
}

/// An entry that works on the grid in use, and has its key there alone.
template <typename Work>
QAction *addGridEntry(QMenu &menu, const Ui::MainWindow &c, const QString &text,
                      const QKeySequence &key, Work work) {
    QAction *entry = menu.addAction(text);
    entry->setShortcut(key);
    entry->setShortcutContext(Qt::WidgetShortcut);
    entry->setAutoRepeat(false);
    QObject::connect(entry, &QAction::triggered, c.tableview, [&c, work] { work(gridInUse(c)); });
    return entry;
}

QMenu *addCopyAs(QMenu &edit, const Ui::MainWindow &c) {
    QMenu *copyAs = edit.addMenu(SelectionWording::tr("Copy &as"));
    const auto addNotation = [&](const QString &text, ByteNotation notation) {
        return addGridEntry(*copyAs, c, text, {},
                            [notation](GridView &grid) { grid.copying().copyBytes(notation); });
    };
    const QList<QAction *> ofBytes = {
        addNotation(SelectionWording::tr("&Hexadecimal text"), ByteNotation::Hexadecimal),
        addNotation(SelectionWording::tr("&C array"), ByteNotation::CArray),
        addNotation(SelectionWording::tr("&Python bytes"), ByteNotation::PythonBytes),
        addNotation(SelectionWording::tr("Ch&aracters"), ByteNotation::Characters),
    };
    addGridEntry(*copyAs, c, SelectionWording::tr("&Rows"), {},
                 [](GridView &grid) { grid.copying().copyRows(); });
    // Results have rows alone.
    QObject::connect(&c.tableview->selection(), &GridSelection::changed, copyAs, [ofBytes, &c] {
        for (QAction *entry : ofBytes)
            entry->setEnabled(c.tableview->gridModel()->heading() == GridHeading::Bytes);
    });
    return copyAs;
}

void showSelectRange(MainWindow &window) {
    GridView &grid = gridInUse(window.controls());
    auto *shown = window.findChild<SelectRangeWindow *>();
    if (!shown)
        shown = new SelectRangeWindow(grid, &window);
    shown->setGrid(grid);
    bringUp(*shown);
}

QAction *addSelectRange(QMenu &edit, MainWindow &window) {
    return addMenuEntry(edit, SelectionWording::tr("&Select range\u2026"),
                        Qt::CTRL | Qt::SHIFT | Qt::Key_G, &window,
                        [&window] { showSelectRange(window); });
}

/// Not the view's own menu of actions, whose exec() would hold up the end of a run.
void popUpMenu(GridView &grid, const QPoint &at) {
    auto *menu = new QMenu(&grid);
    menu->addActions(grid.actions());
    popUp(menu, grid.viewport()->mapToGlobal(at));
}

} // namespace

void addSelectionEntries(QMenu &edit, MainWindow &window) {
    const Ui::MainWindow &c = window.controls();
    const QList<QAction *> entries = {
        addGridEntry(edit, c, SelectionWording::tr("&Copy"), QKeySequence::Copy,
                     [](GridView &grid) { grid.copying().copy(); }),
        addCopyAs(edit, c)->menuAction(),
        addGridEntry(edit, c, SelectionWording::tr("Select a&ll"), QKeySequence::SelectAll,
                     [](GridView &grid) { grid.selectAll(); }),
        addSelectRange(edit, window),
    };
    edit.addAction(c.tableview->entries().moveOnAction());
    for (GridView *grid : {c.tableview, c.besideGrid}) {
        grid->addActions(entries);
        grid->setContextMenuPolicy(Qt::CustomContextMenu);
        QObject::connect(grid, &GridView::customContextMenuRequested, grid,
                         [grid](const QPoint &at) { popUpMenu(*grid, at); });
    }
}

void wireSelection(MainWindow &window, Messages &messages) {
    const Ui::MainWindow &c = window.controls();
    const auto selected = [&messages] { messages.happened(Event::RowsSelected); };
    for (GridView *grid : {c.tableview, c.besideGrid}) {
        sayWhatIsRefused(*grid, messages);
        QObject::connect(&grid->selection(), &GridSelection::changed, grid,
                         [grid, selected, hadBlock = false]() mutable {
                             if (std::exchange(hadBlock, grid->selection().hasBlock()) || hadBlock)
                                 selected();
                         });
    }
    QObject::connect(c.textView, &ConsoleView::memoryLacked, c.textView,
                     [&messages] { sayMemoryLacked(messages); });
    QObject::connect(c.tableview->selectionModel(), &QItemSelectionModel::selectionChanged,
                     c.tableview, selected);
    // A selection that goes with its rows says nothing, be it for another content or because an
    // edit was taken back that had made the image longer.
    QObject::connect(c.tableview->gridModel(), &GridModel::modelReset, c.tableview, selected);
    QObject::connect(&c.tableview->selection(), &GridSelection::changed, c.tableview,
                     [&messages] { messages.happened(Event::BytesSelected); });
    for (GridView *grid : {c.tableview, c.besideGrid})
        QObject::connect(c.tabview, &TabView::didSelectTabViewItem, &grid->selection(),
                         &GridSelection::end);
}
