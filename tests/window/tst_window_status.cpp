// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/ShownName.h"
#include "settings/SettingsKeys.h"
#include "support/BusyWords.h"
#include "window/WindowFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScopeGuard>
#include <QTextBlock>
#include <QTextDocumentFragment>

/// The status area: how the run is getting on, what came of it, what was done before, and what a
/// press would run.
class TestWindowStatus : public QObject {
    Q_OBJECT

private slots:
    void run_showsStepAndShare();
    void run_endsWithItsVerdict_data();
    void run_endsWithItsVerdict();
    void search_isShownAsOne();
    void leftovers_showNoStep();
    void area_keepsItsHeight();
    void runs_areInTheMenu();
    void runs_showTheirRecordAndPlace();
    void nextCommand_isThatOfTheButton();
    void nextCommand_followsTheSettings();
    void nextCommand_isCopied();
    void endlessCommand_isCopiedWhole();
    void longDevice_leavesTheWindowItsWidth();
    void commandOfTheTip_isTheCommand();
};

namespace {

/// Prints \a said and goes on once it is told to, by a file beside it.
QByteArray scriptThatSays(const QByteArray &said, const QString &goOn) {
    return "printf '" + said + "' >&2\nwhile [ ! -e '" + goOn.toUtf8() + "' ]; do sleep 0.05; done";
}

QString command(WindowFixture &velm) {
    return velm.controls().nextCommand->text();
}

void hover(QWidget *widget, QEvent::Type type) {
    widget->setAttribute(Qt::WA_UnderMouse, type == QEvent::Enter);
    QEvent event(type);
    if (type == QEvent::Enter) {
        QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QApplication::sendEvent(widget, &enter);
    } else {
        QApplication::sendEvent(widget, &event);
    }
    QCoreApplication::processEvents();
}

} // namespace

void TestWindowStatus::run_showsStepAndShare() {
    WindowFixture velm;
    const QString goOn = velm.path(QStringLiteral("go-on"));
    velm.useTool(scriptThatSays("Erasing... 0.02Sec OK\\n\\r\\033[KWriting Code...  40%%", goOn));
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom"), "bytes"));
    velm.start();
    const BusyIndicator *busy = velm.controls().busy;
    QString step;
    QString share;
    velm.whileBusy([&] {
        // Whatever is seen, the tool goes on.
        const auto goesOn = qScopeGuard([&] { velm.write(QStringLiteral("go-on"), {}); });
        QTRY_COMPARE(busyWords(*busy, QStringLiteral("Step")), QStringLiteral("Writing code"));
        QVERIFY(busy->isVisible());
        QVERIFY(!velm.controls().verdictHeading->isVisible());
        share = busy->findChild<QProgressBar *>()->text();
    });
    velm.click(velm.controls().btn_write);
    QCOMPARE(share, QStringLiteral("27%"));
    QVERIFY(!busy->isVisible());
    QVERIFY(velm.controls().verdictHeading->isVisible());
}

void TestWindowStatus::run_endsWithItsVerdict_data() {
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<QString>("heading");
    QTest::newRow("failed") << QByteArray("echo 'No programmer found.' >&2; exit 1")
                            << "^Read failed at \\d\\d:\\d\\d \u2013 W27C512@DIP28$";
    QTest::newRow("succeeded")
        << QByteArray("while [ \"$1\" != -r ]; do shift; done\n"
                      "printf bytes >\"$2\"; echo 'Reading Code...  0.47Sec  OK' >&2")
        << "^Read at \\d\\d:\\d\\d \u2013 W27C512@DIP28$";
}

void TestWindowStatus::run_endsWithItsVerdict() {
    QFETCH(QByteArray, tool);
    QFETCH(QString, heading);
    WindowFixture velm;
    velm.useTool(tool);
    velm.settings().setValue(settingsKeys::device, QStringLiteral("W27C512@DIP28"));
    velm.start();
    QCOMPARE(velm.controls().verdictHeading->text(), QStringLiteral("No run yet"));
    velm.click(velm.controls().btn_read);
    const QString shown = velm.controls().verdictHeading->text();
    QVERIFY2(QRegularExpression(heading).match(shown).hasMatch(), qPrintable(shown));
}

void TestWindowStatus::search_isShownAsOne() {
    WindowFixture velm;
    velm.useTool("echo 'W27C512@DIP28'");
    velm.start();
    QString step;
    velm.whileBusy([&] { step = busyWords(*velm.controls().busy, QStringLiteral("Step")); });
    velm.click(velm.controls().btn_search);
    DeviceSearchPanel &panel = velm.velm().searchPanel();
    panel.findChild<QLineEdit *>()->setText(QStringLiteral("w27"));
    QTest::keyClick(panel.findChild<QLineEdit *>(), Qt::Key_Return);
    QCOMPARE(step, QStringLiteral("Searching"));
    velm.click(panel.cancelButton());
    QCOMPARE(velm.controls().verdictHeading->text(), QStringLiteral("No run yet"));
}

void TestWindowStatus::leftovers_showNoStep() {
    WindowFixture velm;
    const QString goOn = velm.path(QStringLiteral("go-on"));
    const QByteArray second = velm.path(QStringLiteral("second")).toUtf8();
    const QString end = velm.path(QStringLiteral("end"));
    velm.useTool("if [ -e '" + second + "' ]; then\n" + scriptThatSays("", end) +
                 "\nexit 1\nfi\n: >'" + second + "'\n( " + scriptThatSays("", goOn) +
                 "; printf '\\rReading Code...  40%%' >&2 ) &\nexit 1");
    velm.start();
    velm.click(velm.controls().btn_read);
    QString step;
    velm.whileBusy([&] {
        const auto ends = qScopeGuard([&] { velm.write(QStringLiteral("end"), {}); });
        velm.write(QStringLiteral("go-on"), {});
        QTRY_VERIFY(velm.controls().textView->storedText().contains(u"40%"));
        step = busyWords(*velm.controls().busy, QStringLiteral("Step"));
    });
    velm.click(velm.controls().btn_read);
    QCOMPARE(step, QStringLiteral("Starting"));
    QVERIFY(velm.controls().verdictHeading->isVisible());
}

void TestWindowStatus::area_keepsItsHeight() {
    WindowFixture velm;
    velm.useTool("echo 'No programmer found.' >&2; exit 1");
    velm.start();
    const int before = velm.controls().statusArea->height();
    int during = 0;
    velm.whileBusy([&] { during = velm.controls().statusArea->height(); });
    velm.click(velm.controls().btn_read);
    velm.settle();
    QCOMPARE(during, before);
    QCOMPARE(velm.controls().statusArea->height(), before);
}

void TestWindowStatus::runs_areInTheMenu() {
    WindowFixture velm;
    velm.useTool("echo 'No programmer found.' >&2; exit 1");
    velm.settings().setValue(settingsKeys::device, QStringLiteral("A&B"));
    velm.start();
    QVERIFY(!velm.controls().btn_runs->isEnabled());
    velm.click(velm.controls().btn_read);
    velm.settings().setValue(settingsKeys::device, QStringLiteral("C"));
    velm.click(velm.controls().btn_verify);
    QVERIFY(velm.controls().btn_runs->isEnabled());
    const QList<QAction *> entries = velm.controls().btn_runs->menu()->actions();
    QCOMPARE(entries.size(), 2);
    QVERIFY(entries.first()->text().startsWith(u"Verify failed at "));
    QVERIFY(entries.last()->text().startsWith(u"Read failed at "));
    QVERIFY(entries.last()->text().endsWith(u"A&&B"));
}

void TestWindowStatus::runs_showTheirRecordAndPlace() {
    WindowFixture velm;
    velm.useTool("yes 'many lines' | head -100; echo \"$*\"; exit 3");
    velm.settings().setValue(settingsKeys::device, QStringLiteral("FIRST"));
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.settings().setValue(settingsKeys::device, QStringLiteral("SECOND"));
    velm.click(velm.controls().btn_read);
    velm.settle();
    velm.controls().btn_runs->menu()->actions().last()->trigger();
    velm.settle();
    QCOMPARE(velm.controls().textView->textCursor().blockNumber(), 0);
    const auto *record = velm.velm().window().findChild<QDialog *>(QStringLiteral("runRecord"));
    QVERIFY(record && record->isVisible());
    QVERIFY(record->windowTitle().endsWith(u"FIRST"));
    const QString text = record->findChild<QPlainTextEdit *>()->toPlainText();
    for (const QString &part : {QStringLiteral("Device: FIRST"), QStringLiteral("Exit status: 3"),
                                QStringLiteral("-p \"FIRST\""), QStringLiteral("Read failed")})
        QVERIFY2(text.contains(part), qPrintable(text));
    QTest::keyClick(record->findChild<QPlainTextEdit *>(), Qt::Key_Escape);
    QVERIFY(!velm.velm().window().findChild<QDialog *>(QStringLiteral("runRecord"))->isVisible());
}

void TestWindowStatus::nextCommand_isThatOfTheButton() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::miniproLocation, QStringLiteral("tool"));
    velm.settings().setValue(settingsKeys::device, QStringLiteral("CHIP"));
    velm.start();
    QApplication::setActiveWindow(&velm.velm().window());
    velm.controls().tableview->setFocus();
    QCoreApplication::processEvents();
    QVERIFY2(command(velm).startsWith(u"tool -p \"CHIP\" -w "), qPrintable(command(velm)));
    velm.controls().btn_verify->setFocus();
    QTRY_VERIFY(command(velm).contains(u" -m "));
    hover(velm.controls().btn_read, QEvent::Enter);
    QVERIFY(command(velm).contains(u" -r "));
    hover(velm.controls().btn_read, QEvent::Leave);
    QVERIFY(command(velm).contains(u" -m "));
    velm.controls().btn_logic->setFocus();
    QTRY_VERIFY(command(velm).contains(u" -T "));
}

void TestWindowStatus::nextCommand_followsTheSettings() {
    WindowFixture velm;
    velm.start();
    velm.controls().uaTextField->setText(QStringLiteral("AT28C256"));
    QVERIFY(command(velm).contains(u"-p \"AT28C256\""));
    velm.click(velm.controls().check_unprotect);
    QVERIFY(command(velm).endsWith(u" -u"));
    velm.settings().setValue(settingsKeys::temp_output_file, QStringLiteral("/elsewhere/x.bin"));
    QVERIFY(command(velm).contains(u"-w \"/elsewhere/x.bin\""));
}

void TestWindowStatus::nextCommand_isCopied() {
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_copy_command);
    QCOMPARE(QApplication::clipboard()->text(), command(velm));
    QVERIFY(velm.controls().nextCommand->isReadOnly());
}

/// What is in view of the heading.
static QString shownHeading(WindowFixture &velm) {
    QStringList words;
    for (const QLabel *label : velm.controls().verdictHeading->findChildren<QLabel *>())
        words << label->text();
    return words.join(QString());
}

void TestWindowStatus::longDevice_leavesTheWindowItsWidth() {
    WindowFixture velm;
    velm.useTool("echo 'No programmer found.' >&2; exit 1");
    velm.start();
    const int before = velm.velm().window().minimumSizeHint().width();
    const QString longest(longestShownName, u'W');
    velm.settings().setValue(settingsKeys::device, longest);
    velm.click(velm.controls().btn_read);
    velm.settle();
    QVERIFY(velm.controls().verdictHeading->text().endsWith(longest));
    const QString shown = shownHeading(velm);
    QVERIFY2(shown.startsWith(u"Read") && shown.contains(QChar(0x2026)) && shown.endsWith(u'W') &&
                 shown.size() < 300,
             qPrintable(shown));
    QCOMPARE(velm.velm().window().minimumSizeHint().width(), before);
    velm.settings().setValue(settingsKeys::device, longest + u'W');
    velm.click(velm.controls().btn_read);
    QVERIFY(velm.controls().verdictHeading->text().endsWith(longest + QChar(0x2026)));
    QAction *run = velm.controls().btn_runs->menu()->actions().first();
    QVERIFY(run->text().endsWith(longest + QChar(0x2026)));
    run->trigger();
    const auto *record = velm.velm().window().findChild<QDialog *>(QStringLiteral("runRecord"));
    const QString text = record->findChild<QPlainTextEdit *>()->toPlainText();
    QVERIFY(text.startsWith(QStringLiteral("Device: ") + longest + QChar(0x2026) + u'\n'));
}

void TestWindowStatus::endlessCommand_isCopiedWhole() {
    WindowFixture velm;
    velm.start();
    velm.settings().setValue(settingsKeys::device, QString(100'000, u'W'));
    velm.click(velm.controls().btn_copy_command);
    const QString copied = QApplication::clipboard()->text();
    QVERIFY(copied.contains(QStringLiteral(" -p \"") + QString(100'000, u'W') +
                            QStringLiteral("\" -w ")));
    const QLineEdit &field = *velm.controls().nextCommand;
    QVERIFY(field.toolTip().size() < 10'000);
    QCOMPARE(QTextDocumentFragment::fromHtml(field.toolTip()).toPlainText(),
             field.accessibleDescription());
}

void TestWindowStatus::commandOfTheTip_isTheCommand() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, QStringLiteral("<b>&A"));
    velm.start();
    const QString tip = velm.controls().nextCommand->toolTip();
    QCOMPARE(QTextDocumentFragment::fromHtml(tip).toPlainText(), command(velm));
    QVERIFY(command(velm).contains(u"\"<b>&A\""));
}

QTEST_MAIN(TestWindowStatus)
#include "tst_window_status.moc"
