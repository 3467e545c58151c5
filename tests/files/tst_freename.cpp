// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FreeName.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>

class TestFreeName : public QObject {
    Q_OBJECT

private slots:
    void init();
    void aFreeName_isTaken();
    void aFileOfOtherBytes_stays();
    void aFileOfTheseBytes_isTheOne();
    void aFileThatComesMeanwhile_stays();
    void aFailure_namesThePath();
    void aFolderThatCannotBeLookedInto_isTold();
    void aLookThatFails_isTold();
    void aName_isTakenOrFree_data();
    void aName_isTakenOrFree();
    void aName_isNotFreeWhateverFails();

private:
    QString path(const char *name) const { return folder_->filePath(QLatin1String(name)); }
    Result<QString, UnsavedTogether> save(const QByteArray &bytes) const {
        return saveUnderFreeName(folder_->path(), QStringLiteral("rom"), QStringLiteral(".bin"),
                                 bytes);
    }
    QStringList files() const { return QDir(folder_->path()).entryList(QDir::Files); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestFreeName::init() {
    folder_ = std::make_unique<QTemporaryDir>();
}

void TestFreeName::aFreeName_isTaken() {
    QCOMPARE(*save("new"), path("rom.bin"));
    QCOMPARE(readWholeFile(path("rom.bin")), QByteArray("new"));
}

void TestFreeName::aFileOfOtherBytes_stays() {
    QVERIFY(writeWholeFile(path("rom.bin"), "other"));
    QVERIFY(QFile::link(path("nowhere"), path("rom-2.bin")));
    QCOMPARE(*save("new"), path("rom-3.bin"));
    QCOMPARE(readWholeFile(path("rom.bin")), QByteArray("other"));
    QCOMPARE(readWholeFile(path("rom-3.bin")), QByteArray("new"));
}

void TestFreeName::aFileOfTheseBytes_isTheOne() {
    QVERIFY(writeWholeFile(path("rom.bin"), "new"));
    const FailingCalls counting("write", 1, EIO);
    QCOMPARE(*save("new"), path("rom.bin"));
    QVERIFY(!counting.hasStruck());
}

void TestFreeName::aFileThatComesMeanwhile_stays() {
    bool hasStruck = true;
    bool hasMovedOn = false;
    for (int call = 1; hasStruck; ++call) {
        init();
        const FailingCalls meanwhile(call, [this] {
            if (!QFile::exists(path("rom.bin")))
                writeWholeFile(path("rom.bin"), "other");
        });
        const auto saved = save("new");
        hasStruck = meanwhile.hasStruck();
        QVERIFY(saved);
        QCOMPARE(readWholeFile(*saved), QByteArray("new"));
        if (*saved == path("rom.bin"))
            continue;
        hasMovedOn = true;
        QCOMPARE(readWholeFile(path("rom.bin")), QByteArray("other"));
        QCOMPARE(files().size(), 2);
    }
    QVERIFY(hasMovedOn);
}

void TestFreeName::aFailure_namesThePath() {
    const FailingCalls failing("write", 1, ENOSPC);
    const auto saved = save("new");
    QVERIFY(saved.failure());
    QCOMPARE(saved.failure()->path, path("rom.bin"));
    QCOMPARE(saved.failure()->failure.systemError, ENOSPC);
    QCOMPARE(files(), QStringList());
}

// No number behind the name would lead to a free one.
void TestFreeName::aFolderThatCannotBeLookedInto_isTold() {
    QVERIFY(QFile::link(QStringLiteral("loop"), path("loop")));
    const auto saved =
        saveUnderFreeName(path("loop"), QStringLiteral("rom"), QStringLiteral(".bin"), "new");
    QVERIFY(saved.failure());
    QCOMPARE(saved.failure()->path, path("loop/rom.bin"));
    QCOMPARE(saved.failure()->failure.systemError, ELOOP);
}

void TestFreeName::aLookThatFails_isTold() {
    const FailingCalls failing(1, FailingCalls::Mishap::Fails, EIO);
    const auto saved = save("new");
    QVERIFY(saved.failure());
    QCOMPARE(saved.failure()->path, path("rom.bin"));
    QCOMPARE(saved.failure()->failure.systemError, EIO);
    QCOMPARE(files(), QStringList());
}

void TestFreeName::aName_isTakenOrFree_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("taken");
    QTest::newRow("a file") << QStringLiteral("rom.bin") << true;
    QTest::newRow("a folder") << QStringLiteral(".") << true;
    QTest::newRow("a link to nothing") << QStringLiteral("link") << true;
    QTest::newRow("nothing") << QStringLiteral("nothing") << false;
    QTest::newRow("in no folder") << QStringLiteral("nothing/rom.bin") << false;
    QTest::newRow("below a file") << QStringLiteral("rom.bin/below") << false;
    QTest::newRow("too long a name") << QString(256, u'x') << false;
    QTest::newRow("a null character") << QStringLiteral("rom.bin") + QChar(QChar::Null) << false;
}

void TestFreeName::aName_isTakenOrFree() {
    QFETCH(QString, name);
    QFETCH(bool, taken);
    QVERIFY(writeWholeFile(path("rom.bin"), "other"));
    QVERIFY(QFile::link(path("nowhere"), path("link")));
    QCOMPARE(*isNameTaken(folder_->filePath(name)), taken);
}

void TestFreeName::aName_isNotFreeWhateverFails() {
    QVERIFY(writeWholeFile(path("rom.bin"), "other"));
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
        const Result<bool> taken = isNameTaken(path("rom.bin"));
        hasStruck = failing.hasStruck();
        QCOMPARE(bool(taken), !hasStruck);
    }
}

QTEST_GUILESS_MAIN(TestFreeName)
#include "tst_freename.moc"
