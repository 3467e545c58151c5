// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/OtherMemories.h"

#include "support/WorkspaceFixture.h"

#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

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
    void load_takesWhatIsWrittenAgain();
    void load_countsAnEmptyFileAsNone();
    void load_saysWhatItCannotRead();

private:
    QString beside(const QString &ending) const { return at->folder() + u"/temp_read"_s + ending; }
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
    QTest::newRow("an ending") << u"/a/read.bin"_s << u"/a/read.fuses.conf"_s;
    QTest::newRow("two endings") << u"/a/read.x.bin"_s << u"/a/read.x.fuses.conf"_s;
    QTest::newRow("no ending") << u"/a/read"_s << u"/a/read.fuses.conf"_s;
    QTest::newRow("a dot in a folder") << u"/home/.local/read"_s << u"/home/.fuses.conf"_s;
}

void TestOtherMemories::names_endAtTheLastDotOfThePath() {
    QFETCH(QString, readFile);
    QTEST(otherMemoryFile(readFile, OtherMemory::Fuses), "fuses");
    const QString data = otherMemoryFile(u"a.bin"_s, OtherMemory::Data);
    QCOMPARE(data, u"a.eeprom.bin"_s);
    QCOMPARE(otherMemoryFile(u"a.bin"_s, OtherMemory::User), u"a.user.bin"_s);
}

void TestOtherMemories::remove_takesTheThreeAlone() {
    writeAllThree();
    for (const QString &ending : {u".bin"_s, u".other.bin"_s, u"2.user.bin"_s})
        write(beside(ending), "x");
    removeOtherMemoryFiles(at->settings);
    QCOMPARE(at->names(), u"temp_read.bin temp_read.other.bin temp_read2.user.bin"_s);
}

void TestOtherMemories::remove_takesLinksAndNeverAFolder() {
    const QString target = at->home.filePath(u"target"_s);
    write(target, "x");
    QVERIFY(QFile::link(target, beside(u".user.bin"_s)));
    QVERIFY(QDir().mkpath(beside(u".eeprom.bin"_s)));
    QCOMPARE(::mkfifo(QFile::encodeName(beside(u".fuses.conf"_s)).constData(), 0600), 0);
    removeOtherMemoryFiles(at->settings);
    QCOMPARE(at->names(), u"temp_read.eeprom.bin temp_read.fuses.conf"_s);
    QCOMPARE(readWholeFile(target), QByteArray("x"));
}

// A user who keeps the read file among their own has files of these names there.
void TestOtherMemories::remove_leavesWhatIsElsewhere() {
    const QString own = at->home.filePath(u"chip.bin"_s);
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
    const QString own = at->folder() + u"/chip.bin"_s;
    at->settings.setValue(settingsKeys::temp_read_from_chip_file, own);
    const QString fuses = otherMemoryFile(own, OtherMemory::Fuses);
    write(fuses, "mine");
    removeOtherMemoryFiles(at->settings);
    QCOMPARE(readWholeFile(fuses), QByteArray("mine"));
}

void TestOtherMemories::remove_leavesAFileThatTheSettingsName() {
    const QString image = beside(u".user.bin"_s);
    at->settings.setValue(settingsKeys::temp_output_file, image);
    writeAllThree();
    removeOtherMemoryFiles(at->settings);
    QCOMPARE(at->names(), u"temp_read.user.bin"_s);
}

void TestOtherMemories::start_removesThem() {
    writeAllThree();
    TemporaryWorkspace foreign(at->settings, at->log, [] { return false; });
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
    write(beside(u".eeprom.bin"_s), "data");
    write(beside(u".user.bin"_s), "user");
    write(beside(u".fuses.conf"_s), "a = 0x62\n?\n");
    const OtherMemories memories = files.loadNew();
    QVERIFY(!memories.isEmpty());
    QCOMPARE(*memories.bytesOf(OtherMemory::Data), QByteArray("data"));
    QCOMPARE(*memories.bytesOf(OtherMemory::User), QByteArray("user"));
    QCOMPARE(*memories.bytesOf(OtherMemory::Fuses), QByteArray("a = 0x62\n?\n"));
    QCOMPARE(memories.fuses,
             (QList<FuseLine>{{u"a = 0x62"_s, Fuse{u"a"_s, 0x62, 2}}, {u"?"_s, {}}}));
}

void TestOtherMemories::load_leavesWhatWasThere() {
    writeAllThree();
    const OtherMemoryFiles files(at->read());
    QVERIFY(files.loadNew().isEmpty());
}

void TestOtherMemories::load_takesWhatIsWrittenAgain() {
    writeAllThree();
    const OtherMemoryFiles files(at->read());
    write(beside(u".user.bin"_s), "newer");
    const OtherMemories memories = files.loadNew();
    QCOMPARE(*memories.user, QByteArray("newer"));
    QVERIFY(!memories.data && !memories.fuseText);
}

void TestOtherMemories::load_countsAnEmptyFileAsNone() {
    const OtherMemoryFiles files(at->read());
    write(beside(u".eeprom.bin"_s), {});
    QVERIFY(files.loadNew().isEmpty());
}

void TestOtherMemories::load_saysWhatItCannotRead() {
    const OtherMemoryFiles files(at->read());
    QCOMPARE(::mkfifo(QFile::encodeName(beside(u".eeprom.bin"_s)).constData(), 0600), 0);
    QVERIFY(QDir().mkpath(beside(u".user.bin"_s)));
    write(beside(u".fuses.conf"_s), QByteArray(OtherMemoryFiles::largestFuseText + 1, '\n'));
    const OtherMemories memories = files.loadNew();
    QVERIFY(memories.isEmpty());
    QStringList said;
    for (const OtherMemories::Unread &unread : memories.unread)
        said << QFileInfo(unread.path).fileName() + u": "_s + unread.failure.reason;
    QCOMPARE(said, (QStringList{u"temp_read.eeprom.bin: Not a regular file"_s,
                                u"temp_read.user.bin: Is a directory"_s,
                                u"temp_read.fuses.conf: File too large"_s}));
}

QTEST_GUILESS_MAIN(TestOtherMemories)
#include "tst_othermemories.moc"
