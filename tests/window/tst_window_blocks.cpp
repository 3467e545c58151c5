// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/BlockSteps.h"

#include <QAccessible>

/// What changes of blocks have in common: where they are possible, zeros, and the marks of edits.
class TestWindowBlocks : public QObject {
    Q_OBJECT

private slots:
    void zero_isWrittenAtTheCursor();
    void zeros_areWrittenOverABlock();
    void zeros_areWrittenOverSelectedRows();
    void rowsApart_areLeftAlone();
    void zeroThatIsThereAlready_isNoEdit();
    void zero_isForTheGridAlone();
    void refusedZero_offersToWriteIt_data();
    void refusedZero_offersToWriteIt();
    void offer_goesWithItsImage();
    void otherTabs_areLeftAlone_data();
    void otherTabs_areLeftAlone();
    void whileTheToolRuns_nothingIsChanged();
    void entries_haveTipsAndAreOffMeanwhile();
    void whatShowsTheImage_follows();
    void file_isWrittenInPlace();
    void editedBytes_areMarkedUntilTheNextComposition();
    void editedBytes_areMarkedWithTheDataToBurnAlone();
};

namespace {

ByteMark markAt(WindowFixture &velm, int row, int column) {
    return velm.controls().tableview->gridModel()->mark(row, column);
}

const QStringList entries = {QStringLiteral("Pas&te"), QStringLiteral("Paste c&haracters"),
                             QStringLiteral("F&ill\u2026"), QStringLiteral("&Write 00"),
                             QStringLiteral("Insert a fil&e\u2026")};

} // namespace

void TestWindowBlocks::zero_isWrittenAtTheCursor() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 19, 1);
    pressInGrid(velm, Qt::Key_0);
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHI\0", 20));
    QCOMPARE(velm.message(), QStringLiteral("Filled 1 byte at 0013 with 00."));
    QCOMPARE(velm.cell(1, 4), QStringLiteral("00"));
    QCOMPARE(velm.beeps, 0);
    QCOMPARE(velm.controls().tableview->selection().bytes().offset, 19);
    velm.delegate().edits().undo();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowBlocks::zeros_areWrittenOverABlock() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 18);
    pressInGrid(velm, Qt::Key_0);
    QCOMPARE(imageAndFile(velm), QByteArray(18, '\0') + "IJ");
    QCOMPARE(velm.message(), QStringLiteral("Filled 18 bytes at 0000 with 00."));
    QVERIFY(velm.controls().tableview->selection().hasBlock());
    QVERIFY(menuEntry(velm, QStringLiteral("&Undo fill"))->isEnabled());
    velm.delegate().edits().undo();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    velm.delegate().edits().redo();
    QCOMPARE(imageAndFile(velm), QByteArray(18, '\0') + "IJ");
}

void TestWindowBlocks::zeros_areWrittenOverSelectedRows() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tableview->moveTo(velm.controls().tableview->model()->index(0, 0));
    pressInGrid(velm, Qt::Key_0);
    QCOMPARE(imageAndFile(velm), QByteArray(16, '\0') + "GHIJ");
    QCOMPARE(velm.message(), QStringLiteral("Filled 16 bytes at 0000 with 00."));
}

void TestWindowBlocks::rowsApart_areLeftAlone() {
    WindowFixture velm;
    showBytes(velm, QByteArray(40, 'x'));
    GridView *grid = velm.controls().tableview;
    for (const int row : {0, 2})
        grid->selectionModel()->setCurrentIndex(
            grid->model()->index(row, 3), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QCOMPARE(grid->selection().rowCount(), 2);
    pressInGrid(velm, Qt::Key_0);
    QCOMPARE(imageAndFile(velm), QByteArray(40, 'x'));
    QCOMPARE(velm.message(),
             QStringLiteral("Warning: The selected rows do not follow each other."));
}

void TestWindowBlocks::zeroThatIsThereAlready_isNoEdit() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 3, 1);
    pressInGrid(velm, Qt::Key_0);
    pressInGrid(velm, Qt::Key_0);
    QCOMPARE(velm.message(),
             QStringLiteral("There was nothing to change: the bytes are like that already."));
    velm.delegate().edits().undo();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowBlocks::zero_isForTheGridAlone() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().uaTextField->setFocus();
    QTest::keyClick(velm.controls().uaTextField, Qt::Key_0, Qt::ControlModifier);
    velm.settle();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowBlocks::refusedZero_offersToWriteIt_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("isOffered");
    QTest::newRow("0") << QStringLiteral("0") << true;
    QTest::newRow("00") << QStringLiteral("00") << true;
    QTest::newRow("0x00") << QStringLiteral("0x00") << true;
    QTest::newRow("too large") << QStringLiteral("100") << false;
    QTest::newRow("no number") << QStringLiteral("zz") << false;
}

void TestWindowBlocks::refusedZero_offersToWriteIt() {
    QFETCH(const QString, entry);
    QFETCH(const bool, isOffered);
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 3, entry);
    QCOMPARE(velm.beeps, 1);
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QVERIFY2(velm.message().contains(u"was not taken"), qPrintable(velm.message()));
    QCOMPARE(velm.message().contains(u"Ctrl+0"), isOffered);
    QPushButton *button = messageButton(velm, QStringLiteral("Write 00 at 0002"));
    QCOMPARE(button != nullptr, isOffered);
    if (!button)
        return;
    button->click();
    QCOMPARE(imageAndFile(velm), QByteArray("01\0003456789ABCDEFGHIJ", 20));
    QCOMPARE(velm.message(), QStringLiteral("Filled 1 byte at 0002 with 00."));
    QCOMPARE(velm.beeps, 1);
}

void TestWindowBlocks::offer_goesWithItsImage() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 3, QStringLiteral("00"));
    QVERIFY(messageButton(velm, QStringLiteral("Write 00 at 0002")));
    velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), "abcdefghij"));
    velm.settle();
    QVERIFY(!messageButton(velm, QStringLiteral("Write 00 at 0002")));
}

void TestWindowBlocks::otherTabs_areLeftAlone_data() {
    QTest::addColumn<QString>("entry");
    for (const QString &entry : entries)
        QTest::newRow(qPrintable(entry)) << entry;
}

void TestWindowBlocks::otherTabs_areLeftAlone() {
    QFETCH(const QString, entry);
    WindowFixture velm;
    showTwentyBytes(velm);
    for (const QString &tab : {readTabIdentifier(), logicTabIdentifier()}) {
        velm.controls().tabview->selectTabViewItem(tab);
        velm.settle();
        choose(velm, entry);
        QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
        QVERIFY2(velm.message().contains(u"Only the data to burn can be changed"),
                 qPrintable(velm.message()));
        QCOMPARE(velm.panels.requests.size(), 0);
    }
}

void TestWindowBlocks::whileTheToolRuns_nothingIsChanged() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 2, 3);
    QStringList seen;
    velm.whileBusy([&] {
        for (const QString &entry : entries)
            QVERIFY(!menuEntry(velm, entry)->isEnabled());
        velm.delegate().edits().writeZeros({0, 1});
        seen << velm.message();
        velm.delegate().stopRun();
    });
    velm.useTool("sleep 60\n");
    velm.click(velm.controls().btn_verify);
    QTRY_VERIFY(velm.velm().work().isIdle());
    QCOMPARE(seen.size(), 1);
    QVERIFY2(seen[0].contains(u"stop it or wait for its end"), qPrintable(seen[0]));
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    for (const QString &entry : entries)
        QVERIFY(menuEntry(velm, entry)->isEnabled());
}

void TestWindowBlocks::entries_haveTipsAndAreOffMeanwhile() {
    WindowFixture velm;
    showTwentyBytes(velm);
    for (const QString &entry : entries) {
        const QAction *action = menuEntry(velm, entry);
        QVERIFY(action->toolTip() != action->iconText());
        QVERIFY(!action->autoRepeat());
    }
    QCOMPARE(menuEntry(velm, entries[0])->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_V));
    QCOMPARE(menuEntry(velm, entries[3])->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_0));
}

void TestWindowBlocks::whatShowsTheImage_follows() {
    WindowFixture velm;
    velm.useTool("printf 0123456789ABCDEFGHIJ > \"$4\"\n"
                 "echo 'Reading Code...  0.01Sec  OK' >&2\n");
    showTwentyBytes(velm);
    velm.click(velm.controls().btn_read);
    velm.settle();
    const auto says = [&](const char *words) {
        return velm.controls().factsLine->wholeText().contains(QLatin1String(words));
    };
    QTRY_VERIFY(says("no differences"));
    velm.delegate().edits().writeZeros({4, 3});
    QTRY_VERIFY(says("3 differences") && says("1 edit"));
    velm.delegate().edits().change(
        {insertionOf(20, "xy"), QStringLiteral("paste"), QStringLiteral("Pasted.")});
    QTRY_VERIFY(says("22 bytes") && says("2 bytes longer"));
    QCOMPARE(velm.cell(1, 5), QStringLiteral("78"));
    velm.delegate().edits().undo();
    velm.delegate().edits().undo();
    QTRY_VERIFY(says("no differences") && says("20 bytes"));
    QCOMPARE(velm.cell(1, 5), QStringLiteral("XX"));
}

// A file that was replaced would have been written whole.
void TestWindowBlocks::file_isWrittenInPlace() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QFile file(velm.temporary(QStringLiteral("temp.bin")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    velm.delegate().edits().writeZeros({4, 3});
    velm.delegate().edits().change(
        {insertionOf(2, "xyz"), QStringLiteral("paste"), QStringLiteral("Pasted.")});
    QCOMPARE(file.readAll(), imageAndFile(velm));
    velm.delegate().edits().undo();
    QVERIFY(file.seek(0));
    QCOMPARE(file.readAll(), imageAndFile(velm));
    QCOMPARE(lengthOf(velm.state().output_data), 20);
}

void TestWindowBlocks::editedBytes_areMarkedUntilTheNextComposition() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 2, QStringLiteral("7A"));
    selectBytes(velm, 16, 2);
    pressInGrid(velm, Qt::Key_0);
    QVERIFY(markAt(velm, 0, 2).edited && markAt(velm, 1, 1).edited && markAt(velm, 1, 2).edited);
    QVERIFY(!markAt(velm, 0, 1).edited && !markAt(velm, 1, 3).edited);
    const GridView *grid = velm.controls().tableview;
    QCOMPARE(grid->model()->index(1, 1).data(Qt::AccessibleDescriptionRole).toString(),
             QStringLiteral("edited"));
    velm.delegate().edits().undo();
    QVERIFY(markAt(velm, 0, 2).edited && !markAt(velm, 1, 1).edited);
    velm.delegate().edits().redo();
    QVERIFY(markAt(velm, 1, 1).edited);
    velm.delegate().build_and_reload();
    velm.settle();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QVERIFY(!markAt(velm, 0, 2).edited && !markAt(velm, 1, 1).edited);
}

void TestWindowBlocks::editedBytes_areMarkedWithTheDataToBurnAlone() {
    WindowFixture velm;
    velm.useTool("printf 0123456789ABCDEFGHIJ > \"$4\"\n"
                 "echo 'Reading Code...  0.01Sec  OK' >&2\n");
    showTwentyBytes(velm);
    velm.click(velm.controls().btn_read);
    velm.settle();
    enter(velm, 0, 2, QStringLiteral("7A"));
    QVERIFY(markAt(velm, 0, 2).edited);
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    velm.settle();
    QVERIFY(!markAt(velm, 0, 2).edited);
    QTRY_VERIFY(markAt(velm, 0, 2).differs);
}

QTEST_MAIN(TestWindowBlocks)
#include "tst_window_blocks.moc"
