// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/FileHelpers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

/// What ./run writes for its demonstration, seen as the program and the shell see it.
class TestDemonstration : public QObject {
    Q_OBJECT

private slots:
    void shellStartsTheSimulator_data();
    void shellStartsTheSimulator();
    void firstStart_writesItsOwnFilesOnly();
    void laterStart_keepsWhatTheUserChanged();
    void movedClone_refreshesThePathsAlone();
    void pathThatTheShellWouldRead_movesTheWorkspaceAway();
    void workspaceThatIsAnotherUsersLink_isNotUsed();

private:
    static QString write(const QString &folder, const QString &simulator,
                         const QString &temporary = QString());
    static QStringList parentsOfTemporaryFiles(const QSettings &settings);
};

namespace {

const QString scriptFolder = QStringLiteral(VELM_SOURCE_DIR "/packaging");

QString readText(const QString &path) {
    return QString::fromUtf8(readWholeFile(path));
}

/// A stand-in for the simulator that prints each of its words on a line.
void makeSimulator(const QString &path) {
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\nprintf '%s\\n' \"$@\"\n");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QStringList allFiles(const QString &folder) {
    QStringList found;
    QDirIterator files(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        found.append(QDir(folder).relativeFilePath(files.next()));
    found.sort();
    return found;
}

} // namespace

// Runs the script's function as ./run does; returns what it had to say (empty: nothing).
QString TestDemonstration::write(const QString &folder, const QString &simulator,
                                 const QString &temporary) {
    QProcess shell;
    if (!temporary.isEmpty()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), temporary);
        shell.setProcessEnvironment(environment);
    }
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start(QStringLiteral("bash"),
                {QStringLiteral("-euo"), QStringLiteral("pipefail"), QStringLiteral("-c"),
                 QStringLiteral(". \"$1/demonstration.sh\"\n"
                                "write_demonstration_settings \"$2\" \"$3\""),
                 QStringLiteral("bash"), scriptFolder, folder, simulator});
    if (!shell.waitForFinished() || shell.exitCode() != 0)
        return QStringLiteral("failed: ") + QString::fromUtf8(shell.readAll());
    return QString::fromUtf8(shell.readAll());
}

QStringList TestDemonstration::parentsOfTemporaryFiles(const QSettings &settings) {
    QStringList parents;
    for (const char *key : {"temp_output_file", "temp_read_from_chip_file",
                            "temp_search_results_file", "temp_logic_chip_test_results_file"}) {
        const QFileInfo file(settings.value(QLatin1String(key)).toString());
        parents.append(file.path());
    }
    parents.removeDuplicates();
    return parents;
}

void TestDemonstration::shellStartsTheSimulator_data() {
    QTest::addColumn<QString>("clone");
    QTest::newRow("plain") << QStringLiteral("velm");
    QTest::newRow("blank") << QStringLiteral("my programs/velm two");
    QTest::newRow("single quote") << QStringLiteral("it's here");
    QTest::newRow("double quote") << QStringLiteral("a \"quoted\" name");
    QTest::newRow("backslash") << QStringLiteral("back\\slash\\x41\\\\n");
    QTest::newRow("letters outside ASCII") << QStringLiteral("Größe/プログラム");
    QTest::newRow("what a shell expands") << QStringLiteral("$HOME `id` * ~ ; & | < > ( ) # !");
    QTest::newRow("what a settings file splits") << QStringLiteral("a,b;c=d %41 [General]");
    QTest::newRow("line break") << QStringLiteral("two\nlines");
    QTest::newRow("all together") << QStringLiteral("é '\"\\' , $(id)\t`'");
}

void TestDemonstration::shellStartsTheSimulator() {
    QFETCH(QString, clone);
    const QTemporaryDir home;
    const QString folder = home.filePath(clone);
    makeSimulator(folder + QStringLiteral("/minipro-sim"));
    const QString said = write(folder, folder + QStringLiteral("/minipro-sim"), home.path());
    QVERIFY2(!said.startsWith(u"failed"), qPrintable(said));

    const QSettings settings(folder + QStringLiteral("/velm.conf"), QSettings::IniFormat);
    const QString image = settings.value(QStringLiteral("temp_output_file")).toString();
    // The program adds the quotes around a path, and no more.
    const QString command = settings.value(QStringLiteral("miniproLocation")).toString() +
                            QStringLiteral(" -w \"%1\"").arg(image);
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(QString::fromUtf8(shell.readAllStandardError()), QString());
    QCOMPARE(QString::fromUtf8(shell.readAllStandardOutput()),
             QStringLiteral("-w\n%1\n").arg(image));
    QVERIFY(QFileInfo(QFileInfo(image).path()).isDir());
}

void TestDemonstration::firstStart_writesItsOwnFilesOnly() {
    const QTemporaryDir home;
    QCOMPARE(write(home.filePath(QStringLiteral(".demo")), QStringLiteral("/clone/minipro-sim")),
             QString());
    QCOMPARE(allFiles(home.path()).join(u' '),
             QStringLiteral(".demo .demo/bench .demo/state.conf .demo/velm.conf .demo/workspace "
                            ".demo/written-for"));
    QCOMPARE(readText(home.filePath(QStringLiteral(".demo/velm.conf"))),
             QStringLiteral("[General]\n"
                            "device=W27C512@DIP28\n"
                            "miniproLocation=\"/clone/minipro-sim\"\n"
                            "temp_output_file=\"%1/temp.bin\"\n"
                            "temp_read_from_chip_file=\"%1/temp_read.bin\"\n"
                            "temp_search_results_file=\"%1/temp_sr.bin\"\n"
                            "temp_logic_chip_test_results_file=\"%1/temp_logtest.bin\"\n")
                 .arg(home.filePath(QStringLiteral(".demo/workspace"))));
    QCOMPARE(readText(home.filePath(QStringLiteral(".demo/state.conf"))),
             QStringLiteral("[General]\ntrustedTool=\"/clone/minipro-sim\"\n"));
}

void TestDemonstration::laterStart_keepsWhatTheUserChanged() {
    const QTemporaryDir demo;
    write(demo.path(), QStringLiteral("/clone/minipro-sim"));
    {
        QSettings settings(demo.filePath(QStringLiteral("velm.conf")), QSettings::IniFormat);
        settings.setValue(QStringLiteral("miniproLocation"), QStringLiteral("minipro"));
        settings.setValue(QStringLiteral("device"), QStringLiteral("AT28C256"));
    }
    const QString before = readText(demo.filePath(QStringLiteral("velm.conf")));
    QCOMPARE(write(demo.path(), QStringLiteral("/clone/minipro-sim")), QString());
    QCOMPARE(readText(demo.filePath(QStringLiteral("velm.conf"))), before);
}

void TestDemonstration::movedClone_refreshesThePathsAlone() {
    const QTemporaryDir demo;
    write(demo.path(), QStringLiteral("/old/minipro-sim"));
    {
        QSettings settings(demo.filePath(QStringLiteral("velm.conf")), QSettings::IniFormat);
        settings.setValue(QStringLiteral("device"), QStringLiteral("AT28C256"));
        settings.setValue(QStringLiteral("favourites"),
                          QStringList({QStringLiteral("a, b"), QStringLiteral("c")}));
        settings.setValue(QStringLiteral("aside/key"), QStringLiteral("kept"));
    }
    QCOMPARE(write(demo.path(), QStringLiteral("/new/minipro-sim")), QString());

    const QSettings settings(demo.filePath(QStringLiteral("velm.conf")), QSettings::IniFormat);
    QCOMPARE(settings.status(), QSettings::NoError);
    QCOMPARE(settings.value(QStringLiteral("miniproLocation")).toString(),
             QStringLiteral("/new/minipro-sim"));
    QCOMPARE(parentsOfTemporaryFiles(settings),
             QStringList(demo.filePath(QStringLiteral("workspace"))));
    QCOMPARE(settings.value(QStringLiteral("device")).toString(), QStringLiteral("AT28C256"));
    QCOMPARE(settings.value(QStringLiteral("favourites")).toStringList(),
             QStringList({QStringLiteral("a, b"), QStringLiteral("c")}));
    QCOMPARE(settings.value(QStringLiteral("aside/key")).toString(), QStringLiteral("kept"));
    QCOMPARE(readText(demo.filePath(QStringLiteral("state.conf"))),
             QStringLiteral("[General]\ntrustedTool=\"/new/minipro-sim\"\n"));
}

void TestDemonstration::pathThatTheShellWouldRead_movesTheWorkspaceAway() {
    const QTemporaryDir home;
    const QString demo = home.filePath(QStringLiteral("$HOME"));
    const QString said = write(demo, QStringLiteral("/clone/minipro-sim"), home.path());
    const QSettings settings(demo + QStringLiteral("/velm.conf"), QSettings::IniFormat);

    const QStringList parents = parentsOfTemporaryFiles(settings);
    QCOMPARE(parents.size(), 1);
    const QFileInfo workspace(parents.constFirst());
    QCOMPARE(workspace.path(), home.path());
    QVERIFY(workspace.isDir());
    QCOMPARE(workspace.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    QCOMPARE(said, QStringLiteral("The tool's command line cannot carry the path of this folder; "
                                  "the demonstration keeps its images in %1.\n")
                       .arg(workspace.filePath()));
}

void TestDemonstration::workspaceThatIsAnotherUsersLink_isNotUsed() {
    const QTemporaryDir home;
    const QString demo = home.filePath(QStringLiteral("$HOME"));
    write(demo, QStringLiteral("/clone/minipro-sim"), home.path());
    const QString settingsPath = demo + QStringLiteral("/velm.conf");
    const QString first =
        parentsOfTemporaryFiles(QSettings(settingsPath, QSettings::IniFormat)).constFirst();

    QVERIFY(QDir().rmdir(first));
    QVERIFY(QDir().mkdir(home.filePath(QStringLiteral("elsewhere"))));
    QVERIFY(QFile::link(home.filePath(QStringLiteral("elsewhere")), first));
    write(demo, QStringLiteral("/clone/minipro-sim"), home.path());
    const QString second =
        parentsOfTemporaryFiles(QSettings(settingsPath, QSettings::IniFormat)).constFirst();
    QVERIFY(second != first);
    QVERIFY(QFileInfo(second).isDir());
    QVERIFY(!QFileInfo(second).isSymLink());
}

QTEST_GUILESS_MAIN(TestDemonstration)
#include "support/FileHelpers.h"
#include "tst_demonstration.moc"
