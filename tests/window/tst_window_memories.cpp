// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "control/OtherMemoriesWatch.h"
#include "grid/GridView.h"
#include "imageviews/MemoriesWindow.h"
#include "settings/SettingsKeys.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>

#include <algorithm>
#include <unistd.h>

/// What a Read brings besides code memory: told, shown, saved with the image.
class TestWindowMemories : public QObject {
    Q_OBJECT

private slots:
    void init();
    void read_saysWhatElseCame_data();
    void read_saysWhatElseCame();
    void longName_leavesTheWindowItsSize_data();
    void longName_leavesTheWindowItsSize();
    void read_ofAnEprom_saysNothing();
    void otherDevice_endsTheSentence();
    void eprom_afterAMicrocontroller_saysNothing();
    void failedRead_keepsWhatTheLastOneBrought();
    void leftFiles_areNoResult();
    void filesInAForeignFolder_stayAndAreNoResult();
    void linkOfSomebodyElse_isNotWrittenThrough();
    void start_removesThem();
    void fileThatCannotBeRead_isSaid();
    void window_showsThem();
    void window_followsTheNextRead();
    void window_goesWithTheMemories();
    void fuses_areCopied();
    void command_saysWhatItConcerns();
    void write_saysWhatItLeavesOut();
    void verify_saysWhatItLeavesOut();
    void device_thatTheToolDescribes_isKnown();
    void entries_areOffWithoutMemories();

private:
    void read(const QString &device);
    QAction *entry(const QString &text) const;
    /// Opens the window by its menu entry.
    MemoriesWindow *opened();
    MemoriesWindow *window() const { return velm_->velm().window().findChild<MemoriesWindow *>(); }
    QLabel *extent() const {
        return velm_->velm().window().findChild<QLabel *>(QStringLiteral("commandExtent"));
    }
    QString beside(const QString &ending) const {
        return velm_->temporary(QStringLiteral("temp_read") + ending);
    }

    std::unique_ptr<WindowFixture> velm_;
};

namespace {

const QString microcontroller = QStringLiteral("ATMEGA8@DIP28");
const QString withUserMemory = QStringLiteral("AT89S8253");
const QString eprom = QStringLiteral("W27C512@DIP28");

/// Reads like a tool that puts \a more, a line of the shell, beside its file.
QByteArray readingTool(const QByteArray &more) {
    return "while [ \"$1\" != -r ]; do shift; done\n"
           "printf 'code' > \"$2\"; stem=\"${2%.*}\"\n" +
           more + "\nprintf '\\rReading Code...  0.01Sec  OK\\n' >&2\n";
}

QStringList tabsOf(const MemoriesWindow &window) {
    QStringList texts;
    const auto *tabs = window.findChild<QTabWidget *>();
    for (int i = 0; i < tabs->count(); ++i)
        texts << tabs->tabText(i);
    return texts;
}

/// The grid called \a name.
GridView *gridOf(const MemoriesWindow &window, const QString &name) {
    for (auto *grid : window.findChildren<GridView *>())
        if (grid->accessibleName() == name)
            return grid;
    return nullptr;
}

QStringList namesIn(const QString &folder, const QString &pattern) {
    return QDir(folder).entryList({pattern}, QDir::AllEntries | QDir::NoDotAndDotDot);
}

} // namespace

void TestWindowMemories::init() {
    velm_ = std::make_unique<WindowFixture>();
    velm_->start();
}

void TestWindowMemories::read(const QString &device) {
    velm_->settings().setValue(settingsKeys::device, device);
    velm_->click(velm_->controls().btn_read);
    velm_->settle();
}

QAction *TestWindowMemories::entry(const QString &text) const {
    for (QMenu *menu : velm_->velm().window().menuBar()->findChildren<QMenu *>())
        for (QAction *action : menu->actions())
            if (action->text() == text)
                return action;
    return nullptr;
}

MemoriesWindow *TestWindowMemories::opened() {
    entry(QStringLiteral("Ot&her memories\u2026"))->trigger();
    QCoreApplication::processEvents();
    return window();
}

void TestWindowMemories::read_saysWhatElseCame_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("said");
    QTest::newRow("data memory") << microcontroller
                                 << QStringLiteral(
                                        "Also read: 512 bytes of data memory, 3 fuses. Write and "
                                        "Verify leave them out.");
    QTest::newRow("user memory") << withUserMemory
                                 << QStringLiteral(
                                        "Also read: 2,048 bytes of data memory, 64 bytes of user "
                                        "memory, 2 fuses. Write and Verify leave them out.");
}

void TestWindowMemories::read_saysWhatElseCame() {
    QFETCH(QString, device);
    QFETCH(QString, said);
    read(device);
    // The verdict is the newest.
    QCOMPARE(velm_->message().section(u'\n', 1, 1), said);
    QVERIFY(velm_->message().startsWith(u"Done: Read succeeded."));
}

void TestWindowMemories::longName_leavesTheWindowItsSize_data() {
    QTest::addColumn<QString>("device");
    QTest::newRow("long") << QString(199, u'x') + u'y';
    QTest::newRow("endless") << QString(5000, u'x') + u'y';
    QTest::newRow("not to be seen") << QString(180, QChar(0x200B)) + u'y';
}

void TestWindowMemories::longName_leavesTheWindowItsSize() {
    QFETCH(QString, device);
    velm_->useTool(readingTool("printf 'data' > \"$stem.eeprom.bin\""));
    read(device);
    velm_->click(velm_->controls().btn_read); // some names are asked about first
    velm_->settle();
    const QList<QLabel *> labels = opened()->findChildren<QLabel *>();
    const auto origin = std::find_if(labels.begin(), labels.end(), [](const QLabel *label) {
        return label->text().contains(u", read at ");
    });
    QVERIFY(origin != labels.end());
    // No part of it is cut off; the lines may end behind the sign for what is left out.
    const QString name = (*origin)->text().section(u',', 0, 0);
    for (const QString &part : name.split(u'\u2026'))
        QVERIFY((*origin)->minimumSizeHint().width() >=
                (*origin)->fontMetrics().horizontalAdvance(part));
    const int width = opened()->minimumSizeHint().width();
    QVERIFY2(width < 800, qPrintable(QString::number(width)));
}

void TestWindowMemories::read_ofAnEprom_saysNothing() {
    read(eprom);
    QVERIFY(velm_->message().startsWith(u"Done: Read succeeded."));
    QVERIFY2(!velm_->message().contains(u"Also"), qPrintable(velm_->message()));
    QVERIFY(!opened());
}

void TestWindowMemories::otherDevice_endsTheSentence() {
    read(microcontroller);
    velm_->settings().setValue(settingsKeys::device, eprom);
    QVERIFY2(!velm_->message().contains(u"Also"), qPrintable(velm_->message()));
    QVERIFY(opened());
}

void TestWindowMemories::eprom_afterAMicrocontroller_saysNothing() {
    read(microcontroller);
    QVERIFY(!namesIn(velm_->path(QStringLiteral("workspace")), QStringLiteral("temp_read.*.*"))
                 .isEmpty());
    read(eprom);
    QVERIFY2(!velm_->message().contains(u"Also"), qPrintable(velm_->message()));
    QCOMPARE(namesIn(velm_->path(QStringLiteral("workspace")), QStringLiteral("temp_read.*.*")),
             QStringList());
    QVERIFY(!opened());
}

void TestWindowMemories::failedRead_keepsWhatTheLastOneBrought() {
    read(microcontroller);
    velm_->useTool("printf 'No programmer found.\\n' >&2; exit 1\n");
    read(eprom);
    QVERIFY(velm_->message().contains(u"Read failed") || velm_->message().contains(u"Problem"));
    QVERIFY2(!velm_->message().contains(u"Also"), qPrintable(velm_->message()));
    const auto labels = opened()->findChildren<QLabel *>();
    QVERIFY2(labels.first()->text().startsWith(microcontroller + QStringLiteral(", read at ")),
             qPrintable(labels.first()->text()));
}

// The tool left nothing beside its file this time; what lies there cannot be removed.
void TestWindowMemories::leftFiles_areNoResult() {
    QVERIFY(QDir().mkpath(beside(QStringLiteral(".eeprom.bin"))));
    velm_->useTool(readingTool({}));
    read(microcontroller);
    QVERIFY2(!velm_->message().contains(u"Also"), qPrintable(velm_->message()));
    QVERIFY2(!velm_->message().contains(u"eeprom"), qPrintable(velm_->message()));
}

// Whoever keeps the read file elsewhere may have files of their own beside it.
void TestWindowMemories::filesInAForeignFolder_stayAndAreNoResult() {
    QVERIFY(QDir().mkpath(velm_->path(QStringLiteral("roms"))));
    velm_->settings().setValue(settingsKeys::temp_read_from_chip_file,
                               velm_->path(QStringLiteral("roms/chip.bin")));
    const QString mine = velm_->write(QStringLiteral("roms/chip.fuses.conf"), "a = 0x1\n");
    read(eprom);
    QCOMPARE(WindowFixture::bytesOf(mine), QByteArray("a = 0x1\n"));
    QVERIFY2(!velm_->message().contains(u"Also"), qPrintable(velm_->message()));
    read(microcontroller);
    QVERIFY2(velm_->message().contains(u"3 fuses"), qPrintable(velm_->message()));
}

void TestWindowMemories::linkOfSomebodyElse_isNotWrittenThrough() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    QVERIFY(QDir().mkpath(velm_->path(QStringLiteral("roms"))));
    velm_->settings().setValue(settingsKeys::temp_read_from_chip_file,
                               velm_->path(QStringLiteral("roms/chip.bin")));
    const QString mine = velm_->write(QStringLiteral("mine"), "precious");
    for (const OtherMemory memory : otherMemories) {
        const QString link = velm_->path(QStringLiteral("roms/chip") + endingOf(memory));
        QVERIFY(QFile::link(mine, link));
        QCOMPARE(::lchown(QFile::encodeName(link).constData(), 12345, gid_t(-1)), 0);
    }
    velm_->useTool(readingTool("for end in eeprom.bin user.bin fuses.conf\n"
                               "do printf chip > \"$stem.$end\"; done"));
    read(microcontroller);
    QCOMPARE(velm_->velm().runs().last().status, 0);
    QCOMPARE(WindowFixture::bytesOf(mine), QByteArray("precious"));
}

void TestWindowMemories::start_removesThem() {
    read(microcontroller);
    velm_->end();
    velm_->start();
    QCOMPARE(namesIn(velm_->path(QStringLiteral("workspace")), QStringLiteral("temp_read.*")),
             QStringList());
    QVERIFY(!opened());
}

void TestWindowMemories::fileThatCannotBeRead_isSaid() {
    velm_->useTool(readingTool("mkfifo \"$stem.eeprom.bin\"; printf 'a=0x1\\n?\\n' > "
                               "\"$stem.fuses.conf\""));
    read(microcontroller);
    QCOMPARE(
        velm_->message().section(u'\n', 1, 1),
        QStringLiteral(
            "Warning: Also read: 1 fuse, 1 line that says no fuse. Write and Verify leave them "
            "out. It is not known what the Read left in %1: Not a regular file.")
            .arg(beside(QStringLiteral(".eeprom.bin"))));
}

void TestWindowMemories::window_showsThem() {
    read(withUserMemory);
    const auto buttons = velm_->controls().messageLine->findChildren<QPushButton *>();
    const auto show = std::find_if(buttons.begin(), buttons.end(), [](QPushButton *button) {
        return button->text() == QStringLiteral("Show them") &&
               button->isVisibleTo(button->window());
    });
    QVERIFY(show != buttons.end());
    velm_->click(*show);
    MemoriesWindow *memories = window();
    QVERIFY(memories && memories->isVisible());
    QCOMPARE(tabsOf(*memories),
             (QStringList{QStringLiteral("&Data memory"), QStringLiteral("&User memory"),
                          QStringLiteral("&Fuses")}));
    const GridView *data = gridOf(*memories, QStringLiteral("Data memory"));
    const GridView *user = gridOf(*memories, QStringLiteral("User memory"));
    QCOMPARE(data->model()->rowCount(), 2048 / 16 + 1);
    QCOMPARE(user->model()->rowCount(), 64 / 16 + 1);
    QCOMPARE(user->model()->index(0, 1).data().toString(), QStringLiteral("53"));
    QVERIFY(!(user->model()->index(0, 1).flags() & Qt::ItemIsEditable));
    const auto *fuses = memories->findChild<QTableView *>();
    QCOMPARE(fuses->accessibleName(), QStringLiteral("Fuses"));
    QCOMPARE(fuses->model()->index(0, 1).data().toString(), QStringLiteral("0xDC"));
}

void TestWindowMemories::window_followsTheNextRead() {
    read(withUserMemory);
    MemoriesWindow *memories = opened();
    memories->findChild<QTabWidget *>()->setCurrentIndex(2);
    read(microcontroller);
    QCOMPARE(window(), memories);
    QCOMPARE(tabsOf(*memories),
             (QStringList{QStringLiteral("&Data memory"), QStringLiteral("&Fuses")}));
    QCOMPARE(memories->findChild<QTabWidget *>()->currentIndex(), 1);
    QCOMPARE(gridOf(*memories, QStringLiteral("Data memory"))->model()->rowCount(), 512 / 16 + 1);
}

void TestWindowMemories::window_goesWithTheMemories() {
    read(microcontroller);
    const QPointer<MemoriesWindow> memories = opened();
    read(eprom);
    QTRY_VERIFY(!memories);
}

void TestWindowMemories::fuses_areCopied() {
    read(microcontroller);
    auto *fuses = opened()->findChild<QTableView *>();
    window()->findChild<QTabWidget *>()->setCurrentWidget(fuses);
    QVERIFY(QTest::qWaitForWindowActive(window()));
    fuses->setFocus();
    fuses->selectAll();
    QTest::keySequence(fuses, QKeySequence::Copy);
    QCOMPARE(QGuiApplication::clipboard()->text(),
             QStringLiteral("fuses_lo\t0x62\t0110 0010\nfuses_hi\t0xDF\t1101 1111\n"
                            "lock_byte\t0xFF\t1111 1111\n"));
}

void TestWindowMemories::command_saysWhatItConcerns() {
    velm_->settings().setValue(settingsKeys::device, eprom);
    QVERIFY(extent()->isHidden());
    read(microcontroller);
    QVERIFY(!extent()->isHidden());
    velm_->controls().btn_write->setFocus();
    QTRY_COMPARE(extent()->text(), QStringLiteral("code memory alone"));
    const QString words =
        QStringLiteral("Write and Verify concern the code memory alone, not the chip's data "
                       "memory and fuses. Erasing may blank the data memory.");
    QVERIFY2(extent()->toolTip().contains(words), qPrintable(extent()->toolTip()));
    QVERIFY(velm_->controls().btn_write->toolTip().endsWith(words));
    QVERIFY(velm_->controls().btn_verify->toolTip().endsWith(words));
    QVERIFY(!velm_->controls().btn_read->toolTip().contains(words));
    velm_->controls().btn_read->setFocus();
    QTRY_COMPARE(extent()->text(), QStringLiteral("all memories"));
    velm_->controls().btn_logic->setFocus();
    QTRY_COMPARE(extent()->text(), QString());
    velm_->settings().setValue(settingsKeys::device, eprom);
    QVERIFY(extent()->isHidden());
    QVERIFY(!velm_->controls().btn_write->toolTip().contains(words));
    velm_->settings().setValue(settingsKeys::device, microcontroller);
    QVERIFY(!extent()->isHidden());
    // The user chooses a memory.
    velm_->setTool(velm_->settings().stringValue(settingsKeys::miniproLocation) +
                   QStringLiteral(" -c data"));
    QVERIFY(extent()->isHidden());
}

void TestWindowMemories::write_saysWhatItLeavesOut() {
    read(microcontroller);
    velm_->controls().btn_combine_read_data->setChecked(true);
    velm_->settle();
    velm_->click(velm_->controls().btn_write);
    velm_->settle();
    QVERIFY2(velm_->message().startsWith(u"Done: Write succeeded and was verified. The chip's data "
                                         "memory and fuses were not written."),
             qPrintable(velm_->message()));
    QCOMPARE(WindowFixture::bytesOf(velm_->chipPath(microcontroller)).size(), 8192);
}

void TestWindowMemories::verify_saysWhatItLeavesOut() {
    read(microcontroller);
    velm_->controls().btn_combine_read_data->setChecked(true);
    velm_->settle();
    velm_->click(velm_->controls().btn_verify);
    velm_->settle();
    QVERIFY2(velm_->message().contains(u"The chip's data memory and fuses were not compared."),
             qPrintable(velm_->message()));
    velm_->settings().setValue(settingsKeys::device, eprom);
    velm_->click(velm_->controls().btn_verify);
    velm_->settle();
    QVERIFY2(!velm_->message().contains(u"not compared."), qPrintable(velm_->message()));
}

// Before the first Read, what the tool knows of the device tells.
void TestWindowMemories::device_thatTheToolDescribes_isKnown() {
    velm_->settings().setValue(settingsKeys::device, microcontroller);
    QTRY_VERIFY(!extent()->isHidden());
    QVERIFY(extent()->toolTip().contains(u"not the chip's other memories"));
}

void TestWindowMemories::entries_areOffWithoutMemories() {
    const QList<QAction *> entries = {entry(QStringLiteral("Ot&her memories\u2026")),
                                      entry(QStringLiteral("Save the se&t\u2026"))};
    const auto areOn = [&entries] { return entries[0]->isEnabled() && entries[1]->isEnabled(); };
    QVERIFY(!entries[0]->isEnabled() && !entries[1]->isEnabled());
    read(microcontroller);
    QVERIFY(areOn());
    bool lookIsOn = false;
    bool saveIsOn = true;
    velm_->whileBusy([&] {
        lookIsOn = entries[0]->isEnabled();
        saveIsOn = entries[1]->isEnabled();
    });
    read(microcontroller);
    QVERIFY(lookIsOn && !saveIsOn);
    QVERIFY(areOn());
    read(eprom);
    QVERIFY(!entries[0]->isEnabled() && !entries[1]->isEnabled());
}

QTEST_MAIN(TestWindowMemories)
#include "tst_window_memories.moc"
