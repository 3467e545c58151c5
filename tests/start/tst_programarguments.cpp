// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/ProgramArguments.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <pwd.h>
#include <unistd.h>

class TestProgramArguments : public QObject {
    Q_OBJECT

private slots:
    void files_haveDefaultsInTheHomesOfTheSystem();
    void files_countFromTheCurrentFolder();
    void files_areInTheHomesOfTheSystemIfThoseAreAbsolute();
    void files_withoutHomeAreInTheAccountsHome();
    void binary_isTheOneFileThatIsNamed_data();
    void binary_isTheOneFileThatIsNamed();
    void toolkitOptions_arePassedOver_data();
    void toolkitOptions_arePassedOver();
    void refusals_areOneSentence_data();
    void refusals_areOneSentence();
    void aFileWithoutAName_isRefused();
    void help_namesEachOptionAndNoneOfTheToolkit();
};

namespace {

/// Reads the command line \a words, which are separated by blanks.
Result<ProgramRequest, ProgramRefusal> read(const QString &words) {
    return readArguments(QStringLiteral("velm ").append(words).split(u' ', Qt::SkipEmptyParts));
}

ProgramOptions optionsOf(const QString &words) {
    const auto arguments = read(words);
    if (!arguments)
        return {arguments.failure()->sentence, {}};
    const auto *options = std::get_if<ProgramOptions>(&*arguments);
    return options ? *options : ProgramOptions{QStringLiteral("answered"), {}};
}

} // namespace

void TestProgramArguments::files_haveDefaultsInTheHomesOfTheSystem() {
    qputenv("XDG_CONFIG_HOME", "/config");
    qputenv("XDG_STATE_HOME", "/state");
    const ProgramOptions options = optionsOf(QString());
    QCOMPARE(options.settings, QStringLiteral("/config/velm/velm.conf"));
    QCOMPARE(options.memory, QStringLiteral("/state/velm/state.conf"));
}

void TestProgramArguments::files_countFromTheCurrentFolder() {
    const ProgramOptions options = optionsOf(QStringLiteral("--settings a.conf --state=b/c.conf"));
    QCOMPARE(options.settings, QDir::currentPath() + QStringLiteral("/a.conf"));
    QCOMPARE(options.memory, QDir::currentPath() + QStringLiteral("/b/c.conf"));
    QCOMPARE(optionsOf(QStringLiteral("--settings=/a.conf")).settings, QStringLiteral("/a.conf"));
}

void TestProgramArguments::files_areInTheHomesOfTheSystemIfThoseAreAbsolute() {
    qputenv("XDG_CONFIG_HOME", "config");
    qputenv("XDG_STATE_HOME", "state");
    QCOMPARE(optionsOf(QString()).settings,
             QDir::homePath() + QStringLiteral("/.config/velm/velm.conf"));
    QCOMPARE(optionsOf(QString()).memory,
             QDir::homePath() + QStringLiteral("/.local/state/velm/state.conf"));
}

void TestProgramArguments::files_withoutHomeAreInTheAccountsHome() {
    const passwd *account = getpwuid(getuid());
    if (!account)
        QSKIP("this user has no account entry");
    const QString home = QFile::decodeName(account->pw_dir);
    const QByteArray before = qgetenv("HOME");
    qunsetenv("HOME");
    qunsetenv("XDG_CONFIG_HOME");
    qunsetenv("XDG_STATE_HOME");
    const ProgramOptions options = optionsOf(QString());
    qputenv("HOME", before);
    QCOMPARE(options.settings, home + QStringLiteral("/.config/velm/velm.conf"));
    QCOMPARE(options.memory, home + QStringLiteral("/.local/state/velm/state.conf"));
}

void TestProgramArguments::binary_isTheOneFileThatIsNamed_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("path");
    const QString here = QDir::currentPath();
    QTest::newRow("none") << "" << QString();
    QTest::newRow("absolute") << "/roms/a.bin" << QStringLiteral("/roms/a.bin");
    QTest::newRow("relative") << "roms/a.bin" << here + QStringLiteral("/roms/a.bin");
    QTest::newRow("before an option") << "a.bin --state s.conf" << here + QStringLiteral("/a.bin");
    QTest::newRow("after the toolkit's")
        << "-style fusion a.bin" << here + QStringLiteral("/a.bin");
    QTest::newRow("one that looks like an option") << "-- -a" << here + QStringLiteral("/-a");
}

void TestProgramArguments::binary_isTheOneFileThatIsNamed() {
    QFETCH(QString, words);
    QTEST(optionsOf(words).binary, "path");
}

void TestProgramArguments::toolkitOptions_arePassedOver_data() {
    QTest::addColumn<QString>("words");
    QTest::newRow("one dash") << "-platform offscreen";
    QTest::newRow("two dashes") << "--platform offscreen";
    QTest::newRow("no value") << "-reverse";
    QTest::newRow("joined value") << "-style=fusion";
    QTest::newRow("of one platform") << "-display :0 -name chips -nograb";
    QTest::newRow("several") << "-style fusion -session 1_2 -plugin a";
}

void TestProgramArguments::toolkitOptions_arePassedOver() {
    QFETCH(QString, words);
    words += QStringLiteral(" --settings /a.conf");
    QCOMPARE(optionsOf(words).settings, QStringLiteral("/a.conf"));
}

void TestProgramArguments::refusals_areOneSentence_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("named");
    QTest::newRow("unknown") << "--nonsense"
                             << "nonsense";
    QTest::newRow("unknown letter") << "-x"
                                    << "x";
    QTest::newRow("no value") << "--settings"
                              << "--settings";
    QTest::newRow("a value too many") << "--help=yes"
                                      << "--help";
    QTest::newRow("two files") << "a.bin b.bin"
                               << "one file";
}

void TestProgramArguments::refusals_areOneSentence() {
    QFETCH(QString, words);
    QFETCH(QString, named);
    const auto arguments = read(words);
    const ProgramRefusal *refusal = arguments.failure();
    QVERIFY(refusal);
    QVERIFY2(refusal->sentence.contains(named), qPrintable(refusal->sentence));
    QVERIFY2(!refusal->sentence.contains(u'\n'), qPrintable(refusal->sentence));
}

void TestProgramArguments::aFileWithoutAName_isRefused() {
    const auto arguments = readArguments({QStringLiteral("velm"), QString()});
    QVERIFY(!arguments);
}

void TestProgramArguments::help_namesEachOptionAndNoneOfTheToolkit() {
    for (const char *word : {"--help", "-h"}) {
        const auto arguments = read(QLatin1String(word));
        QVERIFY(arguments);
        const auto *answer = std::get_if<ProgramAnswer>(&*arguments);
        QVERIFY(answer);
        for (const char *option : {"[file]", "--settings", "--state", "--help", "--version"})
            QVERIFY2(answer->text.contains(QLatin1String(option)), option);
        QVERIFY(!answer->text.contains(u"platform"));
    }
}

QTEST_GUILESS_MAIN(TestProgramArguments)
#include "tst_programarguments.moc"
