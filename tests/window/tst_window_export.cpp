// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"
#include "window/ExportSteps.h"

#include "support/AddressSpaceLimit.h"

/// Images go out as files of records.
class TestWindowExport : public QObject {
    Q_OBJECT

private slots:
    void init();
    void file_isAsChosen_data();
    void file_isAsChosen();
    void panel_suggestsAnEndingForTheFormat_data();
    void panel_suggestsAnEndingForTheFormat();
    void nonsense_isSaidAndNotWritten_data();
    void nonsense_isSaidAndNotWritten();
    void recordLength_isBoundedByTheFormat();
    void textThatIsTooLong_isRefused();
    void textWithoutMemory_isSaid();
    void readData_areOfferedOnTheirTab();
    void openCell_isCommittedFirst();
    void exportOfTheWholeImage_savesTheEdits_data();
    void exportOfTheWholeImage_savesTheEdits();
    void cancelledPanel_writesNothingAndKeepsTheWindow();
    void keys_exportAndCancel();
    void failure_isSaid();
    void entry_bringsTheOpenWindowBack();
    void whileTheToolRuns_nothingIsExported();

private:
    ExportWindow *exportWindow();
    /// The file after Export was pressed, or null if there is none.
    QByteArray exported();

    std::unique_ptr<WindowFixture> velm_;
};

namespace {

constexpr const char *image = "0123456789ABCDEFGHIJ";

} // namespace

void TestWindowExport::init() {
    velm_ = std::make_unique<WindowFixture>();
    showTwentyBytes(*velm_);
    velm_->panels.answer = velm_->path(QStringLiteral("out"));
}

ExportWindow *TestWindowExport::exportWindow() {
    return ::exportWindow(*velm_);
}

QByteArray TestWindowExport::exported() {
    velm_->click(exportWindow()->controls().exportButton);
    return exportHasEnded(*velm_) ? WindowFixture::bytesOf(velm_->panels.answer) : QByteArray();
}

void TestWindowExport::file_isAsChosen_data() {
    QTest::addColumn<int>("format");
    QTest::addColumn<QStringList>("fields"); // first, last, offset
    QTest::addColumn<int>("recordLength");
    QTest::addColumn<QString>("result");
    QTest::addColumn<QByteArray>("content");
    const auto row = [](const char *name, int format, const char *fields, int recordLength,
                        const char *result, const QByteArray &content) {
        QTest::newRow(name) << format << QString::fromLatin1(fields).split(u' ') << recordLength
                            << QString::fromLatin1(result) << content;
    };
    row("Intel HEX", 0, "0  0", 16,
        "The file will have 20 bytes, at the addresses from 0000 to 0013.",
        ":10000000303132333435363738394142434445464E\n:040010004748494ACA\n:00000001FF\n");
    row("a range of Intel HEX, elsewhere", 0, "4 7 8000", 2,
        "The file will have 4 bytes, at the addresses from 8004 to 8007.",
        ":02800400343511\n:0280060036370B\n:00000001FF\n");
    row("S-records", 1, "10  0", 16,
        "The file will have 4 bytes, at the addresses from 0010 to 0013.",
        "S0030000FC\nS10700104748494AC6\nS5030001FB\nS9030000FC\n");
    row("S-records at far addresses", 1, "#16 #19 FFFFFFEC", 16,
        "The file will have 4 bytes, at the addresses from FFFFFFFC to FFFFFFFF.",
        "S0030000FC\nS309FFFFFFFC4748494ADB\nS5030001FB\nS70500000000FA\n");
    row("raw", 2, "0  0", 16, "The file will have 20 bytes.", image);
    row("a range of raw", 2, "1 1 0", 16, "The file will have 1 byte.", "1");
}

void TestWindowExport::file_isAsChosen() {
    QFETCH(int, format);
    QFETCH(QStringList, fields);
    QFETCH(int, recordLength);
    QFETCH(QByteArray, content);
    const Ui::ExportWindow &c = exportWindow()->controls();
    c.format->setCurrentIndex(format);
    c.first->setText(fields[0]);
    c.last->setText(fields[1]);
    c.offset->setText(fields[2]);
    c.recordLength->setValue(recordLength);
    QTEST(c.result->text(), "result");
    QCOMPARE(exported(), content);
    QVERIFY(velm_->message().contains(u"Saved"));
}

void TestWindowExport::panel_suggestsAnEndingForTheFormat_data() {
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("name");
    QTest::newRow("Intel HEX") << 0 << QStringLiteral("AT28C256_28.hex");
    QTest::newRow("S-records") << 1 << QStringLiteral("AT28C256_28.srec");
    QTest::newRow("raw") << 2 << QStringLiteral("AT28C256_28.bin");
}

void TestWindowExport::panel_suggestsAnEndingForTheFormat() {
    QFETCH(int, format);
    velm_->settings().setValue(settingsKeys::device, QStringLiteral("AT28C256 28"));
    exportWindow()->controls().format->setCurrentIndex(format);
    exported();
    QTEST(velm_->panels.requests.last().suggestedName, "name");
    QCOMPARE(velm_->panels.lastParent, &velm_->velm().window());
}

void TestWindowExport::nonsense_isSaidAndNotWritten_data() {
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QString>("result");
    const QString noBytes = QStringLiteral("The image has no such bytes: it ends at 0013.");
    const QString addresses = QStringLiteral("The addresses would not be between 0 and FFFFFFFF.");
    const auto row = [](const char *name, const char *fields, const QString &result) {
        QTest::newRow(name) << QString::fromLatin1(fields).split(u' ') << result;
    };
    row("behind the end", "14  0", noBytes);
    row("an end behind the end", "0 14 0", noBytes);
    row("the wrong way round", "5 4 0", noBytes);
    row("no number", "x  0", noBytes);
    row("from the cursor", "+1  0", noBytes);
    row("addresses past the end", "0  FFFFFFF0", addresses);
    row("an offset that is none", "0  x", addresses);
}

void TestWindowExport::nonsense_isSaidAndNotWritten() {
    QFETCH(QStringList, fields);
    ExportWindow *window = exportWindow();
    const Ui::ExportWindow &c = window->controls();
    c.first->setText(fields[0]);
    c.last->setText(fields[1]);
    c.offset->setText(fields[2]);
    QTEST(c.result->text(), "result");
    QVERIFY(!c.exportButton->isEnabled());
    emit c.exportButton->clicked(); // as assistive technology may
    velm_->settle();
    QVERIFY(velm_->panels.requests.isEmpty());
}

void TestWindowExport::recordLength_isBoundedByTheFormat() {
    const Ui::ExportWindow &c = exportWindow()->controls();
    QCOMPARE(c.recordLength->maximum(), 255);
    c.format->setCurrentIndex(1);
    QCOMPARE(c.recordLength->maximum(), 252);
    c.offset->setText(QStringLiteral("1000000"));
    QCOMPARE(c.recordLength->maximum(), 250);
    c.format->setCurrentIndex(2);
    QVERIFY(!c.recordLength->isEnabled());
}

void TestWindowExport::textThatIsTooLong_isRefused() {
    const QString large = velm_->write(QStringLiteral("large.bin"), "");
    QVERIFY(QFile::resize(large, qint64(256) << 20)); // holes take no room on the disk
    velm_->delegate().openBinary(large);
    const Ui::ExportWindow &c = exportWindow()->controls();
    QVERIFY(c.exportButton->isEnabled());
    c.recordLength->setValue(1);
    QCOMPARE(c.result->text(), QStringLiteral("The file would have more than 3 GiB; longer records "
                                              "make it shorter."));
    QVERIFY(!c.exportButton->isEnabled());
}

void TestWindowExport::textWithoutMemory_isSaid() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizers need their address space");
    const QString large = velm_->write(QStringLiteral("large.bin"), "");
    QVERIFY(QFile::resize(large, qint64(128) << 20));
    velm_->delegate().openBinary(large);
    const Ui::ExportWindow &c = exportWindow()->controls();
    const AddressSpaceLimit limit(rlim_t(64) << 20);
    velm_->click(c.exportButton);
    QTRY_COMPARE(c.result->text(), QStringLiteral("There is not enough memory for this file."));
    QVERIFY(c.exportButton->isEnabled());
    QVERIFY(velm_->panels.requests.isEmpty());
}

void TestWindowExport::readData_areOfferedOnTheirTab() {
    velm_->controls().tabview->selectTabViewItem(QStringLiteral("0"));
    const Ui::ExportWindow &c = exportWindow()->controls();
    QCOMPARE(c.image->currentText(), QStringLiteral("Data read from chip"));
    QCOMPARE(c.result->text(), QStringLiteral("There are no bytes to export."));
    QVERIFY(!c.exportButton->isEnabled());
    velm_->useTool(
        "while [ $# -gt 0 ]; do [ \"$1\" = -r ] && printf 'read' > \"$2\"; shift; done\n");
    velm_->click(velm_->controls().btn_read);
    QTRY_COMPARE(lengthOf(velm_->state().read_from_chip_data), 4);
    QCOMPARE(c.result->text(),
             QStringLiteral("The file will have 4 bytes, at the addresses from 0000 to 0003."));
    c.format->setCurrentIndex(2);
    QCOMPARE(exported(), QByteArray("read"));
}

void TestWindowExport::openCell_isCommittedFirst() {
    exportWindow()->controls().format->setCurrentIndex(2);
    GridView *grid = velm_->controls().tableview;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, 1));
    QTest::keyClick(grid, Qt::Key_7);
    QTest::keyClick(grid->entries().editor(), Qt::Key_A);
    emit exportWindow()->controls().exportButton->clicked();
    QTRY_COMPARE(WindowFixture::bytesOf(velm_->panels.answer), QByteArray("z123456789ABCDEFGHIJ"));
}

void TestWindowExport::exportOfTheWholeImage_savesTheEdits_data() {
    QTest::addColumn<QString>("first");
    QTest::addColumn<bool>("closes");
    QTest::newRow("the whole image") << QStringLiteral("0") << true;
    QTest::newRow("a part of it") << QStringLiteral("1") << false;
}

void TestWindowExport::exportOfTheWholeImage_savesTheEdits() {
    QFETCH(QString, first);
    enter(*velm_, 0, 1, QStringLiteral("7A"));
    exportWindow()->controls().first->setText(first);
    QVERIFY(!exported().isEmpty());
    velm_->velm().window().close();
    QTEST(!velm_->velm().window().isVisible(), "closes");
}

void TestWindowExport::cancelledPanel_writesNothingAndKeepsTheWindow() {
    velm_->panels.answer.clear();
    velm_->click(exportWindow()->controls().exportButton);
    QTRY_COMPARE(velm_->panels.requests.size(), 1);
    velm_->settle();
    QVERIFY(exportWindow()->isVisible());
    QVERIFY(exportWindow()->controls().exportButton->isEnabled());
}

void TestWindowExport::keys_exportAndCancel() {
    ExportWindow *window = exportWindow();
    QCOMPARE(window->focusWidget(), window->controls().format);
    QTest::keyClick(window->controls().format, Qt::Key_Escape);
    QTRY_VERIFY(!velm_->velm().window().findChild<ExportWindow *>());
    window = exportWindow();
    QTest::keyClick(window->controls().first, Qt::Key_Return);
    QTRY_VERIFY(!velm_->velm().window().findChild<ExportWindow *>());
    QVERIFY(QFile::exists(velm_->panels.answer));
}

void TestWindowExport::failure_isSaid() {
    velm_->panels.answer = velm_->path(QStringLiteral("missing/out"));
    velm_->click(exportWindow()->controls().exportButton);
    QTRY_VERIFY2(velm_->message().contains(u"could not be written"), qPrintable(velm_->message()));
    QVERIFY(exportWindow()->isVisible());
}

void TestWindowExport::entry_bringsTheOpenWindowBack() {
    ExportWindow *window = exportWindow();
    window->showMinimized();
    for (QMenu *menu : velm_->velm().window().menuBar()->findChildren<QMenu *>())
        for (QAction *action : menu->actions())
            if (action->text() == QStringLiteral("E&xport\u2026"))
                action->trigger();
    QTRY_VERIFY(!window->isMinimized());
    QCOMPARE(velm_->velm().window().findChildren<ExportWindow *>().size(), 1);
    velm_->click(window->controls().cancelButton);
    QTRY_VERIFY(!velm_->velm().window().findChild<ExportWindow *>());
}

void TestWindowExport::whileTheToolRuns_nothingIsExported() {
    ExportWindow *window = exportWindow();
    velm_->useTool("while :; do sleep 1; done\n");
    velm_->whileBusy([&] {
        velm_->click(window->controls().exportButton);
        QTRY_VERIFY(velm_->message().contains(u"is running"));
        velm_->click(velm_->controls().btn_stop);
    });
    velm_->click(velm_->controls().btn_read);
    QVERIFY(velm_->panels.requests.isEmpty());
}

QTEST_MAIN(TestWindowExport)
#include "tst_window_export.moc"
