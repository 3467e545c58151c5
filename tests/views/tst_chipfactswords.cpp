// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/ChipFactsWords.h"

#include <QLocale>
#include <QTest>

/// What is said beside the device.
class TestChipFactsWords : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void chip_isToldInAFewWords_data();
    void chip_isToldInAFewWords();
    void answersWithoutAChip();
    void fit_isToldWhereItIsNone();
};

using Unit = MemorySection::Unit;

void TestChipFactsWords::initTestCase() {
    QLocale::setDefault(QLocale(QLocale::English));
}

void TestChipFactsWords::chip_isToldInAFewWords_data() {
    QTest::addColumn<QList<MemorySection>>("sections");
    QTest::addColumn<QString>("package");
    QTest::addColumn<int>("vectors");
    QTest::addColumn<QString>("words");
    const auto row = [](const QList<MemorySection> &sections, const char *package, int vectors,
                        const char *words) {
        QTest::newRow(words) << sections << QString::fromUtf8(package) << vectors
                             << QString::fromLatin1(words);
    };
    row({{65536, Unit::Bytes}}, "DIP28", -1, "65,536 bytes, DIP28");
    row({{32768, Unit::Words}}, "DIP40", -1, "65,536 bytes (32,768 words), DIP40");
    row({{2194, Unit::Bits}}, "DIP20", -1, "2,194 bits, DIP20");
    row({{8192, Unit::Bytes}, {512, Unit::Bytes}}, "DIP28", -1, "8,192 bytes + 512 bytes, DIP28");
    row({{65536, Unit::Bytes}}, "Adapter004.JPG", -1, "65,536 bytes, in an adapter");
    row({{65536, Unit::Bytes}}, "ICSP only", -1, "65,536 bytes, ICSP only");
    row({{65536, Unit::Bytes}}, "", -1, "65,536 bytes");
    row({}, "DIP28", -1, "DIP28");
    row({}, "D\u202eIP", -1, "D\\u202eIP");
    row({}, "DIP14", 4, "logic IC, DIP14, 4 vectors");
    row({}, "DIP14", 1, "logic IC, DIP14, 1 vector");
}

void TestChipFactsWords::chip_isToldInAFewWords() {
    QFETCH(const QList<MemorySection>, sections);
    QFETCH(const QString, package);
    QFETCH(const int, vectors);
    QFETCH(const QString, words);
    DeviceDescription chip;
    chip.sections = sections;
    chip.package = package;
    if (vectors >= 0)
        chip.vectors = vectors;
    QCOMPARE(chipWords(chip), words);
}

void TestChipFactsWords::answersWithoutAChip() {
    QCOMPARE(chipWords({}), QString());
    QCOMPARE(programmersWords({}), QString());
    QCOMPARE(chipWords(NoSuchDevice{}), QStringLiteral("The tool knows no device of this name."));
    QCOMPARE(programmersWords(NoSuchDevice{}), QString());
}

void TestChipFactsWords::fit_isToldWhereItIsNone() {
    QCOMPARE(fitWords(std::nullopt), QString());
    QCOMPARE(fitWords(ImageFit{0, std::nullopt}), QString());
    QCOMPARE(fitWords(ImageFit{7232, std::nullopt}), QStringLiteral("data too long by 7,232"));
    QCOMPARE(fitWords(ImageFit{-2768, nextSteps::PadTo{32}}),
             QStringLiteral("data shorter by 2,768"));
}

QTEST_GUILESS_MAIN(TestChipFactsWords)
#include "tst_chipfactswords.moc"
