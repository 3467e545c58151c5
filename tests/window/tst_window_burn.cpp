// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include "support/FailingCalls.h"
#include "support/Privileges.h"

#include <QDir>
#include <QFile>
#include <QPushButton>

#include <sys/stat.h>
#include <unistd.h>

/// What the tool is handed at a Write or a Verify, and what is asked before.
class TestWindowBurn : public QObject {
    Q_OBJECT

private slots:
    void foreignFile_isAskedAboutFirst_data();
    void foreignFile_isAskedAboutFirst();
    void foreignFile_secondPressHandsItOverAsItStands();
    void foreignFile_canBeWrittenAgain();
    void touchedFile_withTheSameBytesIsNotAskedAbout();
    void olderImage_thatNobodyCanRemoveIsAskedAbout();
    void unreadableFile_isNotSaidToBeChanged();
    void linkOfOthers_isAskedAbout_data();
    void linkOfOthers_isAskedAbout();
    void fileWithoutAnImage_isNotCalledMissing();
    void folderAtThePath_isNoOlderImage();
    void linkOfOthers_thatNobodyCanRemoveIsNotLookedBehind_data() {
        QTest::addColumn<QString>("target");
        for (const char *target : {"nothing", "empty", "full"})
            QTest::newRow(target) << QString::fromLatin1(target);
    }
    void linkOfOthers_thatNobodyCanRemoveIsNotLookedBehind();
    void changedPath_getsTheImageAtOnce();
    void foreignFolder_runsNothing();
    void doubleClick_isNoSecondPress();
    void secondPress_countsForTheSameThingOnly();
    void secondPress_countsWhileItsSentenceStandsOnly_data();
    void secondPress_countsWhileItsSentenceStandsOnly();
    void secondPress_countsForTheSameFileOnly();
    void refusedComposition_isNoEmptyFile();
    void oddDevice_isAskedAboutFirst_data();
    void oddDevice_isAskedAboutFirst();
    void oddDevice_andForeignFileAreOneQuestion();

private:
    /// The button that the message line offers; null if it offers none.
    static QPushButton *offer(WindowFixture &velm) {
        auto *button = velm.controls().messageLine->findChild<QPushButton *>();
        return button->isVisible() ? button : nullptr;
    }
    /// A tool that keeps the file that it is handed as the chip.
    static void useCopyingTool(WindowFixture &velm) {
        velm.useTool("cp \"$4\" '" + chip(velm).toUtf8() + "'\n");
    }
    static QString chip(const WindowFixture &velm) { return velm.path(QStringLiteral("chip")); }
    static QByteArray burned(const WindowFixture &velm) {
        return WindowFixture::bytesOf(chip(velm));
    }
    static void meddle(WindowFixture &velm) {
        velm.write(QStringLiteral("workspace/temp.bin"), "0123456789ABCDEFGHIj");
    }
};

void TestWindowBurn::foreignFile_isAskedAboutFirst_data() {
    QTest::addColumn<int>("tag");
    QTest::addColumn<bool>("exists");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("write, changed")
        << int(WriteOperation) << true << QStringLiteral("does not hold the data to burn");
    QTest::newRow("verify, changed")
        << int(VerifyOperation) << true << QStringLiteral("does not hold the data to burn");
    QTest::newRow("write, gone") << int(WriteOperation) << false << QStringLiteral("is missing");
    QTest::newRow("verify, gone") << int(VerifyOperation) << false << QStringLiteral("is missing");
}

void TestWindowBurn::foreignFile_isAskedAboutFirst() {
    QFETCH(int, tag);
    QFETCH(bool, exists);
    QFETCH(QString, sentence);
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    if (exists)
        meddle(velm);
    else
        QDir(velm.path(QStringLiteral("workspace"))).removeRecursively();
    velm.click(tag == WriteOperation ? velm.controls().btn_write : velm.controls().btn_verify);
    QVERIFY2(velm.message().contains(sentence), qPrintable(velm.message()));
    QVERIFY(!QFile::exists(chip(velm)));
    QCOMPARE(velm.log.startingWith(QStringLiteral("launching ")), QStringList());
    // What is asked about is left as it is: pressing a button writes no image.
    QCOMPARE(onDisk(velm), exists ? QByteArray("0123456789ABCDEFGHIj") : QByteArray());
}

void TestWindowBurn::foreignFile_secondPressHandsItOverAsItStands() {
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    meddle(velm);
    velm.click(velm.controls().btn_write);
    velm.click(velm.controls().btn_write);
    QCOMPARE(burned(velm), QByteArray("0123456789ABCDEFGHIj"));
    QVERIFY2(!velm.message().contains(u"Press Write again"), qPrintable(velm.message()));
    // The file is still another's at the next press.
    velm.click(velm.controls().btn_write);
    QVERIFY(velm.message().contains(u"Press Write again"));
}

void TestWindowBurn::foreignFile_canBeWrittenAgain() {
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    meddle(velm);
    velm.click(velm.controls().btn_write);
    QVERIFY(offer(velm));
    velm.click(offer(velm));
    QCOMPARE(onDisk(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QVERIFY(!velm.message().contains(u"Press Write again"));
    velm.click(velm.controls().btn_write);
    QCOMPARE(burned(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowBurn::touchedFile_withTheSameBytesIsNotAskedAbout() {
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    velm.write(QStringLiteral("workspace/temp.bin"), "0123456789ABCDEFGHIJ");
    velm.click(velm.controls().btn_write);
    QCOMPARE(burned(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowBurn::unreadableFile_isNotSaidToBeChanged() {
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    {
        const FailingCalls failing("open", 1, EMFILE);
        velm.click(velm.controls().btn_write);
        QVERIFY(failing.hasStruck());
    }
    QVERIFY(!QFile::exists(chip(velm)));
    QVERIFY2(velm.message().contains(u"temp.bin holds the data to burn: Too many open files. "
                                     "Press Write again"),
             qPrintable(velm.message()));
    QVERIFY(offer(velm));
}

void TestWindowBurn::linkOfOthers_isAskedAbout_data() {
    QTest::addColumn<bool>("leadsToTheImage");
    QTest::newRow("to the image") << true;
    QTest::newRow("to nothing yet") << false;
}

void TestWindowBurn::linkOfOthers_isAskedAbout() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    QFETCH(bool, leadsToTheImage);
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    const QString image = velm.temporary(QStringLiteral("temp.bin"));
    const QString theirs = velm.path(QStringLiteral("theirs"));
    QVERIFY(leadsToTheImage ? QFile::rename(image, theirs) : QFile::remove(image));
    QVERIFY(QFile::link(theirs, image));
    QCOMPARE(::lchown(QFile::encodeName(image).constData(), 12345, gid_t(-1)), 0);
    velm.click(velm.controls().btn_write);
    QVERIFY(!QFile::exists(chip(velm)));
    const QString said =
        QStringLiteral("It is not known whether %1 holds the data to burn: It is a link that "
                       "belongs to somebody else. Press Write again to burn that file")
            .arg(image);
    QVERIFY2(velm.message().contains(said), qPrintable(velm.message()));
}

void TestWindowBurn::fileWithoutAnImage_isNotCalledMissing() {
    WindowFixture velm;
    useCopyingTool(velm);
    velm.settings().setValue(settingsKeys::pad_to, QStringLiteral("-1"));
    velm.settings().setValue(settingsKeys::pad, true);
    velm.start();
    const QString path = velm.temporary(QStringLiteral("temp.bin"));
    QVERIFY(QFile::link(path, path)); // nobody can say what is behind it
    velm.click(velm.controls().btn_write);
    const QString said =
        QStringLiteral("There are no data to burn, and %1 may hold something else. Press Write "
                       "again to burn that")
            .arg(path);
    QVERIFY2(velm.message().contains(said), qPrintable(velm.message()));
    QVERIFY(!offer(velm));
}

void TestWindowBurn::folderAtThePath_isNoOlderImage() {
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    const QString path = velm.temporary(QStringLiteral("folder"));
    QVERIFY(QDir().mkpath(path + QStringLiteral("/inside")));
    velm.settings().setValue(settingsKeys::temp_output_file, path);
    QVERIFY2(velm.message().contains(QStringLiteral("could not be written to %1: ").arg(path)),
             qPrintable(velm.message()));
    velm.click(velm.controls().btn_write);
    QVERIFY2(
        velm.message().contains(path + QStringLiteral(" does not hold the data to burn, which")),
        qPrintable(velm.message()));
}

void TestWindowBurn::olderImage_thatNobodyCanRemoveIsAskedAbout() {
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    ::chmod(QFile::encodeName(velm.path({})).constData(), 0777);
    ::chmod(QFile::encodeName(velm.temporary({})).constData(), 0555);
    ::chmod(QFile::encodeName(velm.temporary(QStringLiteral("temp.bin"))).constData(), 0444);
    {
        const UnprivilegedUser nobody;
        QVERIFY(nobody.isValid());
        enter(velm, 0, 1, QStringLiteral("7A"));
        QVERIFY2(velm.message().contains(u"which still holds something else"),
                 qPrintable(velm.message()));
        velm.click(velm.controls().btn_write);
        QVERIFY2(velm.message().contains(u"does not hold the data to burn, which could not be "
                                         "written there"),
                 qPrintable(velm.message()));
        QVERIFY(!QFile::exists(chip(velm)));
    }
    ::chmod(QFile::encodeName(velm.temporary({})).constData(), 0755);
    velm.click(offer(velm));
    velm.click(velm.controls().btn_write);
    QCOMPARE(burned(velm), QByteArray("z123456789ABCDEFGHIJ"));
}

// What it leads to now is nothing that could be relied on.
void TestWindowBurn::linkOfOthers_thatNobodyCanRemoveIsNotLookedBehind() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    QFETCH(QString, target);
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    velm.write(QStringLiteral("empty"), "");
    velm.write(QStringLiteral("full"), "something else");
    const QString image = velm.temporary(QStringLiteral("temp.bin"));
    QVERIFY(QFile::remove(image));
    QVERIFY(QFile::link(velm.path(target), image));
    QCOMPARE(::lchown(QFile::encodeName(image).constData(), 12345, gid_t(-1)), 0);
    ::chmod(QFile::encodeName(velm.path({})).constData(), 0777);
    ::chmod(QFile::encodeName(velm.temporary({})).constData(), 01777);
    const QString reason = QStringLiteral("It is a link that belongs to somebody else");
    const UnprivilegedUser nobody;
    QVERIFY(nobody.isValid());
    enter(velm, 0, 1, QStringLiteral("7A"));
    QVERIFY2(velm.message().contains(
                 QStringLiteral("could not be written to %1: %2").arg(image, reason)),
             qPrintable(velm.message()));
    velm.click(velm.controls().btn_write);
    QVERIFY2(velm.message().contains(
                 QStringLiteral("It is not known whether %1 holds the data to burn: %2.")
                     .arg(image, reason)),
             qPrintable(velm.message()));
    QVERIFY(!QFile::exists(chip(velm)));
}

void TestWindowBurn::changedPath_getsTheImageAtOnce() {
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    const QString other = velm.write(QStringLiteral("workspace/other.bin"), "an old image");
    velm.settings().setValue(settingsKeys::temp_output_file, other);
    QCOMPARE(WindowFixture::bytesOf(other), QByteArray("0123456789ABCDEFGHIJ"));
    velm.click(velm.controls().btn_write);
    QCOMPARE(burned(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

// The settings file has come to name the folder of another window, and nothing of that is touched.
void TestWindowBurn::foreignFolder_runsNothing() {
    WindowFixture velm;
    velm.useTool("touch '" + chip(velm).toUtf8() + "'\n");
    showTwentyBytes(velm);
    velm.folderIsAnothers = true;
    const QString others = velm.write(QStringLiteral("another/temp.bin"), "its image");
    velm.settings().setValue(settingsKeys::temp_output_file, others);
    QVERIFY2(velm.message().contains(QStringLiteral("Another window works with this folder")),
             qPrintable(velm.message()));
    for (QWidget *button : {velm.controls().btn_read, velm.controls().btn_write,
                            velm.controls().btn_verify, velm.controls().btn_logic})
        for (int press = 0; press < 2; ++press) {
            velm.click(button);
            QVERIFY2(velm.message().contains(
                         QStringLiteral("Nothing can run with the files in %1: Another window "
                                        "works with this folder.")
                             .arg(QFileInfo(others).path())),
                     qPrintable(velm.message()));
        }
    QVERIFY(!QFile::exists(chip(velm)));
    QCOMPARE(WindowFixture::bytesOf(others), QByteArray("its image"));

    velm.folderIsAnothers = false;
    velm.click(velm.controls().btn_read);
    QVERIFY(QFile::exists(chip(velm)));
    QVERIFY(!velm.message().contains(QStringLiteral("Nothing can run")));
}

void TestWindowBurn::doubleClick_isNoSecondPress() {
    WindowFixture velm;
    QApplication::setDoubleClickInterval(1'000'000);
    useCopyingTool(velm);
    velm.start();
    velm.click(velm.controls().btn_write);
    velm.click(velm.controls().btn_write);
    QVERIFY(!QFile::exists(chip(velm)));
    QVERIFY(velm.message().contains(u"There are no data to burn"));
    QApplication::setDoubleClickInterval(0);
    velm.click(velm.controls().btn_write);
    QVERIFY(QFile::exists(chip(velm)));
}

void TestWindowBurn::secondPress_countsForTheSameThingOnly() {
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    meddle(velm);
    velm.click(velm.controls().btn_verify);
    velm.click(velm.controls().btn_write);
    QVERIFY(!QFile::exists(chip(velm)));
    enter(velm, 0, 1, QStringLiteral("7A"));
    QVERIFY2(!velm.message().contains(u"again"), qPrintable(velm.message()));
    meddle(velm);
    velm.click(velm.controls().btn_write);
    QVERIFY(!QFile::exists(chip(velm)));
}

void TestWindowBurn::secondPress_countsWhileItsSentenceStandsOnly_data() {
    QTest::addColumn<bool>("closes");
    QTest::addColumn<int>("tagBetween");
    QTest::newRow("a burn, a verify between") << false << int(VerifyOperation);
    QTest::newRow("a burn, a logic test between") << false << int(LogicOperation);
    QTest::newRow("closing, a verify between") << true << int(VerifyOperation);
}

void TestWindowBurn::secondPress_countsWhileItsSentenceStandsOnly() {
    QFETCH(bool, closes);
    QFETCH(int, tagBetween);
    WindowFixture velm;
    velm.useTool("case $1 in -T) ;; *) [ $3 = -w ] && cp \"$4\" '" + chip(velm).toUtf8() +
                 "';; esac\n");
    if (closes)
        showTwentyBytes(velm);
    else
        velm.start();
    if (closes)
        enter(velm, 0, 1, QStringLiteral("7A"));
    const auto ask = [&] {
        if (closes)
            return velm.velm().window().close();
        velm.click(velm.controls().btn_write);
        return QFile::exists(chip(velm));
    };
    QVERIFY(!ask());
    QPushButton between;
    between.setProperty("tag", tagBetween);
    velm.delegate().go(&between);
    QVERIFY2(!velm.message().contains(u"again"), qPrintable(velm.message()));
    QVERIFY(!ask());
    QVERIFY(ask());
}

void TestWindowBurn::secondPress_countsForTheSameFileOnly() {
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    QVERIFY(QFile::remove(velm.temporary(QStringLiteral("temp.bin"))));
    velm.click(velm.controls().btn_write);
    QVERIFY2(velm.message().contains(u"is missing"), qPrintable(velm.message()));
    meddle(velm);
    velm.click(velm.controls().btn_write);
    QVERIFY(!QFile::exists(chip(velm)));
    QVERIFY2(velm.message().contains(u"does not hold the data to burn"),
             qPrintable(velm.message()));
}

void TestWindowBurn::refusedComposition_isNoEmptyFile() {
    WindowFixture velm;
    useCopyingTool(velm);
    velm.settings().setValue(settingsKeys::pad_to, QStringLiteral("-1"));
    velm.settings().setValue(settingsKeys::pad, true);
    velm.start();
    velm.click(velm.controls().btn_write);
    QVERIFY2(velm.message().contains(u"start the tool all the same"), qPrintable(velm.message()));
    QVERIFY2(!velm.message().contains(u"empty file"), qPrintable(velm.message()));
}

void TestWindowBurn::oddDevice_isAskedAboutFirst_data() {
    QTest::addColumn<int>("tag");
    QTest::newRow("read") << int(ReadOperation);
    QTest::newRow("verify") << int(VerifyOperation);
    QTest::newRow("write") << int(WriteOperation);
    QTest::newRow("logic test") << int(LogicOperation);
}

void TestWindowBurn::oddDevice_isAskedAboutFirst() {
    QFETCH(const int, tag);
    WindowFixture velm;
    velm.useTool("echo run >> '" + chip(velm).toUtf8() + "'\n");
    showTwentyBytes(velm);
    const QString device =
        QStringLiteral("a$(touch '%1')").arg(velm.path(QStringLiteral("got in")));
    velm.controls().uaTextField->setText(device);
    Ui::MainWindow &c = velm.controls();
    QPushButton *const buttons[] = {c.btn_read, c.btn_verify, c.btn_write, c.btn_logic};
    QPushButton *button = buttons[tag];
    velm.click(button);
    velm.settle();
    QVERIFY2(velm.message().contains(u"The shell takes $ in this command"),
             qPrintable(velm.message()));
    QVERIFY2(velm.message().contains(device), qPrintable(velm.message()));
    QCOMPARE(burned(velm), QByteArray());
    QVERIFY(!QFile::exists(velm.path(QStringLiteral("got in"))));
    // Another name is another question.
    velm.controls().uaTextField->setText(device + u'2');
    velm.click(button);
    QCOMPARE(burned(velm), QByteArray());
    velm.click(button);
    velm.settle();
    QCOMPARE(burned(velm), QByteArray("run\n"));
    velm.controls().uaTextField->setText(QStringLiteral("27C64"));
    velm.click(button);
    velm.settle();
    QCOMPARE(burned(velm), QByteArray("run\nrun\n"));
}

void TestWindowBurn::oddDevice_andForeignFileAreOneQuestion() {
    WindowFixture velm;
    useCopyingTool(velm);
    showTwentyBytes(velm);
    velm.controls().uaTextField->setText(QStringLiteral("a`b`"));
    meddle(velm);
    velm.click(velm.controls().btn_write);
    QVERIFY2(velm.message().contains(u"takes ` in this command") &&
                 velm.message().contains(u"does not hold the data to burn"),
             qPrintable(velm.message()));
    QVERIFY(offer(velm));
    velm.click(velm.controls().btn_write);
    velm.settle();
    QCOMPARE(burned(velm), QByteArray("0123456789ABCDEFGHIj"));
}

QTEST_MAIN(TestWindowBurn)
#include "tst_window_burn.moc"
