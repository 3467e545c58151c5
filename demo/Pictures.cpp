// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "demo/Pictures.h"

#include "devices/DeviceListView.h"
#include "exchange/ExportWindow.h"
#include "grid/CellEditor.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "imageviews/MemoriesWindow.h"

#include "ui_ExportWindow.h"
#include "ui_MainWindow.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

constexpr int pictureWidth = 1024;
constexpr int pictureHeight = 700;
const QString memoryChip = QStringLiteral("W27C512@DIP28");
const QString microcontroller = QStringLiteral("ATMEGA8@DIP28");
constexpr ByteRange routine{0x15, 0x25};
const QString logicChip = QStringLiteral("7400");

bool savePanel(const AppDelegate &delegate, const QString &path) {
    return delegate.outlets.searchDevicesWindow->grab().save(path);
}

/// The panel with the answer to a search, one name chosen.
bool pictureOfSearch(VelmWindow &velm, Demonstration &demonstration, const QString &path) {
    demonstration.press(velm.window().controls().btn_search);
    demonstration.settle();
    const device_searcher &searcher = *velm.delegate().outlets.devicesearcher;
    demonstration.type(searcher.devicesearchterm, QStringLiteral("27C512"));
    demonstration.press(
        searcher.tableview->window()->findChild<QPushButton *>(QStringLiteral("searchButton")));
    demonstration.settle();
    searcher.tableview->setCurrentIndex(searcher.tableview->model()->index(0, 0));
    const bool found = searcher.tableview->currentIndex().isValid();
    const bool saved = savePanel(velm.delegate(), path);
    velm.delegate().deviceSearchPanelCancel(nullptr);
    return found && saved;
}

/// A cell of the data to burn, open for typing.
bool pictureOfEdit(VelmWindow &velm, Demonstration &demonstration, const QString &path) {
    GridView *grid = velm.window().controls().tableview;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(1, firstByteColumn + 2));
    grid->edit(grid->currentIndex());
    if (QLineEdit *editor = grid->entries().editor())
        editor->setText(QStringLiteral("'VELM'"));
    const bool saved = demonstration.savePicture(path);
    grid->entries().commit();
    return saved;
}

/// A byte that differs from the chip's, among the hits of a search.
bool pictureOfComparison(VelmWindow &velm, Demonstration &demonstration, const QString &path) {
    FindBar *bar = velm.window().controls().findBar;
    bar->find();
    demonstration.type(bar->findChild<QLineEdit *>(QStringLiteral("what")),
                       QStringLiteral("65 ?0"));
    velm.window().controls().tableview->showAddress(0x12);
    demonstration.settle();
    const bool saved = demonstration.savePicture(path);
    demonstration.type(bar->findChild<QLineEdit *>(QStringLiteral("what")), QString());
    bar->hide();
    return saved;
}

/// A block of the data to burn, with what is told of it.
bool pictureOfBlock(VelmWindow &velm, Demonstration &demonstration, const QString &path) {
    const Ui::MainWindow &c = velm.window().controls();
    c.tableview->setFocus();
    c.tableview->selection().select(routine);
    const bool told =
        demonstration.waitUntil([&c] { return c.factsLine->wholeText().contains(u"selected"); });
    const bool saved = demonstration.savePicture(path);
    c.tableview->showAddress(0);
    return told && saved;
}

/// The data to burn on their way to two chips.
bool pictureOfHalves(VelmWindow &velm, Demonstration &demonstration, const QString &path) {
    demonstration.choose(QStringLiteral("Export\u2026"));
    auto *window = velm.window().findChild<ExportWindow *>();
    if (!window)
        return false;
    window->findChild<QComboBox *>(QStringLiteral("chips"))->setCurrentIndex(1);
    window->setName(QStringLiteral("/home/me/game"));
    const QPlainTextEdit *labels = window->controls().labels;
    const bool told =
        demonstration.waitUntil([labels] { return labels->toPlainText().contains(u"odd"); });
    demonstration.settle();
    const bool saved = window->grab().save(path);
    window->close();
    return told && saved;
}

/// What a microcontroller has besides its code.
bool pictureOfMemories(VelmWindow &velm, Demonstration &demonstration, const QString &path) {
    demonstration.type(velm.window().controls().uaTextField, microcontroller);
    const bool read = demonstration.read();
    demonstration.choose(QStringLiteral("Other memories\u2026"));
    auto *window = velm.window().findChild<MemoriesWindow *>();
    const bool saved = window && window->grab().save(path);
    if (window)
        window->close();
    return read && saved;
}

bool pictureOfLogicTest(VelmWindow &velm, Demonstration &demonstration, const QString &path) {
    qputenv("MINIPRO_SIM_FAULT", "bad-logic-pins");
    demonstration.type(velm.window().controls().uaTextField, logicChip);
    demonstration.press(velm.window().controls().btn_logic);
    demonstration.settle();
    qunsetenv("MINIPRO_SIM_FAULT");
    return demonstration.savePicture(path) && !velm.delegate().state().logictest_rows.isEmpty();
}

} // namespace

bool makePictures(VelmWindow &velm, const QString &folder) {
    const auto file = [&](const char *name) {
        return folder + u'/' + QLatin1String(name) + QStringLiteral(".png");
    };
    velm.window().resize(pictureWidth, pictureHeight);
    Demonstration demonstration(velm);
    const ChipFacts *chip = velm.window().controls().chipFacts;
    bool good = demonstration.waitUntil([chip] { return !chip->wholeText().isEmpty(); });
    good &= demonstration.read() && demonstration.savePicture(file("read"));
    good &= demonstration.composeFromRead();
    good &= demonstration.writeAndVerify() && demonstration.savePicture(file("velm"));
    good &= pictureOfEdit(velm, demonstration, file("edit"));
    good &= pictureOfComparison(velm, demonstration, file("compare"));
    good &= pictureOfSearch(velm, demonstration, file("search"));
    good &= pictureOfBlock(velm, demonstration, file("blocks"));
    good &= pictureOfHalves(velm, demonstration, file("halves"));
    good &= pictureOfMemories(velm, demonstration, file("memories"));
    good &= pictureOfLogicTest(velm, demonstration, file("logic"));
    demonstration.type(velm.window().controls().uaTextField, memoryChip);
    return good;
}
