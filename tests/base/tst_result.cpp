// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/Result.h"

#include <QTest>

#include <cerrno>
#include <memory>

class TestResult : public QObject {
    Q_OBJECT

private slots:
    void value_isThere();
    void value_canBeMovedOut();
    void failure_hasItsReason();
    void nothing_worksOrFails();
};

void TestResult::value_isThere() {
    Result<QString> result(QStringLiteral("abc"));
    QVERIFY(bool(result));
    QVERIFY(!result.failure());
    QCOMPARE(*result, QStringLiteral("abc"));
    QCOMPARE(result->size(), 3);
    *result += u'd';
    QCOMPARE(*std::as_const(result), QStringLiteral("abcd"));
}

void TestResult::value_canBeMovedOut() {
    Result<std::unique_ptr<int>> result(std::make_unique<int>(7));
    const std::unique_ptr<int> number = *std::move(result);
    QCOMPARE(*number, 7);
}

void TestResult::failure_hasItsReason() {
    const Result<int> ofSystem(Failure::ofSystem(ENOENT));
    QVERIFY(!ofSystem);
    QCOMPARE(ofSystem.failure()->reason, QStringLiteral("No such file or directory"));
    QCOMPARE(ofSystem.failure()->systemError, ENOENT);
    const Result<QString> other(Failure{QStringLiteral("Not a regular file")});
    QVERIFY(!other);
    QCOMPARE(other.failure()->reason, QStringLiteral("Not a regular file"));
    QCOMPARE(other.failure()->systemError, 0);
}

void TestResult::nothing_worksOrFails() {
    const Result<void> worked;
    QVERIFY(bool(worked));
    QVERIFY(!worked.failure());
    const Result<void> failed(Failure::ofSystem(EACCES));
    QVERIFY(!failed);
    QCOMPARE(failed.failure()->reason, QStringLiteral("Permission denied"));
}

QTEST_GUILESS_MAIN(TestResult)
#include "tst_result.moc"
