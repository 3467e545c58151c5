// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/DeviceListing.h"

#include <QTest>

#include <cerrno>

/// The list of devices that a search leaves.
class TestDeviceListing : public QObject {
    Q_OBJECT

private slots:
    void text_isReadAs_data();
    void text_isReadAs();
    void tooManyLines_areAFailure();
};

void TestDeviceListing::text_isReadAs_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("names");
    QTest::addColumn<qsizetype>("lines");
    QTest::addColumn<bool>("looksCut");
    const auto row = [](const char *name, const char *text, const char *names, qsizetype lines,
                        bool looksCut) {
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(names) << lines
                            << looksCut;
    };
    row("nothing", "", "", 1, true);
    row("names", "B\nA\nB\n", "B|A|B", 4, false);
    row("an empty line", "A\n\nB\n", "A|B", 4, false);
    row("ends of two characters", "A\r\nB\r\n", "A|B", 5, false);
    row("spaces", "A \n B\n", "A | B", 3, false);
    row("a last line without an end", "A\nB", "A|B", 2, true);
}

void TestDeviceListing::text_isReadAs() {
    QFETCH(QString, text);
    const Result<DeviceListing> listing = readDeviceListing(text);
    QVERIFY(listing);
    QTEST(listing->names.join(u'|'), "names");
    QTEST(listing->lines, "lines");
    QTEST(listing->looksCut, "looksCut");
}

void TestDeviceListing::tooManyLines_areAFailure() {
    const QString most(maxListLines - 1, u'\n');
    QVERIFY(readDeviceListing(most));
    const Result<DeviceListing> listing = readDeviceListing(most + u'\n');
    QVERIFY(!listing);
    QCOMPARE(listing.failure()->systemError, E2BIG);
}

QTEST_APPLESS_MAIN(TestDeviceListing)
#include "tst_device_listing.moc"
