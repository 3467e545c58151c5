// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"
#include "window/ExportSteps.h"

#include "formats/RecordReader.h"
#include "inspect/ImageFacts.h"
#include "settings/FilePaths.h"
#include "support/AddressSpaceLimit.h"
#include "support/FactsAtOnce.h"
#include "support/SpokenWords.h"
#include "widgets/WrappingLabel.h"

#include "ui_OrderBox.h"

#include <QClipboard>
#include <QDir>

/// Images go out in another order, and for several chips.
class TestWindowSplitting : public QObject {
    Q_OBJECT

private slots:
    void init();
    void halves_areWrittenAndTold();
    void fourParts_inAnotherOrder();
    void partsOfRecords_areReadBack_data();
    void partsOfRecords_areReadBack();
    void range_isSplit();
    void eachPart_fillsItsChip();
    void lowByteLast_isOnTheLabels();
    void labels_areCopied();
    void filesThatAreThere_areNamedAndAskedFor();
    void folderThatCannotBeLookedInto_isToldAsItIs();
    void fileThatComesMeanwhile_staysAndNothingIsWritten();
    void folderInTheWay_leavesEverything();
    void missingFolder_isSaid();
    void nameWithoutAFolder_isSaid();
    void endlessName_leavesTheWindowItsSize();
    void offeredName_isInTheHomeOfTheAccount();
    void oddLength_isSaid();
    void name_isChosenInAPanel();
    void orderAlone_goesIntoOneFile();
    void edit_isToldInTheChecksum();
    void splitOfTheWholeImage_savesTheEdits();
    void whileTheToolRuns_nothingIsWritten();
    void withoutMemory_isSaid();
    void controls_haveNamesToolTipsAndMnemonics();

private:
    ExportWindow *window();
    /// The window with the split \a chips chosen, as raw bytes, and the files named "out/GAME".
    ExportWindow *splitWindow(int chips);
    bool exported();
    QByteArray out(const char *name) const {
        return WindowFixture::bytesOf(velm_->path(QStringLiteral("out/") + QLatin1String(name)));
    }
    QStringList outFiles() const {
        return QDir(velm_->path(QStringLiteral("out")))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    std::unique_ptr<WindowFixture> velm_;
};

namespace {

const QByteArray image = "0123456789ABCDEFGHIJ";
const QByteArray evenBytes = "02468ACEGI";
const QByteArray oddBytes = "13579BDFHJ";

QString crcWords(const QByteArray &bytes) {
    return crc32Digits(factsOf(bytes).crc32);
}

char bitsTurned(char byte) {
    uint turned = 0;
    for (int bit = 0; bit < 8; ++bit)
        turned |= (uint(byte) >> bit & 1) << (7 - bit);
    return char(turned);
}

const QStringList halfNames = {QStringLiteral("GAME.even.bin"), QStringLiteral("GAME.odd.bin")};

} // namespace

void TestWindowSplitting::init() {
    velm_ = std::make_unique<WindowFixture>();
    showTwentyBytes(*velm_);
    QVERIFY(QDir().mkpath(velm_->path(QStringLiteral("out"))));
}

ExportWindow *TestWindowSplitting::window() {
    return exportWindow(*velm_);
}

ExportWindow *TestWindowSplitting::splitWindow(int chips) {
    Ui::ExportWindow &c = window()->controls();
    c.format->setCurrentIndex(2);
    c.order->controls().chips->setCurrentIndex(chips);
    c.name->setText(velm_->path(QStringLiteral("out/GAME")));
    return window();
}

bool TestWindowSplitting::exported() {
    velm_->click(window()->controls().exportButton);
    return exportHasEnded(*velm_);
}

void TestWindowSplitting::halves_areWrittenAndTold() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    QCOMPARE(c.result->text(), QStringLiteral("Each of the 2 files will have 10 bytes."));
    const QStringList labels = {
        QStringLiteral("GAME even, low byte, CRC-32 %1, 10 bytes").arg(crcWords(evenBytes)),
        QStringLiteral("GAME odd, high byte, CRC-32 %1, 10 bytes").arg(crcWords(oddBytes)),
        QStringLiteral("As in the image: 20 bytes, CRC-32 %1").arg(crcWords(image))};
    QTRY_COMPARE(c.labels->toPlainText().split(u'\n'), labels);
    QVERIFY(exported());
    QCOMPARE(outFiles(), halfNames);
    QCOMPARE(out("GAME.even.bin"), evenBytes);
    QCOMPARE(out("GAME.odd.bin"), oddBytes);
    QCOMPARE(velm_->message(),
             QStringLiteral("Done: Saved in %1: GAME.even.bin, GAME.odd.bin. %2")
                 .arg(velm_->path(QStringLiteral("out")), labels.join(QStringLiteral("; "))));
    QVERIFY(velm_->panels.requests.isEmpty());
}

void TestWindowSplitting::fourParts_inAnotherOrder() {
    const Ui::OrderBox &order = splitWindow(2)->controls().order->controls();
    order.swap->setCurrentIndex(1);
    order.bits->setChecked(true);
    QVERIFY(exported());
    QCOMPARE(outFiles().size(), 4);
    QByteArray ordered;
    for (qsizetype i = 0; i < image.size(); i += 2)
        for (const char byte : {image[i + 1], image[i]})
            ordered.append(bitsTurned(byte));
    for (int part = 0; part < 4; ++part) {
        QByteArray bytes;
        for (qsizetype i = part; i < ordered.size(); i += 4)
            bytes.append(ordered[i]);
        QCOMPARE(out(qPrintable(QStringLiteral("GAME.%1.bin").arg(part))), bytes);
    }
}

void TestWindowSplitting::partsOfRecords_areReadBack_data() {
    QTest::addColumn<int>("format");
    QTest::addColumn<RecordFormat>("records");
    QTest::addColumn<QString>("ending");
    QTest::newRow("Intel HEX") << 0 << RecordFormat::IntelHex << QStringLiteral("hex");
    QTest::newRow("S-records") << 1 << RecordFormat::SRecord << QStringLiteral("srec");
}

void TestWindowSplitting::partsOfRecords_areReadBack() {
    QFETCH(int, format);
    QFETCH(RecordFormat, records);
    QFETCH(QString, ending);
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    c.format->setCurrentIndex(format);
    c.recordLength->setValue(4);
    c.offset->setText(QStringLiteral("8000"));
    QCOMPARE(c.result->text(), QStringLiteral("Each of the 2 files will have 10 bytes, at the "
                                              "addresses from 8000 to 8009."));
    QVERIFY(exported());
    const QList<std::pair<QString, QByteArray>> parts = {{QStringLiteral("even"), evenBytes},
                                                         {QStringLiteral("odd"), oddBytes}};
    for (const auto &[name, bytes] : parts) {
        const QByteArray text = out(qPrintable(QStringLiteral("GAME.%1.%2").arg(name, ending)));
        RecordReader reader(records);
        QVERIFY(reader.advance(text, text.size()));
        QCOMPARE(reader.decoded().troubles.total(), 0);
        QCOMPARE(reader.decoded().bytes.pieces(), (AddressedBytes::Pieces{{0x8000, bytes}}));
    }
}

void TestWindowSplitting::range_isSplit() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    c.first->setText(QStringLiteral("1"));
    c.last->setText(QStringLiteral("4"));
    QVERIFY(exported());
    QCOMPARE(out("GAME.even.bin"), QByteArray("13"));
    QCOMPARE(out("GAME.odd.bin"), QByteArray("24"));
}

void TestWindowSplitting::eachPart_fillsItsChip() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    c.last->setText(QStringLiteral("F"));
    c.order->controls().filled->setText(QStringLiteral("2"));
    QCOMPARE(c.result->text(), QStringLiteral("Each of the 2 files will have 2,048 bytes."));
    QTRY_VERIFY(c.labels->toPlainText().contains(u"2716 2 KiB"));
    QVERIFY(exported());
    QCOMPARE(out("GAME.even.bin"), evenBytes.first(8).repeated(256));
    QCOMPARE(out("GAME.odd.bin"), oddBytes.first(8).repeated(256));
}

void TestWindowSplitting::lowByteLast_isOnTheLabels() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    c.order->controls().lowByte->setCurrentIndex(1);
    QTRY_VERIFY(c.labels->toPlainText().startsWith(u"GAME even, high byte"));
    QVERIFY(exported());
    QCOMPARE(out("GAME.even.bin"), evenBytes);
}

void TestWindowSplitting::labels_areCopied() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    QTRY_VERIFY(c.copyButton->isEnabled());
    const QString labels = c.labels->toPlainText();
    velm_->click(c.copyButton);
    QCOMPARE(QGuiApplication::clipboard()->text(), labels);
}

void TestWindowSplitting::filesThatAreThere_areNamedAndAskedFor() {
    velm_->write(QStringLiteral("out/GAME.odd.bin"), "older");
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    QCOMPARE(c.result->text(), QStringLiteral("Already there: GAME.odd.bin."));
    QVERIFY(!c.exportButton->isEnabled());
    emit c.exportButton->clicked(); // as assistive technology may
    velm_->settle();
    QCOMPARE(outFiles(), QStringList(QStringLiteral("GAME.odd.bin")));
    QCOMPARE(out("GAME.odd.bin"), QByteArray("older"));
    QVERIFY(c.replace->isVisible());
    c.replace->setChecked(true);
    c.name->setText(c.name->text() + u'2'); // which is another question
    QVERIFY(!c.replace->isVisible());
    c.name->setText(velm_->path(QStringLiteral("out/GAME")));
    QVERIFY(!c.replace->isChecked());
    c.replace->setChecked(true);
    QVERIFY(exported());
    QCOMPARE(outFiles(), halfNames);
    QCOMPARE(out("GAME.odd.bin"), oddBytes);
}

void TestWindowSplitting::folderThatCannotBeLookedInto_isToldAsItIs() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    const QString loop = velm_->path(QStringLiteral("out/loop"));
    QVERIFY(QFile::link(loop, loop));
    c.name->setText(loop + QStringLiteral("/GAME"));
    QCOMPARE(c.result->text(),
             QStringLiteral("%1/GAME.even.bin cannot be looked at: Too many levels of symbolic "
                            "links.")
                 .arg(loop));
    QVERIFY(!c.replace->isVisible());
    QVERIFY(!c.exportButton->isEnabled());
}

void TestWindowSplitting::fileThatComesMeanwhile_staysAndNothingIsWritten() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    QTRY_VERIFY(c.copyButton->isEnabled());
    velm_->write(QStringLiteral("out/GAME.odd.bin"), "meanwhile");
    velm_->click(c.exportButton);
    QCOMPARE(c.result->text(), QStringLiteral("Already there: GAME.odd.bin."));
    QCOMPARE(outFiles(), QStringList(QStringLiteral("GAME.odd.bin")));
    QCOMPARE(out("GAME.odd.bin"), QByteArray("meanwhile"));
}

void TestWindowSplitting::folderInTheWay_leavesEverything() {
    velm_->write(QStringLiteral("out/GAME.even.bin"), "older");
    QVERIFY(QDir().mkpath(velm_->path(QStringLiteral("out/GAME.odd.bin/inside"))));
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    QCOMPARE(c.result->text(), QStringLiteral("Already there: GAME.even.bin, GAME.odd.bin."));
    c.replace->setChecked(true);
    const SpokenWords speaker;
    velm_->click(c.exportButton);
    const QString problem =
        QStringLiteral("Nothing was saved, since %1 could not be written: Not a "
                       "regular file.")
            .arg(velm_->path(QStringLiteral("out/GAME.odd.bin")));
    QTRY_COMPARE(c.result->text(), problem);
    QCOMPARE(speaker.spoken.count(problem), 1);
    QCOMPARE(velm_->message(), QStringLiteral("Problem: ") + problem);
    QCOMPARE(outFiles(), halfNames);
    QCOMPARE(out("GAME.even.bin"), QByteArray("older"));
    QVERIFY(window()->isVisible());
}

void TestWindowSplitting::missingFolder_isSaid() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    c.name->setText(velm_->path(QStringLiteral("missing/GAME")));
    velm_->click(c.exportButton);
    QTRY_VERIFY2(c.result->text().contains(u"No such file or directory"),
                 qPrintable(c.result->text()));
    QVERIFY(window()->isVisible());
}

void TestWindowSplitting::nameWithoutAFolder_isSaid() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    for (const char *name : {"", "GAME", "/"}) {
        c.name->setText(QLatin1String(name));
        QVERIFY2(c.result->text().startsWith(u"The name of the files must begin"), name);
        QVERIFY(!c.exportButton->isEnabled());
    }
}

void TestWindowSplitting::endlessName_leavesTheWindowItsSize() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    const int width = window()->minimumSizeHint().width();
    c.name->setText(velm_->path(QStringLiteral("out/")) + QString(20'000, u'x'));
    QTRY_VERIFY(c.copyButton->isEnabled());
    const QStringList labels = c.labels->toPlainText().split(u'\n');
    QVERIFY2(labels.first().startsWith(u"xxx") && labels.first().size() < 1100,
             qPrintable(labels.first()));
    QVERIFY2(labels.first().contains(u" even, "), qPrintable(labels.first()));
    velm_->click(c.exportButton);
    const auto said = [&c] { return c.result->text(); };
    QTRY_VERIFY2(said().startsWith(u"Nothing was saved, since "), qPrintable(said()));
    QVERIFY2(said().endsWith(u"File name too long."), qPrintable(said()));
    QVERIFY2(said().size() <= longestRemark, qPrintable(said()));
    QCOMPARE(window()->minimumSizeHint().width(), width);
}

void TestWindowSplitting::offeredName_isInTheHomeOfTheAccount() {
    const QByteArray home = qgetenv("HOME");
    qunsetenv("HOME"); // as in the environment of a service
    const QString offered = homeFolder() + QStringLiteral("/rom");
    const Ui::ExportWindow &c = window()->controls();
    qputenv("HOME", home);
    c.format->setCurrentIndex(2);
    c.order->controls().chips->setCurrentIndex(1);
    QCOMPARE(c.name->text(), offered);
    c.name->clear();
    QCOMPARE(c.result->text(),
             QStringLiteral("The name of the files must begin with their folder, as in %1.")
                 .arg(offered));
}

void TestWindowSplitting::oddLength_isSaid() {
    const Ui::ExportWindow &c = splitWindow(2)->controls();
    c.last->setText(QStringLiteral("12"));
    QCOMPARE(c.result->text(),
             QStringLiteral("19 bytes cannot be split into 4 parts of the same length."));
    QVERIFY(!c.exportButton->isEnabled());
    QVERIFY(!c.copyButton->isEnabled());
    emit c.exportButton->clicked();
    velm_->settle();
    QVERIFY(outFiles().isEmpty());
}

void TestWindowSplitting::name_isChosenInAPanel() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    velm_->panels.answer = velm_->path(QStringLiteral("out/OTHER.bin"));
    velm_->click(c.chooseButton);
    const FilePanelRequest request = velm_->panels.requests.value(0);
    QVERIFY(!request.isWholeName);
    QCOMPARE(request.suggestedName, velm_->path(QStringLiteral("out/GAME")));
    QCOMPARE(velm_->panels.lastParent, window());
    QVERIFY(exported());
    QCOMPARE(outFiles(),
             QStringList({QStringLiteral("OTHER.even.bin"), QStringLiteral("OTHER.odd.bin")}));
}

void TestWindowSplitting::orderAlone_goesIntoOneFile() {
    const Ui::ExportWindow &c = splitWindow(0)->controls();
    QVERIFY(!c.nameRow->isVisible());
    c.order->controls().swap->setCurrentIndex(2);
    const QByteArray swapped = "32107654BA98FEDCJIHG";
    QTRY_COMPARE(c.labels->toPlainText(),
                 QStringLiteral("In this order: 20 bytes, CRC-32 %1\nAs in the image: 20 bytes, "
                                "CRC-32 %2")
                     .arg(crcWords(swapped), crcWords(image)));
    velm_->panels.answer = velm_->path(QStringLiteral("out/one"));
    QVERIFY(exported());
    QCOMPARE(out("one"), swapped);
}

void TestWindowSplitting::edit_isToldInTheChecksum() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    QTRY_VERIFY(c.labels->toPlainText().contains(crcWords(image)));
    enter(*velm_, 0, 1, QStringLiteral("7A"));
    QTRY_VERIFY(c.labels->toPlainText().contains(crcWords("z123456789ABCDEFGHIJ")));
    QVERIFY(exported());
    QCOMPARE(out("GAME.even.bin"), QByteArray("z2468ACEGI"));
}

void TestWindowSplitting::splitOfTheWholeImage_savesTheEdits() {
    enter(*velm_, 0, 1, QStringLiteral("7A"));
    splitWindow(1);
    QVERIFY(exported());
    velm_->velm().window().close();
    QVERIFY(!velm_->velm().window().isVisible());
}

void TestWindowSplitting::whileTheToolRuns_nothingIsWritten() {
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    QTRY_VERIFY(c.copyButton->isEnabled());
    velm_->useTool("while :; do sleep 1; done\n");
    velm_->whileBusy([&] {
        velm_->click(c.exportButton);
        QTRY_VERIFY(velm_->message().contains(u"is running"));
        velm_->click(velm_->controls().btn_stop);
    });
    velm_->click(velm_->controls().btn_read);
    QVERIFY(outFiles().isEmpty());
}

void TestWindowSplitting::withoutMemory_isSaid() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizers need their address space");
    const QString large = velm_->write(QStringLiteral("large.bin"), "");
    QVERIFY(QFile::resize(large, qint64(128) << 20));
    velm_->delegate().openBinary(large);
    const AddressSpaceLimit limit(rlim_t(64) << 20);
    const Ui::ExportWindow &c = splitWindow(1)->controls();
    QTRY_COMPARE(c.result->text(), QStringLiteral("There is not enough memory for this file."));
    velm_->click(c.exportButton);
    QTRY_COMPARE(c.result->text(), QStringLiteral("There is not enough memory for this file."));
    QVERIFY(outFiles().isEmpty());
}

void TestWindowSplitting::controls_haveNamesToolTipsAndMnemonics() {
    const ExportWindow *shown = splitWindow(1);
    QStringList letters;
    for (const QWidget *widget : shown->findChildren<QWidget *>()) {
        const QString text = widget->property("text").toString();
        if (const qsizetype at = text.indexOf(u'&'); at >= 0)
            letters << text.mid(at + 1, 1).toUpper();
        if (widget->window() != shown || widget->focusPolicy() == Qt::NoFocus ||
            widget->objectName().startsWith(u"qt_"))
            continue;
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(!widget->toolTip().isEmpty(), qPrintable(widget->objectName()));
    }
    QVERIFY(letters.size() > 15);
    QCOMPARE(letters.removeDuplicates(), 0);
}

QTEST_MAIN(TestWindowSplitting)
#include "tst_window_splitting.moc"
