// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/ToolProgram.h"

#include "support/FileHelpers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// What is known of a tool without asking the shell.
class TestToolProgram : public QObject {
    Q_OBJECT

private slots:
    void program_isWhatTheShellWouldRun_data();
    void program_isWhatTheShellWouldRun();
    void missing_isWhatIsNoProgram();
    void missing_isNotSaidOfWhatTheShellLooksUp_data();
    void missing_isNotSaidOfWhatTheShellLooksUp();
};

void TestToolProgram::program_isWhatTheShellWouldRun_data() {
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QString>("program");
    const auto row = [](const char *tool, const QString &program) {
        QTest::newRow(tool) << QString::fromUtf8(tool) << program;
    };
    row("/usr/local/bin/minipro", QStringLiteral("/usr/local/bin/minipro"));
    row("minipro", QStringLiteral("minipro"));
    row(" minipro ", QStringLiteral("minipro"));
    row("/home/józef/minipro", QStringLiteral("/home/józef/minipro"));
    row("'/opt/my tools/minipro'", QStringLiteral("/opt/my tools/minipro"));
    row("/opt/'my tools'/minipro", QStringLiteral("/opt/my tools/minipro"));
    row("'/opt/$x'", QStringLiteral("/opt/$x"));
    row("~/bin/minipro", QDir::homePath() + QStringLiteral("/bin/minipro"));
    row("'~/bin/minipro'", QStringLiteral("~/bin/minipro"));
    for (const char *other :
         {"", " ", "''", "sudo minipro", "minipro -v", "'a b' c", "'open", "$TOOL", "\"minipro\"",
          "a\\ b", "A=1", "a;b", "~other/minipro", "mini*", "a\nb"})
        row(other, QString());
}

void TestToolProgram::program_isWhatTheShellWouldRun() {
    QFETCH(const QString, tool);
    QFETCH(const QString, program);
    QCOMPARE(programOf(tool).has_value(), !program.isEmpty());
    QCOMPARE(programOf(tool).value_or(QString()), program);
}

void TestToolProgram::missing_isWhatIsNoProgram() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a tool"));
    const QString tool = u'\'' + path + u'\'';
    QVERIFY(isKnownToBeMissing(tool));
    QVERIFY(isKnownToBeMissing(u'\'' + folder.path() + u'\''));
    QVERIFY(writeWholeFile(path, "#!/bin/sh\n"));
    QVERIFY(isKnownToBeMissing(tool));
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(!isKnownToBeMissing(tool));
}

void TestToolProgram::missing_isNotSaidOfWhatTheShellLooksUp_data() {
    QTest::addColumn<QString>("tool");
    for (const char *tool : {"nowhere", "/nowhere/minipro -v", "$HOME/nowhere", ""})
        QTest::newRow(tool) << QString::fromLatin1(tool);
}

void TestToolProgram::missing_isNotSaidOfWhatTheShellLooksUp() {
    QFETCH(const QString, tool);
    QVERIFY(!isKnownToBeMissing(tool));
}

QTEST_GUILESS_MAIN(TestToolProgram)
#include "tst_tool_program.moc"
