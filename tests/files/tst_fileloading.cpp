// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileLoading.h"

#include "files/FileOwnership.h"
#include "support/AddressSpaceLimit.h"
#include "support/Bytes.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <cerrno>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

/// What a load gave, as a picture: the bytes, or the reason.
QString outcomeOf(const Result<ByteBuffer> &loaded) {
    return loaded ? pictureOf(*loaded) : QStringLiteral("failed: ") + loaded.failure()->reason;
}

QString outcomeOf(const Result<QString> &loaded) {
    return loaded ? *loaded : QStringLiteral("failed: ") + loaded.failure()->reason;
}

} // namespace

class TestFileLoading : public QObject {
    Q_OBJECT

private slots:
    void init();
    void bytes_data();
    void bytes();
    void limit_data();
    void limit();
    void refusedAtOnce_data();
    void refusedAtOnce();
    void failure_saysWhichErrorItWas_data();
    void failure_saysWhichErrorItWas();
    void links();
    void linkOfSomebodyElse_isNotReadThrough();
    void fileWithoutPermission_isRefused();
    void fileShorterThanItsSize_givesWhatThereIs();
    void fileThatChangesWhileItIsRead_isSafe();
    void eachLoadMakesANewBuffer();
    void text_data();
    void text();
    void invalidText_data();
    void invalidText();
    void text_failsAsTheFileDoes();
    void text_withoutMemoryFails_data();
    void text_withoutMemoryFails();

private:
    QString path() const { return folder_->filePath(QStringLiteral("a.bin")); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestFileLoading::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

void TestFileLoading::bytes_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("picture");
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("NUL, line ends, 0xFF")
        << QByteArray("\0\r\n\xff", 4) << QStringLiteral("00 0D 0A FF");
    QTest::newRow("text of a hex file") << QByteArray(":00\n") << QStringLiteral("3A 30 30 0A");
    QTest::newRow("large") << QByteArray(9'000'000, 'x') << QStringLiteral("78*9000000");
}

void TestFileLoading::bytes() {
    QFETCH(QByteArray, content);
    QFETCH(QString, picture);
    QVERIFY(writeWholeFile(path(), content));
    QCOMPARE(outcomeOf(loadWholeFile(path())), picture);
}

void TestFileLoading::limit_data() {
    QTest::addColumn<qint64>("size");
    QTest::addColumn<qint64>("limit");
    QTest::addColumn<QString>("outcome");
    const QString tooLarge = QStringLiteral("failed: File too large");
    QTest::newRow("at the limit") << qint64(9) << qint64(9) << QStringLiteral("61*9");
    QTest::newRow("one byte more") << qint64(10) << qint64(9) << tooLarge;
    QTest::newRow("no byte allowed, none there") << qint64(0) << qint64(0) << QString();
    QTest::newRow("one byte more than any image") << largestImage + 1 << largestImage << tooLarge;
    QTest::newRow("a terabyte of nothing") << (qint64(1) << 40) << largestImage << tooLarge;
}

void TestFileLoading::limit() {
    QFETCH(qint64, size);
    QFETCH(qint64, limit);
    QFETCH(QString, outcome);
    QVERIFY(writeWholeFile(path(), QByteArray(std::min(size, qint64(10)), 'a')));
    QVERIFY(QFile::resize(path(), size));
    QCOMPARE(outcomeOf(loadWholeFile(path(), limit)), outcome);
}

void TestFileLoading::refusedAtOnce_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("outcome");
    const auto row = [](const char *title, const char *name, const char *outcome) {
        QTest::newRow(title) << QString::fromLatin1(name) << QString::fromLatin1(outcome);
    };
    row("absent", "absent", "failed: No such file or directory");
    row("folder", ".", "failed: Is a directory");
    row("below a file", "file/below", "failed: Not a directory");
    row("FIFO without a writer", "fifo", "failed: Not a regular file");
    row("endless device", "/dev/zero", "failed: Not a regular file");
    row("empty device", "/dev/null", "failed: Not a regular file");
    row("dangling link", "dangling", "failed: No such file or directory");
    row("link to itself", "loop", "failed: Too many levels of symbolic links");
}

void TestFileLoading::refusedAtOnce() {
    QFETCH(QString, name);
    QFETCH(QString, outcome);
    const QDir folder(folder_->path());
    QVERIFY(writeWholeFile(folder.filePath(QStringLiteral("file")), "x"));
    QCOMPARE(mkfifo(QFile::encodeName(folder.filePath(QStringLiteral("fifo"))).constData(), 0600),
             0);
    QVERIFY(QFile::link(QStringLiteral("nowhere"), folder.filePath(QStringLiteral("dangling"))));
    QVERIFY(QFile::link(QStringLiteral("loop"), folder.filePath(QStringLiteral("loop"))));
    QCOMPARE(outcomeOf(loadWholeFile(folder.filePath(name))), outcome);
    QCOMPARE(outcomeOf(loadUtf8Text(folder.filePath(name))), outcome);
}

void TestFileLoading::failure_saysWhichErrorItWas_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("error");
    QTest::newRow("absent") << QStringLiteral("b.bin") << ENOENT;
    QTest::newRow("below a file") << QStringLiteral("a.bin/b") << ENOTDIR;
    QTest::newRow("too large") << QStringLiteral("a.bin") << EFBIG;
    QTest::newRow("folder") << QStringLiteral(".") << EISDIR;
    QTest::newRow("device") << QStringLiteral("/dev/null") << 0;
}

void TestFileLoading::failure_saysWhichErrorItWas() {
    QFETCH(QString, name);
    QFETCH(int, error);
    QVERIFY(writeWholeFile(path(), "ab"));
    const auto loaded = loadWholeFile(QDir(folder_->path()).filePath(name), 1);
    QVERIFY(!loaded);
    QCOMPARE(loaded.failure()->systemError, error);
}

void TestFileLoading::links() {
    QVERIFY(writeWholeFile(path(), "ab"));
    const QString link = folder_->filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(path(), link));
    QCOMPARE(outcomeOf(loadWholeFile(link)), QStringLiteral("61 62"));
    QCOMPARE(outcomeOf(loadWholeFile(QString())),
             QStringLiteral("failed: No such file or directory"));
    QCOMPARE(outcomeOf(loadWholeFile(path() + QChar(u'\0') + u'x')),
             QStringLiteral("failed: No such file or directory"));
}

void TestFileLoading::linkOfSomebodyElse_isNotReadThrough() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    const QString link = folder_->filePath(QStringLiteral("link"));
    QVERIFY(writeWholeFile(path(), "ab"));
    QVERIFY(QFile::link(path(), link));
    QCOMPARE(outcomeOf(loadOwnFile(link)), QStringLiteral("61 62"));
    QVERIFY(loadUtf8Text(link));
    QCOMPARE(::lchown(QFile::encodeName(link).constData(), 12345, gid_t(-1)), 0);
    QCOMPARE(outcomeOf(loadOwnFile(link)),
             QStringLiteral("failed: It is a link that belongs to somebody else"));
    const Result<QString> text = loadUtf8Text(link);
    QVERIFY(text.failure());
    QCOMPARE(text.failure()->reason, foreignLink().reason);
    QCOMPARE(outcomeOf(loadWholeFile(link)), QStringLiteral("61 62"));
}

void TestFileLoading::fileWithoutPermission_isRefused() {
    QVERIFY(writeWholeFile(path(), "ab"));
    QVERIFY(QFile::setPermissions(path(), {}));
    QCOMPARE(chmod(QFile::encodeName(folder_->path()).constData(), 0755), 0);
    const UnprivilegedUser user;
    QCOMPARE(outcomeOf(loadWholeFile(path())), QStringLiteral("failed: Permission denied"));
}

// The system's own files state a page as their size and hold less: for the reader, a file that
// shrank between the two.
void TestFileLoading::fileShorterThanItsSize_givesWhatThereIs() {
    const QString shorter = QStringLiteral("/sys/kernel/mm/transparent_hugepage/enabled");
    const QByteArray content = readWholeFile(shorter);
    if (QFileInfo(shorter).size() <= content.size())
        QSKIP("this system has no such file");
    QCOMPARE(outcomeOf(loadUtf8Text(shorter)), QString::fromLatin1(content));
}

void TestFileLoading::fileThatChangesWhileItIsRead_isSafe() {
    constexpr qint64 large = 3'000'000;
    QVERIFY(writeWholeFile(path(), QByteArray(large, 'a')));
    const QByteArray name = QFile::encodeName(path());
    std::atomic<bool> stop = false;
    std::thread other([&] {
        while (!stop) {
            [[maybe_unused]] const int shrunk = ::truncate(name.constData(), 10);
            [[maybe_unused]] const int grown = ::truncate(name.constData(), large);
        }
    });
    qint64 largestSeen = 0;
    for (int round = 0; round < 100; ++round) {
        const auto loaded = loadWholeFile(path());
        if (loaded)
            largestSeen = std::max<qint64>(largestSeen, lengthOf(*loaded));
    }
    stop = true;
    other.join();
    QVERIFY(largestSeen >= 10 && largestSeen <= large);
}

void TestFileLoading::eachLoadMakesANewBuffer() {
    QVERIFY(writeWholeFile(path(), "ab"));
    const auto first = *loadWholeFile(path());
    const auto second = *loadWholeFile(path());
    QVERIFY(first != second);
    QVERIFY(first->isDetached());
}

void TestFileLoading::text_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("ASCII with every line end")
        << QByteArray("a\nb\r\nc\rd") << QStringLiteral("a\nb\r\nc\rd");
    QTest::newRow("NUL inside") << QByteArray("a\0b", 3)
                                << QString(QStringLiteral("a") + QChar(u'\0') + u'b');
    QTest::newRow("two to four bytes") << QByteArray("\xc3\xa9\xe2\x82\xac\xf0\x9f\x92\xbe")
                                       << QStringLiteral("\u00e9\u20ac\U0001F4BE");
    QTest::newRow("byte-order mark") << QByteArray("\xef\xbb\xbf"
                                                   "0")
                                     << QString(QChar(0xFEFF) + QStringLiteral("0"));
    QTest::newRow("two byte-order marks")
        << QByteArray("\xef\xbb\xbf\xef\xbb\xbf") << QString(2, QChar(0xFEFF));
}

void TestFileLoading::text() {
    QFETCH(QByteArray, content);
    QFETCH(QString, text);
    QVERIFY(writeWholeFile(path(), content));
    QCOMPARE(outcomeOf(loadUtf8Text(path())), text);
}

void TestFileLoading::invalidText_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("a byte of another encoding") << QByteArray("caf\xe9\n");
    QTest::newRow("cut at the end") << QByteArray("caf\xc3");
    QTest::newRow("continuation alone") << QByteArray("\x80");
    QTest::newRow("overlong") << QByteArray("\xc0\xaf");
    QTest::newRow("surrogate") << QByteArray("\xed\xa0\x80");
    QTest::newRow("beyond the last character") << QByteArray("\xf4\x90\x80\x80");
}

void TestFileLoading::invalidText() {
    QFETCH(QByteArray, content);
    QVERIFY(writeWholeFile(path(), content));
    QCOMPARE(outcomeOf(loadUtf8Text(path())), QStringLiteral("failed: Not valid UTF-8 text"));
    QCOMPARE(loadUtf8Text(path()).failure()->systemError, EILSEQ);
}

void TestFileLoading::text_failsAsTheFileDoes() {
    QVERIFY(writeWholeFile(path(), "abc"));
    QCOMPARE(outcomeOf(loadUtf8Text(path(), 3)), QStringLiteral("abc"));
    QCOMPARE(outcomeOf(loadUtf8Text(path(), 2)), QStringLiteral("failed: File too large"));
    QVERIFY(QFile::resize(path(), largestText + 1));
    QCOMPARE(outcomeOf(loadUtf8Text(path())), QStringLiteral("failed: File too large"));
}

void TestFileLoading::text_withoutMemoryFails_data() {
    QTest::addColumn<double>("room");
    QTest::newRow("for the bytes alone") << 1.5;
    QTest::newRow("for half of the bytes") << 0.5;
}

void TestFileLoading::text_withoutMemoryFails() {
    QFETCH(double, room);
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    constexpr qint64 size = 32 * mebibyte;
    QVERIFY(writeWholeFile(path(), QByteArray(size, 'x')));
    const AddressSpaceLimit limit(rlim_t(double(size) * room));
    const Result<QString> text = loadUtf8Text(path(), size);
    QVERIFY(!text);
    QCOMPARE(text.failure()->systemError, ENOMEM);
}

QTEST_GUILESS_MAIN(TestFileLoading)
#include "tst_fileloading.moc"
