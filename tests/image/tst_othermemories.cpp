// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/OtherMemories.h"

#include "support/FailingCalls.h"
#include "support/WorkspaceFixture.h"

#include <QTest>

#include <cerrno>
#include <optional>
#include <sys/stat.h>

/// The files that the tool leaves beside the one of a Read.
class TestOtherMemories : public QObject {
    Q_OBJECT

private slots:
    void init();
    void names_endAtTheLastDotOfThePath_data();
    void names_endAtTheLastDotOfThePath();
    void remove_takesTheThreeAlone();
    void remove_takesLinksAndNeverAFolder();
    void remove_leavesWhatIsElsewhere();
    void remove_leavesWhatBelongsToAnotherName();
    void remove_leavesAFileThatTheSettingsName();
    void start_removesThem();
    void load_ofNothing();
    void load_takesWhatHasCome();
    void load_leavesWhatWasThere();
    void load_leavesWhatMayHaveBeenThere();
    void load_saysWhatCannotBeLookedAt();
    void load_takesWhatIsWrittenAgain();
    void load_countsAnEmptyFileAsNone();
    void load_saysWhatItCannotRead();

private:
    QString beside(const QString &ending) const {
        return at->folder() + QStringLiteral("/temp_read") + ending;
    }
    void write(const QString &path, const QByteArray &bytes) const {
        QVERIFY(writeWholeFile(path, bytes));
    }
    void writeAllThree() const {
        for (const OtherMemory memory : otherMemories)
            write(otherMemoryFile(at->read(), memory), "older");
    }

    std::unique_ptr<WorkspaceFixture> at;
};

void TestOtherMemories::init() {
    at = std::make_unique<WorkspaceFixture>();
    QVERIFY(QDir().mkpath(at->folder()));
}

void TestOtherMemories::names_endAtTheLastDotOfThePath_data() {
    QTest::addColumn<QString>("readFile");
    QTest::addColumn<QString>("fuses");
    QTest::newRow("an ending") << QStringLiteral("/a/read.bin")
                               << QStringLiteral("/a/read.fuses.conf");
    QTest::newRow("two endings") << QStringLiteral("/a/read.x.bin")
                                 << QStringLiteral("/a/read.x.fuses.conf");
    QTest::newRow("no ending") << QStringLiteral("/a/read") << QStringLiteral("/a/read.fuses.conf");
    QTest::newRow("a dot in a folder")
        << QStringLiteral("/home/.local/read") << QStringLiteral("/home/.fuses.conf");
}

void TestOtherMemories::names_endAtTheLastDotOfThePath() {
    QFETCH(QString, readFile);
    QTEST(otherMemoryFile(readFile, OtherMemory::Fuses), "fuses");
    const QString data = otherMemoryFile(QStringLiteral("a.bin"), OtherMemory::Data);
    QCOMPARE(data, QStringLiteral("a.eeprom.bin"));
    QCOMPARE(otherMemoryFile(QStringLiteral("a.bin"), OtherMemory::User),
             QStringLiteral("a.user.bin"));
}

void TestOtherMemories::remove_takesTheThreeAlone() {
    writeAllThree();
    for (const QString &ending :
         {QStringLiteral(".bin"), QStringLiteral(".other.bin"), QStringLiteral("2.user.bin")})
        write(beside(ending), "x");
    removeOtherMemoryFiles(at->settings);
    QCOMPARE(at->names(), QStringLiteral("temp_read.bin temp_read.other.bin temp_read2.user.bin"));
}

void TestOtherMemories::remove_takesLinksAndNeverAFolder() {
    const QString target = at->home.filePath(QStringLiteral("target"));
    write(target, "x");
    QVERIFY(QFile::link(target, beside(QStringLiteral(".user.bin"))));
    QVERIFY(QDir().mkpath(beside(QStringLiteral(".eeprom.bin"))));
    QCOMPARE(::mkfifo(QFile::encodeName(beside(QStringLiteral(".fuses.conf"))).constData(), 0600),
             0);
    removeOtherMemoryFiles(at->settings);
    QCOMPARE(at->names(), QStringLiteral("temp_read.eeprom.bin temp_read.fuses.conf"));
    QCOMPARE(readWholeFile(target), QByteArray("x"));
}

// A user who keeps the read file among their own has files of these names there.
void TestOtherMemories::remove_leavesWhatIsElsewhere() {
    const QString own = at->home.filePath(QStringLiteral("chip.bin"));
    at->settings.setValue(settingsKeys::temp_read_from_chip_file, own);
    const QString data = otherMemoryFile(own, OtherMemory::Data);
    write(data, "mine");
    writeAllThree();
    removeOtherMemoryFiles(at->settings);
    QCOMPARE(readWholeFile(data), QByteArray("mine"));
    QVERIFY(!at->names().isEmpty());
}

// A user who keeps both images among their own has files of these names in that folder.
void TestOtherMemories::remove_leavesWhatBelongsToAnotherName() {
    const QString own = at->folder() + QStringLiteral("/chip.bin");
    at->settings.setValue(settingsKeys::temp_read_from_chip_file, own);
    const QString fuses = otherMemoryFile(own, OtherMemory::Fuses);
    write(fuses, "mine");
    removeOtherMemoryFiles(at->settings);
    QCOMPARE(readWholeFile(fuses), QByteArray("mine"));
}

void TestOtherMemories::remove_leavesAFileThatTheSettingsName() {
    const QString image = beside(QStringLiteral(".user.bin"));
    at->settings.setValue(settingsKeys::temp_output_file, image);
    writeAllThree();
    removeOtherMemoryFiles(at->settings);
    QCOMPARE(at->names(), QStringLiteral("temp_read.user.bin"));
}

void TestOtherMemories::start_removesThem() {
    writeAllThree();
    TemporaryWorkspace foreign(at->settings, at->log,
                               FolderGuard([] { return folderOfAnotherWindow(); }));
    foreign.clear_temp_files();
    QVERIFY(!at->names().isEmpty());
    for (const QString &path : {at->output(), at->read(), at->search()})
        write(path, "x");
    at->workspace.clear_temp_files();
    QCOMPARE(at->names(), QString());
    QCOMPARE(at->log.lines, QStringList());
}

void TestOtherMemories::load_ofNothing() {
    const OtherMemories memories = OtherMemoryFiles(at->read()).loadNew();
    QVERIFY(memories.isEmpty());
    QVERIFY(memories.unread.isEmpty());
}

void TestOtherMemories::load_takesWhatHasCome() {
    const OtherMemoryFiles files(at->read());
    write(beside(QStringLiteral(".eeprom.bin")), "data");
    write(beside(QStringLiteral(".user.bin")), "user");
    write(beside(QStringLiteral(".fuses.conf")), "a = 0x62\n?\n");
    const OtherMemories memories = files.loadNew();
    QVERIFY(!memories.isEmpty());
    QCOMPARE(*memories.bytesOf(OtherMemory::Data), QByteArray("data"));
    QCOMPARE(*memories.bytesOf(OtherMemory::User), QByteArray("user"));
    QCOMPARE(*memories.bytesOf(OtherMemory::Fuses), QByteArray("a = 0x62\n?\n"));
    QCOMPARE(memories.fuses,
             (QList<FuseLine>{{QStringLiteral("a = 0x62"), Fuse{QStringLiteral("a"), 0x62, 2}},
                              {QStringLiteral("?"), {}}}));
}

void TestOtherMemories::load_leavesWhatWasThere() {
    writeAllThree();
    const OtherMemoryFiles files(at->read());
    QVERIFY(files.loadNew().isEmpty());
}

// They may be of another chip.
void TestOtherMemories::load_leavesWhatMayHaveBeenThere() {
    writeAllThree();
    const QString data = beside(QStringLiteral(".eeprom.bin"));
    std::optional<OtherMemoryFiles> files;
    {
        const FailingCalls failing("stat", 1, EIO);
        files.emplace(at->read());
        QVERIFY(failing.hasStruck());
    }
    const OtherMemories memories = files->loadNew();
    QVERIFY(memories.isEmpty());
    QCOMPARE(memories.unread.size(), 1);
    QCOMPARE(memories.unread.first().path, data);
    QCOMPARE(memories.unread.first().failure.systemError, EIO);
    QVERIFY(QFile::remove(data));
    QVERIFY(files->loadNew().unread.isEmpty());
}

void TestOtherMemories::load_saysWhatCannotBeLookedAt() {
    const OtherMemoryFiles files(at->read());
    write(beside(QStringLiteral(".user.bin")), "user");
    const FailingCalls failing("stat", 2, EIO);
    const OtherMemories memories = files.loadNew();
    QVERIFY(memories.isEmpty());
    QCOMPARE(memories.unread.size(), 1);
}

void TestOtherMemories::load_takesWhatIsWrittenAgain() {
    writeAllThree();
    const OtherMemoryFiles files(at->read());
    write(beside(QStringLiteral(".user.bin")), "newer");
    const OtherMemories memories = files.loadNew();
    QCOMPARE(*memories.user, QByteArray("newer"));
    QVERIFY(!memories.data && !memories.fuseText);
}

void TestOtherMemories::load_countsAnEmptyFileAsNone() {
    const OtherMemoryFiles files(at->read());
    write(beside(QStringLiteral(".eeprom.bin")), {});
    QVERIFY(files.loadNew().isEmpty());
}

void TestOtherMemories::load_saysWhatItCannotRead() {
    const OtherMemoryFiles files(at->read());
    QCOMPARE(::mkfifo(QFile::encodeName(beside(QStringLiteral(".eeprom.bin"))).constData(), 0600),
             0);
    QVERIFY(QDir().mkpath(beside(QStringLiteral(".user.bin"))));
    write(beside(QStringLiteral(".fuses.conf")),
          QByteArray(OtherMemoryFiles::largestFuseText + 1, '\n'));
    const OtherMemories memories = files.loadNew();
    QVERIFY(memories.isEmpty());
    QStringList said;
    for (const OtherMemories::Unread &unread : memories.unread)
        said << QFileInfo(unread.path).fileName() + QStringLiteral(": ") + unread.failure.reason;
    QCOMPARE(said, (QStringList{QStringLiteral("temp_read.eeprom.bin: Not a regular file"),
                                QStringLiteral("temp_read.user.bin: Is a directory"),
                                QStringLiteral("temp_read.fuses.conf: File too large")}));
}

QTEST_GUILESS_MAIN(TestOtherMemories)
#include "tst_othermemories.moc"
