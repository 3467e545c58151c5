// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/BlockWiring.h"

#include "app/MainWindow.h"
#include "control/AppDelegate.h"
#include "grid/GridMarks.h"
#include "grid/ShownTab.h"
#include "image/CopyAhead.h"
#include "image/EditedBytes.h"

#include "ui_MainWindow.h"

#include <functional>
#include <utility>

namespace {

/// Marks the bytes of the data to burn that were edited, while a grid shows these.
class EditMarks final : public QObject, public GridMarks {
public:
    EditMarks(AppDelegate &delegate, std::function<bool()> areShown, QObject *parent)
        : QObject(parent), delegate_(delegate), areShown_(std::move(areShown)) {}

    ByteMark markAt(qint64 offset) const override {
        return {.edited = areShown_() && delegate_.edits().edited().contains(offset)};
    }
    QString wordsAt(qint64 offset) const override {
        return markAt(offset).edited ? AppDelegate::tr("edited") : QString();
    }

private:
    AppDelegate &delegate_;
    std::function<bool()> areShown_;
};

} // namespace

void wireBlocks(const BlockActions::Surroundings &surroundings, WindowMenus &menus) {
    auto *actions = new BlockActions(surroundings, &surroundings.window);
    actions->addEntries(menus);
}

void markEdits(MainWindow &window, AppDelegate &delegate) {
    const Ui::MainWindow &c = window.controls();
    const auto markIn = [&](GridView *grid, ShownTab tab) {
        const auto areShown = [tabs = c.tabview, tab] { return shownTab(*tabs) == tab; };
        grid->addMarks(*new EditMarks(delegate, areShown, &window));
        QObject::connect(&delegate, &AppDelegate::imageToBurnChanged, grid,
                         &GridView::refreshMarks);
    };
    markIn(c.tableview, ShownTab::ToBurn);
    // Beside the data that were read stand the data to burn.
    markIn(c.besideGrid, ShownTab::Read);
}

void readyEdits(MainWindow &window, AppDelegate &delegate) {
    auto *ahead = new CopyAhead(&window);
    const GridEntries *entries = &window.controls().tableview->entries();
    QObject::connect(entries, &GridEntries::entryBegins, ahead,
                     [ahead, &delegate] { ahead->begin(delegate.state().output_data); });
    QObject::connect(entries, &GridEntries::entryEnds, ahead, &CopyAhead::finish);
    QObject::connect(entries, &GridEntries::entryCloses, ahead, &CopyAhead::giveUp);
}
