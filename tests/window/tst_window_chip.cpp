// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/NumberWords.h"
#include "devices/ChipInquiry.h"
#include "settings/SettingsKeys.h"
#include "window/WindowFixture.h"

#include <QAccessible>
#include <QFile>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QToolButton>

/// What the tool knows of the device stands beside the field, asked for in the background.
class TestWindowChip : public QObject {
    Q_OBJECT

private slots:
    void device_isDescribed_data();
    void device_isDescribed();
    void typedName_isAskedAboutOnceItHasSettled();
    void answers_areKept();
    void question_leavesNoTrace();
    void whatMayNotBeAsked_isNot_data();
    void whatMayNotBeAsked_isNot();
    void toolThatIsNotTrusted_isAskedOnceItIs();
    void toolThatIsBeingTyped_isAskedOnceItIsWhole_data();
    void toolThatIsBeingTyped_isAskedOnceItIsWhole();
    void run_endsAQuestionAndHasNone();
    void toolThatComesToBeThere_isAskedAfterARun();
    void toolThatComesToKnowTheDevice_isAskedAfterARun();
    void dataToBurn_areComparedWithTheChip_data();
    void dataToBurn_areComparedWithTheChip();
    void padToTheChip_isOnePress();
    void padToTheChip_isOffDuringARun();
    void smallWindow_hasRoomForSizeAndPackage();
    void assistiveTechnology_findsBoth();
};

namespace {

const QString chip = QStringLiteral("W27C512@DIP28");
const QString unknownDevice = QStringLiteral("The tool knows no device of this name.");

QString facts(WindowFixture &velm) {
    return velm.controls().chipFacts->wholeText();
}

QString bytesIn(qint64 count, const QString &package) {
    return grouped(count) + QStringLiteral(" bytes, ") + package;
}

QString askedPath(const WindowFixture &velm) {
    return velm.path(QStringLiteral("asked"));
}

/// The command lines that the tool was given since it was made to record them.
QStringList asked(const WindowFixture &velm) {
    return QString::fromUtf8(WindowFixture::bytesOf(askedPath(velm)))
        .split(u'\n', Qt::SkipEmptyParts);
}

/// Puts a program of its own at \a name in the folder of the test, as one that takes no words.
QString program(const WindowFixture &velm, const QString &name, const QByteArray &script) {
    const QString path = velm.write(name, "#!/bin/sh\n" + script);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner);
    return u'\'' + path + u'\'';
}

/// The simulated programmer, whose command lines are recorded; \a before comes first.
void recordQuestions(WindowFixture &velm, const QByteArray &before = {}) {
    velm.useSimulator();
    const QString simulator = velm.settings().stringValue(settingsKeys::miniproLocation);
    velm.setTool(program(velm, QStringLiteral("recording"),
                         before + "echo \"$@\" >> '" + QFile::encodeName(askedPath(velm)) +
                             "'\nexec " + simulator.toUtf8() + " \"$@\"\n"));
}

/// Waits for longer than a question that is to come would wait.
void letItSettle() {
    QTimer later;
    later.setSingleShot(true);
    QSignalSpy passed(&later, &QTimer::timeout);
    later.start(ChipInquiry::settlingTime * 2);
    QVERIFY(passed.wait());
}

QString question(const QString &device) {
    return QStringLiteral("-q tl866ii -d ") + device;
}

} // namespace

void TestWindowChip::device_isDescribed_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("words");
    QTest::newRow("memory") << chip << bytesIn(65536, QStringLiteral("DIP28"));
    QTest::newRow("another case") << chip.toLower() << bytesIn(65536, QStringLiteral("DIP28"));
    QTest::newRow("more memories than one")
        << QStringLiteral("ATMEGA8@DIP28")
        << grouped(8192) + QStringLiteral(" bytes + 512 bytes, DIP28");
    QTest::newRow("logic") << QStringLiteral("7400")
                           << QStringLiteral("logic IC, DIP14, 4 vectors");
    QTest::newRow("unknown") << QStringLiteral("27C") << unknownDevice;
}

void TestWindowChip::device_isDescribed() {
    QFETCH(const QString, device);
    QFETCH(const QString, words);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, device);
    velm.start();
    QCOMPARE(facts(velm), QString());
    QTRY_COMPARE(facts(velm), words);
    velm.settings().setValue(settingsKeys::device, QString());
    QCOMPARE(facts(velm), QString());
}

void TestWindowChip::typedName_isAskedAboutOnceItHasSettled() {
    WindowFixture velm;
    recordQuestions(velm);
    velm.settings().setValue(settingsKeys::device, QString());
    velm.start();
    QLineEdit *field = velm.controls().uaTextField;
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("7400"));
    QCOMPARE(facts(velm), QString());
    QTRY_VERIFY(facts(velm).startsWith(u"logic IC"));
    QCOMPARE(asked(velm), QStringList(question(QStringLiteral("7400"))));
    QTest::keyClicks(field, QStringLiteral("x"));
    QCOMPARE(facts(velm), QString());
    QTRY_COMPARE(facts(velm), unknownDevice);
    QCOMPARE(asked(velm).value(1), question(QStringLiteral("7400x")));
}

void TestWindowChip::answers_areKept() {
    WindowFixture velm;
    recordQuestions(velm);
    velm.start();
    QTRY_VERIFY(!facts(velm).isEmpty());
    velm.settings().setValue(settingsKeys::device, QStringLiteral("7400"));
    QTRY_VERIFY(facts(velm).startsWith(u"logic IC"));
    velm.settings().setValue(settingsKeys::device, chip);
    QCOMPARE(facts(velm), bytesIn(65536, QStringLiteral("DIP28")));
    letItSettle();
    QCOMPARE(asked(velm), QStringList({question(chip), question(QStringLiteral("7400"))}));
}

void TestWindowChip::question_leavesNoTrace() {
    WindowFixture velm;
    velm.start();
    velm.settle();
    const QStringList lines = velm.log.lines;
    QTRY_VERIFY(!facts(velm).isEmpty());
    velm.settle();
    QCOMPARE(velm.log.lines, lines);
    QCOMPARE(velm.controls().textView->storedText(), QString());
    QCOMPARE(velm.state().retainArray.size(), 0);
    QCOMPARE(velm.velm().runs().size(), 0);
    QCOMPARE(velm.message(), QString());
}

void TestWindowChip::whatMayNotBeAsked_isNot_data() {
    QTest::addColumn<QString>("behindTheTool");
    QTest::addColumn<QString>("device");
    QTest::newRow("no name") << QString() << QString();
    QTest::newRow("a name that is a command") << QString() << QStringLiteral("7400$(touch a)");
    QTest::newRow("a name that ends its quotes") << QString() << QStringLiteral("7400\"");
    QTest::newRow("a name that nobody sees whole") << QString() << QString(1001, u'7');
    QTest::newRow("a tool with further words") << QStringLiteral(" -v") << chip;
    QTest::newRow("a tool that is two commands") << QStringLiteral(";true") << chip;
}

void TestWindowChip::whatMayNotBeAsked_isNot() {
    QFETCH(const QString, behindTheTool);
    QFETCH(const QString, device);
    WindowFixture velm;
    recordQuestions(velm);
    velm.setTool(velm.settings().stringValue(settingsKeys::miniproLocation) + behindTheTool);
    velm.settings().setValue(settingsKeys::device, device);
    velm.start();
    letItSettle();
    QCOMPARE(asked(velm), QStringList());
    QCOMPARE(facts(velm), QString());
}

void TestWindowChip::toolThatIsNotTrusted_isAskedOnceItIs() {
    WindowFixture velm;
    recordQuestions(velm);
    QFile::remove(velm.path(QStringLiteral("state.conf")));
    velm.start();
    letItSettle();
    QCOMPARE(asked(velm), QStringList());
    // The second press lets it run.
    velm.click(velm.controls().btn_read);
    velm.click(velm.controls().btn_read);
    QTRY_COMPARE(facts(velm), bytesIn(65536, QStringLiteral("DIP28")));
    QCOMPARE(asked(velm).last(), question(chip));
}

void TestWindowChip::toolThatIsBeingTyped_isAskedOnceItIsWhole_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Tab") << int(Qt::Key_Tab);
}

// The first letters of a path may be those of another program.
void TestWindowChip::toolThatIsBeingTyped_isAskedOnceItIsWhole() {
    QFETCH(const int, key);
    WindowFixture velm;
    recordQuestions(velm);
    const QString tool = velm.settings().stringValue(settingsKeys::miniproLocation);
    velm.setTool(QStringLiteral("nothing"));
    velm.start();
    QLineEdit *field = velm.controls().miniproLocationField;
    field->setFocus();
    QTRY_VERIFY(field->hasFocus());
    field->selectAll();
    QTest::keyClicks(field, tool);
    letItSettle();
    QCOMPARE(asked(velm), QStringList());
    QTest::keyClick(field, Qt::Key(key));
    QTRY_COMPARE(facts(velm), bytesIn(65536, QStringLiteral("DIP28")));
}

void TestWindowChip::run_endsAQuestionAndHasNone() {
    WindowFixture velm;
    const QByteArray barrier = QFile::encodeName(velm.path(QStringLiteral("open")));
    // A question stays open while the file is there, a Read until it is stopped.
    recordQuestions(velm, "echo begun \"$@\" >> '" + QFile::encodeName(askedPath(velm)) +
                              "'\nwhile test -e '" + barrier +
                              "'; do sleep 0.01; done\n"
                              "test \"$1\" = -p && exec sleep 60\n");
    velm.write(QStringLiteral("open"), "");
    velm.start();
    const QStringList begun = {QStringLiteral("begun ") + question(chip)};
    QTRY_COMPARE(asked(velm), begun);
    QStringList duringTheRun;
    velm.whileBusy([&] {
        QFile::remove(velm.path(QStringLiteral("open")));
        letItSettle();
        duringTheRun = asked(velm);
        velm.click(velm.controls().btn_stop);
    });
    velm.click(velm.controls().btn_read);
    QCOMPARE(duringTheRun.size(), 2);
    QVERIFY2(duringTheRun.last().startsWith(u"begun -p"), qPrintable(duringTheRun.last()));
    QTRY_COMPARE(facts(velm), bytesIn(65536, QStringLiteral("DIP28")));
    QCOMPARE(asked(velm).mid(2), begun + QStringList(question(chip)));
}

void TestWindowChip::toolThatComesToBeThere_isAskedAfterARun() {
    WindowFixture velm;
    velm.useSimulator();
    const QString simulator = velm.settings().stringValue(settingsKeys::miniproLocation);
    velm.setTool(u'\'' + velm.path(QStringLiteral("later")) + u'\'');
    velm.start();
    letItSettle();
    QCOMPARE(facts(velm), QString());
    program(velm, QStringLiteral("later"), "exec " + simulator.toUtf8() + " \"$@\"\n");
    velm.click(velm.controls().btn_read);
    QTRY_COMPARE(facts(velm), bytesIn(65536, QStringLiteral("DIP28")));
}

void TestWindowChip::toolThatComesToKnowTheDevice_isAskedAfterARun() {
    WindowFixture velm;
    velm.useSimulator();
    const QString simulator = velm.settings().stringValue(settingsKeys::miniproLocation);
    const QString tool =
        program(velm, QStringLiteral("minipro"), "echo 'Device X not found!' >&2\nexit 1\n");
    velm.setTool(tool);
    velm.settings().setValue(settingsKeys::device, chip);
    velm.start();
    QTRY_COMPARE(facts(velm), unknownDevice);
    QVERIFY(QFile::remove(velm.path(QStringLiteral("minipro"))));
    program(velm, QStringLiteral("minipro"), "exec " + simulator.toUtf8() + " \"$@\"\n");
    for (int run = 0; run < 2; ++run) {
        velm.click(velm.controls().btn_read);
        QCOMPARE(facts(velm), unknownDevice);
    }
    QTRY_COMPARE(facts(velm), bytesIn(65536, QStringLiteral("DIP28")));
}

void TestWindowChip::dataToBurn_areComparedWithTheChip_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("behind");
    QTest::addColumn<bool>("offersToPad");
    const QString at28c256 = QStringLiteral("AT28C256");
    const auto longer = [](int count) {
        return QStringLiteral(" \u00b7 data too long by %1").arg(grouped(count));
    };
    const auto shorter = [](int count) {
        return QStringLiteral(" \u00b7 data shorter by %1").arg(grouped(count));
    };
    QTest::newRow("equal") << at28c256 << QByteArray(32768, 'x') << QString() << false;
    QTest::newRow("longer") << at28c256 << QByteArray(40000, 'x') << longer(7232) << false;
    QTest::newRow("shorter") << at28c256 << QByteArray(30000, 'x') << shorter(2768) << true;
    QTest::newRow("none") << at28c256 << QByteArray() << QString() << false;
    QTest::newRow("text that the tool decodes")
        << at28c256 << QByteArray(":00000001FF\n") << QString() << false;
    QTest::newRow("a chip of no whole KiB")
        << QStringLiteral("24C02") << QByteArray(255, 'x') << shorter(1) << false;
    QTest::newRow("logic") << QStringLiteral("7400") << QByteArray(10, 'x') << QString() << false;
}

void TestWindowChip::dataToBurn_areComparedWithTheChip() {
    QFETCH(const QString, device);
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, behind);
    QFETCH(const bool, offersToPad);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, device);
    velm.start();
    QTRY_VERIFY(!facts(velm).isEmpty());
    const QString before = facts(velm);
    QVERIFY(!velm.controls().btn_pad_to_chip->isEnabled());
    velm.delegate().openBinary(velm.write(QStringLiteral("rom.bin"), bytes));
    QCOMPARE(facts(velm), before + behind);
    QCOMPARE(velm.controls().btn_pad_to_chip->isEnabled(), offersToPad);
}

void TestWindowChip::padToTheChip_isOnePress() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "bytes"));
    velm.start();
    QPushButton *pad = velm.controls().btn_pad_to_chip;
    QTRY_VERIFY(pad->isEnabled());
    velm.click(pad);
    velm.settle();
    QCOMPARE(velm.controls().padToTextField->text(), QStringLiteral("64"));
    QVERIFY(velm.controls().btn_pad->isChecked());
    QCOMPARE(velm.state().output_data->size(), 65536);
    QCOMPARE(WindowFixture::bytesOf(velm.temporary(QStringLiteral("temp.bin"))).size(), 65536);
    QVERIFY(!pad->isEnabled());
    QCOMPARE(facts(velm), bytesIn(65536, QStringLiteral("DIP28")));
}

void TestWindowChip::padToTheChip_isOffDuringARun() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "bytes"));
    velm.start();
    QPushButton *pad = velm.controls().btn_pad_to_chip;
    QTRY_VERIFY(pad->isEnabled());
    velm.whileBusy([&] {
        QVERIFY(!pad->isEnabled());
        emit pad->clicked(); // assistive technology reaches what is off
    });
    velm.click(velm.controls().btn_read);
    QCOMPARE(velm.state().output_data->size(), 5);
    QVERIFY(pad->isEnabled());
}

void TestWindowChip::smallWindow_hasRoomForSizeAndPackage() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "bytes"));
    velm.start();
    velm.velm().window().resize(1024, 700);
    const ChipFacts *line = velm.controls().chipFacts;
    const auto fits = [line](const QString &words) { return line->text().startsWith(words); };
    QTRY_VERIFY(velm.controls().btn_pad_to_chip->isEnabled());
    velm.settle();
    QCOMPARE(velm.velm().window().width(), 1024);
    QVERIFY(facts(velm).startsWith(bytesIn(65536, QStringLiteral("DIP28"))));
    QVERIFY(fits(bytesIn(65536, QStringLiteral("DIP28"))));
    velm.settings().setValue(settingsKeys::device, QStringLiteral("27C"));
    QTRY_COMPARE(facts(velm), unknownDevice);
    velm.settle();
    QVERIFY(fits(unknownDevice));
}

void TestWindowChip::assistiveTechnology_findsBoth() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), "bytes"));
    velm.start();
    QTRY_VERIFY(!facts(velm).isEmpty());
    const auto accessible = [](QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget);
    };
    QAccessibleInterface *line = accessible(velm.controls().chipFacts);
    QCOMPARE(line->text(QAccessible::Name), QStringLiteral("Chip facts"));
    QVERIFY(facts(velm).startsWith(line->text(QAccessible::Value).section(QChar(0x2026), 0, 0)));
    QVERIFY(line->state().readOnly);
    const QString tip =
        QTextDocumentFragment::fromHtml(velm.controls().chipFacts->toolTip()).toPlainText();
    QVERIFY2(tip.contains(u"Programmers: TL866II, T48, T56"), qPrintable(tip));
    QCOMPARE(accessible(velm.controls().btn_pad_to_chip)->text(QAccessible::Name),
             QStringLiteral("Pad to the chip's size"));
}

QTEST_MAIN(TestWindowChip)
#include "tst_window_chip.moc"
