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

using namespace Qt::StringLiterals;

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
    void none_isNoFailure();
    void oneCallFails_savesAllOrNone();
    void withoutExchange_itIsTheSame();
    void whatCannotBeTakenBack_isNamedAndKept();
    void killedAtAnyCall_losesNothing();

private:
    QString path(const QString &name) const { return folder_->filePath(name); }
    QList<FileToSave> files() const {
        return {{path(u"a.bin"_s), "new a"}, {path(u"b.bin"_s), "new b"}, {path(u"c.bin"_s), "c"}};
    }
    /// What the folder holds: "name=content" for each file.
    QStringList content() const;
    QStringList contentBefore() const { return {u"b.bin=old b"_s}; }
    QStringList contentAfter() const { return {u"a.bin=new a"_s, u"b.bin=new b"_s, u"c.bin=c"_s}; }
    void verifyAllOrNone(const std::optional<UnsavedTogether> &unsaved,
                         const QByteArray &struckCall);

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestSavingTogether::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
    QVERIFY(writeWholeFile(path(u"b.bin"_s), "old b"));
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
    QVERIFY(::chmod(QFile::encodeName(path(u"b.bin"_s)).constData(), 0604) == 0);
    QVERIFY(QDir(folder_->path()).mkdir(u"links"_s));
    const QString link = path(u"links/b.bin"_s);
    QVERIFY(QFile::link(path(u"b.bin"_s), link));
    QVERIFY(saveTogether({{path(u"a.bin"_s), "new a"}, {link, "new b"}, {path(u"c.bin"_s), "c"}},
                         Replacing::Allowed));
    QCOMPARE(content(), contentAfter());
    QCOMPARE(QFileInfo(link).symLinkTarget(), path(u"b.bin"_s));
    struct stat facts = {};
    QCOMPARE(::stat(QFile::encodeName(path(u"b.bin"_s)).constData(), &facts), 0);
    QCOMPARE(facts.st_mode & 0777u, 0604u);
}

void TestSavingTogether::secondWithoutFolder_savesNone() {
    const QString nowhere = path(u"none/b.bin"_s);
    const auto unsaved = failureOf(
        saveTogether({{path(u"a.bin"_s), "new a"}, {nowhere, "new b"}}, Replacing::Allowed));
    QVERIFY(unsaved);
    QCOMPARE(unsaved->path, nowhere);
    QCOMPARE(unsaved->failure.reason, u"No such file or directory"_s);
    QCOMPARE(content(), contentBefore());
}

void TestSavingTogether::secondIsAFolder_savesNone() {
    QVERIFY(QDir(folder_->path()).mkdir(u"c.bin"_s));
    const auto unsaved = failureOf(saveTogether(files(), Replacing::Allowed));
    QVERIFY(unsaved);
    QCOMPARE(unsaved->path, path(u"c.bin"_s));
    QCOMPARE(content(), contentBefore());
}

// The folder comes while the files are taking their places.
void TestSavingTogether::folderInTheLastPlace_takesTheOthersBack() {
    bool isThere = false;
    for (int call = 1; !isThere; ++call) {
        const FailingCalls failing(call, [this] { QDir(folder_->path()).mkdir(u"c.bin"_s); });
        const auto unsaved = failureOf(saveTogether(files(), Replacing::Allowed));
        isThere = failing.hasStruck() && failing.struckCall() == "renameat2";
        if (isThere) {
            QVERIFY(unsaved);
            QCOMPARE(unsaved->path, path(u"c.bin"_s));
            QVERIFY(unsaved->notTakenBack.isEmpty());
            QCOMPARE(content(), contentBefore());
        }
        init();
    }
}

void TestSavingTogether::samePlaceTwice_savesNone() {
    const QString link = path(u"link"_s);
    QVERIFY(QFile::link(path(u"b.bin"_s), link));
    const auto unsaved =
        failureOf(saveTogether({{path(u"b.bin"_s), "new b"}, {link, "other"}}, Replacing::Allowed));
    QVERIFY(unsaved);
    QCOMPARE(unsaved->path, link);
    QCOMPARE(readWholeFile(path(u"b.bin"_s)), QByteArray("old b"));
}

void TestSavingTogether::olderThatMayNotBeReplaced_savesNone() {
    const auto unsaved = failureOf(saveTogether(files(), Replacing::Refused));
    QVERIFY(unsaved);
    QCOMPARE(unsaved->path, path(u"b.bin"_s));
    QCOMPARE(unsaved->failure.reason, u"File exists"_s);
    QCOMPARE(content(), contentBefore());
    QVERIFY(QFile::remove(path(u"b.bin"_s)));
    QVERIFY(saveTogether(files(), Replacing::Refused));
    QCOMPARE(content(), contentAfter());
}

void TestSavingTogether::none_isNoFailure() {
    QVERIFY(saveTogether({}, Replacing::Allowed));
    QCOMPARE(content(), contentBefore());
}

void TestSavingTogether::verifyAllOrNone(const std::optional<UnsavedTogether> &unsaved,
                                         const QByteArray &struckCall) {
    // An older file that could not be removed stays, under a name that says so.
    if (struckCall == "unlink") {
        for (const QFileInfo &left : QDir(folder_->path()).entryInfoList({u"*.velm-*"_s}))
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
        unsaved = failureOf(saveTogether({{path(u"b.bin"_s), "new b"}, {path(u"a.bin"_s), "new a"}},
                                         Replacing::Allowed));
    }
    QVERIFY(unsaved);
    QCOMPARE(unsaved->path, path(u"a.bin"_s));
    QCOMPARE(unsaved->notTakenBack.size(), 1);
    QCOMPARE(unsaved->notTakenBack.first().path, path(u"b.bin"_s));
    QCOMPARE(readWholeFile(unsaved->notTakenBack.first().olderPath), "old b");
    const QStringList left = content();
    QCOMPARE(left.size(), 2);
    QCOMPARE(left.first(), u"b.bin=new b"_s);
    QVERIFY2(left.last().startsWith(u"b.bin.velm-"_s), qPrintable(left.last()));
    QVERIFY2(left.last().endsWith(u"=old b"_s), qPrintable(left.last()));
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
        const bool hasOlder = std::any_of(left.begin(), left.end(), [](const QString &file) {
            return file.endsWith(u"=old b"_s);
        });
        const QStringList all = contentAfter();
        const bool hasAll = std::all_of(
            all.begin(), all.end(), [&left](const QString &file) { return left.contains(file); });
        QVERIFY2(hasOlder || hasAll, name.constData());
    }
}

QTEST_GUILESS_MAIN(TestSavingTogether)
#include "tst_savingtogether.moc"
