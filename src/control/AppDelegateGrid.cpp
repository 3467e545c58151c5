// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// The tabs, what the grid asks and what is typed into it.

#include "control/AppDelegate.h"

#include "base/WorkState.h"
#include "grid/CellEdit.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "widgets/TabView.h"

#include <QLabel>

#include <tuple>

ShownTab AppDelegate::selectedTab() const {
    return shownTab(*outlets.tabview);
}

void AppDelegate::showSelectedTab() {
    tabView_didSelectTabViewItem(outlets.tabview, outlets.tabview->selectedTabViewItem());
}

void AppDelegate::tabView_didSelectTabViewItem(TabView *, const TabViewItem &item) {
    const ShownTab tab = tabOf(item.identifier);
    if (tab == ShownTab::None)
        return;
    const bool showsBytes = showsImage(tab);
    if (showsBytes) {
        const bool isRead = tab == ShownTab::Read;
        state_.display_data = isRead ? state_.read_from_chip_data : state_.output_data;
        loadStrData(this);
    } else {
        state_.logictest_rows = {};
    }
    outlets.tableview->setHeading(showsBytes ? GridHeading::Bytes : GridHeading::Pins);
    outlets.peeping_at->setText(labelOf(tab));
    showAnew();
}

void AppDelegate::showAnew() {
    outlets.tableview->reloadData();
    emit shownContentChanged();
}

void AppDelegate::loadStrData(QObject *) {
    state_.strData = DisplayText(state_.display_data);
}

ShownContent AppDelegate::shownContent() const {
    return {outlets.tabview->selectedTabViewItem().identifier, state_.display_data, state_.strData,
            state_.logictest_headers, state_.logictest_rows};
}

CellValue AppDelegate::tableView_objectValueForTableColumn_row(QObject *, const QString &column,
                                                               qint64 row) {
    return cellValue(shownContent(), column, row);
}

bool AppDelegate::tableView_shouldEditTableColumn_row(QObject *, const QString &, qint64) {
    return selectedTab() == ShownTab::ToBurn && with_.work.isIdle();
}

void AppDelegate::tableView_setObjectValue_forTableColumn_row(QObject *, const QString &value,
                                                              const QString &column, qint64 row) {
    if (selectedTab() != ShownTab::ToBurn || !state_.output_data || with_.gate.refuses())
        return;
    const CellEditOutcome edit = commit(value, column, row);
    if (!edit)
        return;
    if (edit->rejected)
        with_.beep();
    else
        edits_.remember(*edit);
    const ByteRange changed = saveEdit(edit->written());
    outlets.tableview->showEdit(*edit, changed);
    noteEdited(changed);
    if (edit->rejected)
        offers_.sayRejected(value, edit->offset);
}

CellEditOutcome AppDelegate::commit(const QString &entry, const QString &column, qint64 row) {
    CellEditOutcome edit;
    std::ignore = offers_.tryEdit([&] {
        edit = commitEntry(*state_.output_data, state_.strData.length(), entry,
                           columnNumber(column), row);
    });
    return edit;
}

ByteRange AppDelegate::saveEdit(ByteRange edited) {
    burnFile_.write(edited);
    return state_.strData.update(state_.display_data, edited);
}

void AppDelegate::showBlock(ByteRange changed) {
    outlets.tabview->selectTabViewItem(burnTabIdentifier());
    state_.display_data = state_.output_data;
    const ByteRange shown = saveEdit(changed);
    outlets.tableview->showChange(shown);
    noteEdited(shown);
    offers_.sayRestored();
}

void AppDelegate::noteEdited(ByteRange shown) {
    noteImageChanged();
    emit shownBytesChanged(shown);
}

// A step taken back or made again is looked at where it is.
void AppDelegate::showStep(ByteRange changed) {
    showBlock(changed);
    outlets.tableview->showAddress(changed.offset);
}
