// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/IniFile.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <chrono>
#include <sys/stat.h>

namespace {

QString pictureOf(const IniFile::Outcome &outcome) {
    if (IniFile::isDamaged(outcome))
        return QStringLiteral("damaged");
    if (const IniFile::Trouble *trouble = outcome.failure())
        return trouble->failure.reason;
    QStringList entries;
    for (auto value = outcome->begin(); value != outcome->end(); ++value)
        entries.append(value.key() + u'=' + value->toString());
    return entries.join(u' ');
}

const QVariantMap oneChange = {{QStringLiteral("b"), QStringLiteral("new")}};

QDeadlineTimer soon() {
    return QDeadlineTimer(std::chrono::milliseconds(100));
}

} // namespace

class TestIniFile : public QObject {
    Q_OBJECT

private slots:
    void init();
    void outcomes_data();
    void outcomes();
    void unreadableFile_isNotChanged();
    void folderThatCannotBeMade_isTold();
    void anotherProgramsChange_isKept();
    void noChange_leavesTheFileAlone();
    void whatAKilledProgramLeft_isRemovedBehindALinkAsWell_data();
    void whatAKilledProgramLeft_isRemovedBehindALinkAsWell();
    void moveAside_takesAnUnusedName();

private:
    QString path() const { return folder_->filePath(QStringLiteral("a.conf")); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestIniFile::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

void TestIniFile::outcomes_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("read");
    QTest::addColumn<QString>("changed");
    const auto row = [](const char *title, const char *name, const char *read,
                        const char *changed) {
        QTest::newRow(title) << QString::fromLatin1(name) << QString::fromLatin1(read)
                             << QString::fromLatin1(changed);
    };
    row("settings", "a.conf", "a=1 b=2", "a=1 b=new");
    row("nothing", "new.conf", "", "b=new");
    row("nothing, in a new folder", "c/d/new.conf", "", "b=new");
    row("below a file", "a.conf/new.conf", "", "Not a directory");
    row("no INI text", "picture", "damaged", "damaged");
    row("larger than any settings", "large", "damaged", "damaged");
    row("folder", ".", "Is a directory", "Not a regular file");
    row("FIFO", "fifo", "Not a regular file", "Not a regular file");
    row("link to a device", "link", "Not a regular file", "Not a regular file");
}

void TestIniFile::outcomes() {
    QFETCH(QString, name);
    QFETCH(QString, read);
    QFETCH(QString, changed);
    const auto in = [this](const char *file) { return folder_->filePath(QLatin1String(file)); };
    QVERIFY(writeWholeFile(path(), "[General]\na=1\nb=2\n"));
    QVERIFY(writeWholeFile(in("picture"), "\x89PNG"));
    QVERIFY(writeWholeFile(in("large"), "a=" + QByteArray(2 << 20, 'b')));
    QCOMPARE(mkfifo(QFile::encodeName(in("fifo")).constData(), 0600), 0);
    QVERIFY(QFile::link(QStringLiteral("/dev/null"), in("link")));
    IniFile file(folder_->filePath(name));
    QCOMPARE(pictureOf(file.read()), read);
    QCOMPARE(pictureOf(file.change(oneChange, soon())), changed);
    if (changed.contains(u'='))
        QCOMPARE(pictureOf(IniFile(file.path()).read()), changed);
}

void TestIniFile::unreadableFile_isNotChanged() {
    const QByteArray content("[General]\na=1\n");
    QByteArray struckCall;
    for (int call = 1; struckCall != "read"; ++call) {
        QVERIFY(writeWholeFile(path(), content));
        const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
        const IniFile::Outcome outcome = IniFile(path()).change(oneChange, soon());
        QVERIFY(failing.hasStruck());
        struckCall = failing.struckCall();
        if (struckCall == "read")
            QCOMPARE(pictureOf(outcome), QStringLiteral("Input/output error"));
    }
    QCOMPARE(readWholeFile(path()), content);
}

void TestIniFile::folderThatCannotBeMade_isTold() {
    IniFile file(folder_->filePath(QStringLiteral("c/new.conf")));
    const FailingCalls full("mkdir", 1, ENOSPC);
    QCOMPARE(pictureOf(file.change(oneChange, soon())), QStringLiteral("No space left on device"));
}

// Nobody loses anything, whenever in the course of a change another one is made.
void TestIniFile::anotherProgramsChange_isKept() {
    bool struck = true;
    for (int call = 1; struck; ++call) {
        QVERIFY(writeWholeFile(path(), "[General]\na=1\n"));
        bool otherSaved = false;
        {
            const FailingCalls calls(call, [&] {
                otherSaved = bool(
                    IniFile(path()).change({{QStringLiteral("c"), QStringLiteral("3")}}, soon()));
            });
            QVERIFY(IniFile(path()).change(oneChange, soon()));
            struck = calls.hasStruck();
        }
        QCOMPARE(pictureOf(IniFile(path()).read()),
                 otherSaved ? QStringLiteral("a=1 b=new c=3") : QStringLiteral("a=1 b=new"));
    }
}

void TestIniFile::noChange_leavesTheFileAlone() {
    QVERIFY(writeWholeFile(path(), "b = new\n"));
    const QByteArray name = QFile::encodeName(path());
    struct stat before = {};
    struct stat after = {};
    QCOMPARE(stat(name.constData(), &before), 0);
    QCOMPARE(pictureOf(IniFile(path()).change(oneChange, soon())), QStringLiteral("b=new"));
    QCOMPARE(stat(name.constData(), &after), 0);
    QCOMPARE(after.st_ino, before.st_ino);
}

void TestIniFile::whatAKilledProgramLeft_isRemovedBehindALinkAsWell_data() {
    QTest::addColumn<mode_t>("mode");
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<bool>("stays");
    QTest::newRow("in an own folder") << mode_t(0755) << true << false;
    QTest::newRow("in an own folder, of a first change") << mode_t(0755) << false << false;
    QTest::newRow("where others may put files") << mode_t(0777) << true << true;
}

void TestIniFile::whatAKilledProgramLeft_isRemovedBehindALinkAsWell() {
    QFETCH(mode_t, mode);
    QFETCH(bool, isThere);
    QFETCH(bool, stays);
    const QTemporaryDir dotfiles;
    QCOMPARE(::chmod(QFile::encodeName(dotfiles.path()).constData(), mode), 0);
    const QString target = dotfiles.filePath(QStringLiteral("settings"));
    if (isThere)
        QVERIFY(writeWholeFile(target, "[General]\na=1\n"));
    QVERIFY(QFile::link(target, path()));
    const QString left = target + QStringLiteral(".velm-aside-abc123");
    const QString leftBesideTheLink = path() + QStringLiteral(".velm-aside-abc123");
    for (const QString &name : {left, leftBesideTheLink})
        QVERIFY(writeWholeFile(name, "half"));
    const IniFile file(path());
    QCOMPARE(QFile::exists(left), stays);
    QVERIFY(!QFile::exists(leftBesideTheLink));
    QCOMPARE(QFile::exists(target), isThere);
}

void TestIniFile::moveAside_takesAnUnusedName() {
    const IniFile file(path());
    for (const char *content : {"first", "second"}) {
        QVERIFY(writeWholeFile(path(), content));
        const Result<QString> copy = file.moveAside();
        QVERIFY(copy);
        QCOMPARE(readWholeFile(*copy), QByteArray(content));
    }
    QCOMPARE(readWholeFile(path() + QStringLiteral(".damaged")), QByteArray("first"));
    QCOMPARE(readWholeFile(path() + QStringLiteral(".damaged-2")), QByteArray("second"));
    const Result<QString> none = file.moveAside();
    QVERIFY(none.failure());
    QCOMPARE(none.failure()->systemError, ENOENT);
}

QTEST_GUILESS_MAIN(TestIniFile)
#include "tst_inifile.moc"
