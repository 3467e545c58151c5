// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "imageviews/MemoriesWindow.h"
#include "settings/SettingsKeys.h"

#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>

using namespace Qt::StringLiterals;

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
    void olderFileOfTheName_isSaid();
    void cancelledPanel_savesNothing();
    void whileTheToolRuns_nothingIsSaved();

private:
    void save();
    QPushButton *button(const QString &text) const;
    /// The files named chip.*, their names in one line.
    QString names() const {
        return QDir(velm_->path(u"sets"_s)).entryList({u"chip*"_s}, QDir::AllEntries).join(u' ');
    }
    QString file(const QString &ending) const { return velm_->path(u"sets/chip"_s + ending); }
    QByteArray bytes(const QString &ending) const { return WindowFixture::bytesOf(file(ending)); }

    std::unique_ptr<WindowFixture> velm_;
    QByteArray code_;
    QByteArray data_;
    QByteArray fuses_;
};

void TestWindowMemorySet::init() {
    velm_ = std::make_unique<WindowFixture>();
    velm_->start();
    QVERIFY(QDir().mkpath(velm_->path(u"sets"_s)));
    velm_->settings().setValue(settingsKeys::device, u"ATMEGA8@DIP28"_s);
    velm_->click(velm_->controls().btn_read);
    velm_->settle();
    code_ = WindowFixture::bytesOf(velm_->temporary(u"temp_read.bin"_s));
    data_ = WindowFixture::bytesOf(velm_->temporary(u"temp_read.eeprom.bin"_s));
    fuses_ = WindowFixture::bytesOf(velm_->temporary(u"temp_read.fuses.conf"_s));
    QCOMPARE(code_.size(), 8192);
    QCOMPARE(data_.size(), 512);
    velm_->panels.answer = file(u".bin"_s);
}

void TestWindowMemorySet::save() {
    for (QMenu *menu : velm_->velm().window().menuBar()->findChildren<QMenu *>())
        for (QAction *action : menu->actions())
            if (action->text() == u"Save the se&t\u2026"_s)
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
    QCOMPARE(velm_->panels.requests.last().suggestedName, u"ATMEGA8@DIP28.bin"_s);
    QCOMPARE(velm_->panels.requests.last().extensions, QStringList{u"bin"_s});
    QCOMPARE(names(), u"chip.bin chip.eeprom.bin chip.fuses.conf"_s);
    QCOMPARE(bytes(u".bin"_s), code_);
    QCOMPARE(bytes(u".eeprom.bin"_s), data_);
    QCOMPARE(bytes(u".fuses.conf"_s), fuses_);
    QCOMPARE(velm_->message().section(u'\n', 0, 0),
             u"Done: Saved in %1: chip.bin, chip.eeprom.bin, chip.fuses.conf."_s.arg(
                 velm_->path(u"sets"_s)));
}

void TestWindowMemorySet::set_isSavedFromItsWindow() {
    velm_->click(button(u"Show them"_s));
    const QPointer<MemoriesWindow> window = velm_->velm().window().findChild<MemoriesWindow *>();
    QVERIFY(window);
    velm_->panels.whileOpen = [&window] { QVERIFY(window->isVisible()); };
    for (auto *button : window->findChildren<QPushButton *>())
        if (button->text() == u"&Save the set\u2026"_s)
            velm_->click(button);
    // What is said of it stands in the message line, which it may lie over.
    QTRY_VERIFY(!window);
    QCOMPARE(names(), u"chip.bin chip.eeprom.bin chip.fuses.conf"_s);
}

void TestWindowMemorySet::name_mayHaveAnyEnding() {
    velm_->panels.answer = file(u".v2"_s);
    save();
    QCOMPARE(names(), u"chip.v2.bin chip.v2.eeprom.bin chip.v2.fuses.conf"_s);
}

// Each part is of one Read, whatever has become of its files and of the data shown.
void TestWindowMemorySet::set_isOfTheReadWhateverCameSince() {
    for (const QString &ending : {u".bin"_s, u".eeprom.bin"_s, u".fuses.conf"_s})
        QVERIFY(QFile::remove(velm_->temporary(u"temp_read"_s + ending)));
    velm_->useTool("printf 'No programmer found.\n' >&2; exit 1\n");
    velm_->click(velm_->controls().btn_read);
    velm_->settle();
    save();
    QCOMPARE(bytes(u".bin"_s), code_);
    QCOMPARE(bytes(u".eeprom.bin"_s), data_);
    QCOMPARE(bytes(u".fuses.conf"_s), fuses_);
}

void TestWindowMemorySet::otherFiles_areReplacedOnASecondPressAlone() {
    velm_->write(file(u".bin"_s), "mine"); // the panel has asked about this one
    velm_->write(file(u".fuses.conf"_s), "mine");
    save();
    QCOMPARE(velm_->message().section(u'\n', 0, 0),
             u"Warning: Nothing was saved yet. There is already in %1: chip.fuses.conf."_s.arg(
                 velm_->path(u"sets"_s)));
    QCOMPARE(names(), u"chip.bin chip.fuses.conf"_s);
    QCOMPARE(bytes(u".bin"_s), QByteArray("mine"));
    velm_->click(button(u"Replace"_s));
    QCOMPARE(bytes(u".bin"_s), code_);
    QCOMPARE(bytes(u".eeprom.bin"_s), data_);
    QCOMPARE(bytes(u".fuses.conf"_s), fuses_);
    QVERIFY(!button(u"Replace"_s));
}

void TestWindowMemorySet::fileThatComesBetween_isAskedAbout() {
    velm_->write(file(u".fuses.conf"_s), "mine");
    save();
    velm_->write(file(u".eeprom.bin"_s), "newer");
    velm_->click(button(u"Replace"_s));
    QCOMPARE(bytes(u".eeprom.bin"_s), QByteArray("newer"));
    QVERIFY(velm_->message().contains(u"chip.eeprom.bin"_s));
    velm_->click(button(u"Replace"_s));
    QCOMPARE(bytes(u".eeprom.bin"_s), data_);
}

void TestWindowMemorySet::half_isRefused() {
    QVERIFY(QDir().mkpath(file(u".fuses.conf"_s)));
    save();
    velm_->click(button(u"Replace"_s));
    QCOMPARE(
        velm_->message().section(u'\n', 0, 0),
        u"Problem: Nothing was saved, since %1 could not be written: Not a regular file."_s.arg(
            file(u".fuses.conf"_s)));
    QCOMPARE(names(), u"chip.fuses.conf"_s);
    QVERIFY(velm_->log.lines.contains(u"error writing to "_s + file(u".fuses.conf"_s)));
}

void TestWindowMemorySet::olderFileOfTheName_isSaid() {
    velm_->write(file(u".user.bin"_s), "older");
    save();
    QVERIFY2(velm_->message().contains(u"Not of this set, but there already: chip.user.bin."_s),
             qPrintable(velm_->message()));
    QCOMPARE(bytes(u".user.bin"_s), QByteArray("older"));
    QCOMPARE(bytes(u".bin"_s), code_);
}

void TestWindowMemorySet::cancelledPanel_savesNothing() {
    velm_->panels.answer.clear();
    save();
    QCOMPARE(velm_->panels.requests.size(), 1);
    QCOMPARE(names(), QString());
}

void TestWindowMemorySet::whileTheToolRuns_nothingIsSaved() {
    velm_->write(file(u".fuses.conf"_s), "mine");
    save();
    velm_->panels.requests.clear();
    velm_->whileBusy([this] { save(); });
    velm_->click(velm_->controls().btn_verify);
    velm_->settle();
    QCOMPARE(velm_->panels.requests.size(), 0);
    QCOMPARE(names(), u"chip.fuses.conf"_s);
    // What was asked before the run is asked no more.
    QVERIFY(!button(u"Replace"_s));
}

QTEST_MAIN(TestWindowMemorySet)
#include "tst_window_memoryset.moc"
