// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/SelectionWiring.h"

#include "app/MainWindow.h"
#include "control/Messages.h"
#include "grid/GridCopying.h"

#include "ui_MainWindow.h"

#include <QCoreApplication>
#include <QItemSelectionModel>
#include <QLocale>

#include <utility>

namespace {

class Wording {
    Q_DECLARE_TR_FUNCTIONS(SelectionWiring)
};

void sayWhatIsRefused(GridView &grid, Messages &messages) {
    const auto say = [&messages](const QString &sentence, qint64 count) {
        messages.say(Topic::Copy, sentence.arg(QLocale().toString(count),
                                               QLocale().toString(GridCopying::largest)));
    };
    QObject::connect(&grid.copying(), &GridCopying::rowsRefused, &grid, [say](qint64 rows) {
        say(Wording::tr("%1 rows are too many to copy: at most %2 can be copied at a time."), rows);
    });
    QObject::connect(&grid.copying(), &GridCopying::bytesRefused, &grid, [say](qint64 bytes) {
        say(Wording::tr("%1 bytes are too many to copy: at most %2 can be copied at a time."),
            bytes);
    });
}

} // namespace

void wireSelection(MainWindow &window, Messages &messages) {
    const Ui::MainWindow &c = window.controls();
    const auto selected = [&messages] { messages.happened(Event::RowsSelected); };
    for (GridView *grid : {c.tableview, c.besideGrid}) {
        sayWhatIsRefused(*grid, messages);
        QObject::connect(grid, &GridView::selectedBytesChanged, grid,
                         [grid, selected, hadBlock = false]() mutable {
                             if (std::exchange(hadBlock, grid->hasBlock()) || hadBlock)
                                 selected();
                         });
    }
    QObject::connect(c.tableview->selectionModel(), &QItemSelectionModel::selectionChanged,
                     c.tableview, selected);
    QObject::connect(c.tableview->gridModel(), &GridModel::modelReset, c.tableview, selected);
    QObject::connect(c.tabview, &TabView::didSelectTabViewItem, c.tableview, &GridView::endBlock);
}
