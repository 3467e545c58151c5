// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/ToolProgram.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <sys/stat.h>
#include <tuple>

/// What is known of a tool without asking the shell.
class TestToolProgram : public QObject {
    Q_OBJECT

private slots:
    void program_isWhatTheShellWouldRun_data();
    void program_isWhatTheShellWouldRun();
    void trouble_isWhatKeepsItFromRunning();
    void trouble_isNotSaidOfWhatTheShellLooksUp_data();
    void trouble_isNotSaidOfWhatTheShellLooksUp();
    void trouble_isNotSaidOfWhatCannotBeLookedAt_data();
    void trouble_isNotSaidOfWhatCannotBeLookedAt();
    void trouble_isNotSaidOfWhatIsOutOfReach();
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

void TestToolProgram::trouble_isWhatKeepsItFromRunning() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a tool"));
    const QString tool = u'\'' + path + u'\'';
    QCOMPARE(programTrouble(tool), ProgramTrouble::Missing);
    QCOMPARE(programTrouble(folder.path()), ProgramTrouble::NotExecutable);
    QVERIFY(writeWholeFile(path, "#!/bin/sh\n"));
    QCOMPARE(programTrouble(tool), ProgramTrouble::NotExecutable);
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(programTrouble(tool), std::nullopt);
}

void TestToolProgram::trouble_isNotSaidOfWhatTheShellLooksUp_data() {
    QTest::addColumn<QString>("tool");
    for (const char *tool : {"nowhere", "/nowhere/minipro -v", "$HOME/nowhere", ""})
        QTest::newRow(tool) << QString::fromLatin1(tool);
}

void TestToolProgram::trouble_isNotSaidOfWhatTheShellLooksUp() {
    QFETCH(const QString, tool);
    QCOMPARE(programTrouble(tool), std::nullopt);
}

void TestToolProgram::trouble_isNotSaidOfWhatCannotBeLookedAt_data() {
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("stat") << QByteArray("stat");
    QTest::newRow("access") << QByteArray("access");
}

// A disk of the network may be out of reach for a while.
void TestToolProgram::trouble_isNotSaidOfWhatCannotBeLookedAt() {
    QFETCH(const QByteArray, function);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("tool"));
    QVERIFY(writeWholeFile(path, "#!/bin/sh\n"));
    const FailingCalls failing(function, 1, EIO);
    QCOMPARE(programTrouble(path), std::nullopt);
    QVERIFY(failing.hasStruck());
}

void TestToolProgram::trouble_isNotSaidOfWhatIsOutOfReach() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("tool"));
    QVERIFY(writeWholeFile(path, "#!/bin/sh\n"));
    QVERIFY(QFile::setPermissions(folder.path(), {}));
    const auto removable = qScopeGuard(
        [&] { std::ignore = ::chmod(QFile::encodeName(folder.path()).constData(), 0700); });
    const UnprivilegedUser user;
    QVERIFY(user.isValid());
    QCOMPARE(programTrouble(path), std::nullopt);
}

QTEST_GUILESS_MAIN(TestToolProgram)
#include "tst_tool_program.moc"
