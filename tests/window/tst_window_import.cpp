// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/ImportSteps.h"

#include "files/OpenedFileWatch.h"
#include "settings/SettingsKeys.h"
#include "support/AddressSpaceLimit.h"
#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/SpokenWords.h"

#include <QDragEnterEvent>
#include <QMimeData>

#include <cerrno>

/// Files of records come in.
class TestWindowImport : public QObject {
    Q_OBJECT

private slots:
    void init();
    void whatAKilledImportLeft_isGoneAtTheNextStart();
    void entry_asksAndShowsWhatWasFound();
    void import_opensAFileOfTheProgramsOwn();
    void import_survivesARestart();
    void sourceWrittenSince_isSaid();
    void sourceWrittenBeforeTheImport_isSaid();
    void sourceWrittenSince_isSaidBesideTheBinary();
    void sourceOfAnEarlierBinary_isForgotten();
    void import_keepsWhatAnotherFileOfThatNameGave();
    void choices_decideTheBytes();
    void troubles_areShownAndHeldBack_data();
    void troubles_areShownAndHeldBack();
    void takenAllTheSame_theLaterBytesCount();
    void cancel_changesNothing();
    void keys_importAndCancel();
    void raw_opensTheFileItself();
    void openedText_offersToImportIt();
    void unreadableFile_isSaid();
    void dataHomeThatCannotBeWritten_isSaid();
    void folderThatCannotBeMade_isSaid();
    void fileToOpen_isShownIfTheToolWouldDecodeIt();
    void drop_onTheSidePanelOpens();
    void drop_ofSomethingElseIsNotTaken();
    void manyRecords_leaveTheEventLoopTurning();
    void imageWithoutMemory_isSaid();
    void whileTheToolRuns_nothingIsImported();
    void controls_haveNamesAndToolTips();

private:
    QAbstractButton *messageButton(const QString &text);

    std::unique_ptr<WindowFixture> velm_;
};

namespace {

const QByteArray hexFile = ":02001000AABB89\n:01001400CC1F\n:00000001FF\n";

/// The button of the message line that offers to import the opened file; null if there is none.
QPushButton *importOffer(WindowFixture &velm) {
    for (auto *button : velm.controls().messageLine->findChildren<QPushButton *>())
        if (button->isVisible() && button->text() == QStringLiteral("Import\u2026"))
            return button;
    return nullptr;
}

QStringList foundLines(const ImportWindow &window) {
    return const_cast<ImportWindow &>(window).controls().found->toPlainText().split(u'\n');
}

/// What a file manager does that drags \a urls over the middle of \a area, and lets go there if
/// \a drops. True if the drag was taken.
bool drag(QWidget *area, const QList<QUrl> &urls, bool drops) {
    QMimeData data;
    data.setUrls(urls);
    const QPoint middle = area->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(area, &enter);
    if (drops) {
        QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(area, &drop);
    }
    return enter.isAccepted();
}

} // namespace

void TestWindowImport::init() {
    velm_ = std::make_unique<WindowFixture>();
    qputenv("XDG_DATA_HOME", QFile::encodeName(velm_->path(QStringLiteral("data"))));
    velm_->start();
}

// The button of that text in the main window; null if there is none to be seen.
QAbstractButton *TestWindowImport::messageButton(const QString &text) {
    for (auto *button : velm_->velm().window().findChildren<QAbstractButton *>())
        if (button->isVisible() && button->text().remove(u'&') == text)
            return button;
    return nullptr;
}

void TestWindowImport::entry_asksAndShowsWhatWasFound() {
    velm_->panels.answer = velm_->write(QStringLiteral("rom.hex"), hexFile + ":00000001FF\n");
    importEntry(*velm_)->trigger();
    QTRY_VERIFY(importWindow(*velm_));
    const ImportWindow &window = *importWindow(*velm_);
    QCOMPARE(window.windowTitle(), QStringLiteral("Import rom.hex"));
    QCOMPARE(foundLines(window),
             QStringList({QStringLiteral("Line 4: something stands behind the end record."),
                          QStringLiteral("Format: Intel HEX"),
                          QStringLiteral("Bytes: 3 bytes in 2 ranges"),
                          QStringLiteral("Range: 0x0010 to 0x0011, 2 bytes"),
                          QStringLiteral("Range: 0x0014 to 0x0014, 1 byte"),
                          QStringLiteral("Gaps: 1, with 2 bytes to fill"),
                          QStringLiteral("Entry point: none")}));
    QVERIFY(!velm_->state().opened_bin_data);
}

void TestWindowImport::import_opensAFileOfTheProgramsOwn() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    QVERIFY(window);
    QCOMPARE(window->controls().result->text(),
             QStringLiteral("The binary will have 21 bytes; 18 of them filled with 0xFF."));
    velm_->click(window->controls().importButton);
    QVERIFY(hasGone(*velm_));
    velm_->settle();
    const QString kept = velm_->path(QStringLiteral("data/velm/rom.bin"));
    const QByteArray image = QByteArray(16, '\xFF') + "\xAA\xBB\xFF\xFF\xCC";
    QCOMPARE(WindowFixture::bytesOf(kept), image);
    QCOMPARE(velm_->settings().stringValue(settingsKeys::binary), kept);
    QCOMPARE(*velm_->state().output_data, image);
}

void TestWindowImport::import_survivesARestart() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    velm_->click(window->controls().importButton);
    QVERIFY(hasGone(*velm_));
    velm_->end();
    velm_->start();
    QCOMPARE(velm_->state().opened_bin_data->size(), 21);
}

void TestWindowImport::sourceWrittenSince_isSaid() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    velm_->click(window->controls().importButton);
    QVERIFY(hasGone(*velm_));
    velm_->settle();
    const QString path = velm_->write(QStringLiteral("rom.hex"), ":0100000001FE\n:00000001FF\n");
    QTRY_COMPARE(velm_->message(),
                 QStringLiteral("Warning: %1 has been written since it was imported.").arg(path));
    QCOMPARE(velm_->state().opened_bin_data->size(), 21);
    auto *again = messageButton(QStringLiteral("Import again"));
    QVERIFY(again);
    velm_->click(again);
    QTRY_VERIFY(importWindow(*velm_));
    velm_->click(importWindow(*velm_)->controls().importButton);
    QVERIFY(hasGone(*velm_));
    QCOMPARE(velm_->state().opened_bin_data->size(), 1);
    QTRY_VERIFY(!velm_->message().contains(u"since it was imported"));
}

// The window shows what the file held when it was read, and imports that.
void TestWindowImport::sourceWrittenBeforeTheImport_isSaid() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    const QString path = velm_->write(QStringLiteral("rom.hex"), ":0100000001FE\n:00000001FF\n");
    velm_->click(window->controls().importButton);
    QVERIFY(hasGone(*velm_));
    QCOMPARE(velm_->state().opened_bin_data->size(), 21);
    QTRY_COMPARE(velm_->message(),
                 QStringLiteral("Warning: %1 has been written since it was imported.").arg(path));
}

void TestWindowImport::sourceWrittenSince_isSaidBesideTheBinary() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    velm_->click(window->controls().importButton);
    QVERIFY(hasGone(*velm_));
    velm_->settle();
    const QString source = velm_->path(QStringLiteral("rom.hex"));
    const QString aside = velm_->path(QStringLiteral("aside.hex"));
    const auto says = [this](const char *part) {
        return velm_->message().contains(QLatin1String(part));
    };
    QVERIFY(QFile::rename(source, aside));
    velm_->write(QStringLiteral("rom.hex"), "something else");
    QTRY_VERIFY2(says("since it was imported"), qPrintable(velm_->message()));
    QVERIFY(QFile::remove(velm_->path(QStringLiteral("data/velm/rom.bin"))));
    QTRY_VERIFY2(says("is no longer on the disk"), qPrintable(velm_->message()));
    QVERIFY2(says("since it was imported"), qPrintable(velm_->message()));
    // Who begins to watch later hears later.
    OpenedFileWatch later;
    later.watch(source);
    QSignalSpy heard(&later, &OpenedFileWatch::stateChanged);
    QVERIFY(QFile::remove(source));
    QVERIFY(QFile::rename(aside, source));
    QTRY_VERIFY(!heard.isEmpty() && heard.last().first().value<OpenedFileWatch::State>() ==
                                        OpenedFileWatch::State::Changed);
    QVERIFY2(!says("since it was imported"), qPrintable(velm_->message()));
    QVERIFY2(says("is no longer on the disk"), qPrintable(velm_->message()));
}

void TestWindowImport::sourceOfAnEarlierBinary_isForgotten() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    velm_->click(window->controls().importButton);
    QVERIFY(hasGone(*velm_));
    velm_->velm().openFile(velm_->write(QStringLiteral("other.bin"), "plain"));
    // Who begins to watch later hears later.
    OpenedFileWatch later;
    later.watch(velm_->path(QStringLiteral("rom.hex")));
    QSignalSpy heard(&later, &OpenedFileWatch::stateChanged);
    velm_->write(QStringLiteral("rom.hex"), "something else");
    QVERIFY(heard.wait());
    QVERIFY2(!velm_->message().contains(u"imported"), qPrintable(velm_->message()));
}

void TestWindowImport::import_keepsWhatAnotherFileOfThatNameGave() {
    const auto import = [this](const QByteArray &text) {
        ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), text);
        velm_->click(window->controls().importButton);
        return hasGone(*velm_);
    };
    QVERIFY(import(hexFile));
    QVERIFY(import(":0100000001FE\n:00000001FF\n"));
    QCOMPARE(velm_->settings().stringValue(settingsKeys::binary),
             velm_->path(QStringLiteral("data/velm/rom-2.bin")));
    QVERIFY(import(hexFile));
    QCOMPARE(velm_->settings().stringValue(settingsKeys::binary),
             velm_->path(QStringLiteral("data/velm/rom.bin")));
}

void TestWindowImport::choices_decideTheBytes() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    Ui::ImportWindow &c = window->controls();
    c.base->setText(QStringLiteral("11"));
    QVERIFY(!c.importButton->isEnabled());
    QCOMPARE(c.result->text(), QStringLiteral("Bytes lie before the base offset."));
    c.base->setText(QStringLiteral("nowhere"));
    QVERIFY(!c.importButton->isEnabled());
    c.base->setText(QStringLiteral("10"));
    c.fill->clear();
    QVERIFY(!c.importButton->isEnabled());
    c.fill->setText(QStringLiteral("a5"));
    QCOMPARE(c.result->text(),
             QStringLiteral("The binary will have 5 bytes; 2 of them filled with 0xA5."));
    velm_->click(c.importButton);
    QVERIFY(hasGone(*velm_));
    QCOMPARE(*velm_->state().output_data, QByteArray("\xAA\xBB\xA5\xA5\xCC"));
}

void TestWindowImport::troubles_areShownAndHeldBack_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("sentence");
    QTest::addColumn<bool>("canBeTaken");
    const auto row = [](const char *name, const QByteArray &text, const char *sentence,
                        bool canBeTaken) {
        QTest::newRow(name) << text << QString::fromLatin1(sentence) << canBeTaken;
    };
    const QByteArray good = ":0100000001FE\n";
    const QByteArray end = ":00000001FF\n";
    row("checksum", good + ":0100010002FF\n" + end, "Line 2: the checksum is wrong.", true);
    row("overlap", good + good + end, "Line 2: an earlier record has bytes at the same addresses.",
        true);
    row("no end", good, "Line 1: the file ends here without an end record.", true);
    row("behind the end", good + end + "\x1A", "Line 3: something stands behind the end record.",
        true);
    row("count", "S104000001FA\nS5030002FA\nS9030000FC\n",
        "Line 2: the number of records is another than it says.", true);
    row("no record", good + "hello\n" + end, "Line 2: this is no record.", false);
    row("no digit", good + ":0g\n" + end, "Line 2: a character is no hexadecimal digit.", false);
    row("odd digits", good + ":000\n" + end, "Line 2: the number of digits is odd.", false);
    row("length", good + ":0000\n" + end,
        "Line 2: the record is longer or shorter than it should be.", false);
    row("type", good + ":00000006FA\n" + end, "Line 2: the format has no such type of record.",
        false);
    row("4 GiB", ":02000004FFFFFC\n:02FFFF000102FD\n" + end,
        "Line 2: the record goes past the address 0xFFFFFFFF.", false);
}

void TestWindowImport::troubles_areShownAndHeldBack() {
    QFETCH(QByteArray, text);
    QFETCH(QString, sentence);
    QFETCH(bool, canBeTaken);
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), text);
    QVERIFY(window);
    QCOMPARE(foundLines(*window).first(), sentence);
    Ui::ImportWindow &c = window->controls();
    QVERIFY(!c.importButton->isEnabled());
    QCOMPARE(c.allTheSame->isVisible(), canBeTaken);
    emit c.importButton->clicked(); // as assistive technology may
    QVERIFY(!velm_->state().opened_bin_data);
    c.allTheSame->setChecked(true);
    QCOMPARE(c.importButton->isEnabled(), canBeTaken);
}

void TestWindowImport::takenAllTheSame_theLaterBytesCount() {
    ImportWindow *window =
        opened(*velm_, QStringLiteral("rom.hex"), ":020000000102FB\n:0100010003FB\n:00000001FF\n");
    velm_->click(window->controls().allTheSame);
    velm_->click(window->controls().importButton);
    QVERIFY(hasGone(*velm_));
    QCOMPARE(*velm_->state().output_data, QByteArray("\x01\x03"));
}

void TestWindowImport::cancel_changesNothing() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    velm_->click(window->controls().cancelButton);
    QVERIFY(hasGone(*velm_));
    QVERIFY(!velm_->state().opened_bin_data);
    QVERIFY(!QFile::exists(velm_->path(QStringLiteral("data"))));
}

void TestWindowImport::keys_importAndCancel() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    QCOMPARE(window->focusWidget(), window->controls().found);
    QTest::keyClick(window->controls().found, Qt::Key_Escape);
    QVERIFY(hasGone(*velm_));
    QVERIFY(!velm_->state().opened_bin_data);
    window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    QTest::keyClick(window->controls().found, Qt::Key_Return);
    QVERIFY(hasGone(*velm_));
    QCOMPARE(velm_->state().opened_bin_data->size(), 21);
}

void TestWindowImport::raw_opensTheFileItself() {
    velm_->panels.answer = velm_->write(QStringLiteral("rom.bin"), "plain");
    importEntry(*velm_)->trigger();
    QTRY_VERIFY(importWindow(*velm_));
    ImportWindow *window = importWindow(*velm_);
    QCOMPARE(foundLines(*window), QStringList(QStringLiteral("Raw: 5 bytes, taken as they are.")));
    velm_->click(window->controls().importButton);
    QVERIFY(hasGone(*velm_));
    QCOMPARE(*velm_->state().output_data, QByteArray("plain"));
    QCOMPARE(velm_->settings().stringValue(settingsKeys::binary), velm_->panels.answer);
}

void TestWindowImport::openedText_offersToImportIt() {
    velm_->delegate().openBinary(velm_->write(QStringLiteral("rom.hex"), hexFile));
    QVERIFY(importOffer(*velm_));
    velm_->click(importOffer(*velm_));
    QTRY_VERIFY(importWindow(*velm_));
    QCOMPARE(importWindow(*velm_)->windowTitle(), QStringLiteral("Import rom.hex"));
    velm_->click(importWindow(*velm_)->controls().importButton);
    QTRY_COMPARE(velm_->state().opened_bin_data->size(), 21);
    QVERIFY(!importOffer(*velm_));
}

void TestWindowImport::unreadableFile_isSaid() {
    velm_->panels.answer = velm_->path(QStringLiteral("missing.hex"));
    importEntry(*velm_)->trigger();
    QTRY_VERIFY2(velm_->message().contains(u"could not be read"), qPrintable(velm_->message()));
    QVERIFY(velm_->settings().stringValue(settingsKeys::binary).isNull());
    opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    QVERIFY2(!velm_->message().contains(u"could not be read"), qPrintable(velm_->message()));
}

void TestWindowImport::dataHomeThatCannotBeWritten_isSaid() {
    velm_->write(QStringLiteral("data"), "a file where a folder should be");
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    const SpokenWords speaker;
    velm_->click(window->controls().importButton);
    const QLabel *result = window->controls().result;
    QTRY_VERIFY2(result->text().contains(u"could not be written"), qPrintable(result->text()));
    QCOMPARE(speaker.spoken.count(result->text()), 1);
    QVERIFY(!velm_->state().opened_bin_data);
    QVERIFY(window->controls().importButton->isEnabled());
}

void TestWindowImport::folderThatCannotBeMade_isSaid() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    const FailingCalls full("mkdir", 1, ENOSPC);
    velm_->click(window->controls().importButton);
    const QLabel *result = window->controls().result;
    QTRY_VERIFY2(result->text().endsWith(u": No space left on device"), qPrintable(result->text()));
}

void TestWindowImport::fileToOpen_isShownIfTheToolWouldDecodeIt() {
    QVERIFY(opened(*velm_, QStringLiteral("rom.bin"), "S104000001FA\nS9030000FC\n"));
    QVERIFY(!velm_->state().opened_bin_data);
    velm_->velm().openFile(velm_->write(QStringLiteral("rom.hex"), "no such text"));
    QCOMPARE(*velm_->state().opened_bin_data, QByteArray("no such text"));
}

void TestWindowImport::drop_onTheSidePanelOpens() {
    QWidget *side = velm_->controls().sideArea->viewport();
    const auto *sign = side->findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(sign && !sign->isVisible());
    const QUrl raw = QUrl::fromLocalFile(velm_->write(QStringLiteral("rom.bin"), "plain"));
    QVERIFY(drag(side, {raw}, false));
    QVERIFY(sign->isVisible());
    QVERIFY(drag(side, {raw}, true));
    QVERIFY(!sign->isVisible());
    velm_->settle();
    QCOMPARE(*velm_->state().output_data, QByteArray("plain"));
    const QString start = velm_->controls().startAddTextField->text();
    const QUrl hex = QUrl::fromLocalFile(velm_->write(QStringLiteral("rom.hex"), hexFile));
    QVERIFY(drag(velm_->controls().startAddTextField, {hex}, true));
    QCOMPARE(velm_->controls().startAddTextField->text(), start);
    QTRY_VERIFY(importWindow(*velm_));
    QCOMPARE(*velm_->state().output_data, QByteArray("plain"));
}

void TestWindowImport::drop_ofSomethingElseIsNotTaken() {
    QWidget *side = velm_->controls().sideArea->viewport();
    const QUrl file = QUrl::fromLocalFile(velm_->write(QStringLiteral("rom.bin"), "plain"));
    QVERIFY(!drag(side, {}, true));
    QVERIFY(!drag(side, {file, file}, true));
    QVERIFY(!drag(side, {QUrl(QStringLiteral("https://example.org/rom.bin"))}, true));
    velm_->settle();
    QVERIFY(!velm_->state().opened_bin_data);
}

void TestWindowImport::manyRecords_leaveTheEventLoopTurning() {
    constexpr int records = 10'000'000;
    velm_->velm().openFile(
        velm_->write(QStringLiteral("rom.hex"), QByteArray(":0100000001FE\n").repeated(records)));
    auto *window = velm_->velm().window().findChild<ImportWindow *>();
    QVERIFY(window);
    int turns = 0;
    while (window->controls().progress->isVisible()) {
        QCoreApplication::processEvents();
        ++turns;
    }
    QVERIFY2(turns > 3, qPrintable(QString::number(turns)));
    QVERIFY(foundLines(*window).contains(u"Further troubles: 9,999,900"));
}

void TestWindowImport::imageWithoutMemory_isSaid() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizers need their address space");
    const QByteArray far = "S3060000000001F8\nS3062000000002D7\nS70500000000FA\n";
    ImportWindow *window = nullptr;
    {
        const AddressSpaceLimit limit(rlim_t(64) << 20);
        window = opened(*velm_, QStringLiteral("rom.hex"), far);
        const Ui::ImportWindow &c = window->controls();
        const QString sentence = QStringLiteral("There is not enough memory for these bytes.");
        QTRY_COMPARE(c.result->text(), sentence);
        velm_->click(c.importButton);
        QTRY_COMPARE(c.result->text(), sentence);
        QVERIFY(c.importButton->isEnabled());
        QVERIFY(!velm_->state().opened_bin_data);
    }
    window->controls().fill->setText(QStringLiteral("00"));
    QTRY_VERIFY(window->controls().outcome->text().startsWith(u"CRC-32"));
}

void TestWindowImport::whileTheToolRuns_nothingIsImported() {
    ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    velm_->useTool("while :; do sleep 1; done\n");
    velm_->whileBusy([&] {
        velm_->click(window->controls().importButton);
        const QLabel *result = window->controls().result;
        QTRY_VERIFY(result->text().contains(u"is running"));
        const QString hex = velm_->path(QStringLiteral("rom.hex"));
        drag(velm_->controls().sideArea->viewport(), {QUrl::fromLocalFile(hex)}, true);
        velm_->click(velm_->controls().btn_stop);
    });
    velm_->click(velm_->controls().btn_read);
    QVERIFY(!velm_->state().opened_bin_data);
    QCOMPARE(velm_->velm().window().findChildren<ImportWindow *>().size(), 1);
}

void TestWindowImport::controls_haveNamesAndToolTips() {
    const ImportWindow *window = opened(*velm_, QStringLiteral("rom.hex"), hexFile);
    QStringList letters;
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        const QString text = widget->property("text").toString();
        if (const qsizetype at = text.indexOf(u'&'); at >= 0)
            letters << text.mid(at + 1, 1).toUpper();
        if (widget->window() != window || widget->focusPolicy() == Qt::NoFocus ||
            widget->objectName().startsWith(u"qt_"))
            continue;
        QVERIFY2(!widget->accessibleName().isEmpty(), widget->metaObject()->className());
        QVERIFY2(!widget->toolTip().isEmpty() || qobject_cast<const QPlainTextEdit *>(widget),
                 qPrintable(widget->objectName()));
    }
    QVERIFY(letters.size() > 12);
    QCOMPARE(letters.removeDuplicates(), 0);
}

void TestWindowImport::whatAKilledImportLeft_isGoneAtTheNextStart() {
    velm_ = std::make_unique<WindowFixture>();
    const QString folder = velm_->path(QStringLiteral("data")) + QStringLiteral("/velm");
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(writeWholeFile(folder + QStringLiteral("/rom.bin"), "kept"));
    QVERIFY(writeWholeFile(folder + QStringLiteral("/rom.bin.velm-aside-abc123"), "left behind"));
    qputenv("XDG_DATA_HOME", QFile::encodeName(velm_->path(QStringLiteral("data"))));
    velm_->start();
    QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList(QStringLiteral("rom.bin")));
}

QTEST_MAIN(TestWindowImport)
#include "tst_window_import.moc"
