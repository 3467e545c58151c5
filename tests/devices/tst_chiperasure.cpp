// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/ChipErasure.h"

#include <QTest>

/// Which chips can only lose bits, by their names in the tool's list.
class TestChipErasure : public QObject {
    Q_OBJECT

private slots:
    void losesBitsOnly_data();
    void losesBitsOnly();
};

void TestChipErasure::losesBitsOnly_data() {
    QTest::addColumn<bool>("expected");
    for (const char *eprom :
         {"2732A", "27C256", "27c512", "AM27C010@DIP32", "AT27LV256A", "M27C4001@DIP32", "TMS2716",
          "M5M27C102K", "HN27C1024", "MX27C4000", "SMJ27C040", "TMS27PC512", "AM27H256", "NM27LC64",
          "27HC256L", "M27V322", "UPD27C1001A", "NMC27C32EH@DIP24", "MX27L2000"})
        QTest::newRow(eprom) << true;
    for (const char *other : {"W27C512@DIP28", "W27E010", "SST27SF512", "SST27VF010",
                              "HY27SF081G2M(1.8V)", "AT28C256", "AM29F040B@DIP32", "7427", "74HC27",
                              "PIC16F627", "ATMEGA328P@DIP28", "24C27", "", "W25Q27CL"})
        QTest::newRow(*other ? other : "no name") << false;
}

void TestChipErasure::losesBitsOnly() {
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QTEST(::losesBitsOnly(name == QStringLiteral("no name") ? QString() : name), "expected");
}

QTEST_GUILESS_MAIN(TestChipErasure)
#include "tst_chiperasure.moc"
