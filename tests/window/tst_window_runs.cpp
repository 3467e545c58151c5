// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "settings/SettingsKeys.h"
#include "support/BusyWords.h"

#include <QFile>
#include <QPushButton>

#include <csignal>

/// The window while the tool runs, and after runs that go wrong.
class TestWindowRuns : public QObject {
    Q_OBJECT

private slots:
    void aRun_leavesStopToPressAndTheImageToLookAt();
    void aRun_takesTheFocusAsideAndGivesItBack();
    void stop_endsASilentRun();
    void stop_endsARunThatIgnoresTheTerminateSignal();
    void stop_endsEndlessOutput();
    void stop_endsWhatARunLeftPrinting();
    void writeFaults_areSaid_data();
    void writeFaults_areSaid();
    void dataLongerThanTheChip_areNoPlainSuccess();
    void secondOperation_isRefusedWhileOneRuns();
    void closing_isRefusedDuringARun();
    void askedToEndTwice_stopsTheRunAndThenCloses();
    void everyFault_givesTheWindowBack_data();
    void everyFault_givesTheWindowBack();
    void everyBadTool_givesTheWindowBack_data();
    void everyBadTool_givesTheWindowBack();
    void unfinishedEscape_doesNotSwallowTheExitMessage();
    void badShell_givesTheWindowBack_data();
    void badShell_givesTheWindowBack();

private:
    static void verifyAlive(WindowFixture &velm);
    static void verifyExitMessageIsLast(WindowFixture &velm);
};

namespace {

const QByteArray silentTool = "while :; do sleep 1; done\n";

} // namespace

void TestWindowRuns::verifyAlive(WindowFixture &velm) {
    velm.settle();
    QVERIFY(velm.velm().work().isIdle());
    QVERIFY(velm.controls().btn_read->isEnabled());
    QVERIFY(!velm.controls().btn_stop->isEnabled());
    QVERIFY(!velm.message().isEmpty());
}

void TestWindowRuns::verifyExitMessageIsLast(WindowFixture &velm) {
    const QString text = velm.controls().textView->storedText();
    const qsizetype start = text.lastIndexOf(QStringLiteral("minipro has exited with status "));
    QVERIFY2(start >= 0 && !text.mid(start).contains(u'\n'), qPrintable(text));
}

void TestWindowRuns::aRun_leavesStopToPressAndTheImageToLookAt() {
    WindowFixture velm;
    velm.useTool(silentTool);
    velm.start();
    velm.controls().findBar->find();
    QStringList enabled;
    QString elapsed;
    velm.whileBusy([&] {
        const QList<QWidget *> widgets = velm.velm().window().findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            const bool acts =
                qobject_cast<QAbstractButton *>(widget) || qobject_cast<QLineEdit *>(widget);
            if (acts && widget->isVisible() && widget->isEnabled() &&
                !widget->accessibleName().isEmpty())
                enabled.append(widget->accessibleName());
        }
        elapsed = busyWords(*velm.controls().busy, QStringLiteral("Elapsed time"));
        velm.click(velm.controls().btn_stop);
    });
    velm.click(velm.controls().btn_read);
    // Looking around, which searching for bytes helps with, stays possible.
    QCOMPARE(enabled,
             QStringList({QStringLiteral("Chip facts"), QStringLiteral("Stop"),
                          QStringLiteral("Next command"), QStringLiteral("Copy command"),
                          QStringLiteral("Facts"), QStringLiteral("Find what"),
                          QStringLiteral("Previous"), QStringLiteral("Next"),
                          QStringLiteral("Close find bar"), QStringLiteral("Go to address")}));
    QCOMPARE(elapsed, QStringLiteral("0:00"));
    verifyAlive(velm);
    QCOMPARE(busyWords(*velm.controls().busy, QStringLiteral("Elapsed time")), QString());
}

void TestWindowRuns::aRun_takesTheFocusAsideAndGivesItBack() {
    WindowFixture velm;
    velm.useTool("sleep 0.1\n");
    velm.start();
    velm.controls().btn_verify->setFocus();
    QWidget *during = nullptr;
    velm.whileBusy([&] { during = QApplication::focusWidget(); });
    QTest::keyClick(velm.controls().btn_verify, Qt::Key_Space);
    QCOMPARE(during, velm.controls().textView);
    QCOMPARE(QApplication::focusWidget(), velm.controls().btn_verify);
}

void TestWindowRuns::stop_endsASilentRun() {
    WindowFixture velm;
    velm.start();
    qputenv("MINIPRO_SIM_FAULT", "silent");
    velm.whileBusy([&] { velm.click(velm.controls().btn_stop); });
    velm.click(velm.controls().btn_read);
    verifyAlive(velm);
    verifyExitMessageIsLast(velm);
    QVERIFY2(velm.message().contains(QStringLiteral("stopped"), Qt::CaseInsensitive),
             qPrintable(velm.message()));
}

void TestWindowRuns::stop_endsARunThatIgnoresTheTerminateSignal() {
    WindowFixture velm;
    velm.useTool("trap '' TERM; echo ready; while :; do sleep 0.05; done\n");
    velm.start();
    // The signal is ignored only once the tool has said so.
    QObject::connect(velm.controls().textView, &QPlainTextEdit::textChanged, &velm.velm(), [&] {
        if (velm.controls().textView->storedText().startsWith(u"ready"))
            velm.delegate().stopRun();
    });
    velm.click(velm.controls().btn_read);
    verifyAlive(velm);
    QVERIFY(velm.controls().textView->storedText().endsWith(
        QStringLiteral("minipro has exited with status %1").arg(SIGKILL)));
}

void TestWindowRuns::stop_endsEndlessOutput() {
    WindowFixture velm;
    velm.start();
    qputenv("MINIPRO_SIM_FAULT", "endless-output");
    velm.whileBusy([&] { velm.click(velm.controls().btn_stop); });
    velm.click(velm.controls().btn_read);
    verifyAlive(velm);
    verifyExitMessageIsLast(velm);
}

void TestWindowRuns::stop_endsWhatARunLeftPrinting() {
    WindowFixture velm;
    velm.useTool("(while :; do echo flood; sleep 0.01; done) & echo $! > pid; exit 0\n");
    velm.start();
    velm.click(velm.controls().btn_verify);
    QTRY_VERIFY(velm.controls().btn_stop->isEnabled());
    QVERIFY(velm.controls().btn_read->isEnabled());
    QVERIFY2(velm.message().contains(u"Stop ends it"), qPrintable(velm.message()));
    const pid_t flood = WindowFixture::bytesOf(velm.temporary(QStringLiteral("pid"))).toInt();
    QVERIFY(flood > 0);
    velm.click(velm.controls().btn_stop);
    QVERIFY(!velm.controls().btn_stop->isEnabled());
    QTRY_VERIFY(::kill(flood, 0) != 0);
    QVERIFY2(!velm.message().contains(u"Stop ends it"), qPrintable(velm.message()));
}

void TestWindowRuns::writeFaults_areSaid_data() {
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QString>("said");
    QTest::newRow("a byte that does not hold")
        << QByteArray("bad-byte") << QStringLiteral("0x1234");
    QTest::newRow("write protection") << QByteArray("protected") << QStringLiteral("Problem: ");
}

void TestWindowRuns::writeFaults_areSaid() {
    QFETCH(QByteArray, fault);
    QFETCH(QString, said);
    WindowFixture velm;
    const bool isProtected = fault == "protected";
    velm.settings().setValue(settingsKeys::device, isProtected ? QStringLiteral("AT28C256")
                                                               : QStringLiteral("W27C512@DIP28"));
    velm.settings().setValue(
        settingsKeys::binary,
        velm.write(QStringLiteral("rom.bin"), QByteArray(isProtected ? 32768 : 65536, 'x')));
    velm.start();
    qputenv("MINIPRO_SIM_FAULT", fault);
    velm.click(velm.controls().btn_write);
    verifyAlive(velm);
    verifyExitMessageIsLast(velm);
    QVERIFY2(velm.message().contains(said), qPrintable(velm.message()));
    QVERIFY(velm.message().startsWith(u"Problem: "));
    velm.click(velm.controls().check_unprotect);
    qputenv("MINIPRO_SIM_FAULT", isProtected ? "protected" : "");
    velm.click(velm.controls().btn_write);
    velm.settle();
    QVERIFY2(velm.message().startsWith(u"Done: "), qPrintable(velm.message()));
}

void TestWindowRuns::dataLongerThanTheChip_areNoPlainSuccess() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, QStringLiteral("AT28C256"));
    velm.settings().setValue(settingsKeys::noSizeMismatchError, true);
    velm.settings().setValue(settingsKeys::binary,
                             velm.write(QStringLiteral("rom.bin"), QByteArray(40000, 'x')));
    velm.start();
    velm.click(velm.controls().btn_write);
    velm.settle();
    QVERIFY2(velm.message().startsWith(u"Warning: Write succeeded in part: "),
             qPrintable(velm.message()));
}

void TestWindowRuns::secondOperation_isRefusedWhileOneRuns() {
    WindowFixture velm;
    velm.useTool(silentTool);
    velm.start();
    QString message;
    velm.whileBusy([&] {
        QPushButton other;
        other.setProperty("tag", 1);
        velm.delegate().go(&other);
        message = velm.message();
        velm.delegate().stopRun();
    });
    velm.click(velm.controls().btn_read);
    QCOMPARE(velm.state().retainArray.size(), 1);
    QVERIFY2(message.contains(u"is running"), qPrintable(message));
}

void TestWindowRuns::closing_isRefusedDuringARun() {
    WindowFixture velm;
    velm.useTool(silentTool);
    velm.start();
    QString message;
    bool closed = true;
    velm.whileBusy([&] {
        closed = velm.velm().window().close();
        message = velm.message();
        velm.delegate().stopRun();
    });
    velm.click(velm.controls().btn_read);
    QVERIFY(!closed);
    QVERIFY2(message.contains(u"the window stays open"), qPrintable(message));
    QVERIFY(velm.velm().window().isVisible());
    QVERIFY(velm.velm().window().close());
}

void TestWindowRuns::askedToEndTwice_stopsTheRunAndThenCloses() {
    WindowFixture velm;
    velm.useTool(silentTool);
    velm.start();
    bool openAfterFirst = false;
    velm.whileBusy([&] {
        velm.velm().askToEnd();
        openAfterFirst = velm.velm().window().isVisible() && !velm.velm().work().isIdle();
        velm.velm().askToEnd();
    });
    velm.click(velm.controls().btn_read);
    QVERIFY(openAfterFirst);
    QTRY_VERIFY(!velm.velm().window().isVisible());
}

void TestWindowRuns::everyFault_givesTheWindowBack_data() {
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QString>("said");
    const auto row = [](const char *fault, const QString &said) {
        QTest::newRow(fault) << QByteArray(fault) << said;
    };
    row("no-programmer", QStringLiteral("programmer"));
    row("busy", QStringLiteral("use"));
    row("wrong-id", QStringLiteral("ID"));
    row("overcurrent", QStringLiteral("current"));
    row("unplugged", QStringLiteral("unplugged"));
    row("invalid-utf8", QString());
    row("split-utf8", QString());
    row("leaves-grandchild", QString());
    row("closes-output-early", QString());
}

void TestWindowRuns::everyFault_givesTheWindowBack() {
    QFETCH(QByteArray, fault);
    QFETCH(QString, said);
    WindowFixture velm;
    velm.start();
    qputenv("MINIPRO_SIM_FAULT", fault);
    velm.click(velm.controls().btn_read);
    verifyAlive(velm);
    verifyExitMessageIsLast(velm);
    QVERIFY2(velm.message().contains(said), qPrintable(velm.message()));
}

void TestWindowRuns::everyBadTool_givesTheWindowBack_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("status");
    QTest::newRow("prints nothing") << QByteArray("exit 0\n") << QStringLiteral("0");
    QTest::newRow("fails") << QByteArray("exit 3\n") << QStringLiteral("3");
    QTest::newRow("crashes") << QByteArray("kill -SEGV $$\n") << QStringLiteral("11");
    QTest::newRow("prints a megabyte without a line break")
        << QByteArray("head -c 1048576 /dev/zero | tr '\\0' x\n") << QStringLiteral("0");
    QTest::newRow("prints NULs") << QByteArray("head -c 100000 /dev/zero\n") << QStringLiteral("0");
    QTest::newRow("closes both streams and goes on")
        << QByteArray("exec >&- 2>&-; sleep 0.2; exit 4\n") << QStringLiteral("4");
    QTest::newRow("leaves a child that holds the pipes")
        << QByteArray("sleep 2 & exit 5\n") << QStringLiteral("5");
}

void TestWindowRuns::everyBadTool_givesTheWindowBack() {
    QFETCH(QByteArray, script);
    QFETCH(QString, status);
    WindowFixture velm;
    velm.useTool(script);
    velm.start();
    velm.click(velm.controls().btn_read);
    verifyAlive(velm);
    QVERIFY(velm.controls().textView->storedText().endsWith(
        QStringLiteral("minipro has exited with status ") + status));
    QVERIFY(velm.log.lines.contains(QStringLiteral("\nminipro has exited with status ") + status));
    QVERIFY2(velm.message().startsWith(u"Problem: "), qPrintable(velm.message()));
}

void TestWindowRuns::unfinishedEscape_doesNotSwallowTheExitMessage() {
    WindowFixture velm;
    velm.useTool("printf 'last words\\n\\033['\n");
    velm.start();
    velm.click(velm.controls().btn_verify);
    velm.settle();
    QVERIFY2(velm.controls().textView->toPlainText().endsWith(
                 u"last words\nminipro has exited with status 0"),
             qPrintable(velm.controls().textView->toPlainText()));
}

void TestWindowRuns::badShell_givesTheWindowBack_data() {
    QTest::addColumn<QByteArray>("shell");
    QTest::addColumn<QString>("logged");
    QTest::newRow("none") << QByteArray() << QStringLiteral("user's shell is (null)");
    QTest::newRow("does not exist")
        << QByteArray("/no/such/shell") << QStringLiteral("user's shell is /no/such/shell");
    QTest::newRow("is not executable")
        << QByteArray("/etc/passwd") << QStringLiteral("user's shell is /etc/passwd");
}

void TestWindowRuns::badShell_givesTheWindowBack() {
    QFETCH(QByteArray, shell);
    QFETCH(QString, logged);
    WindowFixture velm;
    velm.start();
    if (shell.isNull())
        qunsetenv("SHELL");
    else
        qputenv("SHELL", shell);
    velm.click(velm.controls().btn_read);
    verifyAlive(velm);
    QVERIFY(velm.log.lines.contains(logged));
    QCOMPARE(velm.log.startingWith(QStringLiteral("unable to launch task: ")).size(), 1);
    QCOMPARE(velm.controls().textView->storedText(),
             QStringLiteral("minipro has exited with status -1"));
}

QTEST_MAIN(TestWindowRuns)
#include "tst_window_runs.moc"
