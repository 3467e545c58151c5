// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/SystemName.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>

class TestSystemName : public QObject {
    Q_OBJECT

private slots:
    void init();
    void missing_isWhatTheSystemSaysIsNotThere_data();
    void missing_isWhatTheSystemSaysIsNotThere();
    void missing_isNotWhatCannotBeLookedAt_data();
    void missing_isNotWhatCannotBeLookedAt();

private:
    QString path(const QString &name) const { return folder_->filePath(name); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestSystemName::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
    QVERIFY(writeWholeFile(path(QStringLiteral("file")), "x"));
    for (const auto &[link, target] :
         {std::pair("there", "file"), std::pair("nowhere", "nothing"), std::pair("loop", "loop")})
        QVERIFY(QFile::link(QLatin1String(target), path(QLatin1String(link))));
}

void TestSystemName::missing_isWhatTheSystemSaysIsNotThere_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("missing");
    QTest::newRow("a file") << QStringLiteral("file") << false;
    QTest::newRow("a folder") << QStringLiteral(".") << false;
    QTest::newRow("a link to a file") << QStringLiteral("there") << false;
    QTest::newRow("a loop of links") << QStringLiteral("loop") << false;
    QTest::newRow("below a loop of links") << QStringLiteral("loop/x") << false;
    QTest::newRow("nothing") << QStringLiteral("nothing") << true;
    QTest::newRow("in no folder") << QStringLiteral("nothing/x") << true;
    QTest::newRow("below a file") << QStringLiteral("file/x") << true;
    QTest::newRow("a link to nothing") << QStringLiteral("nowhere") << true;
    QTest::newRow("too long a name") << QString(256, u'x') << true;
    QTest::newRow("too long a path") << QStringLiteral("./").repeated(2048) + u'x' << true;
    QTest::newRow("a null character") << QStringLiteral("file") + QChar(QChar::Null) << true;
}

void TestSystemName::missing_isWhatTheSystemSaysIsNotThere() {
    QFETCH(QString, name);
    QFETCH(bool, missing);
    QCOMPARE(isMissing(path(name)), missing);
}

void TestSystemName::missing_isNotWhatCannotBeLookedAt_data() {
    QTest::addColumn<int>("error");
    QTest::newRow("an error of the disk") << EIO;
    QTest::newRow("no permission") << EACCES;
    QTest::newRow("no memory") << ENOMEM;
}

void TestSystemName::missing_isNotWhatCannotBeLookedAt() {
    QFETCH(int, error);
    for (const char *name : {"file", "nothing"}) {
        const QString asked = path(QLatin1String(name));
        const FailingCalls failing(1, FailingCalls::Mishap::Fails, error);
        QVERIFY(!isMissing(asked));
        QVERIFY(failing.hasStruck());
    }
}

QTEST_GUILESS_MAIN(TestSystemName)
#include "tst_systemname.moc"
