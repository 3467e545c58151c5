// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/SavingTogether.h"

#include "base/Result.h"
#include "support/FailingCalls.h"
#include "support/FileHelpers.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <sys/stat.h>

namespace {

std::optional<UnsavedTogether> failureOf(const Result<void, UnsavedTogether> &saved) {
    return saved ? std::nullopt : std::optional(*saved.failure());
}

} // namespace

/// Several files that are saved all or none. One of the three that are saved here is there before.
class TestSavingTogether : public QObject {
    Q_OBJECT

private slots:
    void init();
    void all_areSaved();
    void older_keepPermissionsAndLinks();
    void secondWithoutFolder_savesNone();
    void secondIsAFolder_savesNone();
    void folderInTheLastPlace_takesTheOthersBack();
    void samePlaceTwice_savesNone();
    void olderThatMayNotBeReplaced_savesNone();
    void olderThatCannotBeLookedAt_isNotReplaced();
    void none_isNoFailure();
    void oneCallFails_savesAllOrNone();
    void eachFolder_isFlushedOnceBehindAllPlaces();
    void folderThatTheDiskRefuses_takesAllBack();
    void withoutExchange_itIsTheSame();
    void whatCannotBeTakenBack_isNamedAndKept();
    void killedAtAnyCall_losesNothing();

private:
    QString path(const QString &name) const { return folder_->filePath(name); }
    QList<FileToSave> files() const {
        return {{path(QStringLiteral("a.bin")), "new a"},
                {path(QStringLiteral("b.bin")), "new b"},
                {path(QStringLiteral("c.bin")), "c"}};
    }
    /// What the folder holds: "name=content" for each file.
    QStringList content() const;
    QStringList contentBefore() const { return {QStringLiteral("b.bin=old b")}; }
    QStringList contentAfter() const {
        return {QStringLiteral("a.bin=new a"), QStringLiteral("b.bin=new b"),
                QStringLiteral("c.bin=c")};
    }
    void verifyAllOrNone(const std::optional<UnsavedTogether> &unsaved,
                         const QByteArray &struckCall);

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestSavingTogether::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
    QVERIFY(writeWholeFile(path(QStringLiteral("b.bin")), "old b"));
}

QStringList TestSavingTogether::content() const {
    QStringList all;
    const QDir folder(folder_->path());
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden))
        all += name + u'=' + QString::fromLatin1(readWholeFile(folder.filePath(name)));
    return all;
}

void TestSavingTogether::all_areSaved() {
    QVERIFY(saveTogether(files(), Replacing::Allowed));
    QCOMPARE(content(), contentAfter());
}

void TestSavingTogether::older_keepPermissionsAndLinks() {
    QVERIFY(::chmod(QFile::encodeName(path(QStringLiteral("b.bin"))).constData(), 0604) == 0);
    QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("links")));
    const QString link = path(QStringLiteral("links/b.bin"));
    QVERIFY(QFile::link(path(QStringLiteral("b.bin")), link));
    QVERIFY(saveTogether({{path(QStringLiteral("a.bin")), "new a"},
                          {link, "new b"},
                          {path(QStringLiteral("c.bin")), "c"}},
                         Replacing::Allowed));
    QCOMPARE(content(), contentAfter());
    QCOMPARE(QFileInfo(link).symLinkTarget(), path(QStringLiteral("b.bin")));
    struct stat facts = {};
    QCOMPARE(::stat(QFile::encodeName(path(QStringLiteral("b.bin"))).constData(), &facts), 0);
    QCOMPARE(facts.st_mode & 0777u, 0604u);
}

void TestSavingTogether::secondWithoutFolder_savesNone() {
    const QString nowhere = path(QStringLiteral("none/b.bin"));
    const auto unsaved = failureOf(saveTogether(
        {{path(QStringLiteral("a.bin")), "new a"}, {nowhere, "new b"}}, Replacing::Allowed));
    QVERIFY(unsaved);
    QCOMPARE(unsaved->path, nowhere);
    QCOMPARE(unsaved->failure.reason, QStringLiteral("No such file or directory"));
    QCOMPARE(content(), contentBefore());
}

void TestSavingTogether::secondIsAFolder_savesNone() {
    QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("c.bin")));
    const auto unsaved = failureOf(saveTogether(files(), Replacing::Allowed));
    QVERIFY(unsaved);
    QCOMPARE(unsaved->path, path(QStringLiteral("c.bin")));
    QCOMPARE(content(), contentBefore());
}

// The folder comes while the files are taking their places.
void TestSavingTogether::folderInTheLastPlace_takesTheOthersBack() {
    bool isThere = false;
    for (int call = 1; !isThere; ++call) {
        const FailingCalls failing(
            call, [this] { QDir(folder_->path()).mkdir(QStringLiteral("c.bin")); });
        const auto unsaved = failureOf(saveTogether(files(), Replacing::Allowed));
        isThere = failing.hasStruck() && failing.struckCall() == "renameat2";
        if (isThere) {
            QVERIFY(unsaved);
            QCOMPARE(unsaved->path, path(QStringLiteral("c.bin")));
            QVERIFY(unsaved->notTakenBack.isEmpty());
            QCOMPARE(content(), contentBefore());
        }
        init();
    }
}

void TestSavingTogether::samePlaceTwice_savesNone() {
    const QString link = path(QStringLiteral("link"));
    QVERIFY(QFile::link(path(QStringLiteral("b.bin")), link));
    const auto unsaved = failureOf(saveTogether(
        {{path(QStringLiteral("b.bin")), "new b"}, {link, "other"}}, Replacing::Allowed));
    QVERIFY(unsaved);
    QCOMPARE(unsaved->path, link);
    QCOMPARE(readWholeFile(path(QStringLiteral("b.bin"))), QByteArray("old b"));
}

void TestSavingTogether::olderThatMayNotBeReplaced_savesNone() {
    const auto unsaved = failureOf(saveTogether(files(), Replacing::Refused));
    QVERIFY(unsaved);
    QCOMPARE(unsaved->path, path(QStringLiteral("b.bin")));
    QCOMPARE(unsaved->failure.reason, QStringLiteral("File exists"));
    QCOMPARE(content(), contentBefore());
    QVERIFY(QFile::remove(path(QStringLiteral("b.bin"))));
    QVERIFY(saveTogether(files(), Replacing::Refused));
    QCOMPARE(content(), contentAfter());
}

// A file system that cannot promise to replace nothing is asked what is there.
void TestSavingTogether::olderThatCannotBeLookedAt_isNotReplaced() {
    FailingCalls failing("renameat2", 1, EINVAL);
    failing.failAgain(1);
    const QString older = path(QStringLiteral("b.bin"));
    QVERIFY(!saveTogether({{older, "new b"}}, Replacing::Refused));
    QVERIFY(failing.hasStruck());
    QCOMPARE(content(), contentBefore());
}

void TestSavingTogether::none_isNoFailure() {
    QVERIFY(saveTogether({}, Replacing::Allowed));
    QCOMPARE(content(), contentBefore());
}

void TestSavingTogether::verifyAllOrNone(const std::optional<UnsavedTogether> &unsaved,
                                         const QByteArray &struckCall) {
    // An older file that could not be removed stays, under a name that says so.
    if (struckCall == "unlink") {
        for (const QFileInfo &left :
             QDir(folder_->path()).entryInfoList({QStringLiteral("*.velm-aside-*")}))
            QFile::remove(left.filePath());
    }
    QVERIFY2(content() == (unsaved ? contentBefore() : contentAfter()), struckCall.constData());
    QVERIFY2(!unsaved || unsaved->notTakenBack.isEmpty(), struckCall.constData());
}

void TestSavingTogether::oneCallFails_savesAllOrNone() {
    bool struck = true;
    int failures = 0;
    for (int call = 1; struck; ++call) {
        init();
        std::optional<UnsavedTogether> unsaved;
        QByteArray name;
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            unsaved = failureOf(saveTogether(files(), Replacing::Allowed));
            struck = failing.hasStruck();
            name = failing.struckCall();
        }
        verifyAllOrNone(unsaved, name);
        failures += unsaved ? 1 : 0;
    }
    QVERIFY2(failures > files().size(), qPrintable(QString::number(failures)));
}

void TestSavingTogether::eachFolder_isFlushedOnceBehindAllPlaces() {
    QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("other")));
    QList<FileToSave> inTwoFolders = files();
    inTwoFolders += {path(QStringLiteral("other/d.bin")), "d"};
    const FailingCalls counting("nothing", 1, EIO);
    QVERIFY(saveTogether(inTwoFolders, Replacing::Allowed));
    QCOMPARE(counting.callsMade().value("fsync"), 2);
}

void TestSavingTogether::folderThatTheDiskRefuses_takesAllBack() {
    QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("other")));
    QList<FileToSave> inTwoFolders = files();
    inTwoFolders += {path(QStringLiteral("other/d.bin")), "d"};
    for (int call = 1; call <= 2; ++call) {
        const FailingCalls failing("fsync", call, EIO);
        const auto unsaved = failureOf(saveTogether(inTwoFolders, Replacing::Allowed));
        QVERIFY(failing.hasStruck());
        QVERIFY(unsaved);
        QCOMPARE(unsaved->path, inTwoFolders.at(call == 1 ? 0 : 3).path);
        QCOMPARE(unsaved->failure.systemError, EIO);
        QVERIFY(unsaved->notTakenBack.isEmpty());
        QCOMPARE(content(), contentBefore());
        QVERIFY(QDir(path(QStringLiteral("other"))).isEmpty());
    }
}

// The place of the second file is taken in two steps then.
void TestSavingTogether::withoutExchange_itIsTheSame() {
    constexpr int callsOfTakingAllPlaces = 20;
    int failures = 0;
    for (int later = 1; later <= callsOfTakingAllPlaces; ++later) {
        init();
        std::optional<UnsavedTogether> unsaved;
        {
            FailingCalls failing("renameat2", 1, FailingCalls::Mishap::Kills, EINVAL);
            failing.failAgain(later);
            unsaved = failureOf(saveTogether(files(), Replacing::Allowed));
            QVERIFY(failing.hasStruck());
        }
        verifyAllOrNone(unsaved, "unlink");
        failures += unsaved ? 1 : 0;
    }
    QVERIFY2(failures > files().size(), qPrintable(QString::number(failures)));
}

void TestSavingTogether::whatCannotBeTakenBack_isNamedAndKept() {
    std::optional<UnsavedTogether> unsaved;
    {
        const FailingCalls failing("rename", 2, FailingCalls::Mishap::Kills, EIO);
        unsaved = failureOf(saveTogether(
            {{path(QStringLiteral("b.bin")), "new b"}, {path(QStringLiteral("a.bin")), "new a"}},
            Replacing::Allowed));
    }
    QVERIFY(unsaved);
    QCOMPARE(unsaved->path, path(QStringLiteral("a.bin")));
    QCOMPARE(unsaved->notTakenBack.size(), 1);
    QCOMPARE(unsaved->notTakenBack.first().path, path(QStringLiteral("b.bin")));
    QCOMPARE(readWholeFile(unsaved->notTakenBack.first().olderPath), "old b");
    const QStringList left = content();
    QCOMPARE(left.size(), 2);
    QCOMPARE(left.first(), QStringLiteral("b.bin=new b"));
    QVERIFY2(left.last().startsWith(u"b.bin.velm-aside-"), qPrintable(left.last()));
    QVERIFY2(left.last().endsWith(u"=old b"), qPrintable(left.last()));
}

// Some may be saved then, but what they held lies beside them.
void TestSavingTogether::killedAtAnyCall_losesNothing() {
    bool struck = true;
    for (int call = 1; struck; ++call) {
        init();
        QByteArray name;
        {
            const FailingCalls killing(call, FailingCalls::Mishap::Kills, EIO);
            [[maybe_unused]] const auto saved = saveTogether(files(), Replacing::Allowed);
            struck = killing.hasStruck();
            name = killing.struckCall();
        }
        const QStringList left = content();
        const bool hasOlder = std::any_of(
            left.begin(), left.end(), [](const QString &file) { return file.endsWith(u"=old b"); });
        const QStringList all = contentAfter();
        const bool hasAll = std::all_of(
            all.begin(), all.end(), [&left](const QString &file) { return left.contains(file); });
        QVERIFY2(hasOlder || hasAll, name.constData());
    }
}

QTEST_GUILESS_MAIN(TestSavingTogether)
#include "tst_savingtogether.moc"
