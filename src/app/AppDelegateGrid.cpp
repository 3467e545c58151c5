// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// The tabs and what the grid asks.

#include "app/AppDelegate.h"

#include "grid/GridColumns.h"
#include "grid/GridPresentation.h"
#include "grid/GridView.h"
#include "tool/LogicReport.h"
#include "widgets/TabView.h"

#include <QLabel>
#include <QLocale>

void AppDelegate::tabView_didSelectTabViewItem(TabView *, const TabViewItem &item) {
    QString label;
    if (item.identifier == readTabIdentifier()) {
        state_.display_data = state_.read_from_chip_data;
        loadStrData(this);
        label = QStringLiteral("Data read from chip:");
    } else if (item.identifier == burnTabIdentifier()) {
        state_.display_data = state_.output_data;
        loadStrData(this);
        label = QStringLiteral("Data to burn:");
    } else if (item.identifier == logicTabIdentifier()) {
        state_.logictest_rows = {};
    } else {
        return;
    }
    outlets.tableview->setHeading(item.identifier == logicTabIdentifier() ? GridHeading::Pins
                                                                          : GridHeading::Bytes);
    outlets.tableview->reloadData();
    outlets.peeping_at->setText(label);
    sayTextRemark(item.identifier);
}

void AppDelegate::loadStrData(QObject *) {
    state_.strData = DisplayText(state_.display_data);
}

// Cells past the end of the text read "XX" although there are bytes behind them.
void AppDelegate::sayTextRemark(const QString &tab) {
    const qsizetype hidden = state_.strData.byteLength() - state_.strData.length();
    QString sentence;
    if (tab != logicTabIdentifier() && state_.strData.isMultiByte() && hidden > 0)
        sentence = hidden == 1 ? tr("The image reads as UTF-8: its last byte is not shown.")
                               : tr("The image reads as UTF-8: its last %1 bytes are not shown.")
                                     .arg(QLocale().toString(hidden));
    messages_.say(Topic::HiddenBytes, sentence);
}

QStringList AppDelegate::trimEmptyStrings(const QStringList &strings) const {
    return ::trimEmptyStrings(strings);
}

ShownContent AppDelegate::shownContent() const {
    return {selectedTab(), state_.display_data, state_.strData, state_.logictest_headers,
            state_.logictest_rows};
}

quint64 AppDelegate::numberOfRowsInTableView(QObject *) {
    return rowCount(shownContent());
}

CellValue AppDelegate::tableView_objectValueForTableColumn_row(QObject *, const QString &column,
                                                               qint64 row) {
    return cellValue(shownContent(), column, row);
}

bool AppDelegate::tableView_shouldSelectRow(QObject *, qint64) {
    return true;
}

bool AppDelegate::tableView_shouldSelectTableColumn(QObject *, const QString &) {
    return false;
}

DragOperation AppDelegate::tableView_validateDrop_proposedRow_proposedDropOperation(
    QObject *, const QMimeData *drag, qint64, int) {
    return dropOperation(drag);
}
