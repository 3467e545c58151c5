// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include "image/BlockWords.h"
#include "imageviews/FactsWords.h"
#include "support/FactsAtOnce.h"

#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QCryptographicHash>
#include <QMenu>
#include <QTextDocumentFragment>

/// The line that says what the shown image is.
class TestWindowFacts : public QObject {
    Q_OBJECT

private slots:
    void noImage_hasNoBytes();
    void afterARead_saysWhichDeviceAndWhatCameOfIt();
    void aReadThatFails_leavesTheEarlierOrigin();
    void aReadThatFailsBehindItsCode_isNotTheEarlierOne();
    void allBytesTheSame_isRemarkedOn_data();
    void allBytesTheSame_isRemarkedOn();
    void dataToBurn_saysWhoseTheyAre();
    void editAndUndo_areFollowed();
    void restoredEdits_areSaid();
    void anotherTab_isAnotherImage();
    void blankImage_leavesTheByteToTheRemark();
    void theCursor_isFollowed();
    void block_isSaidWithItsChecksums();
    void rows_areSaidAsABlock();
    void block_isReadAnewAfterAnEdit();
    void largeBlock_isReadInTurns();
    void cellsWithoutAByte_sayNothing_data();
    void cellsWithoutAByte_sayNothing();
    void largeImage_isReadInTurns();
    void editInTheMiddleOfReading_beginsAnew();
    void narrowWindow_tellsTheOriginShorter();
    void narrowWindow_tellsTheDifferencesBeforeTheChecksums();
    void copy_takesTheWholeOrWhatIsSelected();
    void sha256_isCopiedWhenItIsKnown();
    void sha256_isOfferedForBytesAlone();
    void assistiveTechnology_findsTheLine();
};

namespace {

QString facts(WindowFixture &velm) {
    return velm.controls().factsLine->wholeText();
}

QString checksums(const QByteArray &image) {
    return checksumWords(factsOf(image));
}

/// What every image in full has, joined as the line joins it.
QString sizeAndChecksums(const QByteArray &image) {
    return sizeWords(image.size()) + QStringLiteral(" \u00b7 ") + checksums(image);
}

void moveTo(WindowFixture &velm, int row, int column) {
    GridView *grid = velm.controls().tableview;
    grid->setCurrentIndex(grid->model()->index(row, column));
}

/// Opens the line's menu by the keyboard and gives the entry that reads \a text.
QAction *menuEntry(WindowFixture &velm, const QString &text) {
    FactsLine *line = velm.controls().factsLine;
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(), line->mapToGlobal(QPoint()));
    QCoreApplication::sendEvent(line, &asked);
    const QList<QMenu *> menus = line->findChildren<QMenu *>();
    for (QAction *action : menus.last()->actions())
        if (action->text() == text)
            return action;
    qFatal("no entry %s", qPrintable(text));
}

/// A tool that reads \a size bytes, each of them \a octal.
QByteArray readerOf(int size, const char *octal) {
    return "head -c " + QByteArray::number(size) + " /dev/zero | tr '\\0' '\\" + octal +
           "' > \"$4\"\necho 'Reading Code...  0.01Sec  OK' >&2\n";
}

void showLargeImage(WindowFixture &velm) {
    velm.settings().setValue(settingsKeys::pad_to, QStringLiteral("20480"));
    velm.settings().setValue(settingsKeys::pad, true);
    showTwentyBytes(velm);
}

} // namespace

void TestWindowFacts::noImage_hasNoBytes() {
    WindowFixture velm;
    velm.start();
    QTRY_COMPARE(facts(velm), QStringLiteral("no bytes"));
}

void TestWindowFacts::afterARead_saysWhichDeviceAndWhatCameOfIt() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_read);
    const QByteArray chip = WindowFixture::bytesOf(velm.chipPath(QStringLiteral("W27C512@DIP28")));
    QCOMPARE(chip.size(), 65536);
    const QDateTime ended = velm.velm().runs().last().endedAt;
    const QString origin =
        readOriginWords(QStringLiteral("W27C512@DIP28"), ended, QDate::currentDate());
    const QString all = origin + QStringLiteral(" \u00b7 ") + sizeAndChecksums(chip);
    QTRY_VERIFY2(facts(velm).startsWith(all), qPrintable(facts(velm)));
    QVERIFY(!facts(velm).contains(QChar(0x2026)));
}

void TestWindowFacts::aReadThatFails_leavesTheEarlierOrigin() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_read);
    QTRY_VERIFY(facts(velm).startsWith(u"W27C512@DIP28, read at"));
    velm.settings().setValue(settingsKeys::device, QStringLiteral("AM29F040B@DIP32"));
    velm.useTool("exit 1\n");
    velm.click(velm.controls().btn_read);
    velm.settle();
    QVERIFY(lengthOf(velm.state().display_data) > 0);
    QTRY_VERIFY(facts(velm).startsWith(u"W27C512@DIP28, read at"));
    // What such a Read has left of another length is nobody's that is known.
    velm.useTool("printf part > \"$4\"; exit 1\n");
    velm.click(velm.controls().btn_read);
    QTRY_VERIFY2(facts(velm).startsWith(sizeAndChecksums("part")), qPrintable(facts(velm)));
}

// Of a microcontroller the code is whole before its data memory is read.
void TestWindowFacts::aReadThatFailsBehindItsCode_isNotTheEarlierOne() {
    WindowFixture velm;
    velm.useTool(readerOf(512, "101"));
    velm.start();
    velm.click(velm.controls().btn_read);
    QTRY_VERIFY(facts(velm).startsWith(u"W27C512@DIP28, read at"));
    velm.useTool(readerOf(512, "102") + "exit 1\n");
    velm.click(velm.controls().btn_read);
    QTRY_VERIFY2(facts(velm).startsWith(sizeAndChecksums(QByteArray(512, 'B'))),
                 qPrintable(facts(velm)));
    velm.useTool("exit 1\n");
    velm.click(velm.controls().btn_read);
    velm.settle();
    QVERIFY2(facts(velm).startsWith(sizeWords(512)), qPrintable(facts(velm)));
}

void TestWindowFacts::allBytesTheSame_isRemarkedOn_data() {
    QTest::addColumn<QByteArray>("octal");
    QTest::addColumn<QString>("remark");
    QTest::newRow("FF") << QByteArray("377") << QStringLiteral("all 0xFF: blank, or no contact?");
    QTest::newRow("00") << QByteArray("000") << QStringLiteral("all 0x00: blank, or no contact?");
    QTest::newRow("41") << QByteArray("101") << QString();
}

void TestWindowFacts::allBytesTheSame_isRemarkedOn() {
    QFETCH(QByteArray, octal);
    QFETCH(QString, remark);
    WindowFixture velm;
    velm.useTool(readerOf(512, octal));
    velm.start();
    velm.click(velm.controls().btn_read);
    QTRY_VERIFY2(facts(velm).contains(u"512 bytes"), qPrintable(facts(velm)));
    QTRY_VERIFY(!facts(velm).contains(QChar(0x2026)));
    QCOMPARE(facts(velm).contains(u"all 0x"), !remark.isEmpty());
    QVERIFY2(facts(velm).contains(remark), qPrintable(facts(velm)));
}

void TestWindowFacts::dataToBurn_saysWhoseTheyAre() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QTRY_VERIFY2(facts(velm).startsWith(u"rom.bin \u00b7 20 bytes"), qPrintable(facts(velm)));
    velm.click(velm.controls().btn_combine_read_data); // nothing was read
    velm.settle();
    QTRY_VERIFY(facts(velm).startsWith(u"rom.bin \u00b7 "));
    velm.click(velm.controls().btn_read);
    QTRY_VERIFY2(facts(velm).startsWith(u"data read from chip \u00b7 65,536") ||
                     facts(velm).startsWith(u"data read from chip \u00b7 65536"),
                 qPrintable(facts(velm)));
}

void TestWindowFacts::editAndUndo_areFollowed() {
    WindowFixture velm;
    showTwentyBytes(velm);
    const QByteArray before = "0123456789ABCDEFGHIJ";
    QTRY_VERIFY(facts(velm).contains(sizeAndChecksums(before)));
    enter(velm, 0, 1, QStringLiteral("41"));
    QTRY_VERIFY2(facts(velm).startsWith(QStringLiteral("rom.bin, with 1 edit \u00b7 ") +
                                        sizeAndChecksums("A123456789ABCDEFGHIJ")),
                 qPrintable(facts(velm)));
    enter(velm, 1, 4, QStringLiteral("'longer'"));
    QTRY_VERIFY(facts(velm).startsWith(QStringLiteral("rom.bin, with 2 edits \u00b7 ") +
                                       sizeAndChecksums("A123456789ABCDEFGHIlonger")));
    velm.delegate().edits().undo();
    velm.delegate().edits().undo();
    QTRY_VERIFY2(
        facts(velm).startsWith(QStringLiteral("rom.bin \u00b7 ") + sizeAndChecksums(before)),
        qPrintable(facts(velm)));
    velm.delegate().edits().redo();
    QTRY_VERIFY(facts(velm).contains(sizeAndChecksums("A123456789ABCDEFGHIJ")));
}

void TestWindowFacts::restoredEdits_areSaid() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("41"));
    velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), "other"));
    velm.settle();
    QTRY_VERIFY(
        facts(velm).startsWith(QStringLiteral("other.bin \u00b7 ") + sizeAndChecksums("other")));
    velm.delegate().edits().restore();
    QTRY_VERIFY2(facts(velm).startsWith(QStringLiteral("rom.bin, with 1 edit \u00b7 ") +
                                        sizeAndChecksums("A123456789ABCDEFGHIJ")),
                 qPrintable(facts(velm)));
}

void TestWindowFacts::anotherTab_isAnotherImage() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QTRY_VERIFY(facts(velm).contains(checksums("0123456789ABCDEFGHIJ")));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QTRY_COMPARE(facts(velm), QStringLiteral("no bytes"));
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QTRY_VERIFY(facts(velm).contains(checksums("0123456789ABCDEFGHIJ")));
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    QTRY_COMPARE(facts(velm), QString());
    QCOMPARE(velm.controls().factsLine->text(), QString());
}

// Both do not fit into a small window beside the origin.
void TestWindowFacts::blankImage_leavesTheByteToTheRemark() {
    WindowFixture velm;
    velm.useTool(readerOf(65536, "377"));
    velm.start();
    velm.velm().window().resize(1024, 700);
    velm.click(velm.controls().btn_read);
    QTRY_VERIFY(facts(velm).contains(u"all 0xFF"));
    moveTo(velm, 1, 4);
    velm.settle();
    QTRY_VERIFY2(facts(velm).endsWith(u"no contact?"), qPrintable(facts(velm)));
    QCOMPARE(velm.controls().factsLine->text(), facts(velm));
}

void TestWindowFacts::theCursor_isFollowed() {
    WindowFixture velm;
    showTwentyBytes(velm);
    moveTo(velm, 1, 4);
    QTRY_VERIFY2(facts(velm).endsWith(u"at 0013: 0x4A, 74, 0b01001010, \u201cJ\u201d"),
                 qPrintable(facts(velm)));
    velm.controls().tableview->setFocus();
    QTest::keyClick(velm.controls().tableview, Qt::Key_Left);
    QTRY_VERIFY(facts(velm).endsWith(byteWords(0x12, 'I')));
    enter(velm, 1, 3, QStringLiteral("FF"));
    moveTo(velm, 1, 3);
    QTRY_VERIFY2(facts(velm).endsWith(byteWords(0x12, 0xFF)), qPrintable(facts(velm)));
}

void TestWindowFacts::block_isSaidWithItsChecksums() {
    WindowFixture velm;
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->selection().select({2, 9});
    const QString block = QStringLiteral("selected from 0002 to 000A: 9 bytes, ");
    QTRY_VERIFY2(facts(velm).endsWith(block + checksums("23456789A")), qPrintable(facts(velm)));
    QVERIFY(facts(velm).contains(sizeAndChecksums("0123456789ABCDEFGHIJ")));
    grid->selection().end();
    QTRY_VERIFY2(facts(velm).contains(u"at 0002: 0x32"), qPrintable(facts(velm)));
    QVERIFY(!facts(velm).contains(u"selected"));
}

void TestWindowFacts::rows_areSaidAsABlock() {
    WindowFixture velm;
    showTwentyBytes(velm);
    moveTo(velm, 0, 0);
    const QString row = QStringLiteral("selected from 0000 to 000F: 16 bytes, ");
    QTRY_VERIFY2(facts(velm).endsWith(row + checksums("0123456789ABCDEF")),
                 qPrintable(facts(velm)));
    velm.controls().tableview->selectionModel()->select(
        velm.controls().tableview->model()->index(1, 0),
        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QTRY_VERIFY2(facts(velm).contains(u"selected from 0000 to 0013: 20 bytes, "),
                 qPrintable(facts(velm)));
}

void TestWindowFacts::block_isReadAnewAfterAnEdit() {
    WindowFixture velm;
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->selection().select({0, 4});
    QTRY_VERIFY(facts(velm).endsWith(checksums("0123")));
    enter(velm, 0, 2, QStringLiteral("78"));
    grid->selection().select({0, 4});
    QTRY_VERIFY2(facts(velm).endsWith(checksums("0x23")), qPrintable(facts(velm)));
    // The same block of another image is another one.
    velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), "abcdefgh"));
    QTRY_VERIFY2(facts(velm).endsWith(checksums("abcd")), qPrintable(facts(velm)));
}

void TestWindowFacts::largeBlock_isReadInTurns() {
    WindowFixture velm;
    showLargeImage(velm);
    const QString open = checksumWords(std::nullopt);
    QTRY_VERIFY(!facts(velm).contains(open));
    velm.controls().tableview->selection().select({16, 20 << 20});
    int openTurns = 0;
    for (; openTurns == 0 || facts(velm).contains(open); ++openTurns)
        QCoreApplication::processEvents();
    QVERIFY2(openTurns > 3, qPrintable(QString::number(openTurns)));
    const QByteArray image = *velm.state().display_data;
    QVERIFY2(facts(velm).endsWith(checksums(image.sliced(16))), qPrintable(facts(velm)));
}

void TestWindowFacts::cellsWithoutAByte_sayNothing_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::newRow("the address") << 1 << 0;
    QTest::newRow("behind the last byte") << 1 << 5;
    QTest::newRow("the characters") << 0 << 17;
}

void TestWindowFacts::cellsWithoutAByte_sayNothing() {
    QFETCH(int, row);
    QFETCH(int, column);
    WindowFixture velm;
    showTwentyBytes(velm);
    moveTo(velm, 0, 1);
    QTRY_VERIFY(facts(velm).contains(u" \u00b7 at "));
    moveTo(velm, row, column);
    QTRY_VERIFY2(!facts(velm).contains(u" \u00b7 at "), qPrintable(facts(velm)));
}

void TestWindowFacts::largeImage_isReadInTurns() {
    WindowFixture velm;
    showLargeImage(velm);
    FactsLine *line = velm.controls().factsLine;
    QCOMPARE(velm.state().output_data->size(), 20 * 1024 * 1024);
    int openTurns = 0;
    connect(line, &QLineEdit::textChanged, line, [&](const QString &text) {
        openTurns += text.contains(u"CRC-32 \u2026, sum \u2026");
        moveTo(velm, 0, 1 + openTurns % 2); // a cursor that moves is shown meanwhile
    });
    velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), "other"));
    QTRY_VERIFY(facts(velm).contains(sizeAndChecksums(*velm.state().output_data)));
    QVERIFY2(openTurns > 1, qPrintable(QString::number(openTurns)));
}

void TestWindowFacts::editInTheMiddleOfReading_beginsAnew() {
    WindowFixture velm;
    showLargeImage(velm);
    QTRY_VERIFY(facts(velm).contains(checksums(*velm.state().output_data)));
    for (const char *digits : {"41", "42", "43"})
        enter(velm, 0, 1, QString::fromLatin1(digits));
    velm.delegate().edits().undo();
    QTRY_VERIFY(facts(velm).contains(checksums(*velm.state().output_data)));
    QVERIFY(velm.state().output_data->startsWith('B'));
}

void TestWindowFacts::narrowWindow_tellsTheOriginShorter() {
    const QString name = QString(120, u'n') + QStringLiteral(".bin");
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(name, "0123456789"));
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    FactsLine *line = velm.controls().factsLine;
    velm.velm().window().resize(1900, 700);
    QTRY_VERIFY(facts(velm).contains(checksums("0123456789")));
    QTRY_VERIFY2(line->text().startsWith(name), qPrintable(line->text()));

    velm.velm().window().resize(1024, 700);
    QTRY_VERIFY2(!line->text().startsWith(name), qPrintable(line->text()));
    QVERIFY(line->text().startsWith(u"nnn"));
    QVERIFY2(line->text().contains(sizeAndChecksums("0123456789")), qPrintable(line->text()));
    QVERIFY(line->fontMetrics().horizontalAdvance(line->text()) < line->width());
    QVERIFY(facts(velm).startsWith(name));
    QCOMPARE(QTextDocumentFragment::fromHtml(line->toolTip()).toPlainText(), facts(velm));
}

void TestWindowFacts::narrowWindow_tellsTheDifferencesBeforeTheChecksums() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary,
                             velm.write(QStringLiteral("rom.bin"), QByteArray(10000, 'x')));
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    FactsLine *line = velm.controls().factsLine;
    velm.velm().window().resize(900, 600);
    moveTo(velm, 1, 1);
    QTRY_VERIFY(facts(velm).contains(u"differences, 55,536 bytes shorter"));
    QTRY_VERIFY2(line->text().contains(u"differences, 55,536 bytes shorter"),
                 qPrintable(line->text()));
    QVERIFY(!line->text().contains(u"CRC-32"));
    QVERIFY2(line->text().contains(u"at 0010: 0x78"), qPrintable(line->text()));
    velm.velm().window().resize(1900, 700);
    QTRY_COMPARE(line->text(), facts(velm));
}

void TestWindowFacts::copy_takesTheWholeOrWhatIsSelected() {
    WindowFixture velm;
    showTwentyBytes(velm);
    FactsLine *line = velm.controls().factsLine;
    QTRY_VERIFY(facts(velm).contains(checksums("0123456789ABCDEFGHIJ")));
    menuEntry(velm, QStringLiteral("&Copy"))->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), facts(velm));
    line->setFocus();
    line->setSelection(0, 3);
    QTest::keyClick(line, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("rom"));
    QTest::keyClick(line, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(line, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), facts(velm));
}

void TestWindowFacts::sha256_isCopiedWhenItIsKnown() {
    WindowFixture velm;
    showLargeImage(velm);
    const QString digest = QString::fromLatin1(
        QCryptographicHash::hash(*velm.state().output_data, QCryptographicHash::Sha256).toHex());
    QGuiApplication::clipboard()->setText(QStringLiteral("something"));
    menuEntry(velm, QStringLiteral("&SHA-256"))->trigger();
    QTRY_COMPARE(QGuiApplication::clipboard()->text(), digest);
    QTRY_VERIFY(facts(velm).endsWith(QStringLiteral("SHA-256 ") + digest));
    const QString shown = velm.controls().factsLine->text();
    QVERIFY2(shown.contains(QStringLiteral("SHA-256 copied: ") + digest.first(8)),
             qPrintable(shown));
    QVERIFY(velm.controls().factsLine->toolTip().contains(digest));

    enter(velm, 0, 1, QStringLiteral("41"));
    QTRY_VERIFY(facts(velm).contains(checksums(*velm.state().output_data)));
    QVERIFY2(!facts(velm).contains(u"SHA-256"), qPrintable(facts(velm)));
}

void TestWindowFacts::sha256_isOfferedForBytesAlone() {
    WindowFixture velm;
    velm.start();
    QVERIFY(!menuEntry(velm, QStringLiteral("&SHA-256"))->isEnabled());
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    velm.settle();
    QVERIFY(!menuEntry(velm, QStringLiteral("&SHA-256"))->isEnabled());
}

void TestWindowFacts::assistiveTechnology_findsTheLine() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QTRY_VERIFY(facts(velm).contains(checksums("0123456789ABCDEFGHIJ")));
    QAccessibleInterface *line = QAccessible::queryAccessibleInterface(velm.controls().factsLine);
    QCOMPARE(line->text(QAccessible::Name), QStringLiteral("Facts"));
    QCOMPARE(line->text(QAccessible::Value), velm.controls().factsLine->text());
    QCOMPARE(line->text(QAccessible::Description), facts(velm));
    QVERIFY(line->state().readOnly);
}

QTEST_MAIN(TestWindowFacts)
#include "tst_window_facts.moc"
