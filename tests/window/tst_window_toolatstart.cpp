// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "window/WindowFixture.h"

#include <QDialog>
#include <QFile>
#include <QPushButton>

/// A programmer tool that is not there, or may not be executed, is said at the start.
class TestWindowToolAtStart : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void missingTool_isSaidWithWhatToDo();
    void missingTool_isChosenByAButton();
    void missingTool_isReplacedByTheOneThatIsFound();
    void toolThatMayNotBeExecuted_isSaidToBeThere_data();
    void toolThatMayNotBeExecuted_isSaidToBeThere();
    void toolOutOfReach_isNotSpokenOf();
    void sentence_lastsUntilARunBegins();
    void toolThatMayBeThere_isNotSpokenOf_data();
    void toolThatMayBeThere_isNotSpokenOf();
};

namespace {

const QString startOfTheSentence = QStringLiteral("The programmer tool ");

void useMissingTool(WindowFixture &velm) {
    velm.setTool(u'\'' + velm.path(QStringLiteral("nowhere/minipro")) + u'\'');
}

/// The path of a tool that the shell finds by its name.
QString bringFoundTool(const WindowFixture &velm) {
    const QString found = velm.write(QStringLiteral("found/minipro"), "#!/bin/sh\n");
    QFile::setPermissions(found, QFile::ReadOwner | QFile::ExeOwner);
    qputenv("PATH", QFile::encodeName(velm.path(QStringLiteral("found"))));
    return found;
}

QPushButton *offered(WindowFixture &velm, const QString &label) {
    for (auto *button : velm.controls().messageLine->findChildren<QPushButton *>())
        if (button->isVisible() && button->text() == label)
            return button;
    return nullptr;
}

} // namespace

// No tool that this machine may have.
void TestWindowToolAtStart::initTestCase() {
    qputenv("PATH", "/nowhere/bin");
}

void TestWindowToolAtStart::missingTool_isSaidWithWhatToDo() {
    WindowFixture velm;
    QFile::remove(velm.path(QStringLiteral("state.conf")));
    useMissingTool(velm);
    velm.start();
    const QString tool = velm.settings().stringValue(settingsKeys::miniproLocation);
    QVERIFY2(velm.message().contains(startOfTheSentence + tool + QStringLiteral(" is not there.")),
             qPrintable(velm.message()));
    QVERIFY(velm.message().contains(u"Install minipro"));
    QVERIFY(offered(velm, QStringLiteral("Choose the tool")));
    for (const QDialog *dialog : velm.velm().window().findChildren<QDialog *>())
        QVERIFY(!dialog->isVisible());
    QCOMPARE(velm.beeps, 0);
}

void TestWindowToolAtStart::missingTool_isChosenByAButton() {
    WindowFixture velm;
    useMissingTool(velm);
    velm.start();
    velm.panels.answer = QStringLiteral("/opt/my tools/minipro");
    velm.click(offered(velm, QStringLiteral("Choose the tool")));
    QCOMPARE(velm.controls().miniproLocationField->text(),
             QStringLiteral("'/opt/my tools/minipro'"));
    QCOMPARE(velm.message(), QString());
}

void TestWindowToolAtStart::missingTool_isReplacedByTheOneThatIsFound() {
    WindowFixture velm;
    useMissingTool(velm);
    const QString found = bringFoundTool(velm);
    velm.start();
    qputenv("PATH", "/nowhere/bin");
    QVERIFY2(velm.message().endsWith(QStringLiteral("is not there, but %1 is.").arg(found)),
             qPrintable(velm.message()));
    QPushButton *use = offered(velm, QStringLiteral("Use ") + found);
    QVERIFY(use);
    velm.click(use);
    QCOMPARE(velm.controls().miniproLocationField->text(), found);
    QCOMPARE(velm.message(), QString());
}

void TestWindowToolAtStart::toolThatMayNotBeExecuted_isSaidToBeThere_data() {
    QTest::addColumn<bool>("isFolder");
    QTest::addColumn<bool>("otherIsFound");
    QTest::newRow("a file") << false << false;
    QTest::newRow("a folder") << true << false;
    QTest::newRow("while another is found") << false << true;
}

void TestWindowToolAtStart::toolThatMayNotBeExecuted_isSaidToBeThere() {
    QFETCH(const bool, isFolder);
    QFETCH(const bool, otherIsFound);
    WindowFixture velm;
    const QString file = velm.write(QStringLiteral("tools/minipro"), "#!/bin/sh\n");
    const QString tool = isFolder ? velm.path(QStringLiteral("tools")) : file;
    velm.setTool(tool);
    const QString found = otherIsFound ? bringFoundTool(velm) : QString();
    velm.start();
    qputenv("PATH", "/nowhere/bin");
    const QString sentence =
        startOfTheSentence + tool +
        QStringLiteral(" is there, but it is no file that you may execute") +
        (otherIsFound ? QStringLiteral("; %1 is.").arg(found)
                      : QStringLiteral(". If it is the tool, allow that; else choose where the "
                                       "tool is."));
    QVERIFY2(velm.message().endsWith(sentence), qPrintable(velm.message()));
    QVERIFY(offered(velm, otherIsFound ? QStringLiteral("Use ") + found
                                       : QStringLiteral("Choose the tool")));
}

void TestWindowToolAtStart::toolOutOfReach_isNotSpokenOf() {
    WindowFixture velm;
    const QString loop = velm.path(QStringLiteral("loop"));
    QVERIFY(QFile::link(loop, loop));
    velm.setTool(loop);
    velm.start();
    QCOMPARE(velm.message(), QString());
}

void TestWindowToolAtStart::sentence_lastsUntilARunBegins() {
    WindowFixture velm;
    useMissingTool(velm);
    velm.start();
    velm.settings().setValue(settingsKeys::device, QStringLiteral("7400"));
    QVERIFY(velm.message().contains(u"Install minipro"));
    velm.click(velm.controls().btn_read);
    QVERIFY2(!velm.message().contains(u"Install minipro"), qPrintable(velm.message()));
}

void TestWindowToolAtStart::toolThatMayBeThere_isNotSpokenOf_data() {
    QTest::addColumn<QString>("tool");
    QTest::newRow("that is there") << QString();
    QTest::newRow("that the shell looks up") << QStringLiteral("minipro");
    QTest::newRow("with further words") << QStringLiteral("/nowhere/minipro -v");
    QTest::newRow("that the shell works out") << QStringLiteral("$HOME/nowhere/minipro");
}

void TestWindowToolAtStart::toolThatMayBeThere_isNotSpokenOf() {
    QFETCH(const QString, tool);
    WindowFixture velm;
    if (!tool.isEmpty())
        velm.setTool(tool);
    velm.start();
    QCOMPARE(velm.message(), QString());
}

QTEST_MAIN(TestWindowToolAtStart)
#include "tst_window_toolatstart.moc"
