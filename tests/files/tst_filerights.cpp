// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileSaving.h"

#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

const QByteArray oldBytes = "old";
const QByteArray newBytes = "new";

constexpr uid_t somebody = 12345;
constexpr gid_t group = 12346;

/// As the system keeps an access list: its version, then what, which rights and whose. The user may
/// read and write, and so may the one of number 12345; the group and all others may do nothing.
QByteArray accessList() {
    return QByteArray::fromHex("02000000"
                               "01000600ffffffff"
                               "0200060039300000"
                               "04000000ffffffff"
                               "10000600ffffffff"
                               "20000000ffffffff");
}

struct stat factsOf(const QString &path) {
    struct stat facts = {};
    if (::stat(QFile::encodeName(path).constData(), &facts) != 0)
        qFatal("nothing at %s", qPrintable(path));
    return facts;
}

} // namespace

/// Who may do what with a file that was saved over.
class TestFileRights : public QObject {
    Q_OBJECT

private slots:
    void init() { folder_ = std::make_unique<QTemporaryDir>(); }
    void newFile_isItsOwnersWhateverTheUmask_data();
    void newFile_isItsOwnersWhateverTheUmask();
    void oldFile_keepsItsGroup_data() { durabilities(); }
    void oldFile_keepsItsGroup();
    void oldFile_keepsItsAccessList_data() { durabilities(); }
    void oldFile_keepsItsAccessList();
    void oldFileWithoutAccessList_getsNone_data() { durabilities(); }
    void oldFileWithoutAccessList_getsNone();
    void groupThatCannotBeGiven_getsNothing_data() { durabilities(); }
    void groupThatCannotBeGiven_getsNothing();

private:
    static void durabilities();
    QString path() const { return folder_->filePath(QStringLiteral("a.bin")); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestFileRights::durabilities() {
    QTest::addColumn<Durability>("durability");
    QTest::newRow("for a power failure") << Durability::PowerFailure;
    QTest::newRow("for the program's end") << Durability::ProgramEnd;
}

void TestFileRights::newFile_isItsOwnersWhateverTheUmask_data() {
    QTest::addColumn<Durability>("durability");
    QTest::addColumn<uint>("mask");
    QTest::addColumn<uint>("mode");
    const auto rows = [](const char *durability, Durability value) {
        const auto row = [=](uint mask, uint mode) {
            QTest::addRow("%s, a umask of %03o", durability, mask) << value << mask << mode;
        };
        row(0022, 0644);
        row(0200, 0666);
        row(0277, 0600);
        row(0777, 0600);
    };
    rows("for a power failure", Durability::PowerFailure);
    rows("for the program's end", Durability::ProgramEnd);
}

void TestFileRights::newFile_isItsOwnersWhateverTheUmask() {
    QFETCH(Durability, durability);
    QFETCH(uint, mask);
    QFETCH(uint, mode);
    const mode_t before = ::umask(mode_t(mask));
    const Result<void> saved = saveWholeFile(path(), newBytes, durability);
    QCOMPARE(::umask(before), mode_t(mask)); // as it was
    QVERIFY(saved);
    QCOMPARE(factsOf(path()).st_mode & 0777u, mode);
}

void TestFileRights::oldFile_keepsItsGroup() {
    if (::geteuid() != 0)
        QSKIP("only root can give a file away");
    QFETCH(Durability, durability);
    QVERIFY(writeWholeFile(path(), oldBytes));
    QCOMPARE(::chown(QFile::encodeName(path()).constData(), somebody, group), 0);
    QCOMPARE(::chmod(QFile::encodeName(path()).constData(), 04640), 0);
    QVERIFY(saveWholeFile(path(), newBytes, durability));
    const struct stat facts = factsOf(path());
    QCOMPARE(facts.st_uid, somebody);
    QCOMPARE(facts.st_gid, group);
    QCOMPARE(facts.st_mode & 07777u, 0640u);
}

void TestFileRights::oldFile_keepsItsAccessList() {
    QFETCH(Durability, durability);
    const char *name = "system.posix_acl_access";
    const QByteArray list = accessList();
    QVERIFY(writeWholeFile(path(), oldBytes));
    const QByteArray file = QFile::encodeName(path());
    if (::setxattr(file.constData(), name, list.constData(), size_t(list.size()), 0) != 0)
        QSKIP("the file system has no access lists");
    QVERIFY(saveWholeFile(path(), newBytes, durability));
    QByteArray kept(256, '\0');
    kept.truncate(::getxattr(file.constData(), name, kept.data(), size_t(kept.size())));
    QCOMPARE(kept.toHex(), list.toHex());
}

// A new file would have that of its folder.
void TestFileRights::oldFileWithoutAccessList_getsNone() {
    QFETCH(Durability, durability);
    const QByteArray list = accessList();
    QVERIFY(writeWholeFile(path(), oldBytes));
    const QByteArray file = QFile::encodeName(path());
    QCOMPARE(::chmod(file.constData(), 0640), 0);
    if (::setxattr(QFile::encodeName(folder_->path()).constData(), "system.posix_acl_default",
                   list.constData(), size_t(list.size()), 0) != 0)
        QSKIP("the file system has no access lists");
    QVERIFY(saveWholeFile(path(), newBytes, durability));
    QCOMPARE(::getxattr(file.constData(), "system.posix_acl_access", nullptr, 0), ssize_t(-1));
    QCOMPARE(factsOf(path()).st_mode & 0777u, 0640u);
}

// Whose group the file would come to be of instead is another matter.
void TestFileRights::groupThatCannotBeGiven_getsNothing() {
    if (::geteuid() != 0)
        QSKIP("only root can give a file away");
    QFETCH(Durability, durability);
    QVERIFY(writeWholeFile(path(), oldBytes));
    const QByteArray file = QFile::encodeName(path());
    QCOMPARE(::chown(file.constData(), UnprivilegedUser::nobody, group), 0);
    QCOMPARE(::chmod(file.constData(), 0664), 0);
    QCOMPARE(::chmod(QFile::encodeName(folder_->path()).constData(), 0777), 0);
    {
        const UnprivilegedUser user;
        QVERIFY(user.isValid());
        QVERIFY(saveWholeFile(path(), newBytes, durability));
    }
    const struct stat facts = factsOf(path());
    QVERIFY(facts.st_gid != group);
    QCOMPARE(facts.st_mode & 0777u, 0604u);
}

QTEST_GUILESS_MAIN(TestFileRights)
#include "tst_filerights.moc"
