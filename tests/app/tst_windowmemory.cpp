#include "app/WindowMemory.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestWindowMemory : public QObject {
    Q_OBJECT

private slots:
    void everything_comesBack();
    void recentFiles_areEightAndDistinct();
    void aDamagedFile_meansNothingIsRemembered();
    void aFolderThatCannotBeMade_isNoTrouble();
};

void TestWindowMemory::everything_comesBack() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("deep/state.conf"));
    const QByteArray bytes("\0\1\xff, \"x\"", 9);
    {
        WindowMemory memory(path);
        memory.setGeometry(bytes);
        memory.setSplitterState(QByteArray("splitter"));
        memory.setLastFolder(QStringLiteral("open"), QStringLiteral("/a, b/é%20"));
        memory.setLastFolder(QStringLiteral("save"), QStringLiteral("/c"));
    }
    const WindowMemory memory(path);
    QCOMPARE(memory.geometry(), bytes);
    QCOMPARE(memory.splitterState(), QByteArray("splitter"));
    QCOMPARE(memory.lastFolder(QStringLiteral("open")), QStringLiteral("/a, b/é%20"));
    QCOMPARE(memory.lastFolder(QStringLiteral("save")), QStringLiteral("/c"));
    QCOMPARE(memory.lastFolder(QStringLiteral("other")), QString());
}

void TestWindowMemory::recentFiles_areEightAndDistinct() {
    const QTemporaryDir folder;
    WindowMemory memory(folder.filePath(QStringLiteral("state.conf")));
    for (int i = 0; i < 10; ++i)
        memory.addRecentFile(QStringLiteral("/%1").arg(i));
    memory.addRecentFile(QStringLiteral("/7"));
    QCOMPARE(memory.recentFiles().join(QLatin1Char(' ')),
             QStringLiteral("/7 /9 /8 /6 /5 /4 /3 /2"));
}

void TestWindowMemory::aDamagedFile_meansNothingIsRemembered() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("state.conf"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("\0\1 nonsense [[[\n=", 18);
    file.close();
    WindowMemory memory(path);
    QCOMPARE(memory.geometry(), QByteArray());
    memory.setGeometry(QByteArray("new"));
    QCOMPARE(WindowMemory(path).geometry(), QByteArray("new"));
}

void TestWindowMemory::aFolderThatCannotBeMade_isNoTrouble() {
    WindowMemory memory(QStringLiteral("/dev/null/velm/state.conf"));
    memory.setGeometry(QByteArray("lost"));
    QCOMPARE(memory.geometry(), QByteArray());
}

QTEST_GUILESS_MAIN(TestWindowMemory)
#include "tst_windowmemory.moc"
