// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "ToolBench.h"
#include "language/RunJudgement.h"
#include "language/SearchOutcome.h"
#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QTest>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

/// Links of somebody else where a run is about to write a file.
class TestToolRunLinks : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        if (::geteuid() != 0)
            QSKIP("only root can give a link away");
    }

    void read_followsNoLinkOfSomebodyElse();
    void read_followsALinkOfTheUsers();
    void read_followsNoLinkBesideItsFile();
    void search_followsNoLinkOfSomebodyElse();
    void logicTest_removesALinkThatLeadsNowhere();
    void otherOperations_leaveLinksAlone();
    void read_isRefusedWhereTheLinkStays();
    void read_isRefusedWhereTheLinkCannotBeLookedAt();
    void search_isRefusedWhereTheLinkStays();
};

namespace {

/// A bench with a file of the user's to which links of a stranger lead.
class LinkBench : public ToolBench {
public:
    LinkBench() { writeWholeFile(victim, "precious"); }

    QString link(const char *name) const {
        QFile::link(victim, path(name));
        return path(name);
    }
    QString foreignLink(const char *name) const {
        const QString made = link(name);
        if (::lchown(QFile::encodeName(made).constData(), stranger, gid_t(-1)) != 0)
            qFatal("the link could not be given away");
        return made;
    }
    /// From here on, files in the folder can be removed by their owners alone.
    void makeSticky() const {
        for (const QString &name : {folder.path(), work.path()})
            if (::chmod(QFile::encodeName(name).constData(), 01777) != 0)
                qFatal("the folder's mode could not be changed");
    }
    QByteArray precious() const { return readWholeFile(victim); }

    static constexpr uid_t stranger = 12345;
    const QString victim = folder.filePath(QStringLiteral("victim"));
};

bool isLink(const QString &path) {
    return QFileInfo(path).isSymLink();
}

/// Writes \a words to the file behind "-r", whatever else it is told.
QString readingTool(const QString &words) {
    return QStringLiteral("write() { while [ \"$1\" != -r ]; do shift; done; "
                          "echo %1 > \"$2\"; }; write")
        .arg(words);
}

} // namespace

void TestToolRunLinks::read_followsNoLinkOfSomebodyElse() {
    LinkBench bench;
    const QString path = bench.foreignLink("temp_read.bin");
    bench.settings.setValue(settingsKeys::miniproLocation, readingTool(QStringLiteral("chip")));
    QCOMPARE(bench.newRun()->launch(), 0);
    QCOMPARE(bench.precious(), QByteArray("precious"));
    QVERIFY(!isLink(path));
    QCOMPARE(readWholeFile(path), QByteArray("chip\n"));
}

void TestToolRunLinks::read_followsALinkOfTheUsers() {
    LinkBench bench;
    const QString path = bench.link("temp_read.bin");
    bench.settings.setValue(settingsKeys::miniproLocation, readingTool(QStringLiteral("chip")));
    QCOMPARE(bench.newRun()->launch(), 0);
    QVERIFY(isLink(path));
    QCOMPARE(bench.precious(), QByteArray("chip\n"));
}

void TestToolRunLinks::read_followsNoLinkBesideItsFile() {
    LinkBench bench;
    const QString path = bench.foreignLink("temp_read.eeprom.bin");
    bench.useDouble("succeed");
    const auto run = bench.newRun();
    run->setFilesBesideRead({bench.path("nothing"), path});
    QCOMPARE(run->launch(), 0);
    QVERIFY(!isLink(path));
    QCOMPARE(bench.precious(), QByteArray("precious"));
}

void TestToolRunLinks::search_followsNoLinkOfSomebodyElse() {
    LinkBench bench;
    const QString path = bench.foreignLink("temp_sr.bin");
    bench.settings.setValue(settingsKeys::miniproLocation, QStringLiteral("echo"));
    QCOMPARE(bench.newRun()->list(QStringLiteral("27C")), 0);
    QCOMPARE(bench.precious(), QByteArray("precious"));
    QCOMPARE(readWholeFile(path), QByteArray("-L 27C\n"));
}

void TestToolRunLinks::logicTest_removesALinkThatLeadsNowhere() {
    LinkBench bench;
    const QString path = bench.foreignLink("temp_logtest.bin");
    QVERIFY(QFile::remove(bench.victim));
    bench.useDouble("fail");
    const auto run = bench.newRun();
    run->setLogicOperation();
    run->launch();
    QVERIFY(!isLink(path));
    QCOMPARE(readWholeFile(path), QByteArray("No programmer found.\n"));
    QVERIFY(!QFile::exists(bench.victim));
}

void TestToolRunLinks::otherOperations_leaveLinksAlone() {
    LinkBench bench;
    const QString paths[] = {bench.foreignLink("temp_read.bin"), bench.foreignLink("temp_sr.bin"),
                             bench.foreignLink("temp_logtest.bin")};
    bench.useDouble("succeed");
    const auto run = bench.newRun();
    run->setVerifyOperation();
    QCOMPARE(run->launch(), 0);
    for (const QString &path : paths)
        QVERIFY2(isLink(path), qPrintable(path));
}

void TestToolRunLinks::read_isRefusedWhereTheLinkStays() {
    LinkBench bench;
    const QString path = bench.foreignLink("temp_read.bin");
    bench.makeSticky();
    bench.useDouble("succeed");
    const auto run = bench.newRun();
    {
        const UnprivilegedUser user;
        QVERIFY(user.isValid());
        QCOMPARE(run->launch(), -1);
    }
    bench.serviceQueue();
    QCOMPARE(bench.precious(), QByteArray("precious"));
    const QString reason = path + QStringLiteral(": It is a link that belongs to somebody else");
    QCOMPARE(bench.log.lines.mid(3),
             QStringList({QStringLiteral("unable to launch task: ") + reason,
                          QStringLiteral("\nminipro has exited with status -1")}));
    QCOMPARE(bench.console.text(), QStringLiteral("minipro has exited with status -1"));
    const RunOutcome outcome = judgeRun(run->facts());
    QCOMPARE(outcome.verdict, RunOutcome::Verdict::NotStarted);
    QCOMPARE(outcome.words(),
             QStringLiteral("The programmer tool was not started: %1. Remove the link, and see "
                            "that nobody else may write to its folder.")
                 .arg(reason));
}

void TestToolRunLinks::read_isRefusedWhereTheLinkCannotBeLookedAt() {
    LinkBench bench;
    const QString path = bench.foreignLink("temp_read.bin");
    bench.settings.setValue(settingsKeys::miniproLocation, readingTool(QStringLiteral("chip")));
    const auto run = bench.newRun();
    {
        const FailingCalls failing("lstat", 1, EIO);
        QCOMPARE(run->launch(), -1);
        QVERIFY(failing.hasStruck());
    }
    QCOMPARE(bench.precious(), QByteArray("precious"));
    QVERIFY(isLink(path));
    QCOMPARE(judgeRun(run->facts()).words(),
             QStringLiteral("The programmer tool was not started: %1: Input/output error. See "
                            "that what this path leads to can be reached.")
                 .arg(path));
}

void TestToolRunLinks::search_isRefusedWhereTheLinkStays() {
    LinkBench bench;
    bench.foreignLink("temp_sr.bin");
    bench.makeSticky();
    bench.settings.setValue(settingsKeys::miniproLocation, QStringLiteral("echo"));
    const auto run = bench.newRun();
    {
        const UnprivilegedUser user;
        QVERIFY(user.isValid());
        QCOMPARE(run->list(QStringLiteral("27C")), -1);
    }
    QCOMPARE(bench.precious(), QByteArray("precious"));
    const QString words = judgeSearch({run->facts(), qsizetype(0)});
    QVERIFY2(words.contains(QStringLiteral("Remove the link")), qPrintable(words));
}

QTEST_GUILESS_MAIN(TestToolRunLinks)
#include "tst_tool_run_links.moc"
