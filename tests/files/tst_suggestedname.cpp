// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/SuggestedName.h"

#include <QTest>

class TestSuggestedName : public QObject {
    Q_OBJECT

private slots:
    void name_isThatOfTheDevice_data();
    void name_isThatOfTheDevice();
};

void TestSuggestedName::name_isThatOfTheDevice_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *what, const QByteArray &device, const QByteArray &name) {
        QTest::newRow(what) << QString::fromUtf8(device) << QString::fromUtf8(name);
    };
    row("a device with a package", "W27C512@DIP28", "W27C512@DIP28.bin");
    row("no device", "", "chip.bin");
    row("blanks alone", "  ", "chip.bin");
    row("blanks around", " AT28C256 ", "AT28C256.bin");
    row("folders", "../etc/x", "chip.._etc_x.bin");
    row("what a shell would trip over", "a b$(c)'d\"", "a_b_c_d_.bin");
    row("a mark of a user's own device", "MY27C512(custom)", "MY27C512_custom_.bin");
    row("other letters", "\xc3\xa4\xe2\x82\xac", "_.bin");
    row("a hidden file", ".device", "chip.device.bin");
    row("an endless name", QByteArray(100'000, 'x'), QByteArray(200, 'x') + ".bin");
}

void TestSuggestedName::name_isThatOfTheDevice() {
    QFETCH(const QString, device);
    QTEST(suggestedName(device, QStringLiteral(".bin")), "name");
}

QTEST_APPLESS_MAIN(TestSuggestedName)
#include "tst_suggestedname.moc"
