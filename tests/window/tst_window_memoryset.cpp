// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "imageviews/MemoriesWindow.h"
#include "settings/SettingsKeys.h"
#include "support/FailingCalls.h"

#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>

#include <cerrno>

/// Image and other memories of a Read, saved under one name.
class TestWindowMemorySet : public QObject {
    Q_OBJECT

private slots:
    void init();
    void set_isSavedByteForByte();
    void set_isSavedFromItsWindow();
    void name_mayHaveAnyEnding();
    void set_isOfTheReadWhateverCameSince();
    void otherFiles_areReplacedOnASecondPressAlone();
    void fileThatComesBetween_isAskedAbout();
    void half_isRefused();
    void folderThatCannotBeLookedInto_isToldAsItIs();
    void olderFileOfTheName_isSaid();
    void olderFileOfTheName_isNotPassedOverWhateverFails();
    void cancelledPanel_savesNothing();
    void whileTheToolRuns_nothingIsSaved();

private:
    void save();
    QPushButton *button(const QString &text) const;
    /// The files named chip.*, their names in one line.
    QString names() const {
        return QDir(velm_->path(QStringLiteral("sets")))
            .entryList({QStringLiteral("chip*")}, QDir::AllEntries)
            .join(u' ');
    }
    QString file(const QString &ending) const {
        return velm_->path(QStringLiteral("sets/chip") + ending);
    }
    QByteArray bytes(const QString &ending) const { return WindowFixture::bytesOf(file(ending)); }

    std::unique_ptr<WindowFixture> velm_;
    QByteArray code_;
    QByteArray data_;
    QByteArray fuses_;
};

void TestWindowMemorySet::init() {
    velm_ = std::make_unique<WindowFixture>();
    velm_->start();
    QVERIFY(QDir().mkpath(velm_->path(QStringLiteral("sets"))));
    velm_->settings().setValue(settingsKeys::device, QStringLiteral("ATMEGA8@DIP28"));
    velm_->click(velm_->controls().btn_read);
    velm_->settle();
    code_ = WindowFixture::bytesOf(velm_->temporary(QStringLiteral("temp_read.bin")));
    data_ = WindowFixture::bytesOf(velm_->temporary(QStringLiteral("temp_read.eeprom.bin")));
    fuses_ = WindowFixture::bytesOf(velm_->temporary(QStringLiteral("temp_read.fuses.conf")));
    QCOMPARE(code_.size(), 8192);
    QCOMPARE(data_.size(), 512);
    velm_->panels.answer = file(QStringLiteral(".bin"));
}

void TestWindowMemorySet::save() {
    for (QMenu *menu : velm_->velm().window().menuBar()->findChildren<QMenu *>())
        for (QAction *action : menu->actions())
            if (action->text() == QStringLiteral("Save the se&t\u2026"))
                action->trigger();
    QCoreApplication::processEvents();
}

QPushButton *TestWindowMemorySet::button(const QString &text) const {
    for (auto *button : velm_->controls().messageLine->findChildren<QPushButton *>())
        if (button->text() == text && button->isVisibleTo(button->window()))
            return button;
    return nullptr;
}

void TestWindowMemorySet::set_isSavedByteForByte() {
    save();
    QCOMPARE(velm_->panels.requests.last().suggestedName, QStringLiteral("ATMEGA8@DIP28.bin"));
    QCOMPARE(velm_->panels.requests.last().extensions, QStringList{QStringLiteral("bin")});
    QCOMPARE(names(), QStringLiteral("chip.bin chip.eeprom.bin chip.fuses.conf"));
    QCOMPARE(bytes(QStringLiteral(".bin")), code_);
    QCOMPARE(bytes(QStringLiteral(".eeprom.bin")), data_);
    QCOMPARE(bytes(QStringLiteral(".fuses.conf")), fuses_);
    QCOMPARE(velm_->message().section(u'\n', 0, 0),
             QStringLiteral("Done: Saved in %1: chip.bin, chip.eeprom.bin, chip.fuses.conf.")
                 .arg(velm_->path(QStringLiteral("sets"))));
}

void TestWindowMemorySet::set_isSavedFromItsWindow() {
    velm_->click(button(QStringLiteral("Show them")));
    const QPointer<MemoriesWindow> window = velm_->velm().window().findChild<MemoriesWindow *>();
    QVERIFY(window);
    velm_->panels.whileOpen = [&window] { QVERIFY(window->isVisible()); };
    for (auto *button : window->findChildren<QPushButton *>())
        if (button->text() == QStringLiteral("&Save the set\u2026"))
            velm_->click(button);
    // What is said of it stands in the message line, which it may lie over.
    QTRY_VERIFY(!window);
    QCOMPARE(names(), QStringLiteral("chip.bin chip.eeprom.bin chip.fuses.conf"));
}

void TestWindowMemorySet::name_mayHaveAnyEnding() {
    velm_->panels.answer = file(QStringLiteral(".v2"));
    save();
    QCOMPARE(names(), QStringLiteral("chip.v2.bin chip.v2.eeprom.bin chip.v2.fuses.conf"));
}

// Each part is of one Read, whatever has become of its files and of the data shown.
void TestWindowMemorySet::set_isOfTheReadWhateverCameSince() {
    for (const QString &ending :
         {QStringLiteral(".bin"), QStringLiteral(".eeprom.bin"), QStringLiteral(".fuses.conf")})
        QVERIFY(QFile::remove(velm_->temporary(QStringLiteral("temp_read") + ending)));
    velm_->useTool("printf 'No programmer found.\n' >&2; exit 1\n");
    velm_->click(velm_->controls().btn_read);
    velm_->settle();
    save();
    QCOMPARE(bytes(QStringLiteral(".bin")), code_);
    QCOMPARE(bytes(QStringLiteral(".eeprom.bin")), data_);
    QCOMPARE(bytes(QStringLiteral(".fuses.conf")), fuses_);
}

void TestWindowMemorySet::otherFiles_areReplacedOnASecondPressAlone() {
    velm_->write(file(QStringLiteral(".bin")), "mine"); // the panel has asked about this one
    velm_->write(file(QStringLiteral(".fuses.conf")), "mine");
    save();
    QCOMPARE(velm_->message().section(u'\n', 0, 0),
             QStringLiteral("Warning: Nothing was saved yet. Already in %1: chip.fuses.conf.")
                 .arg(velm_->path(QStringLiteral("sets"))));
    QCOMPARE(names(), QStringLiteral("chip.bin chip.fuses.conf"));
    QCOMPARE(bytes(QStringLiteral(".bin")), QByteArray("mine"));
    velm_->click(button(QStringLiteral("Replace")));
    QCOMPARE(bytes(QStringLiteral(".bin")), code_);
    QCOMPARE(bytes(QStringLiteral(".eeprom.bin")), data_);
    QCOMPARE(bytes(QStringLiteral(".fuses.conf")), fuses_);
    QVERIFY(!button(QStringLiteral("Replace")));
}

void TestWindowMemorySet::fileThatComesBetween_isAskedAbout() {
    velm_->write(file(QStringLiteral(".fuses.conf")), "mine");
    save();
    velm_->write(file(QStringLiteral(".eeprom.bin")), "newer");
    velm_->click(button(QStringLiteral("Replace")));
    QCOMPARE(bytes(QStringLiteral(".eeprom.bin")), QByteArray("newer"));
    QVERIFY(velm_->message().contains(u"chip.eeprom.bin"));
    velm_->click(button(QStringLiteral("Replace")));
    QCOMPARE(bytes(QStringLiteral(".eeprom.bin")), data_);
}

void TestWindowMemorySet::half_isRefused() {
    QVERIFY(QDir().mkpath(file(QStringLiteral(".fuses.conf"))));
    save();
    velm_->click(button(QStringLiteral("Replace")));
    QCOMPARE(velm_->message().section(u'\n', 0, 0),
             QStringLiteral(
                 "Problem: Nothing was saved, since %1 could not be written: Not a regular file.")
                 .arg(file(QStringLiteral(".fuses.conf"))));
    QCOMPARE(names(), QStringLiteral("chip.fuses.conf"));
    QVERIFY(velm_->log.lines.contains(QStringLiteral("error writing to ") +
                                      file(QStringLiteral(".fuses.conf"))));
}

void TestWindowMemorySet::folderThatCannotBeLookedInto_isToldAsItIs() {
    const QString loop = velm_->path(QStringLiteral("sets/loop"));
    QVERIFY(QFile::link(loop, loop));
    velm_->panels.answer = loop + QStringLiteral("/chip.bin");
    save();
    QCOMPARE(velm_->message().section(u'\n', 0, 0),
             QStringLiteral("Problem: Nothing was saved, since %1/chip.bin could not be written: "
                            "Too many levels of symbolic links.")
                 .arg(loop));
    QVERIFY(!button(QStringLiteral("Replace")));
}

void TestWindowMemorySet::olderFileOfTheName_isSaid() {
    velm_->write(file(QStringLiteral(".user.bin")), "older");
    save();
    QVERIFY2(velm_->message().contains(u"Not of this set, but there already: chip.user.bin."),
             qPrintable(velm_->message()));
    QCOMPARE(bytes(QStringLiteral(".user.bin")), QByteArray("older"));
    QCOMPARE(bytes(QStringLiteral(".bin")), code_);
}

void TestWindowMemorySet::olderFileOfTheName_isNotPassedOverWhateverFails() {
    velm_->useTool("while [ \"$1\" != -r ]; do shift; done\n"
                   "printf 'code' > \"$2\"; printf 'data' > \"${2%.*}.eeprom.bin\"\n"
                   "printf '\\rReading Code...  0.01Sec  OK\\n' >&2\n");
    velm_->click(velm_->controls().btn_read);
    velm_->settle();
    velm_->write(file(QStringLiteral(".user.bin")), "older");
    velm_->write(file(QStringLiteral(".fuses.conf")), "older");
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        for (const QString &ending : {QStringLiteral(".bin"), QStringLiteral(".eeprom.bin")})
            QFile::remove(file(ending));
        {
            const FailingCalls failing("lstat", call, EIO);
            save();
            hasStruck = failing.hasStruck();
        }
        const QString said = velm_->message();
        const bool namesBoth = said.contains(u"chip.user.bin") && said.contains(u"chip.fuses.conf");
        QVERIFY2(namesBoth || said.contains(u"Nothing was saved"), qPrintable(said));
    }
}

void TestWindowMemorySet::cancelledPanel_savesNothing() {
    velm_->panels.answer.clear();
    save();
    QCOMPARE(velm_->panels.requests.size(), 1);
    QCOMPARE(names(), QString());
}

void TestWindowMemorySet::whileTheToolRuns_nothingIsSaved() {
    velm_->write(file(QStringLiteral(".fuses.conf")), "mine");
    save();
    velm_->panels.requests.clear();
    velm_->whileBusy([this] { save(); });
    velm_->click(velm_->controls().btn_verify);
    velm_->settle();
    QCOMPARE(velm_->panels.requests.size(), 0);
    QCOMPARE(names(), QStringLiteral("chip.fuses.conf"));
    // What was asked before the run is asked no more.
    QVERIFY(!button(QStringLiteral("Replace")));
}

QTEST_MAIN(TestWindowMemorySet)
#include "tst_window_memoryset.moc"
