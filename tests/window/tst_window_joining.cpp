// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/ImportSteps.h"

#include "exchange/RecordPart.h"
#include "files/OpenedFileWatch.h"
#include "inspect/ImageFacts.h"
#include "settings/SettingsKeys.h"
#include "support/FactsAtOnce.h"

#include "ui_OrderBox.h"
#include "ui_PartList.h"

/// Files come in whose bytes are in another order, or in several chips.
class TestWindowJoining : public QObject {
    Q_OBJECT

private slots:
    void init();
    void rawInAnotherOrder_becomesAFileOfTheProgramsOwn();
    void recordsInAnotherOrder_areTaken();
    void parts_areJoinedInTheOrderShown();
    void fourParts_areJoined();
    void partsThatDoNotFit_areNotJoined();
    void partOfRecords_isDecoded();
    void partOfDoubtfulRecords_isRefused_data();
    void partOfDoubtfulRecords_isRefused();
    void longName_leavesTheWindowItsSize();
    void sameFileTwice_isRefused();
    void writtenParts_areSaidUntilAllAreAsTheyWere();
    void partThatCannotBeRead_isSaid();
    void order_thatCannotBe_isSaid_data();
    void order_thatCannotBe_isSaid();
    void chipSize_isOffered();

private:
    std::unique_ptr<WindowFixture> velm_;
};

namespace {

QString crcWords(const QByteArray &bytes) {
    return crc32Digits(factsOf(bytes).crc32);
}

} // namespace

void TestWindowJoining::init() {
    velm_ = std::make_unique<WindowFixture>();
    qputenv("XDG_DATA_HOME", QFile::encodeName(velm_->path(QStringLiteral("data"))));
    velm_->start();
}

void TestWindowJoining::rawInAnotherOrder_becomesAFileOfTheProgramsOwn() {
    ImportWindow *window = chosen(*velm_, QStringLiteral("rom.bin"), "abcdefgh");
    const Ui::OrderBox &order = window->controls().order->controls();
    order.swap->setCurrentIndex(2);
    order.filled->setText(QStringLiteral("1"));
    QTRY_COMPARE(window->controls().outcome->text(),
                 QStringLiteral("In this order: 1,024 bytes, CRC-32 %1")
                     .arg(crcWords(QByteArray("dcbahgfe").repeated(128))));
    velm_->click(window->controls().importButton);
    QVERIFY(hasGone(*velm_));
    const QString kept = velm_->path(QStringLiteral("data/velm/rom.bin"));
    QCOMPARE(WindowFixture::bytesOf(kept), QByteArray("dcbahgfe").repeated(128));
    QCOMPARE(velm_->settings().stringValue(settingsKeys::binary), kept);
    QCOMPARE(WindowFixture::bytesOf(velm_->path(QStringLiteral("rom.bin"))),
             QByteArray("abcdefgh"));
}

void TestWindowJoining::recordsInAnotherOrder_areTaken() {
    ImportWindow *window =
        opened(*velm_, QStringLiteral("rom.hex"), ":040000000102038076\n:00000001FF\n");
    QVERIFY(window);
    const Ui::ImportWindow &c = window->controls();
    QTRY_COMPARE(c.outcome->text(),
                 QStringLiteral("CRC-32 of the binary: %1").arg(crcWords("\x01\x02\x03\x80")));
    c.order->controls().bits->setChecked(true);
    c.order->controls().swap->setCurrentIndex(1);
    velm_->click(c.importButton); // at once
    QVERIFY(hasGone(*velm_));
    QCOMPARE(*velm_->state().output_data, QByteArray("\x40\x80\x01\xC0"));
}

void TestWindowJoining::parts_areJoinedInTheOrderShown() {
    ImportWindow *window = chosen(*velm_, QStringLiteral("GAME.odd.bin"), "bdf");
    const Ui::ImportWindow &c = window->controls();
    const Ui::PartList &parts = c.parts->controls();
    QVERIFY(!c.parts->isVisible());
    c.order->controls().chips->setCurrentIndex(1);
    QVERIFY(c.parts->isVisible());
    QVERIFY(!c.importButton->isEnabled());
    QCOMPARE(c.result->text(), QStringLiteral("Parts: 1 of 2. Add the others."));
    velm_->panels.answer = velm_->write(QStringLiteral("GAME.even.bin"), "ace");
    emit parts.addButton->clicked();
    QCOMPARE(velm_->panels.lastParent, window);
    QTRY_COMPARE(parts.list->item(1)->text(),
                 QStringLiteral("odd: GAME.even.bin, 3 bytes, CRC-32 %1").arg(crcWords("ace")));
    emit parts.upButton->clicked();
    QTRY_COMPARE(parts.list->item(0)->text(),
                 QStringLiteral("even: GAME.even.bin, 3 bytes, CRC-32 %1").arg(crcWords("ace")));
    QCOMPARE(parts.list->item(1)->text(),
             QStringLiteral("odd: GAME.odd.bin, 3 bytes, CRC-32 %1").arg(crcWords("bdf")));
    QCOMPARE(c.outcome->text(),
             QStringLiteral("In this order: 6 bytes, CRC-32 %1").arg(crcWords("abcdef")));
    velm_->click(c.importButton);
    QVERIFY(hasGone(*velm_));
    QCOMPARE(WindowFixture::bytesOf(velm_->path(QStringLiteral("data/velm/GAME.bin"))),
             QByteArray("abcdef"));
    QCOMPARE(*velm_->state().output_data, QByteArray("abcdef"));
}

void TestWindowJoining::fourParts_areJoined() {
    ImportWindow *window = chosen(*velm_, QStringLiteral("GAME.0"), "ae");
    const Ui::ImportWindow &c = window->controls();
    c.order->controls().chips->setCurrentIndex(2);
    for (const char *bytes : {"bf", "cg", "xx", "dh"}) {
        velm_->panels.answer = velm_->write(QLatin1String(bytes), bytes);
        QVERIFY(c.parts->controls().addButton->isEnabled() || *bytes == 'd');
        emit c.parts->controls().addButton->clicked();
        if (*bytes == 'x') { // the wrong one
            QVERIFY(!c.parts->controls().addButton->isEnabled());
            emit c.parts->controls().removeButton->clicked();
        }
    }
    velm_->click(c.importButton);
    QVERIFY(hasGone(*velm_));
    QCOMPARE(*velm_->state().output_data, QByteArray("abcdefgh"));
}

void TestWindowJoining::partsThatDoNotFit_areNotJoined() {
    ImportWindow *window = chosen(*velm_, QStringLiteral("even.bin"), QByteArray(2000, 'e'));
    const Ui::ImportWindow &c = window->controls();
    c.order->controls().chips->setCurrentIndex(1);
    velm_->panels.answer = velm_->write(QStringLiteral("odd.bin"), QByteArray(1999, 'o'));
    emit c.parts->controls().addButton->clicked();
    QCOMPARE(c.result->text(), QStringLiteral("The parts have different lengths (2,000, 1,999 "
                                              "bytes), so nothing can be joined."));
    QVERIFY(!c.importButton->isEnabled());
    emit c.importButton->clicked(); // as assistive technology may
    velm_->settle();
    QVERIFY(!velm_->state().opened_bin_data);
    QVERIFY(!QFile::exists(velm_->path(QStringLiteral("data"))));
}

void TestWindowJoining::partOfRecords_isDecoded() {
    ImportWindow *window = chosen(*velm_, QStringLiteral("even.bin"), "ace");
    const Ui::ImportWindow &c = window->controls();
    c.order->controls().chips->setCurrentIndex(1);
    velm_->panels.answer =
        velm_->write(QStringLiteral("odd.hex"), ":03000000626466D1\n:00000001FF\n");
    emit c.parts->controls().addButton->clicked();
    QCOMPARE(c.parts->controls().list->count(), 2);
    velm_->click(c.importButton);
    QVERIFY(hasGone(*velm_));
    QTRY_VERIFY(velm_->state().opened_bin_data);
    QCOMPARE(*velm_->state().opened_bin_data, QByteArray("abcdef"));
}

void TestWindowJoining::writtenParts_areSaidUntilAllAreAsTheyWere() {
    ImportWindow *window = chosen(*velm_, QStringLiteral("even.bin"), "ace");
    const Ui::ImportWindow &c = window->controls();
    c.order->controls().chips->setCurrentIndex(1);
    velm_->panels.answer = velm_->write(QStringLiteral("odd.bin"), "bdf");
    emit c.parts->controls().addButton->clicked();
    const QString saidOfOdd = QStringLiteral("odd.bin has been written since it was imported.");
    velm_->write(QStringLiteral("odd.bin"), "written");
    velm_->click(c.importButton);
    QVERIFY(hasGone(*velm_));
    QTRY_VERIFY(velm_->message().contains(saidOfOdd));
    const QString said = QStringLiteral("even.bin has been written since it was imported.");
    velm_->write(QStringLiteral("even.bin"), "other");
    QTRY_VERIFY(velm_->message().contains(said));
    // One part alone is not what was imported.
    for (const auto *button : velm_->controls().messageLine->findChildren<QPushButton *>())
        QVERIFY(!button->isVisible() || button->text() != QStringLiteral("Import again"));
    OpenedFileWatch later;
    later.watch(velm_->path(QStringLiteral("odd.bin")));
    QSignalSpy heard(&later, &OpenedFileWatch::stateChanged);
    QVERIFY(QFile::remove(velm_->path(QStringLiteral("odd.bin"))));
    QVERIFY(heard.wait());
    QVERIFY2(velm_->message().contains(said), qPrintable(velm_->message()));
}

void TestWindowJoining::partOfDoubtfulRecords_isRefused_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("no bytes") << QByteArray(":00000001FF\n");
    QTest::newRow("wrong checksum") << QByteArray(":03000000626466D2\n:00000001FF\n");
    QTest::newRow("far too long an image") << QByteArray(":020000040100F9\n:0100000061"
                                                         "9E\n:020000040000FA\n:01000000"
                                                         "619E\n:00000001FF\n");
    QTest::newRow("too long a text")
        << QByteArray(":03000000626466D1\n:00000001FF\n") + QByteArray(largestPartText, '\n');
}

void TestWindowJoining::partOfDoubtfulRecords_isRefused() {
    QFETCH(QByteArray, text);
    ImportWindow *window = chosen(*velm_, QStringLiteral("even.bin"), "ace");
    const Ui::ImportWindow &c = window->controls();
    c.order->controls().chips->setCurrentIndex(1);
    velm_->panels.answer = velm_->write(QStringLiteral("odd.hex"), text);
    emit c.parts->controls().addButton->clicked();
    QCOMPARE(c.result->text(),
             QStringLiteral("odd.hex is text of records, and something about it must be asked. "
                            "Import it first, and add the binary that comes of it."));
    QCOMPARE(c.parts->controls().list->count(), 1);
}

void TestWindowJoining::longName_leavesTheWindowItsSize() {
    const QString longName(230, u'x');
    ImportWindow *window = chosen(*velm_, longName + QStringLiteral(".even.bin"), "ace");
    const Ui::ImportWindow &c = window->controls();
    c.order->controls().chips->setCurrentIndex(1);
    const int width = window->minimumSizeHint().width();
    QVERIFY2(width < 700, qPrintable(QString::number(width)));
    emit c.parts->controls().addButton->clicked();
    QVERIFY2(c.result->text().contains(longName), qPrintable(c.result->text()));
    QCOMPARE(window->minimumSizeHint().width(), width);
    velm_->panels.answer = velm_->write(longName + QStringLiteral(".odd.bin"), "bdf");
    emit c.parts->controls().addButton->clicked();
    QTRY_VERIFY(!c.outcome->text().isEmpty());
    QCOMPARE(window->minimumSizeHint().width(), width);
}

void TestWindowJoining::sameFileTwice_isRefused() {
    ImportWindow *window = chosen(*velm_, QStringLiteral("even.bin"), "ace");
    const Ui::ImportWindow &c = window->controls();
    c.order->controls().chips->setCurrentIndex(1);
    emit c.parts->controls().addButton->clicked(); // the panel answers as before
    QCOMPARE(c.result->text(), QStringLiteral("even.bin is one of the parts already."));
    QCOMPARE(c.parts->controls().list->count(), 1);
}

void TestWindowJoining::partThatCannotBeRead_isSaid() {
    ImportWindow *window = chosen(*velm_, QStringLiteral("even.bin"), "ace");
    const Ui::ImportWindow &c = window->controls();
    c.order->controls().chips->setCurrentIndex(1);
    velm_->panels.answer = velm_->path(QStringLiteral("missing.bin"));
    emit c.parts->controls().addButton->clicked();
    QVERIFY2(c.result->text().contains(u"could not be read"), qPrintable(c.result->text()));
    QCOMPARE(c.parts->controls().list->count(), 1);
}

void TestWindowJoining::order_thatCannotBe_isSaid_data() {
    QTest::addColumn<int>("swap");
    QTest::addColumn<QString>("filled");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("swap of an odd number")
        << 1 << QString()
        << QStringLiteral("Bytes can be swapped in groups of 2 only; 3 make no whole groups.");
    QTest::newRow("no whole repeats")
        << 0 << QStringLiteral("1")
        << QStringLiteral("3 bytes cannot be repeated to fill just 1 KiB.");
}

void TestWindowJoining::order_thatCannotBe_isSaid() {
    QFETCH(int, swap);
    QFETCH(QString, filled);
    ImportWindow *window = chosen(*velm_, QStringLiteral("rom.bin"), "abc");
    const Ui::ImportWindow &c = window->controls();
    c.order->controls().swap->setCurrentIndex(swap);
    c.order->controls().filled->setText(filled);
    QTEST(c.result->text(), "sentence");
    QVERIFY(!c.importButton->isEnabled());
    emit c.importButton->clicked();
    velm_->settle();
    QVERIFY(!velm_->state().opened_bin_data);
}

void TestWindowJoining::chipSize_isOffered() {
    velm_->useSimulator();
    velm_->settings().setValue(settingsKeys::device, QStringLiteral("W27C512@DIP28"));
    QTRY_VERIFY(velm_->controls().chipFacts->wholeText().contains(u"65,536"));
    ImportWindow *window = chosen(*velm_, QStringLiteral("rom.bin"), QByteArray(16'384, 'x'));
    const Ui::OrderBox &order = window->controls().order->controls();
    velm_->click(order.chipSize);
    QCOMPARE(order.filled->text(), QStringLiteral("64"));
    velm_->click(window->controls().importButton);
    QVERIFY(hasGone(*velm_));
    QCOMPARE(*velm_->state().output_data, QByteArray(65'536, 'x'));
}

QTEST_MAIN(TestWindowJoining)
#include "tst_window_joining.moc"
