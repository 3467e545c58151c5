// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/StepWords.h"

#include <QTest>

/// What the tool is doing, beside the bar.
class TestStepWords : public QObject {
    Q_OBJECT

private slots:
    void part_isCalled_data();
    void part_isCalled();
    void beginning_isTold();
};

void TestStepWords::part_isCalled_data() {
    QTest::addColumn<QString>("part");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *part, const char *words) {
        QTest::newRow(part) << QString::fromLatin1(part) << QString::fromLatin1(words);
    };
    row("Code", "Reading code");
    row("code", "Reading code");
    row("Data", "Reading data");
    row("User", "Reading user data");
    row("user", "Reading user data");
    row("config", "Reading config");
    row("A part of a chip that goes on", "Reading A part of a chip tha");
}

void TestStepWords::part_isCalled() {
    QFETCH(QString, part);
    QTEST(wordsForStep({RunPhase::Reading, part, std::nullopt}), "words");
}

void TestStepWords::beginning_isTold() {
    QCOMPARE(wordsForStep({}), QStringLiteral("Starting"));
    QCOMPARE(wordsForSearch(), QStringLiteral("Searching"));
}

QTEST_APPLESS_MAIN(TestStepWords)
#include "tst_stepwords.moc"
