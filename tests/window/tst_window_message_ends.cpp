// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"
#include "window/SearchSteps.h"

#include "devices/UAStringManager.h"
#include "grid/GridCopying.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>

#include <functional>

/// The message line says nothing that is no longer so.
class TestWindowMessageEnds : public QObject {
    Q_OBJECT

private slots:
    void remarkOnFavourites_endsWithWhatItSpokeOf_data();
    void remarkOnFavourites_endsWithWhatItSpokeOf();
    void noFavourites_endsWhenThereIsOne();
    void refusedCopy_endsWithTheSelection_data();
    void refusedCopy_endsWithTheSelection();
    void copyWithoutMemory_endsWithTheSelection();
    void refusedAddress_endsWithWhatItSpokeOf_data();
    void refusedAddress_endsWithWhatItSpokeOf();
    void refusedAddress_endsWhenItIsReached();
    void whatWasRefused_endsWithABlockThatIsLikeThat();
    void fullConsole_endsWhenItIsCleared();
    void manyLines_areSaidToBeKept();
    void customDevice_endsWithAnotherDevice();
    void refusedWhileBusy_endsWithTheRun();
};

namespace {

using Deed = std::function<void(WindowFixture &)>;

bool says(WindowFixture &velm, const char *part) {
    return velm.message().contains(QString::fromUtf8(part));
}

} // namespace

Q_DECLARE_METATYPE(Deed)

void TestWindowMessageEnds::remarkOnFavourites_endsWithWhatItSpokeOf_data() {
    QTest::addColumn<Deed>("deed");
    const auto row = [](const char *name, Deed deed) { QTest::newRow(name) << std::move(deed); };
    row("another device",
        [](WindowFixture &velm) { QTest::keyClick(velm.controls().uaTextField, Qt::Key_A); });
    row("other favourites", [](WindowFixture &velm) {
        velm.settings().setValue(settingsKeys::favourites, QStringList(QStringLiteral("7400")));
    });
    row("the menu",
        [](WindowFixture &velm) { emit velm.controls().dButton->menu()->aboutToShow(); });
}

void TestWindowMessageEnds::remarkOnFavourites_endsWithWhatItSpokeOf() {
    QFETCH(Deed, deed);
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_add_favourite);
    QVERIFY2(says(velm, "is a favourite already"), qPrintable(velm.message()));
    deed(velm);
    QCOMPARE(velm.message(), QString());
}

void TestWindowMessageEnds::noFavourites_endsWhenThereIsOne() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::favourites, QStringList());
    velm.start();
    emit velm.controls().dButton->menu()->aboutToShow();
    QVERIFY2(says(velm, "There are no favourites"), qPrintable(velm.message()));
    velm.click(velm.controls().btn_add_favourite);
    QVERIFY2(!says(velm, "There are no favourites"), qPrintable(velm.message()));
    QVERIFY2(says(velm, "was added to the favourites"), qPrintable(velm.message()));
}

void TestWindowMessageEnds::refusedCopy_endsWithTheSelection_data() {
    QTest::addColumn<Deed>("deed");
    const auto row = [](const char *name, Deed deed) { QTest::newRow(name) << std::move(deed); };
    row("another row", [](WindowFixture &velm) {
        GridView *grid = velm.controls().tableview;
        grid->moveTo(grid->model()->index(3, 1));
    });
    row("no block", [](WindowFixture &velm) { velm.controls().tableview->selection().end(); });
    row("another block", [](WindowFixture &velm) {
        velm.controls().tableview->selection().select({0, 5});
    });
    row("another tab", [](WindowFixture &velm) {
        velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    });
}

void TestWindowMessageEnds::refusedCopy_endsWithTheSelection() {
    QFETCH(Deed, deed);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::pad_to, QStringLiteral("17000"));
    velm.settings().setValue(settingsKeys::pad, true);
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->selectAll();
    grid->copying().copy();
    QVERIFY2(says(velm, "too many to copy"), qPrintable(velm.message()));
    deed(velm);
    QCOMPARE(velm.message(), QString());
}

void TestWindowMessageEnds::copyWithoutMemory_endsWithTheSelection() {
    WindowFixture velm;
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->selectAll();
    emit grid->copying().memoryLacked();
    QVERIFY2(says(velm, "not enough memory to copy"), qPrintable(velm.message()));
    velm.controls().tableview->selection().end();
    QCOMPARE(velm.message(), QString());
}

void TestWindowMessageEnds::refusedAddress_endsWithWhatItSpokeOf_data() {
    QTest::addColumn<Deed>("deed");
    const auto row = [](const char *name, Deed deed) { QTest::newRow(name) << std::move(deed); };
    row("another text", [](WindowFixture &velm) {
        QTest::keyClick(&velm.controls().findBar->addressField(), Qt::Key_1);
    });
    row("another tab", [](WindowFixture &velm) {
        velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    });
    row("another image", [](WindowFixture &velm) {
        velm.delegate().openBinary(velm.write(QStringLiteral("large.bin"), QByteArray(99, 'A')));
    });
    row("an edit that makes the image longer",
        [](WindowFixture &velm) { enter(velm, 1, 4, QStringLiteral("'longer'")); });
}

void TestWindowMessageEnds::refusedAddress_endsWithWhatItSpokeOf() {
    QFETCH(Deed, deed);
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().findBar->findAddress();
    QLineEdit &field = velm.controls().findBar->addressField();
    field.setText(QStringLiteral("14"));
    QTest::keyClick(&field, Qt::Key_Return);
    QVERIFY2(says(velm, "There is no byte at 14"), qPrintable(velm.message()));
    deed(velm);
    velm.settle();
    QCOMPARE(velm.message(), QString());
}

void TestWindowMessageEnds::refusedAddress_endsWhenItIsReached() {
    WindowFixture velm;
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->moveTo(grid->model()->index(1, 4)); // the last byte
    velm.controls().findBar->findAddress();
    QLineEdit &field = velm.controls().findBar->addressField();
    field.setText(QStringLiteral("+1"));
    QTest::keyClick(&field, Qt::Key_Return);
    QVERIFY2(says(velm, "There is no byte at +1"), qPrintable(velm.message()));
    grid->moveTo(grid->model()->index(0, 1));
    QTest::keyClick(&field, Qt::Key_Return);
    QCOMPARE(velm.message(), QString());
}

void TestWindowMessageEnds::whatWasRefused_endsWithABlockThatIsLikeThat() {
    WindowFixture velm;
    showTwentyBytes(velm);
    EditOffers &edits = velm.delegate().edits();
    QVERIFY(edits.writeZeros({3, 1}));
    edits.sayRejected(QStringLiteral("zz"), 3);
    QVERIFY(!edits.writeZeros({99, 1}));
    QCOMPARE(velm.message().count(u'\n'), 2);
    QVERIFY(edits.writeZeros({3, 1}));
    QCOMPARE(velm.message(),
             QStringLiteral("There was nothing to change: the bytes are like that already."));
}

void TestWindowMessageEnds::fullConsole_endsWhenItIsCleared() {
    WindowFixture velm;
    velm.start();
    ConsoleView *console = velm.controls().textView;
    console->appendText(QString(ConsoleStorage::defaultLimit + 1, u'x'));
    QVERIFY2(says(velm, "The console is full"), qPrintable(velm.message()));
    console->clearAll();
    QCOMPARE(velm.message(), QString());
}

void TestWindowMessageEnds::manyLines_areSaidToBeKept() {
    WindowFixture velm;
    velm.start();
    ConsoleView *console = velm.controls().textView;
    console->appendText(QString(2 * ConsoleView::maxLines, u'\n'));
    QVERIFY2(says(velm, "The console shows its last lines alone"), qPrintable(velm.message()));
    console->appendText(QString(ConsoleStorage::defaultLimit, u'x'));
    QVERIFY2(says(velm, "The console is full"), qPrintable(velm.message()));
}

void TestWindowMessageEnds::customDevice_endsWithAnotherDevice() {
    WindowFixture velm;
    velm.useTool("echo 'MINE@DIP28(custom)'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    panel.select(0);
    velm.click(panel.ok);
    velm.settle();
    QVERIFY2(says(velm, "marks MINE@DIP28 as custom"), qPrintable(velm.message()));
    velm.controls().uaTextField->setText(QStringLiteral("27C64"));
    QVERIFY2(!says(velm, "as custom"), qPrintable(velm.message()));
    QCOMPARE(velm.settings().stringValue(settingsKeys::device), QStringLiteral("27C64"));
}

void TestWindowMessageEnds::refusedWhileBusy_endsWithTheRun() {
    WindowFixture velm;
    velm.useTool("while :; do sleep 1; done\n");
    velm.start();
    bool said = false;
    velm.whileBusy([&] {
        velm.velm().window().close();
        said = says(velm, "Stop it first");
        velm.delegate().stopRun();
    });
    velm.click(velm.controls().btn_read);
    QVERIFY(said);
    QVERIFY2(!says(velm, "Stop it first"), qPrintable(velm.message()));
}

QTEST_MAIN(TestWindowMessageEnds)
#include "tst_window_message_ends.moc"
