// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>

/// A verdict, a heading and a remark speak of what they judged, and of nothing else.
class TestWindowVerdict : public QObject {
    Q_OBJECT

private slots:
    void verdict_staysWhileItsImageIsShown();
    void verdict_saysWhatHasChangedSince_data();
    void verdict_saysWhatHasChangedSince();
    void verdict_comesBackWithItsImage_data();
    void verdict_comesBackWithItsImage();
    void verdictOnARead_outlivesOtherImages();
    void verdictOnARead_isAnnouncedOnce();
    void imageOfAnotherSize_isNoPlainSuccess_data();
    void imageOfAnotherSize_isNoPlainSuccess();
    void foreignFile_isWhatTheVerdictSpeaksOf();
    void readWithoutBytes_isNoSuccess();
    void hexText_takesTwoPressesAndIsNoSuccess_data();
    void hexText_takesTwoPressesAndIsNoSuccess();
    void hexText_isSaidOnOpening();
    void everyRun_leavesARecord();
    void headingOfALogicTest_goesWithTheNextRun_data();
    void headingOfALogicTest_goesWithTheNextRun();
    void finishedLogicTest_isShownOnItsTab();
    void logicTestOfAMemory_isExplained();
    void failedPins_areNamed();

private:
    static const QString verified;

    /// An image of 64 KiB on a chip of that size, written and verified.
    static void burn(WindowFixture &velm) {
        velm.settings().setValue(settingsKeys::binary,
                                 velm.write(QStringLiteral("rom.bin"), QByteArray(65536, 'x')));
        velm.start();
        velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
        velm.click(velm.controls().btn_write);
        velm.click(velm.controls().btn_verify);
        velm.settle();
    }
    static void verifySays(WindowFixture &velm, const QString &text) {
        QVERIFY2(velm.message().contains(text), qPrintable(velm.message()));
    }
    static void verifyDoesNotSay(WindowFixture &velm, const QString &text) {
        QVERIFY2(!velm.message().contains(text), qPrintable(velm.message()));
    }
};

const QString TestWindowVerdict::verified =
    QStringLiteral("Done: Verify succeeded: the chip holds the data to burn.");

void TestWindowVerdict::verdict_staysWhileItsImageIsShown() {
    WindowFixture velm;
    burn(velm);
    verifySays(velm, verified);
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    velm.click(velm.controls().check_skipErase);
    velm.settle();
    verifySays(velm, verified);
}

void TestWindowVerdict::verdict_saysWhatHasChangedSince_data() {
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("said");
    const QString image = QStringLiteral("; the data to burn have changed since.");
    QTest::newRow("an edit") << QStringLiteral("edit") << image;
    QTest::newRow("a control") << QStringLiteral("control") << image;
    QTest::newRow("a file") << QStringLiteral("file") << image;
    QTest::newRow("the device") << QStringLiteral("device")
                                << QStringLiteral("; another device has been chosen since.");
    QTest::newRow("device and image")
        << QStringLiteral("device edit")
        << QStringLiteral("; the device and the data to burn have changed since.");
}

void TestWindowVerdict::verdict_saysWhatHasChangedSince() {
    QFETCH(QString, change);
    QFETCH(QString, said);
    WindowFixture velm;
    burn(velm);
    if (change.contains(u"device"))
        velm.controls().uaTextField->setText(QStringLiteral("W27C512@PLCC32"));
    if (change.contains(u"edit"))
        enter(velm, 0, 1, QStringLiteral("7A"));
    if (change == QStringLiteral("control"))
        velm.controls().startAddTextField->setText(QStringLiteral("10"));
    if (change == QStringLiteral("file"))
        velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), QByteArray(65536, 'y')));
    velm.settle();
    verifyDoesNotSay(velm, QStringLiteral("succeeded"));
    const QRegularExpression sentence(QStringLiteral("^Verified at \\d\\d:\\d\\d") +
                                          QRegularExpression::escape(said),
                                      QRegularExpression::MultilineOption);
    QVERIFY2(sentence.match(velm.message()).hasMatch(), qPrintable(velm.message()));
}

void TestWindowVerdict::verdict_comesBackWithItsImage_data() {
    QTest::addColumn<QString>("way");
    for (const char *way : {"an edit taken back", "a control put back", "the device put back",
                            "a control that makes no difference", "the same bytes opened"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestWindowVerdict::verdict_comesBackWithItsImage() {
    QFETCH(QString, way);
    WindowFixture velm;
    burn(velm);
    if (way.startsWith(u"an edit")) {
        enter(velm, 0, 1, QStringLiteral("7A"));
        verifyDoesNotSay(velm, verified);
        velm.delegate().edits().undo();
    } else if (way == QStringLiteral("a control put back")) {
        velm.controls().startAddTextField->setText(QStringLiteral("10"));
        verifyDoesNotSay(velm, verified);
        velm.controls().startAddTextField->setText(QStringLiteral("0"));
    } else if (way.startsWith(u"a control")) {
        velm.click(velm.controls().btn_pad_00);
    } else if (way.startsWith(u"the same bytes")) {
        velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), QByteArray(65536, 'x')));
    } else {
        velm.controls().uaTextField->setText(QStringLiteral("27C64"));
        verifyDoesNotSay(velm, verified);
        velm.controls().uaTextField->setText(QStringLiteral("W27C512@DIP28"));
    }
    velm.settle();
    verifySays(velm, verified);
}

void TestWindowVerdict::verdictOnARead_outlivesOtherImages() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.click(velm.controls().btn_read);
    velm.settle();
    enter(velm, 0, 1, QStringLiteral("7A"));
    verifySays(velm, QStringLiteral("Done: Read succeeded. 65,536 bytes."));
    velm.controls().uaTextField->setText(QStringLiteral("27C64"));
    verifyDoesNotSay(velm, QStringLiteral("succeeded"));
    verifySays(velm, QStringLiteral("; another device has been chosen since."));
}

void TestWindowVerdict::verdictOnARead_isAnnouncedOnce() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::pad_to, QStringLiteral("64 KiB"));
    velm.settings().setValue(settingsKeys::pad, true);
    velm.start();
    velm.controls().btn_combine_read_data->setChecked(true);
    velm.settle();
    MessageLine *line = velm.controls().messageLine;
    QSignalSpy announced(line, &MessageLine::announced);
    // What the start had to say is heard by then.
    line->setMessage(-1, MessageLine::Severity::Information, QStringLiteral("before"), {});
    QTRY_VERIFY(!announced.isEmpty() && announced.last().first().toString().startsWith(u"before"));
    line->clearMessage(-1);
    announced.clear();
    velm.click(velm.controls().btn_read);
    velm.settle();
    QTRY_COMPARE(announced.size(), 1);
    // Whatever else the Read had to say would be heard before this.
    line->setMessage(-1, MessageLine::Severity::Information, QStringLiteral("afterwards"), {});
    QTRY_VERIFY(announced.last().first().toString().startsWith(u"afterwards"));
    QCOMPARE(announced.size(), 2);
    const QString text = announced.first().first().toString();
    QVERIFY2(text.startsWith(u"Done: Read succeeded."), qPrintable(text));
}

void TestWindowVerdict::imageOfAnotherSize_isNoPlainSuccess_data() {
    QTest::addColumn<int>("length");
    QTest::newRow("short") << 30000;
    QTest::newRow("long") << 70000;
}

void TestWindowVerdict::imageOfAnotherSize_isNoPlainSuccess() {
    QFETCH(int, length);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary,
                             velm.write(QStringLiteral("rom.bin"), QByteArray(length, 'x')));
    velm.start();
    for (QPushButton *button : {velm.controls().btn_write, velm.controls().btn_verify}) {
        velm.click(button);
        velm.settle();
        verifyDoesNotSay(velm, QStringLiteral("Done:"));
        QVERIFY2(velm.message().startsWith(u"Warning: "), qPrintable(velm.message()));
        verifySays(velm, QLocale().toString(65536));
        verifySays(velm, QLocale().toString(length));
    }
}

void TestWindowVerdict::foreignFile_isWhatTheVerdictSpeaksOf() {
    WindowFixture velm;
    burn(velm);
    velm.write(QStringLiteral("workspace/temp.bin"), QByteArray(65536, 'y'));
    velm.click(velm.controls().btn_write);
    verifySays(velm, QStringLiteral("Press Write again"));
    velm.click(velm.controls().btn_write);
    velm.settle();
    QCOMPARE(WindowFixture::bytesOf(velm.chipPath(QStringLiteral("W27C512@DIP28"))),
             QByteArray(65536, 'y'));
    verifyDoesNotSay(velm, QStringLiteral("Done:"));
    verifySays(velm, QStringLiteral("temp.bin"));
    QCOMPARE(velm.velm().runs().last().imageRevision, quint64(0));
    // An edit puts the image into the place of that file.
    enter(velm, 0, 1, QStringLiteral("7A"));
    verifySays(velm, QStringLiteral("; the file that was handed over has changed since."));
}

void TestWindowVerdict::readWithoutBytes_isNoSuccess() {
    WindowFixture velm;
    velm.useTool("echo 'Reading Code...  0.47Sec  OK' >&2\n");
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.settle();
    QVERIFY2(velm.message().startsWith(u"Problem: "), qPrintable(velm.message()));
    verifySays(velm, QStringLiteral("there are no bytes in"));
    verifyDoesNotSay(velm, QStringLiteral("succeeded"));
}

void TestWindowVerdict::hexText_takesTwoPressesAndIsNoSuccess_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("kind");
    QTest::newRow("Intel HEX") << QByteArray(":0400000001020304F2\r\n:00000001FF\r\n")
                               << QStringLiteral("Intel HEX");
    QTest::newRow("S-record") << QByteArray("S107000001020304EE\nS9030000FC\n")
                              << QStringLiteral("S-record");
}

void TestWindowVerdict::hexText_takesTwoPressesAndIsNoSuccess() {
    QFETCH(QByteArray, text);
    QFETCH(QString, kind);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.hex"), text));
    velm.start();
    for (QPushButton *button : {velm.controls().btn_write, velm.controls().btn_verify}) {
        velm.click(button);
        verifySays(velm, QStringLiteral("The tool takes these data for ") + kind);
        const qsizetype runs = velm.velm().runs().size();
        velm.click(button);
        velm.settle();
        QCOMPARE(velm.velm().runs().size(), runs + 1);
        verifyDoesNotSay(velm, QStringLiteral("Done:"));
        verifySays(velm, kind);
    }
    QVERIFY(WindowFixture::bytesOf(velm.chipPath(QStringLiteral("W27C512@DIP28")))
                .startsWith(QByteArray("\1\2\3\4\xff", 5)));
}

void TestWindowVerdict::hexText_isSaidOnOpening() {
    WindowFixture velm;
    velm.start();
    velm.delegate().openBinary(
        velm.write(QStringLiteral("rom.hex"), ":0400000001020304F2\n:00000001FF\n"));
    verifySays(velm, QStringLiteral("rom.hex reads as Intel HEX text"));
    velm.delegate().openBinary(velm.write(QStringLiteral("rom.bin"), "bytes"));
    verifyDoesNotSay(velm, QStringLiteral("Intel HEX"));
}

void TestWindowVerdict::everyRun_leavesARecord() {
    WindowFixture velm;
    burn(velm);
    qputenv("MINIPRO_SIM_FAULT", "no-programmer");
    velm.click(velm.controls().btn_read);
    const QList<RunRecord> &records = velm.velm().runs();
    QCOMPARE(records.size(), 3);
    const RunRecord &verify = records.at(1);
    QCOMPARE(verify.operation, VerifyOperation);
    QCOMPARE(verify.device, QStringLiteral("W27C512@DIP28"));
    QCOMPARE(verify.tool, velm.settings().stringValue(settingsKeys::miniproLocation));
    QVERIFY(velm.log.lines.contains(QStringLiteral("fileContents: ") + verify.commandLine));
    QVERIFY(verify.startedAt <= verify.endedAt);
    QCOMPARE(verify.imageLength, 65536);
    QVERIFY(verify.imageRevision != 0);
    QCOMPARE(verify.status, 0);
    QVERIFY(verify.said.contains(u"Verification OK"));
    QCOMPARE(verify.outcome.verdict, RunOutcome::Verdict::Succeeded);
    QCOMPARE(records.at(2).outcome.verdict, RunOutcome::Verdict::Failed);
    QCOMPARE(records.at(2).status, 1);
    QCOMPARE(records.at(2).imageRevision, quint64(0));
}

void TestWindowVerdict::headingOfALogicTest_goesWithTheNextRun_data() {
    QTest::addColumn<QByteArray>("fault");
    QTest::newRow("no programmer") << QByteArray("no-programmer");
    QTest::newRow("stopped") << QByteArray("silent");
}

void TestWindowVerdict::headingOfALogicTest_goesWithTheNextRun() {
    QFETCH(QByteArray, fault);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, QStringLiteral("7400"));
    velm.start();
    velm.click(velm.controls().btn_logic);
    QCOMPARE(velm.controls().peeping_at->text(), QStringLiteral("Logic test successful."));
    QVERIFY(!velm.state().logictest_rows.isEmpty());
    qputenv("MINIPRO_SIM_FAULT", fault);
    velm.whileBusy([&] { velm.delegate().stopRun(); });
    velm.click(velm.controls().btn_logic);
    QCOMPARE(velm.controls().peeping_at->text(), QString());
    QVERIFY(velm.state().logictest_rows.isEmpty());
}

void TestWindowVerdict::finishedLogicTest_isShownOnItsTab() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, QStringLiteral("7400"));
    velm.start();
    velm.whileBusy([&] { velm.controls().tabview->selectTabViewItem(burnTabIdentifier()); });
    velm.click(velm.controls().btn_logic);
    velm.settle();
    QCOMPARE(velm.controls().tabview->selectedTabViewItem().identifier, logicTabIdentifier());
    QCOMPARE(velm.controls().peeping_at->text(), QStringLiteral("Logic test successful."));
    QCOMPARE(velm.cell(1, 0), QStringLiteral("0000:"));
}

void TestWindowVerdict::logicTestOfAMemory_isExplained() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_logic);
    QVERIFY(velm.message().startsWith(u"Problem: "));
    verifySays(velm, QStringLiteral("no logic IC"));
    if (velm.controls().peeping_at->text() == QStringLiteral("Logic test successful."))
        verifySays(velm, QStringLiteral("Logic test successful."));
}

void TestWindowVerdict::failedPins_areNamed() {
    WindowFixture velm;
    velm.useTool("printf '      1  2  3  4  5  6  7  8  9  10 11 12 13 14 15 16 17 18 19 20 \\n'\n"
                 "printf '0000: '\n"
                 "for pin in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17; do\n"
                 "printf '\\033[0m0  '; done\n"
                 "printf '\\033[0;91mH- \\033[0m0  \\033[0mV  \\033[0m\\n'\n"
                 "echo 'Logic test failed: 1 errors encountered.' >&2; exit 1\n");
    velm.start();
    velm.click(velm.controls().btn_logic);
    verifySays(velm, QStringLiteral("pin 18 in vector 0"));
    verifySays(velm, QStringLiteral("pins 1 to 17"));
}

QTEST_MAIN(TestWindowVerdict)
#include "tst_window_verdict.moc"
