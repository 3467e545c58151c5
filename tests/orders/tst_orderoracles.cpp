// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/RecordWriter.h"
#include "orders/Rearranging.h"
#include "support/FileHelpers.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

/// Another program has the same idea of halves and orders.
class TestOrderOracles : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void otherDoesTheSame_data();
    void otherDoesTheSame();
    void partsOfRecords_areJoinedByTheOther_data();
    void partsOfRecords_areJoinedByTheOther();

private:
    QString path(const QString &name) const { return folder_.filePath(name); }
    /// What srec_cat makes of \a arguments, which end where the output is named; null if it fails.
    QByteArray made(const QString &arguments) const;

    QTemporaryDir folder_;
};

Q_DECLARE_METATYPE(Arrangement)
Q_DECLARE_METATYPE(Lanes)

namespace {

constexpr Lanes whole{};
constexpr Lanes halves{2, 1};
constexpr Lanes quarters{4, 1};
constexpr Lanes wideHalves{2, 2};

QByteArray sample() {
    QByteArray bytes;
    for (int i = 0; i < 4096; ++i)
        bytes += char(i * 7 + i / 256 + 1);
    return bytes;
}

} // namespace

void TestOrderOracles::initTestCase() {
    if (QStandardPaths::findExecutable(QStringLiteral("srec_cat")).isEmpty())
        QSKIP("needs the package srecord");
    QVERIFY(writeWholeFile(path(QStringLiteral("in.bin")), sample()));
}

QByteArray TestOrderOracles::made(const QString &arguments) const {
    const QString out = path(QStringLiteral("out.bin"));
    QFile::remove(out);
    QProcess process;
    process.setWorkingDirectory(folder_.path());
    process.start(QStringLiteral("srec_cat"),
                  arguments.split(u' ') +
                      QStringList{QStringLiteral("-o"), out, QStringLiteral("-binary")});
    return process.waitForFinished() && process.exitCode() == 0 ? readWholeFile(out) : QByteArray();
}

void TestOrderOracles::otherDoesTheSame_data() {
    QTest::addColumn<Arrangement>("arrangement");
    QTest::addColumn<QStringList>("filters"); // one for each part
    const auto row = [](const char *name, const Arrangement &arrangement,
                        const QStringList &filters) {
        QTest::newRow(name) << arrangement << filters;
    };
    const auto words = [](const char *filter) { return QString::fromLatin1(filter); };
    row("even and odd", {whole, 1, false, halves}, {words("-split 2 0"), words("-split 2 1")});
    row("four", {whole, 1, false, quarters},
        {words("-split 4 0"), words("-split 4 1"), words("-split 4 2"), words("-split 4 3")});
    row("two of 16 bits", {whole, 1, false, wideHalves},
        {words("-split 4 0 2"), words("-split 4 2 2")});
    row("swapped in 16 bits", {whole, 2}, {words("-byte-swap 2")});
    row("swapped in 32 bits", {whole, 4}, {words("-byte-swap 4")});
    row("bits", {whole, 1, true}, {words("-bit-reverse")});
    row("all of it", {whole, 2, true, halves},
        {words("-byte-swap 2 -bit-reverse -split 2 0"),
         words("-byte-swap 2 -bit-reverse -split 2 1")});
}

void TestOrderOracles::otherDoesTheSame() {
    QFETCH(Arrangement, arrangement);
    QFETCH(QStringList, filters);
    const QByteArray bytes = sample();
    const QList<QByteArray> parts = rearranged(arrangement, {bytes});
    QCOMPARE(parts.size(), filters.size());
    for (qsizetype part = 0; part < parts.size(); ++part)
        QCOMPARE(made(QStringLiteral("in.bin -binary ") + filters[part]), parts[part]);
}

void TestOrderOracles::partsOfRecords_areJoinedByTheOther_data() {
    QTest::addColumn<Lanes>("lanes");
    QTest::addColumn<RecordFormat>("format");
    QTest::newRow("halves, Intel HEX") << halves << RecordFormat::IntelHex;
    QTest::newRow("halves, S-records") << halves << RecordFormat::SRecord;
    QTest::newRow("quarters, Intel HEX") << quarters << RecordFormat::IntelHex;
    QTest::newRow("quarters, S-records") << quarters << RecordFormat::SRecord;
    QTest::newRow("of 16 bits, Intel HEX") << wideHalves << RecordFormat::IntelHex;
    QTest::newRow("of 16 bits, S-records") << wideHalves << RecordFormat::SRecord;
}

void TestOrderOracles::partsOfRecords_areJoinedByTheOther() {
    QFETCH(Lanes, lanes);
    QFETCH(RecordFormat, format);
    const QByteArray bytes = sample();
    const QList<QByteArray> parts = rearranged({whole, 1, false, lanes}, {bytes});
    const bool isHex = format == RecordFormat::IntelHex;
    QStringList arguments;
    for (int part = 0; part < lanes.parts; ++part) {
        RecordWriter writer({format, 16}, parts[part].size());
        QVERIFY(writer.advance(parts[part], parts[part].size()));
        const QString name = QStringLiteral("part%1").arg(part);
        QVERIFY(writeWholeFile(path(name), writer.takeText()));
        arguments << QStringLiteral("%1 %2 -unsplit %3 %4 %5")
                         .arg(name, isHex ? QStringLiteral("-intel") : QStringLiteral("-motorola"),
                              QString::number(lanes.word()), QString::number(part * lanes.unit),
                              QString::number(lanes.unit));
    }
    QCOMPARE(made(arguments.join(u' ')), bytes);
}

QTEST_GUILESS_MAIN(TestOrderOracles)
#include "tst_orderoracles.moc"
