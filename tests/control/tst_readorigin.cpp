// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/ReadOrigin.h"

#include "control/OperationRun.h"
#include "language/RunRecord.h"
#include "support/Bytes.h"
#include "support/FailingCalls.h"
#include "support/FileHelpers.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>

/// Of which chip the bytes of a read file are, as far as its stamps tell.
class TestReadOrigin : public QObject {
    Q_OBJECT

private slots:
    void init();
    void failedRead_thatWroteIsOfItsDevice();
    void failedRead_thatLeftTheFileIsOfNone();
    void failedRead_isOfNoneIfNobodyKnows_data();
    void failedRead_isOfNoneIfNobodyKnows();
    void failedRead_thatLeftAReadFileIsOfTheReadBefore();

private:
    QString path() const { return folder_->filePath(QStringLiteral("read.bin")); }
    ReadFile file() const { return {path(), bufferOf("61")}; }
    static RunRecord runOf(const char *device) {
        RunRecord record;
        record.device = QLatin1String(device);
        record.endedAt = QDateTime::currentDateTime();
        return record;
    }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestReadOrigin::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(writeWholeFile(path(), "an older chip's"));
}

void TestReadOrigin::failedRead_thatWroteIsOfItsDevice() {
    ReadOrigin origin;
    origin.expect(path());
    QVERIFY(writeWholeFile(path(), "a part"));
    origin.take(runOf("AT28C256"), file(), false);
    QCOMPARE(origin.device(), QStringLiteral("AT28C256"));
}

void TestReadOrigin::failedRead_thatLeftTheFileIsOfNone() {
    ReadOrigin origin;
    origin.expect(path());
    origin.take(runOf("AT28C256"), file(), false);
    QCOMPARE(origin.device(), QString());
}

void TestReadOrigin::failedRead_isOfNoneIfNobodyKnows_data() {
    QTest::addColumn<bool>("before");
    QTest::newRow("before the Read") << true;
    QTest::newRow("after it") << false;
}

void TestReadOrigin::failedRead_isOfNoneIfNobodyKnows() {
    QFETCH(bool, before);
    ReadOrigin origin;
    {
        const FailingCalls failing("stat", before ? 1 : 2, EIO);
        origin.expect(path());
        origin.take(runOf("AT28C256"), file(), false);
        QVERIFY(failing.hasStruck());
    }
    QCOMPARE(origin.device(), QString());
}

void TestReadOrigin::failedRead_thatLeftAReadFileIsOfTheReadBefore() {
    ReadOrigin origin;
    origin.expect(path());
    QVERIFY(writeWholeFile(path(), "all"));
    origin.take(runOf("W27C512"), file(), true);
    origin.expect(path());
    origin.take(runOf("AT28C256"), file(), false);
    QCOMPARE(origin.device(), QStringLiteral("W27C512"));
    const FailingCalls failing("stat", 2, EIO);
    origin.expect(path());
    origin.take(runOf("AT28C256"), file(), false);
    QCOMPARE(origin.device(), QString());
}

QTEST_GUILESS_MAIN(TestReadOrigin)
#include "tst_readorigin.moc"
