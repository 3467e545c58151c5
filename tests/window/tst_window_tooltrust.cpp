// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "window/SearchSteps.h"

#include <QFile>
#include <QPushButton>

/// A programmer tool that was not set in this program is run at a second press only.
class TestWindowToolTrust : public QObject {
    Q_OBJECT

private slots:
    void foreignTool_isAskedAboutFirst_data();
    void foreignTool_isAskedAboutFirst();
    void foreignTool_isRunBySecondPressOfTheSameButton();
    void foreignTool_thatRanIsAskedAboutNoMore();
    void foreignTool_thatIsOddIsOneQuestion();
    void foreignTool_writtenWhileTheProgramRunsIsAskedAbout();
    void typedTool_isNotAskedAbout();
    void defaultTool_isNotAskedAbout();
    void search_asksAboutAForeignToolFirst();
    void search_asksAboutAnEndlessToolInAPanelOfItsSize_data();
    void search_asksAboutAnEndlessToolInAPanelOfItsSize();
    void search_asksAboutAnOddToolOnce();
    void search_asksAboutAnOddPathFirst();
    void search_asksAnewForAnotherTerm();
    void search_asksAnewWhereTheQuestionIsNotSeen_data();
    void search_asksAnewWhereTheQuestionIsNotSeen();
    void search_takesAHeldKeyForOnePress();
};

namespace {

const QString question =
    QStringLiteral("As far as VELM remembers, the programmer tool was not set here.");

QString runs(const WindowFixture &velm) {
    return velm.path(QStringLiteral("runs"));
}

/// The text of a tool that writes a line for each run.
QString countingTool(const WindowFixture &velm) {
    const QString script = velm.write(QStringLiteral("counting.sh"),
                                      "echo run >> '" + QFile::encodeName(runs(velm)) + "'\n");
    return QStringLiteral("/bin/sh '%1'").arg(script);
}

/// Gives the settings file \a tool, with no program there to remember that it was set.
void bringTool(WindowFixture &velm, const QString &tool) {
    SettingsStore file(velm.path(QStringLiteral("velm.conf")));
    file.setValue(settingsKeys::miniproLocation, tool);
    // What is read of the file before a start is what the fixture's store read; a change makes it
    // look again.
    velm.settings().setValue(settingsKeys::device, QStringLiteral("27C64"));
}

int runsOf(const WindowFixture &velm) {
    return int(WindowFixture::bytesOf(runs(velm)).count("run\n"));
}

void press(WindowFixture &velm, QPushButton *button) {
    velm.click(button);
    velm.settle();
}

} // namespace

void TestWindowToolTrust::foreignTool_isAskedAboutFirst_data() {
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("again");
    QTest::newRow("read") << int(ReadOperation) << QStringLiteral("Press Read again to run it.");
    QTest::newRow("verify") << int(VerifyOperation)
                            << QStringLiteral("Press Verify again to run it.");
    QTest::newRow("write") << int(WriteOperation)
                           << QStringLiteral("Press Write again to hand the tool an empty file");
    QTest::newRow("logic test") << int(LogicOperation)
                                << QStringLiteral("Press Logic test again to run it.");
}

void TestWindowToolTrust::foreignTool_isAskedAboutFirst() {
    QFETCH(const int, tag);
    QFETCH(const QString, again);
    WindowFixture velm;
    const QString tool = countingTool(velm);
    bringTool(velm, tool);
    velm.start();
    Ui::MainWindow &c = velm.controls();
    QPushButton *const buttons[] = {c.btn_read, c.btn_verify, c.btn_write, c.btn_logic};
    press(velm, buttons[tag]);
    QVERIFY2(velm.message().contains(question), qPrintable(velm.message()));
    QVERIFY2(velm.message().contains(tool), qPrintable(velm.message()));
    QVERIFY2(velm.message().contains(again), qPrintable(velm.message()));
    QCOMPARE(runsOf(velm), 0);
    press(velm, buttons[tag]);
    QCOMPARE(runsOf(velm), 1);
}

void TestWindowToolTrust::foreignTool_isRunBySecondPressOfTheSameButton() {
    WindowFixture velm;
    bringTool(velm, countingTool(velm));
    velm.start();
    press(velm, velm.controls().btn_read);
    press(velm, velm.controls().btn_logic);
    QCOMPARE(runsOf(velm), 0);
    press(velm, velm.controls().btn_logic);
    QCOMPARE(runsOf(velm), 1);
}

void TestWindowToolTrust::foreignTool_thatRanIsAskedAboutNoMore() {
    WindowFixture velm;
    bringTool(velm, countingTool(velm));
    velm.start();
    press(velm, velm.controls().btn_read);
    press(velm, velm.controls().btn_read);
    QCOMPARE(runsOf(velm), 1);
    press(velm, velm.controls().btn_read);
    QCOMPARE(runsOf(velm), 2);
    velm.end();
    velm.start();
    press(velm, velm.controls().btn_read);
    QCOMPARE(runsOf(velm), 3);
}

void TestWindowToolTrust::foreignTool_thatIsOddIsOneQuestion() {
    WindowFixture velm;
    bringTool(velm, countingTool(velm) + QStringLiteral("; :"));
    velm.start();
    press(velm, velm.controls().btn_read);
    QVERIFY2(velm.message().contains(question) &&
                 velm.message().contains(u"The shell takes ; in this command"),
             qPrintable(velm.message()));
    press(velm, velm.controls().btn_read);
    QCOMPARE(runsOf(velm), 1);
}

void TestWindowToolTrust::foreignTool_writtenWhileTheProgramRunsIsAskedAbout() {
    WindowFixture velm;
    velm.start();
    const QString tool = countingTool(velm);
    bringTool(velm, tool);
    QCOMPARE(velm.controls().miniproLocationField->text(), tool);
    press(velm, velm.controls().btn_read);
    QVERIFY2(velm.message().contains(question), qPrintable(velm.message()));
    QCOMPARE(runsOf(velm), 0);
}

void TestWindowToolTrust::typedTool_isNotAskedAbout() {
    WindowFixture velm;
    bringTool(velm, QStringLiteral("evil"));
    velm.start();
    QLineEdit *field = velm.controls().miniproLocationField;
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, countingTool(velm));
    press(velm, velm.controls().btn_read);
    QCOMPARE(runsOf(velm), 1);
    velm.end();
    velm.start();
    press(velm, velm.controls().btn_read);
    QCOMPARE(runsOf(velm), 2);
}

void TestWindowToolTrust::defaultTool_isNotAskedAbout() {
    WindowFixture velm;
    QFile::remove(velm.path(QStringLiteral("state.conf")));
    bringTool(velm,
              settingsKeys::startupDefaults().value(settingsKeys::miniproLocation).toString());
    velm.start();
    press(velm, velm.controls().btn_read);
    QVERIFY2(!velm.message().contains(question), qPrintable(velm.message()));
    QCOMPARE(velm.log.startingWith(QStringLiteral("launching ")).size(), 1);
}

void TestWindowToolTrust::search_asksAboutAForeignToolFirst() {
    WindowFixture velm;
    const QString tool = countingTool(velm);
    bringTool(velm, tool);
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("27c"));
    const QString said = panel.remark->text();
    QVERIFY2(said.startsWith(question), qPrintable(said));
    QVERIFY2(said.contains(tool + QStringLiteral(" -L 27c")), qPrintable(said));
    QVERIFY2(said.endsWith(u"Press Search again to run it."), qPrintable(said));
    QCOMPARE(runsOf(velm), 0);
    velm.click(panel.search);
    QCOMPARE(runsOf(velm), 1);
    panel.searchFor(QStringLiteral("28c"));
    QCOMPARE(runsOf(velm), 2);
    velm.click(panel.cancel);
    press(velm, velm.controls().btn_read);
    QCOMPARE(runsOf(velm), 3);
}

void TestWindowToolTrust::search_asksAboutAnEndlessToolInAPanelOfItsSize_data() {
    QTest::addColumn<QString>("tool");
    QTest::newRow("with blanks") << QStringLiteral("/a tool").repeated(20'000);
    QTest::newRow("without") << QString(100'000, u'x');
}

void TestWindowToolTrust::search_asksAboutAnEndlessToolInAPanelOfItsSize() {
    QFETCH(const QString, tool);
    WindowFixture velm;
    bringTool(velm, tool);
    velm.start();
    const Panel panel(velm);
    const int before = panel.remark->window()->minimumSizeHint().width();
    panel.searchFor(QStringLiteral("27c"));
    const QString said = panel.remark->text();
    QVERIFY2(said.startsWith(question) && said.size() <= 1000, qPrintable(said));
    QVERIFY2(said.endsWith(u"Press Search again to run it."), qPrintable(said));
    QCOMPARE(panel.remark->window()->minimumSizeHint().width(), before);
}

void TestWindowToolTrust::search_asksAboutAnOddToolOnce() {
    WindowFixture velm;
    velm.setTool(countingTool(velm) + QStringLiteral("; :"));
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("27c"));
    const QString said = panel.remark->text();
    QVERIFY2(said.startsWith(u"The shell takes ; in this command for more than"), qPrintable(said));
    QCOMPARE(runsOf(velm), 0);
    panel.searchFor(QStringLiteral("27c"));
    QCOMPARE(runsOf(velm), 1);
    panel.searchFor(QStringLiteral("28c"));
    QCOMPARE(runsOf(velm), 2);
}

void TestWindowToolTrust::search_asksAboutAnOddPathFirst() {
    WindowFixture velm;
    velm.setTool(countingTool(velm));
    velm.settings().setValue(settingsKeys::temp_search_results_file,
                             velm.temporary(QStringLiteral("`echo run >> '%1'`").arg(runs(velm))));
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("27c"));
    QVERIFY2(panel.remark->text().startsWith(u"The shell takes ` in this command"),
             qPrintable(panel.remark->text()));
    QCOMPARE(runsOf(velm), 0);
}

void TestWindowToolTrust::search_asksAnewForAnotherTerm() {
    WindowFixture velm;
    bringTool(velm, countingTool(velm));
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("27c"));
    panel.searchFor(QStringLiteral("28c"));
    QVERIFY2(panel.remark->text().contains(u"28c"), qPrintable(panel.remark->text()));
    QCOMPARE(runsOf(velm), 0);
}

void TestWindowToolTrust::search_asksAnewWhereTheQuestionIsNotSeen_data() {
    QTest::addColumn<bool>("reopens");
    QTest::newRow("the panel was closed") << true;
    QTest::newRow("something else was said") << false;
}

void TestWindowToolTrust::search_asksAnewWhereTheQuestionIsNotSeen() {
    QFETCH(const bool, reopens);
    WindowFixture velm;
    bringTool(velm, countingTool(velm));
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("27c"));
    if (reopens) {
        velm.click(panel.cancel);
        velm.click(velm.controls().btn_search);
    } else {
        panel.searchFor(QString());
    }
    QVERIFY(!panel.remark->text().contains(question));
    panel.searchFor(QStringLiteral("27c"));
    QVERIFY(panel.remark->text().contains(question));
    QCOMPARE(runsOf(velm), 0);
}

void TestWindowToolTrust::search_takesAHeldKeyForOnePress() {
    WindowFixture velm;
    bringTool(velm, countingTool(velm));
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("27c"));
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"),
                       true);
    QApplication::sendEvent(panel.term, &repeated);
    QVERIFY(panel.remark->text().contains(question));
    QCOMPARE(runsOf(velm), 0);
}

QTEST_MAIN(TestWindowToolTrust)
#include "tst_window_tooltrust.moc"
