// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <random>
#include <sys/stat.h>
#include <sys/sysmacros.h>

using namespace settingsKeys;

namespace {

/// What \a store says of a file that it could not use at first, and behind a bar where that was
/// moved; empty if there was none.
QString unreadBy(const SettingsStore &store) {
    const auto &unread = store.unreadFile();
    return unread ? unread->sentence + QStringLiteral(" | ") + unread->movedTo.value_or(QString())
                  : QString();
}

} // namespace

class TestSettingsDamage : public QObject {
    Q_OBJECT

private slots:
    void init();
    void damagedFile_isKeptAside_data();
    void damagedFile_isKeptAside();
    void readableFile_staysInPlace_data();
    void readableFile_staysInPlace();
    void anyBytes_areKeptOrRead();
    void anyLine_isKeptOrRead();
    void damagedFile_getsAnUnusedName();
    void damagedFileOfAnotherProcess_isLeftAlone();
    void fileThatIsMendedMeanwhile_isRead();
    void whatIsNoFile_isLeftAlone_data();
    void whatIsNoFile_isLeftAlone();
    void unreadableFile_isLeftAloneUntilItCanBeRead();
    void damagedFileThatCannotBeMoved_isNotOverwritten();
    void fileDamagedWhileOpen_isKeptAside();
    void fileDamagedBeforeTheEnd_isKeptAside();
    void fileThatIsGone_isMadeAnewWithAllThatItHeld();
    void fileThatCannotBeClaimed_isReadAsBefore();

private:
    QString path() const { return folder_->filePath(QStringLiteral("velm.conf")); }
    QString asidePath() const { return path() + QStringLiteral(".damaged"); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestSettingsDamage::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

void TestSettingsDamage::damagedFile_isKeptAside_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("a line without a key") << QByteArray("[General]\npad=true\nnonsense\n");
    QTest::newRow("a value without a key") << QByteArray("[General]\n=true\n");
    QTest::newRow("an open section") << QByteArray("[General\npad=true\n");
    QTest::newRow("an open quote") << QByteArray("[General]\ndevice=\"A\npad=true\n");
    QTest::newRow("a backslash at the end") << QByteArray("[General]\ndevice=A\\\npad=true\n");
    QTest::newRow("NULs after a crash")
        << QByteArray("[General]\npad=true\n") + QByteArray(9, '\0');
    QTest::newRow("all NULs") << QByteArray(4096, '\0');
    QTest::newRow("another encoding") << QByteArray("[General]\ndevice=jos\xe9\n");
    QTest::newRow("program file") << QByteArray("\x7f"
                                                "ELF\x02\x01\x01=\n");
    QTest::newRow("escape sequences") << QByteArray("device=\x1b[0mA\n");
    QTest::newRow("larger than any settings") << QByteArray("a=") + QByteArray(2 << 20, 'b');
}

void TestSettingsDamage::damagedFile_isKeptAside() {
    QFETCH(QByteArray, content);
    QVERIFY(writeWholeFile(path(), content));
    SettingsStore store(path());
    store.claimFile();
    const QString unread = QStringLiteral("The settings file could not be read; it is kept as %1. "
                                          "VELM starts with its defaults. | %1")
                               .arg(asidePath());
    QCOMPARE(unreadBy(store), unread);
    QVERIFY(store.stringValue(pad).isNull());
    store.setValue(device, QStringLiteral("A"));
    QCOMPARE(unreadBy(store), unread);
    QCOMPARE(readWholeFile(asidePath()), content);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=A\n"));
}

void TestSettingsDamage::readableFile_staysInPlace_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("without a section") << QByteArray("pad=true\n");
    QTest::newRow("without a last line feed") << QByteArray("[General]\npad=true");
    QTest::newRow("lines ended by CR LF") << QByteArray("[General]\r\npad=true\r\n");
    QTest::newRow("byte-order mark") << QByteArray("\xef\xbb\xbf[General]\npad=true\n");
    QTest::newRow("comments") << QByteArray("; mine\n[General]\n# too\npad=true\n\n");
    QTest::newRow("unknown keys and sections") << QByteArray("[General]\nx=1\n[More]\ny=2\n");
    QTest::newRow("a serialised object with a mad length")
        << QByteArray("[General]\nfavourites=@Variant(\\0\\0\\0\\t\\0\\xff\\xff\\xff\\xf0)\n"
                      "pad=true\n");
    QTest::newRow("a name that ends in a slash") << QByteArray("[General]\npad/=1\npad=true\n");
    QTest::newRow("an escaped quote") << QByteArray("[General]\ndevice=a\\\"b\npad=true\n");
}

void TestSettingsDamage::readableFile_staysInPlace() {
    QFETCH(QByteArray, content);
    QVERIFY(writeWholeFile(path(), content));
    SettingsStore store(path());
    QCOMPARE(unreadBy(store), QString());
    QCOMPARE(readWholeFile(path()), content);
    QCOMPARE(store.boolValue(pad), content.contains("pad=true"));
}

// Whatever the disk hands out: no crash, and nothing is lost.
void TestSettingsDamage::anyBytes_areKeptOrRead() {
    std::mt19937 random(20);
    for (int round = 0; round < 200; ++round) {
        QByteArray content(qsizetype(random() % 300), '\0');
        for (char &byte : content)
            byte = char(random());
        QVERIFY(writeWholeFile(path(), content));
        SettingsStore store(path());
        store.claimFile();
        store.setValue(pad, true);
        if (store.unreadFile()) {
            QCOMPARE(readWholeFile(asidePath()), content);
            QFile::remove(asidePath());
        } else {
            QCOMPARE(content, QByteArray());
        }
        QFile::remove(path());
    }
}

void TestSettingsDamage::anyLine_isKeptOrRead() {
    const QByteArray letters = "a=\"\\@(),; %[]#x0\tR";
    std::mt19937 random(21);
    for (int round = 0; round < 300; ++round) {
        QByteArray value(qsizetype(random() % 12), '\0');
        for (char &byte : value)
            byte = letters.at(qsizetype(random() % quint32(letters.size())));
        const QByteArray content = "[General]\npad=" + value + "\nunprotect=true\n";
        QVERIFY(writeWholeFile(path(), content));
        SettingsStore store(path());
        store.boolValue(pad);
        store.stringValue(pad);
        store.stringListValue(pad);
        if (!store.unreadFile())
            QVERIFY2(store.boolValue(unprotect), content.constData());
        QFile::remove(asidePath());
        QFile::remove(path());
    }
}

void TestSettingsDamage::damagedFile_getsAnUnusedName() {
    for (const char *content : {"first", "second", "third"}) {
        QVERIFY(writeWholeFile(path(), content));
        SettingsStore store(path());
        store.setValue(pad, true);
    }
    QCOMPARE(readWholeFile(asidePath()), QByteArray("first"));
    QCOMPARE(readWholeFile(asidePath() + QStringLiteral("-2")), QByteArray("second"));
    QCOMPARE(readWholeFile(asidePath() + QStringLiteral("-3")), QByteArray("third"));
}

// A start that only raises the window of another process changes nothing.
void TestSettingsDamage::damagedFileOfAnotherProcess_isLeftAlone() {
    SettingsStore first(path());
    first.claimFile();
    first.setValue(pad, true);
    QVERIFY(writeWholeFile(path(), "nonsense"));
    {
        const SettingsStore second(path());
        QVERIFY2(unreadBy(second).endsWith(u"The file there is damaged | "),
                 qPrintable(unreadBy(second)));
    }
    QCOMPARE(readWholeFile(path()), QByteArray("nonsense"));
    first.setValue(skipErase, true);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\npad=true\nskipErase=true\n"));
    QCOMPARE(readWholeFile(asidePath()), QByteArray("nonsense"));
}

void TestSettingsDamage::fileThatIsMendedMeanwhile_isRead() {
    QVERIFY(writeWholeFile(path(), "nonsense"));
    SettingsStore store(path());
    QVERIFY(writeWholeFile(path(), "[General]\npad=true\n"));
    const QSignalSpy changes(&store, &SettingsStore::valueChanged);
    store.claimFile();
    QCOMPARE(unreadBy(store), QString());
    QVERIFY(store.boolValue(pad));
    QCOMPARE(changes, QList<QList<QVariant>>({{pad}}));
    QVERIFY(!QFile::exists(asidePath()));
}

void TestSettingsDamage::whatIsNoFile_isLeftAlone_data() {
    QTest::addColumn<mode_t>("type");
    QTest::addColumn<QString>("reason");
    QTest::newRow("folder") << mode_t(S_IFDIR) << QStringLiteral("Is a directory");
    QTest::newRow("FIFO") << mode_t(S_IFIFO) << QStringLiteral("Not a regular file");
    QTest::newRow("device") << mode_t(S_IFCHR) << QStringLiteral("Not a regular file");
    QTest::newRow("link to a device") << mode_t(S_IFLNK) << QStringLiteral("Not a regular file");
}

void TestSettingsDamage::whatIsNoFile_isLeftAlone() {
    QFETCH(mode_t, type);
    QFETCH(QString, reason);
    const QByteArray name = QFile::encodeName(path());
    if (type == S_IFDIR)
        QCOMPARE(mkdir(name.constData(), 0700), 0);
    else if (type == S_IFLNK)
        QVERIFY(QFile::link(QStringLiteral("/dev/null"), path()));
    else if (mknod(name.constData(), type | 0600, makedev(1, 3)) != 0)
        QSKIP("only the administrator can make a device");
    {
        SettingsStore store(path());
        QSignalSpy problems(&store, &SettingsStore::problem);
        QCOMPARE(unreadBy(store),
                 QStringLiteral("VELM starts with its defaults, since the settings in %1 could not "
                                "be read: %2 | ")
                     .arg(path(), reason));
        QVERIFY(store.setValue(pad, true));
        QVERIFY(store.boolValue(pad));
        QCOMPARE(problems.size(), 1);
        QCOMPARE(problems.first().first().toString(),
                 QStringLiteral("The settings hold until VELM ends, but cannot be saved in %1: "
                                "Not a regular file")
                     .arg(path()));
    }
    struct stat facts = {};
    QCOMPARE(lstat(name.constData(), &facts), 0);
    QCOMPARE(facts.st_mode & S_IFMT, type);
    QCOMPARE(
        QDir(folder_->path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot),
        QStringList(QStringLiteral("velm.conf")));
}

void TestSettingsDamage::unreadableFile_isLeftAloneUntilItCanBeRead() {
    const QByteArray name = QFile::encodeName(path());
    QVERIFY(writeWholeFile(path(), "[General]\npad=true\n"));
    QCOMPARE(chmod(QFile::encodeName(folder_->path()).constData(), 0777), 0);
    QCOMPARE(chmod(name.constData(), 0222), 0);
    std::unique_ptr<SettingsStore> store;
    {
        const UnprivilegedUser user;
        QVERIFY(user.isValid());
        store = std::make_unique<SettingsStore>(path());
        QVERIFY2(unreadBy(*store).endsWith(u"read: Permission denied | "),
                 qPrintable(unreadBy(*store)));
        QSignalSpy problems(store.get(), &SettingsStore::problem);
        store->setValue(device, QStringLiteral("A"));
        QCOMPARE(problems.size(), 1);
        QCOMPARE(store->stringValue(device), QStringLiteral("A"));
    }
    QCOMPARE(chmod(name.constData(), 0666), 0);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\npad=true\n"));

    QSignalSpy changes(store.get(), &SettingsStore::valueChanged);
    store->setValue(unprotect, true);
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\ndevice=A\npad=true\nunprotect=true\n"));
    QCOMPARE(unreadBy(*store), QString());
    QCOMPARE(changes, QList<QList<QVariant>>({{pad}, {unprotect}}));
}

void TestSettingsDamage::damagedFileThatCannotBeMoved_isNotOverwritten() {
    QVERIFY(writeWholeFile(path(), "nonsense"));
    QCOMPARE(chmod(QFile::encodeName(path()).constData(), 0666), 0);
    QCOMPARE(chmod(QFile::encodeName(folder_->path()).constData(), 0555), 0);
    {
        const UnprivilegedUser user;
        QVERIFY(user.isValid());
        SettingsStore store(path());
        store.claimFile();
        QCOMPARE(unreadBy(store),
                 QStringLiteral("VELM starts with its defaults, since the settings file %1 is "
                                "damaged; it could not be moved aside: Permission denied | ")
                     .arg(path()));
        QSignalSpy problems(&store, &SettingsStore::problem);
        store.setValue(pad, true);
        QCOMPARE(problems.size(), 1);
        QVERIFY(store.boolValue(pad));
    }
    QCOMPARE(chmod(QFile::encodeName(folder_->path()).constData(), 0755), 0);
    QCOMPARE(readWholeFile(path()), QByteArray("nonsense"));
}

void TestSettingsDamage::fileDamagedWhileOpen_isKeptAside() {
    SettingsStore store(path());
    QSignalSpy kept(&store, &SettingsStore::keptAside);
    store.setValue(pad, true);
    QVERIFY(writeWholeFile(path(), "[General]\ndevice=\"A\n"));
    store.setValue(skipErase, true);
    QCOMPARE(kept.size(), 1);
    QCOMPARE(kept.first(), QVariantList({QStringLiteral("The settings file could not be read; "
                                                        "it is kept as %1.")
                                             .arg(asidePath())}));
    QCOMPARE(readWholeFile(asidePath()), QByteArray("[General]\ndevice=\"A\n"));
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\npad=true\nskipErase=true\n"));
    QVERIFY(store.boolValue(pad));
    QVERIFY(store.boolValue(skipErase));
}

void TestSettingsDamage::fileDamagedBeforeTheEnd_isKeptAside() {
    {
        SettingsStore store(path());
        store.setValue(pad, true);
        const QSignalSpy problems(&store, &SettingsStore::problem);
        {
            const FileSizeLimit full(0);
            store.setValue(skipErase, true);
        }
        QCOMPARE(problems.size(), 1);
        QVERIFY(writeWholeFile(path(), "nonsense"));
    }
    QCOMPARE(readWholeFile(asidePath()), QByteArray("nonsense"));
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\npad=true\nskipErase=true\n"));
}

void TestSettingsDamage::fileThatIsGone_isMadeAnewWithAllThatItHeld() {
    SettingsStore store(path());
    store.setValue(pad, true);
    QVERIFY(QFile::rename(path(), asidePath()));
    store.setValue(skipErase, true);
    QVERIFY(store.boolValue(pad));
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\npad=true\nskipErase=true\n"));
}

void TestSettingsDamage::fileThatCannotBeClaimed_isReadAsBefore() {
    QVERIFY(writeWholeFile(path(), "[General]\npad=true\n"));
    SettingsStore store(path());
    QVERIFY(QFile::rename(path(), asidePath()));
    QVERIFY(QDir().mkpath(path()));
    store.claimFile();
    QCOMPARE(unreadBy(store), QString());
    QVERIFY(store.boolValue(pad));
}

QTEST_GUILESS_MAIN(TestSettingsDamage)
#include "tst_settings_damage.moc"
