// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/WindowMemory.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/HeldDisk.h"
#include "support/RecordingLog.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <sys/stat.h>
#include <sys/sysmacros.h>

class TestWindowMemory : public QObject {
    Q_OBJECT

private slots:
    void everything_comesBack();
    void recentFiles_areEightAndDistinct();
    void recentDevices_areTenAndDistinct();
    void aDamagedFile_meansNothingIsRemembered();
    void aFileThatCannotBeWritten_isLoggedOnce();
    void whatTheDiskRefusesLater_isLogged();
    void whatTheToolkitWrote_isRead();
    void whatIsNoFile_isLeftAlone();
    void oneCallFails_forgetsNothingElse();
    void oneFailedRead_losesNothingRemembered();
    void lockFileLeftBehind_isNotWaitedFor();
};

void TestWindowMemory::everything_comesBack() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("deep/state.conf"));
    const QByteArray bytes("\0\1\xff, \"x\"", 9);
    {
        WindowMemory memory(path);
        memory.setGeometry(bytes);
        memory.setSplitterState(QByteArray("splitter"));
        QCOMPARE(memory.viewChoices(), ViewChoices());
        memory.setViewChoices({150, 60, true, false, false, false});
        memory.setPanelLook(QByteArray("panels"));
        memory.setLastFolder(PanelPurpose::Open, QStringLiteral("/a, b/é%20"));
        memory.setLastFolder(PanelPurpose::Save, QStringLiteral("/c"));
        QVERIFY(!memory.trustedTool());
        memory.setTrustedTool(QStringLiteral("sudo 'a, \"b\"' @c"));
    }
    const WindowMemory memory(path);
    QCOMPARE(memory.geometry(), bytes);
    QCOMPARE(memory.splitterState(), QByteArray("splitter"));
    QCOMPARE(memory.viewChoices(), (ViewChoices{150, 60, true, false, false, false}));
    QCOMPARE(memory.panelLook(), QByteArray("panels"));
    QCOMPARE(memory.lastFolder(PanelPurpose::Open), QStringLiteral("/a, b/é%20"));
    QCOMPARE(memory.lastFolder(PanelPurpose::Save), QStringLiteral("/c"));
    QCOMPARE(memory.lastFolder(PanelPurpose::Tool), QString());
    QCOMPARE(memory.trustedTool(), QStringLiteral("sudo 'a, \"b\"' @c"));
}

void TestWindowMemory::recentFiles_areEightAndDistinct() {
    const QTemporaryDir folder;
    WindowMemory memory(folder.filePath(QStringLiteral("state.conf")));
    for (int i = 0; i < 10; ++i)
        memory.addRecentFile(QStringLiteral("/%1").arg(i));
    memory.addRecentFile(QStringLiteral("/7"));
    QCOMPARE(memory.recentFiles().join(u' '), QStringLiteral("/7 /9 /8 /6 /5 /4 /3 /2"));
}

void TestWindowMemory::recentDevices_areTenAndDistinct() {
    const QTemporaryDir folder;
    WindowMemory memory(folder.filePath(QStringLiteral("state.conf")));
    QCOMPARE(memory.recentDevices(), QStringList());
    for (int i = 0; i < 12; ++i)
        memory.addRecentDevice(QStringLiteral("27C%1@A, \"B\"").arg(i));
    memory.addRecentDevice(QStringLiteral("7400"));
    memory.addRecentDevice(QStringLiteral("27C5@A, \"B\""));
    const QStringList devices = memory.recentDevices();
    QCOMPARE(devices.size(), 10);
    QCOMPARE(devices.value(0), QStringLiteral("27C5@A, \"B\""));
    QCOMPARE(devices.value(1), QStringLiteral("7400"));
    QCOMPARE(devices.value(9), QStringLiteral("27C3@A, \"B\""));
    QCOMPARE(memory.recentFiles(), QStringList());
}

void TestWindowMemory::aDamagedFile_meansNothingIsRemembered() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("state.conf"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("\0\1 nonsense [[[\n=", 18);
    file.close();
    RecordingLog log;
    WindowMemory memory(path, &log);
    QCOMPARE(memory.geometry(), QByteArray());
    memory.setGeometry(QByteArray("new"));
    QCOMPARE(WindowMemory(path).geometry(), QByteArray("new"));
    // It may be no file of this program's at all.
    const QString copy = path + QStringLiteral(".damaged");
    QCOMPARE(readWholeFile(copy), QByteArray("\0\1 nonsense [[[\n=", 18));
    QCOMPARE(log.lines, QStringList(QStringLiteral("what VELM remembered could not be read; it is "
                                                   "kept as ") +
                                    copy));
}

void TestWindowMemory::aFileThatCannotBeWritten_isLoggedOnce() {
    RecordingLog log;
    WindowMemory memory(QStringLiteral("/dev/null/velm/state.conf"), &log);
    memory.setGeometry(QByteArray("lost"));
    memory.setLastFolder(PanelPurpose::Open, QStringLiteral("/lost"));
    QCOMPARE(memory.geometry(), QByteArray());
    QCOMPARE(log.lines, QStringList(QStringLiteral("what VELM remembers cannot be saved in "
                                                   "/dev/null/velm/state.conf: Not a directory")));
}

void TestWindowMemory::whatTheDiskRefusesLater_isLogged() {
    const QTemporaryDir folder;
    RecordingLog log;
    HeldDisk disk;
    WindowMemory memory(folder.filePath(QStringLiteral("state.conf")), &log);
    memory.setGeometry(QByteArray("kept so far"));
    QTRY_COMPARE(disk.calls(), 1);
    QCOMPARE(memory.geometry(), QByteArray("kept so far"));
    disk.release(EIO);
    QTRY_COMPARE(log.lines.size(), 1);
    QVERIFY(log.lines.first().endsWith(u"Input/output error"));
}

void TestWindowMemory::whatTheToolkitWrote_isRead() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("state.conf"));
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.append(char(byte)).append("7f");
    const QStringList files = {QStringLiteral("/a, b/é%20"), QStringLiteral("@c")};
    {
        QSettings written(path, QSettings::IniFormat);
        written.setValue(QStringLiteral("window/geometry"), bytes);
        written.setValue(QStringLiteral("window/splitter"), QByteArray("splitter"));
        written.setValue(QStringLiteral("folders/open"), QStringLiteral("C:\\x, \"y\""));
        written.setValue(QStringLiteral("folders/save"), QStringLiteral("/saved"));
        written.setValue(QStringLiteral("folders/tool"), QStringLiteral("/tools"));
        written.setValue(QStringLiteral("files/recent"), files);
    }
    WindowMemory memory(path);
    QCOMPARE(memory.geometry(), bytes);
    QCOMPARE(memory.splitterState(), QByteArray("splitter"));
    QCOMPARE(memory.lastFolder(PanelPurpose::Open), QStringLiteral("C:\\x, \"y\""));
    QCOMPARE(memory.lastFolder(PanelPurpose::Save), QStringLiteral("/saved"));
    QCOMPARE(memory.lastFolder(PanelPurpose::Tool), QStringLiteral("/tools"));
    QCOMPARE(memory.recentFiles(), files);
    memory.setSplitterState(bytes);
    QCOMPARE(QSettings(path, QSettings::IniFormat)
                 .value(QStringLiteral("window/splitter"))
                 .toByteArray(),
             bytes);
}

void TestWindowMemory::whatIsNoFile_isLeftAlone() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("state.conf"));
    const QByteArray name = QFile::encodeName(path);
    if (mknod(name.constData(), S_IFCHR | 0600, makedev(1, 3)) != 0)
        QSKIP("only the administrator can make a device");
    WindowMemory memory(path);
    memory.setGeometry(QByteArray("lost"));
    QCOMPARE(memory.geometry(), QByteArray());
    struct stat facts = {};
    QCOMPARE(lstat(name.constData(), &facts), 0);
    QVERIFY(S_ISCHR(facts.st_mode));
}

void TestWindowMemory::oneCallFails_forgetsNothingElse() {
    bool struck = true;
    for (int call = 1; struck; ++call) {
        const QTemporaryDir folder;
        WindowMemory memory(folder.filePath(QStringLiteral("state.conf")));
        memory.setSplitterState(QByteArray("splitter"));
        QCOMPARE(memory.viewChoices(), ViewChoices());
        memory.setViewChoices({150, 60, true, false, false, false});
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            memory.setGeometry(QByteArray("geometry"));
            struck = failing.hasStruck();
        }
        QCOMPARE(memory.splitterState(), QByteArray("splitter"));
        QCOMPARE(memory.viewChoices(), (ViewChoices{150, 60, true, false, false, false}));
    }
}

void TestWindowMemory::oneFailedRead_losesNothingRemembered() {
    const QTemporaryDir folder;
    RecordingLog log;
    WindowMemory memory(folder.filePath(QStringLiteral("state.conf")), &log);
    memory.addRecentFile(QStringLiteral("/a"));
    memory.addRecentFile(QStringLiteral("/b"));
    {
        const FailingCalls failing("read", 1, EIO);
        memory.addRecentFile(QStringLiteral("/c"));
        QVERIFY(failing.hasStruck());
    }
    QCOMPARE(memory.recentFiles(), QStringList({QStringLiteral("/b"), QStringLiteral("/a")}));
    QCOMPARE(log.lines.size(), 1);
}

void TestWindowMemory::lockFileLeftBehind_isNotWaitedFor() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("state.conf"));
    QVERIFY(writeWholeFile(path + QStringLiteral(".lock"), QByteArray()));
    WindowMemory memory(path);
    const double before = millisecondsSlept();
    memory.setGeometry(QByteArray("new"));
    QCOMPARE(millisecondsSlept() - before, 0.0);
    QCOMPARE(memory.geometry(), QByteArray("new"));
}

QTEST_GUILESS_MAIN(TestWindowMemory)
#include "tst_windowmemory.moc"
