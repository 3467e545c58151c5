// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cerrno>

using namespace settingsKeys;

namespace {

/// More favourites than a page of the disk holds.
QStringList manyFavourites() {
    QStringList names;
    for (int i = 0; i < 600; ++i)
        names.append(QStringLiteral("DEVICE%1@DIP28").arg(i));
    return names;
}

QByteArray usualSettings() {
    return "[General]\ndevice=A\nfavourites=" +
           manyFavourites().join(QStringLiteral(", ")).toUtf8() + "\npad=true\n";
}

} // namespace

/// Whatever goes wrong once, wherever it goes wrong: no setting is lost.
class TestSettingsMishaps : public QObject {
    Q_OBJECT

private slots:
    void init();
    void oneCallFails_data();
    void oneCallFails();
    void killedAtAnyCall_data();
    void killedAtAnyCall();
    void killedAtAnyCall_leavesAllValuesSetAtOnceOrNone();
    void damagedFile_isKeptWhateverHappens_data();
    void damagedFile_isKeptWhateverHappens();
    void oneCallFailsAtADamagedFile();
    void fileThatCannotBeSeenJustNow_keepsWhatOthersWrote();

private:
    QString path() const { return folder_->filePath(QStringLiteral("velm.conf")); }
    // What a program started later finds, as a picture.
    QString foundLater() const;
    bool holdsSomewhere(const QByteArray &content) const {
        const QStringList files = filesLeft();
        return std::any_of(files.begin(), files.end(), [&](const QString &file) {
            return readWholeFile(folder_->filePath(file)) == content;
        });
    }
    QStringList filesLeft() const { return QDir(folder_->path()).entryList(QDir::Files); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestSettingsMishaps::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

QString TestSettingsMishaps::foundLater() const {
    // A copy under another name, so that nothing that is kept in memory can help.
    const QTemporaryDir elsewhere;
    const QString copy = elsewhere.filePath(QStringLiteral("copy.conf"));
    QFile::copy(path(), copy);
    const SettingsStore store(copy);
    const bool keepsTheList = store.stringListValue(favourites) == manyFavourites();
    return QStringLiteral("device %1, pad %2, favourites %3")
        .arg(store.stringValue(device), store.stringValue(pad),
             keepsTheList ? QStringLiteral("kept") : QStringLiteral("lost"));
}

void TestSettingsMishaps::oneCallFails_data() {
    QTest::addColumn<int>("error");
    QTest::newRow("an error of the disk") << EIO;
    QTest::newRow("a full disk") << ENOSPC;
    QTest::newRow("no permission") << EACCES;
    QTest::newRow("no memory") << ENOMEM;
}

void TestSettingsMishaps::oneCallFails() {
    QFETCH(int, error);
    bool struck = true;
    for (int call = 1; struck; ++call) {
        init();
        QVERIFY(writeWholeFile(path(), usualSettings()));
        std::unique_ptr<SettingsStore> store;
        bool said = false;
        QByteArray name;
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, error);
            store = std::make_unique<SettingsStore>(path());
            QCOMPARE(store->stringValue(device).isNull(), store->unreadFile().has_value());
            QSignalSpy problems(store.get(), &SettingsStore::problem);
            store->setValue(pad, false);
            said = !problems.isEmpty();
            struck = failing.hasStruck();
            name = failing.struckCall();
        }
        const QString number = QStringLiteral("call %1: ").arg(call);
        const QString kept = QStringLiteral("device A, pad false, favourites kept");
        if (foundLater() != kept) {
            QCOMPARE(number + foundLater(),
                     number + QStringLiteral("device A, pad true, favourites kept"));
            QVERIFY2(said, qPrintable(number + QStringLiteral("nothing was said")));
        }
        // An older file that could not be removed goes at the next start.
        if (name == "unlink")
            const SettingsStore next(path());
        QCOMPARE(number + filesLeft().join(u' '), number + QStringLiteral("velm.conf"));
        QCOMPARE(store->boolValue(pad), false);
        store->setValue(unprotect, true);
        QCOMPARE(number + foundLater(), number + kept);
    }
}

void TestSettingsMishaps::killedAtAnyCall_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("a first change")
        << QByteArray()
        << QStringList({QStringLiteral("device , pad , favourites lost"),
                        QStringLiteral("device , pad false, favourites lost")});
    QTest::newRow("a later change")
        << usualSettings()
        << QStringList({QStringLiteral("device A, pad true, favourites kept"),
                        QStringLiteral("device A, pad false, favourites kept")});
}

void TestSettingsMishaps::killedAtAnyCall() {
    QFETCH(QByteArray, before);
    QFETCH(QStringList, found);
    bool struck = true;
    for (int call = 1; struck; ++call) {
        init();
        if (!before.isEmpty())
            QVERIFY(writeWholeFile(path(), before));
        {
            const FailingCalls killing(call, FailingCalls::Mishap::Kills, EIO);
            SettingsStore store(path());
            store.setValue(pad, false);
            struck = killing.hasStruck();
        }
        const QString number = QStringLiteral("call %1: ").arg(call);
        QVERIFY2(found.contains(foundLater()), qPrintable(number + foundLater()));
        QVERIFY2(!QFile::exists(path() + QStringLiteral(".damaged")), qPrintable(number));
    }
}

void TestSettingsMishaps::killedAtAnyCall_leavesAllValuesSetAtOnceOrNone() {
    const QByteArray before = "[General]\npad_00=false\npad_ff=true\n";
    const QByteArray after = "[General]\npad_00=true\npad_ff=false\n";
    bool struck = true;
    for (int call = 1; struck; ++call) {
        init();
        QVERIFY(writeWholeFile(path(), before));
        {
            const FailingCalls killing(call, FailingCalls::Mishap::Kills, EIO);
            SettingsStore store(path());
            store.setValues({{pad_ff, false}, {pad_00, true}});
            struck = killing.hasStruck();
        }
        const QByteArray left = readWholeFile(path());
        QVERIFY2(left == before || left == after, left);
    }
    QCOMPARE(readWholeFile(path()), after);
}

void TestSettingsMishaps::damagedFile_isKeptWhateverHappens_data() {
    QTest::addColumn<FailingCalls::Mishap>("mishap");
    QTest::newRow("one call fails") << FailingCalls::Mishap::Fails;
    QTest::newRow("the program is killed") << FailingCalls::Mishap::Kills;
}

void TestSettingsMishaps::damagedFile_isKeptWhateverHappens() {
    QFETCH(FailingCalls::Mishap, mishap);
    bool struck = true;
    for (int call = 1; struck; ++call) {
        init();
        QVERIFY(writeWholeFile(path(), "nonsense"));
        {
            const FailingCalls failing(call, mishap, EIO);
            SettingsStore store(path());
            store.setValue(pad, true);
            struck = failing.hasStruck();
        }
        QVERIFY2(holdsSomewhere("nonsense"), qPrintable(QString::number(call)));
    }
}

void TestSettingsMishaps::oneCallFailsAtADamagedFile() {
    bool struck = true;
    for (int call = 1; struck; ++call) {
        init();
        QVERIFY(writeWholeFile(path(), usualSettings()));
        SettingsStore store(path());
        QVERIFY(writeWholeFile(path(), "nonsense"));
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            store.setValue(pad, false);
            struck = failing.hasStruck();
        }
        store.setValue(unprotect, true);
        QCOMPARE(foundLater(), QStringLiteral("device A, pad false, favourites kept"));
        QVERIFY(holdsSomewhere("nonsense"));
    }
}

void TestSettingsMishaps::fileThatCannotBeSeenJustNow_keepsWhatOthersWrote() {
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        QFile::remove(path());
        {
            SettingsStore store(path());
            store.setValue(pad, true);
            SettingsStore(path()).setValue(pad, false);
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            store.setValue(skipErase, true);
            hasStruck = failing.hasStruck();
        }
        QCOMPARE(readWholeFile(path()), QByteArray("[General]\npad=false\nskipErase=true\n"));
    }
}

QTEST_GUILESS_MAIN(TestSettingsMishaps)
#include "tst_settings_mishaps.moc"
