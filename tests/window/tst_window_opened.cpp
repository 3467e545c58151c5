// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include "files/OpenedFileWatch.h"

#include <QFile>
#include <QPushButton>
#include <QSignalSpy>

/// The opened binary and the file that it came from.
class TestWindowOpened : public QObject {
    Q_OBJECT

private slots:
    void recentFile_commitsWhatIsBeingTypedFirst();
    void openedBinary_isTakenAsStored();
    void openedBinary_changedOnDiskCanBeReloaded();
    void openedBinary_writtenAgainAsItWasIsStillWatched();
    void openedBinary_goneFromDiskIsSaidUntilItIsBack();
    void unreadableBinary_isNotWatched();
};

void TestWindowOpened::recentFile_commitsWhatIsBeingTypedFirst() {
    WindowFixture velm;
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, 1));
    QTest::keyClick(grid, Qt::Key_7);
    QTest::keyClick(grid->entries().editor(), Qt::Key_A);
    velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), "other"));
    velm.settle();
    QCOMPARE(*velm.state().output_data, QByteArray("other"));
    velm.click(velm.controls().messageLine->findChild<QPushButton *>()); // Restore
    QCOMPARE(*velm.state().output_data, QByteArray("z123456789ABCDEFGHIJ"));
}

void TestWindowOpened::openedBinary_isTakenAsStored() {
    const QByteArray home = qgetenv("HOME");
    WindowFixture velm;
    qputenv("HOME", QFile::encodeName(velm.path({})));
    velm.write(QStringLiteral("rom.bin"), "in the home folder");
    velm.settings().setValue(settingsKeys::binary, QStringLiteral("~/rom.bin"));
    velm.start();
    qputenv("HOME", home);
    QVERIFY(!velm.state().opened_bin_data);
    QCOMPARE(velm.settings().stringValue(settingsKeys::binary), QStringLiteral("~/rom.bin"));
}

void TestWindowOpened::openedBinary_changedOnDiskCanBeReloaded() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    velm.write(QStringLiteral("rom.bin"), "other");
    QTRY_VERIFY2(velm.message().contains(u"has changed on the disk"), qPrintable(velm.message()));
    QCOMPARE(*velm.state().output_data, QByteArray("z123456789ABCDEFGHIJ"));
    const FactsLine *facts = velm.controls().factsLine;
    QTRY_VERIFY2(facts->wholeText().startsWith(u"rom.bin (changed on the disk since), with 1 edit"),
                 qPrintable(facts->wholeText()));
    velm.click(velm.controls().messageLine->findChild<QPushButton *>());
    velm.settle();
    QTRY_VERIFY(!facts->wholeText().contains(u"changed on the disk"));
    QCOMPARE(*velm.state().output_data, QByteArray("other"));
    QVERIFY2(!velm.message().contains(u"has changed on the disk"), qPrintable(velm.message()));
    QVERIFY2(velm.message().contains(u"1 hand edit was replaced"), qPrintable(velm.message()));
}

void TestWindowOpened::openedBinary_writtenAgainAsItWasIsStillWatched() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QSignalSpy seen(&velm.delegate().openedBinary(), &OpenedBinary::onDiskChanged);
    velm.write(QStringLiteral("rom.bin"), "0123456789ABCDEFGHIJ");
    QTRY_VERIFY(!seen.isEmpty());
    QTRY_VERIFY2(velm.message().isEmpty(), qPrintable(velm.message()));
    velm.write(QStringLiteral("rom.bin"), "other");
    QTRY_VERIFY2(velm.message().contains(u"has changed on the disk"), qPrintable(velm.message()));
}

void TestWindowOpened::openedBinary_goneFromDiskIsSaidUntilItIsBack() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QVERIFY(QFile::remove(velm.path(QStringLiteral("rom.bin"))));
    QTRY_VERIFY2(velm.message().contains(u"is no longer on the disk"), qPrintable(velm.message()));
    velm.write(QStringLiteral("rom.bin"), "0123456789ABCDEFGHIJ");
    QTRY_VERIFY2(!velm.message().contains(u"is no longer on the disk"), qPrintable(velm.message()));
    QCOMPARE(*velm.state().output_data, QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowOpened::unreadableBinary_isNotWatched() {
    WindowFixture velm;
    velm.start();
    const QString large = velm.write(QStringLiteral("large.bin"), "");
    QVERIFY(QFile::resize(large, largestImage + 1)); // holes take no room on the disk
    const QString small = velm.write(QStringLiteral("small.bin"), "bytes");
    velm.delegate().openBinary(large);
    QVERIFY(velm.message().contains(u"could not be read"));
    QVERIFY(QFile::remove(large));
    // What the system tells of two files comes in its order.
    OpenedFileWatch other;
    other.watch(small);
    QSignalSpy seen(&other, &OpenedFileWatch::stateChanged);
    QVERIFY(QFile::remove(small));
    QVERIFY(seen.wait());
    QVERIFY2(!velm.message().contains(u"bytes are still here"), qPrintable(velm.message()));
}

QTEST_MAIN(TestWindowOpened)
#include "tst_window_opened.moc"
