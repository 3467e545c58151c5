// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "window/WindowFixture.h"

#include <QPushButton>

/// What a verdict advises, and the program can do itself, is a button beside it.
class TestWindowNextStep : public QObject {
    Q_OBJECT

private slots:
    void shortData_arePaddedToTheChip();
    void offer_goesWithWhatItWasAbout();
    void protection_isRemoved();
    void missingTool_isChosen();
    void difference_isShown();
    void failedRead_isReadAgain();
    void success_offersNothing();
};

namespace {

const QByteArray shortFile =
    "echo 'Incorrect file size: 5 (needed 2048, use -s/S to ignore)' >&2; exit 1";

/// The button beside the messages that says \a label; null if none does.
QPushButton *offer(WindowFixture &velm, const QString &label) {
    for (auto *button : velm.controls().messageLine->findChildren<QPushButton *>())
        if (button->isVisible() && button->text() == label)
            return button;
    return nullptr;
}

void openBinary(WindowFixture &velm, const QByteArray &bytes) {
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), bytes));
}

} // namespace

void TestWindowNextStep::shortData_arePaddedToTheChip() {
    WindowFixture velm;
    velm.useTool(shortFile);
    openBinary(velm, "bytes");
    velm.start();
    velm.click(velm.controls().btn_write);
    QPushButton *pad = offer(velm, QStringLiteral("Pad to 2 KiB"));
    QVERIFY2(pad, qPrintable(velm.message()));
    velm.click(pad);
    velm.settle();
    QCOMPARE(velm.controls().padToTextField->text(), QStringLiteral("2"));
    QVERIFY(velm.controls().btn_pad->isChecked());
    QCOMPARE(velm.state().output_data->size(), 2048);
    QCOMPARE(WindowFixture::bytesOf(velm.temporary(QStringLiteral("temp.bin"))).size(), 2048);
}

void TestWindowNextStep::offer_goesWithWhatItWasAbout() {
    WindowFixture velm;
    velm.useTool(shortFile);
    openBinary(velm, "bytes");
    velm.start();
    velm.click(velm.controls().btn_write);
    QVERIFY(offer(velm, QStringLiteral("Pad to 2 KiB")));
    velm.settings().setValue(settingsKeys::device, QStringLiteral("another"));
    QVERIFY(!offer(velm, QStringLiteral("Pad to 2 KiB")));
}

void TestWindowNextStep::protection_isRemoved() {
    WindowFixture velm;
    velm.useTool("echo 'This chip may be write-protected. Use -u and try again.' >&2; exit 1");
    openBinary(velm, "bytes");
    velm.start();
    velm.click(velm.controls().btn_write);
    QPushButton *remove = offer(velm, QStringLiteral("Remove write protection"));
    QVERIFY2(remove, qPrintable(velm.message()));
    velm.click(remove);
    QVERIFY(velm.controls().check_unprotect->isChecked());
}

void TestWindowNextStep::missingTool_isChosen() {
    WindowFixture velm;
    velm.setTool(velm.path(QStringLiteral("no such tool")));
    velm.start();
    velm.click(velm.controls().btn_read);
    QPushButton *choose = offer(velm, QStringLiteral("Choose the tool"));
    QVERIFY2(choose, qPrintable(velm.message()));
    velm.panels.answer = QStringLiteral("/opt/my tools/minipro");
    velm.click(choose);
    QCOMPARE(velm.panels.requests.last().kind, FilePanelRequest::Kind::Open);
    QCOMPARE(velm.controls().miniproLocationField->text(),
             QStringLiteral("'/opt/my tools/minipro'"));
}

void TestWindowNextStep::difference_isShown() {
    WindowFixture velm;
    velm.useTool(
        "echo 'Verification failed at address 0x1234: File=0x78, Device=0x81' >&2; exit 1");
    openBinary(velm, QByteArray(65536, 'x'));
    velm.start();
    velm.click(velm.controls().btn_verify);
    QPushButton *show = offer(velm, QStringLiteral("Show the difference"));
    QVERIFY2(show, qPrintable(velm.message()));
    velm.click(show);
    velm.settle();
    QCOMPARE(velm.controls().tabview->selectedTabViewItem().identifier, burnTabIdentifier());
    const QModelIndex current = velm.controls().tableview->currentIndex();
    QCOMPARE(QPoint(current.column(), current.row()), QPoint(1 + 4, 0x123));
}

void TestWindowNextStep::failedRead_isReadAgain() {
    WindowFixture velm;
    velm.useTool("echo 'IO error: bulk_transfer: LIBUSB_ERROR_NO_DEVICE' >&2; exit 1");
    velm.start();
    velm.click(velm.controls().btn_read);
    QPushButton *again = offer(velm, QStringLiteral("Read again"));
    QVERIFY2(again, qPrintable(velm.message()));
    velm.click(again);
    QCOMPARE(velm.velm().runs().size(), 2);
}

void TestWindowNextStep::success_offersNothing() {
    WindowFixture velm;
    velm.useTool("echo 'Reading Code...  0.47Sec  OK' >&2; echo 'Verification OK' >&2");
    openBinary(velm, "bytes");
    velm.start();
    velm.click(velm.controls().btn_verify);
    QVERIFY2(velm.message().startsWith(u"Done: "), qPrintable(velm.message()));
    for (auto *button : velm.controls().messageLine->findChildren<QPushButton *>())
        QVERIFY(!button->isVisible());
}

QTEST_MAIN(TestWindowNextStep)
#include "tst_window_next_step.moc"
