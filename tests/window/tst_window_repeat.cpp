// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/ResultsColumn.h"

#include "settings/SettingsKeys.h"

#include <QFile>
#include <QImage>

/// A logic test that is repeated.
class TestWindowRepeat : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { font_ = QApplication::font(); }
    void init() { qunsetenv("MINIPRO_SIM_FAULT"); }
    void cleanup() { QApplication::setFont(font_); }
    void flakyPin_isToldFromABrokenOne();
    void goodChip_hasNoFailedPin();
    void chosenVector_hasItsOwnCounts();
    void number_isChosen();
    void runs_areThoseOfTheButton();
    void column_staysAndTellsTheRun();
    void controls_stayOffBetweenRuns();
    void focus_comesBackToTheButton();
    void stop_endsTheSeries();
    void stopBetweenRuns_givesTheControlsBack();
    void lostProgrammer_endsTheSeries();
    void otherDevice_endsTheSeries();
    void oddDevice_isAskedAboutOnceForAllRuns();
    void oddDevice_isAskedAboutAgainForAnotherSeries();
    void singleTest_endsTheTally();
    void otherOperation_endsTheTally();
    void composition_throwsTheCountsAway();
    void closing_isRefusedBetweenRuns();
    void askedToEndTwice_closesBetweenRuns();
    void runningTool_refusesTheButton();
    void picture_isSavedWithTheCounts();
    void text_isSavedWithTheCounts();
    void smallWindow_hasRoomForTheWidestCounts_data();
    void smallWindow_hasRoomForTheWidestCounts();

private:
    QFont font_;
};

namespace {

/// A window with a 7400 that has been tested once, with \a faults.
struct Tested : WindowFixture {
    explicit Tested(const QByteArray &faults = {}) {
        settings().setValue(settingsKeys::device, QStringLiteral("7400"));
        start();
        click(controls().btn_logic);
        qputenv("MINIPRO_SIM_FAULT", faults);
    }

    /// Presses the button, and waits until the window is at rest after \a runs runs of this start.
    void repeat(const ResultsColumn &column, qsizetype runs) {
        click(column.repeat);
        QTRY_COMPARE(velm().runs().size(), runs);
        QTRY_VERIFY(controls().btn_logic->isEnabled());
        settle();
    }

    /// Begins to repeat; the first run is over then, and the next has not begun.
    void begin(const ResultsColumn &column) {
        click(column.repeat);
        QCOMPARE(velm().runs().size(), 2);
        QVERIFY(velm().work().isIdle());
    }
};

/// The text of a tool that finds every IC good.
QByteArray goodTool(WindowFixture &velm) {
    const QString report = velm.write(QStringLiteral("report"), "      1 2 3 4 5 6 7 8\n"
                                                                "0000: 1 1 L 1 1 L G V\n"
                                                                "Logic test successful.\n");
    return "cat '" + QFile::encodeName(report) + "'\n";
}

void verifySays(WindowFixture &velm, const QString &sentence) {
    QVERIFY2(velm.message().contains(sentence), qPrintable(velm.message()));
}

const QByteArray bothFaults = "bad-logic-pins,flaky-pin";
const QString flaky = QStringLiteral("Pin 11 failed in 3 of 10 runs: flaky, or a bad contact");
const QString always = QStringLiteral("Pin 3 failed in all 10 runs");

} // namespace

void TestWindowRepeat::flakyPin_isToldFromABrokenOne() {
    Tested velm(bothFaults);
    const ResultsColumn column(velm);
    velm.repeat(column, 11);
    QCOMPARE(column.lines(7), QStringLiteral("10 runs/%1/%2//Pin 3, vector 3: low expected/"
                                             "Pin 11, vector 3: low expected/")
                                  .arg(always, flaky));
    QCOMPARE(column.picture(), QStringLiteral("1 2 3- 4 5 6+ 7G 8+ 9 10 11- 12 13 14V"));
    QCOMPARE(column.pins->picture().failedRuns, (QMap<int, int>{{3, 10}, {11, 3}}));
    QCOMPARE(column.pins->picture().runs, 10);
    QCOMPARE(column.description(), QStringLiteral("7400, 10 runs. %1. %2.").arg(always, flaky));
    verifySays(velm, QStringLiteral("Warning: %1. %2.").arg(always, flaky));
}

void TestWindowRepeat::goodChip_hasNoFailedPin() {
    Tested velm;
    const ResultsColumn column(velm);
    velm.repeat(column, 11);
    QCOMPARE(column.lines(3), QStringLiteral("10 runs/No pin failed/"));
    QCOMPARE(column.description(), QStringLiteral("7400, 10 runs. No pin failed."));
    QVERIFY(column.pins->picture().failedRuns.isEmpty());
    verifySays(velm, QStringLiteral("No pin failed in 10 runs."));
    QVERIFY(!velm.message().contains(u"Warning"));
}

void TestWindowRepeat::chosenVector_hasItsOwnCounts() {
    Tested velm(bothFaults);
    const ResultsColumn column(velm);
    velm.repeat(column, 11);
    GridView *grid = velm.controls().tableview;
    grid->moveTo(grid->model()->index(1, 0));
    QCOMPARE(column.description(), QStringLiteral("7400, vector 0, 10 runs. No pin failed."));
    QVERIFY(column.pins->picture().failedRuns.isEmpty());
    grid->moveTo(grid->model()->index(4, 0));
    // The tenth run was none of the three.
    QCOMPARE(column.picture(),
             QStringLiteral("11 21 3L- 41 51 6L+ 7G 8L+ 91 101 11L- 121 131 14V"));
    QCOMPARE(column.description(),
             QStringLiteral("7400, vector 3, 10 runs. %1. %2.").arg(always, flaky));
}

void TestWindowRepeat::number_isChosen() {
    Tested velm;
    const ResultsColumn column(velm);
    QCOMPARE(column.repeat->text().remove(u'&'), QStringLiteral("Run 10 times"));
    QCOMPARE(column.times->minimum(), 2);
    QCOMPARE(column.times->maximum(), 100);
    column.times->setFocus();
    column.times->selectAll();
    QTest::keyClicks(column.times, QStringLiteral("3"));
    QCOMPARE(column.repeat->text().remove(u'&'), QStringLiteral("Run 3 times"));
    QCOMPARE(column.repeat->accessibleName(), QStringLiteral("Run 3 times"));
    velm.repeat(column, 4);
    QCOMPARE(column.lines(1), QStringLiteral("3 runs"));
}

// Each run is told of as if the user had pressed Logic test again.
void TestWindowRepeat::runs_areThoseOfTheButton() {
    Tested velm;
    const ResultsColumn column(velm);
    column.times->setValue(2);
    // The log has a line for each piece of output: this is one.
    velm.useTool(goodTool(velm));
    velm.settle();
    velm.log.take();
    velm.controls().textView->clearAll();
    velm.click(velm.controls().btn_logic);
    velm.settle();
    const QStringList log = velm.log.take();
    const QString console = velm.controls().textView->storedText();
    velm.repeat(column, 4);
    QCOMPARE(velm.log.take(), log + log);
    QCOMPARE(velm.controls().textView->storedText(), console + console + console);
    // The first has made the button come up.
    const QList<RunRecord> runs = velm.velm().runs().mid(1);
    for (const RunRecord &run : runs) {
        QCOMPARE(run.operation, LogicOperation);
        QCOMPARE(run.device, QStringLiteral("7400"));
        QCOMPARE(run.commandLine, runs.first().commandLine);
    }
}

void TestWindowRepeat::column_staysAndTellsTheRun() {
    Tested velm(bothFaults);
    const ResultsColumn column(velm);
    QString first;
    QString picture;
    QString message;
    velm.whileBusy([&] {
        QVERIFY(column.pins->isVisible());
        first = column.lines(2);
        picture = column.picture() + u'/' + column.pins->picture().caption;
        message = velm.message();
    });
    velm.begin(column);
    QCOMPARE(first, QStringLiteral("Run 1 of 10/Nothing has been counted yet"));
    QCOMPARE(picture, QStringLiteral("1 2 3 4 5 6 7 8 9 10 11 12 13 14/0 of 10 runs"));
    QCOMPARE(message, QStringLiteral("Run 1 of 10."));
    QCOMPARE(column.lines(2), QStringLiteral("Run 2 of 10/Pin 3 failed"));
    bool isVisible = false;
    velm.whileBusy([&] {
        isVisible = column.pins->isVisible();
        message = velm.message();
    });
    QTRY_VERIFY(isVisible);
    QCOMPARE(message, QStringLiteral("Run 2 of 10."));
    QTRY_VERIFY(velm.controls().btn_logic->isEnabled());
}

void TestWindowRepeat::controls_stayOffBetweenRuns() {
    Tested velm;
    const ResultsColumn column(velm);
    QVERIFY(column.repeat->isEnabled());
    velm.begin(column);
    QVERIFY(!column.repeat->isEnabled());
    QVERIFY(!column.times->isEnabled());
    QVERIFY(!velm.controls().btn_read->isEnabled());
    QVERIFY(!velm.controls().uaTextField->isEnabled());
    QVERIFY(velm.controls().btn_stop->isEnabled());
    QVERIFY(velm.controls().busy->isRunning());
    QTRY_VERIFY(velm.controls().btn_read->isEnabled());
    QCOMPARE(velm.velm().runs().size(), 11);
    QVERIFY(column.repeat->isEnabled());
    QVERIFY(!velm.controls().btn_stop->isEnabled());
    QVERIFY(!velm.controls().busy->isRunning());
}

void TestWindowRepeat::focus_comesBackToTheButton() {
    Tested velm;
    const ResultsColumn column(velm);
    column.repeat->setFocus();
    QTest::keyClick(column.repeat, Qt::Key_Space);
    QCOMPARE(QApplication::focusWidget(), velm.controls().textView);
    QTRY_VERIFY(column.repeat->isEnabled());
    QCOMPARE(QApplication::focusWidget(), column.repeat);
}

void TestWindowRepeat::stop_endsTheSeries() {
    Tested velm;
    const ResultsColumn column(velm);
    velm.begin(column);
    velm.useTool("while :; do sleep 1; done\n");
    velm.whileBusy([&] { velm.click(velm.controls().btn_stop); });
    QTRY_VERIFY(velm.controls().btn_logic->isEnabled());
    QCOMPARE(velm.velm().runs().size(), 3);
    QCOMPARE(column.lines(2), QStringLiteral("Stopped after 1 of 10 runs/No pin failed"));
    verifySays(velm, QStringLiteral("Stopped after 1 of 10 runs. No pin failed."));
    verifySays(velm, QStringLiteral("Logic test stopped."));
    QVERIFY(column.pins->isVisible());
}

void TestWindowRepeat::stopBetweenRuns_givesTheControlsBack() {
    Tested velm;
    const ResultsColumn column(velm);
    velm.begin(column);
    velm.click(velm.controls().btn_stop);
    QVERIFY(velm.controls().btn_logic->isEnabled());
    velm.settle();
    QCOMPARE(velm.velm().runs().size(), 2);
    QCOMPARE(column.lines(1), QStringLiteral("Stopped after 1 of 10 runs"));
}

void TestWindowRepeat::lostProgrammer_endsTheSeries() {
    Tested velm("bad-logic-pins");
    const ResultsColumn column(velm);
    velm.begin(column);
    qputenv("MINIPRO_SIM_FAULT", "no-programmer");
    QTRY_VERIFY(velm.controls().btn_logic->isEnabled());
    QCOMPARE(velm.velm().runs().size(), 3);
    const QString ended =
        QStringLiteral("Ended after 1 of 10 runs: the next one left no whole report");
    QCOMPARE(column.lines(2), ended + QStringLiteral("/Pin 3 failed"));
    QCOMPARE(column.pins->picture().failedRuns, (QMap<int, int>{{3, 1}}));
    verifySays(velm, ended);
    verifySays(velm, velm.velm().runs().last().outcome.sentence);
    // Looking elsewhere throws it away, as every result.
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    QVERIFY(!column.pins->isVisible());
}

void TestWindowRepeat::otherDevice_endsTheSeries() {
    Tested velm;
    const ResultsColumn column(velm);
    velm.begin(column);
    velm.settings().setValue(settingsKeys::device, QStringLiteral("7402"));
    QTRY_VERIFY(velm.controls().btn_logic->isEnabled());
    QCOMPARE(velm.velm().runs().size(), 2);
    verifySays(velm, QStringLiteral("the device is another one now."));
}

void TestWindowRepeat::oddDevice_isAskedAboutOnceForAllRuns() {
    Tested velm;
    velm.settings().setValue(settingsKeys::device, QStringLiteral("7400$A"));
    velm.useTool(goodTool(velm));
    const ResultsColumn column(velm);
    column.times->setValue(3);
    velm.click(column.repeat);
    velm.settle();
    QCOMPARE(velm.velm().runs().size(), 1);
    verifySays(velm, QStringLiteral("The shell takes $ in this command"));
    QVERIFY2(!velm.message().contains(u" runs"), qPrintable(velm.message()));
    QVERIFY(column.repeat->isVisible() && column.repeat->isEnabled());
    QCOMPARE(column.lines(1), QStringLiteral("Nothing has been counted yet"));
    velm.repeat(column, 4);
    QCOMPARE(column.lines(2), QStringLiteral("3 runs/No pin failed"));
    QVERIFY2(!velm.message().contains(u"The shell"), qPrintable(velm.message()));
}

void TestWindowRepeat::oddDevice_isAskedAboutAgainForAnotherSeries() {
    Tested velm;
    velm.settings().setValue(settingsKeys::device, QStringLiteral("7400$A"));
    velm.useTool(goodTool(velm));
    const ResultsColumn column(velm);
    column.times->setValue(2);
    velm.click(column.repeat);
    velm.repeat(column, 3);
    velm.click(column.repeat);
    velm.settle();
    QCOMPARE(velm.velm().runs().size(), 3);
    verifySays(velm, QStringLiteral("The shell takes $ in this command"));
}

void TestWindowRepeat::singleTest_endsTheTally() {
    Tested velm(bothFaults);
    const ResultsColumn column(velm);
    velm.repeat(column, 11);
    velm.click(velm.controls().btn_logic);
    velm.settle();
    QVERIFY2(column.text->toPlainText().startsWith(u"Pin 3, vector 3"),
             qPrintable(column.text->toPlainText()));
    QCOMPARE(column.picture(), QStringLiteral("1 2 3- 4 5 6+ 7G 8+ 9 10 11+ 12 13 14V"));
    QCOMPARE(column.pins->picture().plannedRuns, 0);
    QVERIFY(column.pins->picture().failedRuns.isEmpty());
    QVERIFY2(!velm.message().contains(u"10 runs"), qPrintable(velm.message()));
}

void TestWindowRepeat::otherOperation_endsTheTally() {
    Tested velm;
    const ResultsColumn column(velm);
    velm.repeat(column, 11);
    velm.click(velm.controls().btn_read);
    velm.settle();
    QVERIFY2(!velm.message().contains(u"10 runs"), qPrintable(velm.message()));
}

// As it does with the table.
void TestWindowRepeat::composition_throwsTheCountsAway() {
    Tested velm;
    const ResultsColumn column(velm);
    velm.repeat(column, 11);
    QVERIFY(column.pins->isVisible());
    velm.click(velm.controls().btn_pad);
    QTRY_VERIFY(velm.state().logictest_rows.isEmpty());
    QVERIFY(!column.pins->isVisible());
}

void TestWindowRepeat::closing_isRefusedBetweenRuns() {
    Tested velm;
    const ResultsColumn column(velm);
    velm.begin(column);
    velm.velm().window().close();
    QVERIFY(velm.velm().window().isVisible());
    verifySays(velm, QStringLiteral("so the window stays open"));
    QTRY_COMPARE(velm.velm().runs().size(), 11);
}

void TestWindowRepeat::askedToEndTwice_closesBetweenRuns() {
    Tested velm;
    const ResultsColumn column(velm);
    velm.begin(column);
    velm.velm().askToEnd();
    QVERIFY(velm.velm().window().isVisible());
    velm.velm().askToEnd();
    QTRY_VERIFY(!velm.velm().window().isVisible());
    QCOMPARE(velm.velm().runs().size(), 2);
}

// Assistive technology presses what is off.
void TestWindowRepeat::runningTool_refusesTheButton() {
    Tested velm;
    const ResultsColumn column(velm);
    QString message;
    velm.whileBusy([&] {
        column.repeat->setEnabled(true);
        column.repeat->parentWidget()->setEnabled(true);
        column.repeat->click();
        message = velm.message();
    });
    velm.click(velm.controls().btn_logic);
    QVERIFY2(message.contains(u"The programmer tool is running"), qPrintable(message));
    velm.settle();
    QCOMPARE(velm.velm().runs().size(), 2);
}

void TestWindowRepeat::picture_isSavedWithTheCounts() {
    Tested velm(bothFaults);
    const ResultsColumn column(velm);
    velm.repeat(column, 11);
    velm.panels.answer = velm.path(QStringLiteral("counts.png"));
    column.choose(QStringLiteral("Save as picture…"));
    QCOMPARE(velm.panels.requests.last().suggestedName, QStringLiteral("7400.png"));
    const QImage counted(velm.panels.answer, "PNG");
    QCOMPARE(counted, QImage::fromData(column.pins->png()));
    PackagePicture uncounted = column.pins->picture();
    uncounted.failedRuns.clear();
    column.pins->setPicture(uncounted, {});
    QVERIFY(counted != QImage::fromData(column.pins->png()));
}

void TestWindowRepeat::text_isSavedWithTheCounts() {
    Tested velm(bothFaults);
    const ResultsColumn column(velm);
    velm.repeat(column, 11);
    velm.panels.answer = velm.path(QStringLiteral("counts.txt"));
    column.choose(QStringLiteral("Save as text…"));
    const QString text = QString::fromUtf8(WindowFixture::bytesOf(velm.panels.answer));
    QVERIFY2(text.startsWith(u"7400\nThe table of the newest run:\n      1  2  3"),
             qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("\n10 runs\n%1\n%2\n").arg(always, flaky)),
             qPrintable(text));
}

void TestWindowRepeat::smallWindow_hasRoomForTheWidestCounts_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("points"); // 0: as they are
    QTest::newRow("small") << QSize(900, 600) << 0;
    QTest::newRow("large letters") << QSize(1366, 768) << 18;
}

void TestWindowRepeat::smallWindow_hasRoomForTheWidestCounts() {
    QFETCH(const QSize, size);
    QFETCH(const int, points);
    QFont font = font_;
    if (points > 0)
        font.setPointSize(points);
    QApplication::setFont(font);
    Tested velm(bothFaults);
    const ResultsColumn column(velm);
    MainWindow &window = velm.velm().window();
    window.resize(size);
    column.times->setValue(100);
    velm.begin(column);
    velm.click(velm.controls().btn_stop);
    velm.settle();
    QCOMPARE(column.pins->picture().plannedRuns, 100);
    QCOMPARE(window.size(), size);
    QVERIFY(column.pins->parentWidget()->width() >= column.pins->sizeHint().width());
    const QRect whole(QPoint(), size);
    for (const QWidget *widget :
         std::initializer_list<const QWidget *>{column.text, column.repeat, column.times}) {
        QVERIFY(whole.contains(QRect(widget->mapTo(&window, QPoint()), widget->size())));
        QVERIFY(widget->width() >= widget->minimumSizeHint().width());
        QVERIFY(widget->height() >= widget->minimumSizeHint().height());
    }
}

QTEST_MAIN(TestWindowRepeat)
#include "tst_window_repeat.moc"
