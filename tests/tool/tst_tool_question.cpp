// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "Processes.h"
#include "ToolBench.h"
#include "support/FileHelpers.h"
#include "tool/ToolQuestion.h"

#include <QSignalSpy>
#include <QTest>

/// Questions that are asked beside everything else.
class TestToolQuestion : public QObject {
    Q_OBJECT

private slots:
    void answer_isWhatWasSaidAndTheStatus();
    void question_isAskedInTheFolderOfTheTemporaryFiles();
    void leftover_thatHoldsThePipesIsNotWaitedFor();
    void noAnswer_comesOfWhatIsNotWhole_data();
    void noAnswer_comesOfWhatIsNotWhole();
    void shellThatIsMissing_givesNoAnswer();
    void deletedQuestion_endsWithAllThatItStarted();
    void questions_leaveNoDescriptors();
};

namespace {

ToolAnswer answerTo(const ToolBench &bench, const QString &command,
                    std::chrono::milliseconds patience = ToolQuestion::usualPatience) {
    ToolQuestion question(command, bench.settings);
    ToolAnswer answer{-2, QStringLiteral("none")};
    int answers = 0;
    QObject::connect(&question, &ToolQuestion::answered, &question, [&](const ToolAnswer &given) {
        answer = given;
        ++answers;
    });
    question.ask(patience);
    const bool came = QTest::qWaitFor([&] { return answers > 0; }, 20'000);
    return came && answers == 1 ? answer : ToolAnswer{-2, QStringLiteral("not one answer")};
}

} // namespace

void TestToolQuestion::answer_isWhatWasSaidAndTheStatus() {
    const ToolBench bench;
    const ToolAnswer answer = answerTo(bench, QStringLiteral("echo late >&2; echo früh; exit 3"));
    QCOMPARE(answer.status, std::optional(3));
    QCOMPARE(answer.text, QStringLiteral("früh\nlate\n"));
}

void TestToolQuestion::question_isAskedInTheFolderOfTheTemporaryFiles() {
    const ToolBench bench;
    QCOMPARE(answerTo(bench, QStringLiteral("pwd")).text.trimmed(), bench.work.canonicalPath());
}

void TestToolQuestion::leftover_thatHoldsThePipesIsNotWaitedFor() {
    const ToolBench bench;
    const ToolAnswer answer = answerTo(bench, QStringLiteral("sleep 60 & echo said"));
    QCOMPARE(answer.status, std::optional(0));
    QCOMPARE(answer.text, QStringLiteral("said\n"));
}

void TestToolQuestion::noAnswer_comesOfWhatIsNotWhole_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("patience");
    QTest::newRow("silent") << QStringLiteral("echo said; exec sleep 60") << 50;
    QTest::newRow("killed") << QStringLiteral("kill -9 $$") << 20'000;
    QTest::newRow("endless") << QStringLiteral("exec yes") << 20'000;
    QTest::newRow("large") << QStringLiteral("head -c 65537 /dev/zero") << 20'000;
}

void TestToolQuestion::noAnswer_comesOfWhatIsNotWhole() {
    QFETCH(const QString, command);
    QFETCH(const int, patience);
    const ToolBench bench;
    const ToolAnswer answer = answerTo(bench, command, std::chrono::milliseconds(patience));
    QCOMPARE(answer.status, std::optional<int>());
}

void TestToolQuestion::shellThatIsMissing_givesNoAnswer() {
    const QByteArray shell = qgetenv("SHELL");
    const ToolBench bench;
    for (const char *none : {"/nowhere/sh", ""}) {
        qputenv("SHELL", none);
        QCOMPARE(answerTo(bench, QStringLiteral("echo said")).status, std::optional<int>());
    }
    qputenv("SHELL", shell);
}

void TestToolQuestion::deletedQuestion_endsWithAllThatItStarted() {
    const ToolBench bench;
    auto question = std::make_unique<ToolQuestion>(
        QStringLiteral("sleep 60 & echo $! > child; mv child number; wait"), bench.settings);
    question->ask();
    QTRY_VERIFY(QFile::exists(bench.path("number")));
    const QString child = QString::fromLatin1(readWholeFile(bench.path("number")).trimmed());
    QVERIFY(!isGone(child));
    question.reset();
    QTRY_VERIFY(isGone(child));
}

void TestToolQuestion::questions_leaveNoDescriptors() {
    const ToolBench bench;
    answerTo(bench, QStringLiteral("true"));
    const qsizetype before = ToolBench::openDescriptors();
    for (int i = 0; i < 20; ++i)
        QCOMPARE(answerTo(bench, QStringLiteral("true")).status, std::optional(0));
    QTRY_COMPARE(ToolBench::openDescriptors(), before);
}

QTEST_GUILESS_MAIN(TestToolQuestion)
#include "tst_tool_question.moc"
