// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "simulator/session/Durations.h"

#include <QTest>

/// How the tool writes down how long something took.
class TestSimulatorDurations : public QObject {
    Q_OBJECT

private slots:
    void texts_data();
    void texts();
};

void TestSimulatorDurations::texts_data() {
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QByteArray>("release");
    QTest::addColumn<QByteArray>("newer");
    QTest::newRow("nothing") << 0.0 << QByteArray("0.00Sec") << QByteArray("0 ms");
    QTest::newRow("milliseconds") << 0.012 << QByteArray("0.01Sec") << QByteArray("12 ms");
    QTest::newRow("tenths of them") << 0.01234 << QByteArray("0.01Sec") << QByteArray("12.3 ms");
    QTest::newRow("nearly a second") << 0.9876 << QByteArray("0.99Sec") << QByteArray("987.6 ms");
    QTest::newRow("seconds") << 7.0 << QByteArray("7.00Sec") << QByteArray("7 Sec");
    QTest::newRow("tenths") << 6.7 << QByteArray("6.70Sec") << QByteArray("6.7 Sec");
    QTest::newRow("hundredths") << 6.714 << QByteArray("6.71Sec") << QByteArray("6.71 Sec");
    QTest::newRow("minutes") << 138.2 << QByteArray("138.20Sec") << QByteArray("2m 18 Sec");
    QTest::newRow("nearly a minute more")
        << 119.8 << QByteArray("119.80Sec") << QByteArray("2m 0 Sec");
}

void TestSimulatorDurations::texts() {
    QFETCH(double, seconds);
    QFETCH(QByteArray, release);
    QFETCH(QByteArray, newer);
    const std::chrono::duration<double> time(seconds);
    QCOMPARE(QByteArray::fromStdString(sim::durationText(time, sim::Dialect::Release)), release);
    QCOMPARE(QByteArray::fromStdString(sim::durationText(time, sim::Dialect::New)), newer);
}

QTEST_GUILESS_MAIN(TestSimulatorDurations)
#include "tst_simulator_durations.moc"
