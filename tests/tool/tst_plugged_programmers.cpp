// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/PluggedProgrammers.h"

#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

/// Which programmers the system sees, and whether they may be used. The system is a folder.
class TestPluggedProgrammers : public QObject {
    Q_OBJECT

private slots:
    void everyModel_isKnown_data();
    void everyModel_isKnown();
    void otherDevices_areNotTaken();
    void severalProgrammers_areAllFound();
    void linkToADevice_isFollowed();
    void access_isTold();
    void folderThatIsNotThere_tellsNothing();
};

namespace {

/// A system whose devices a test plugs in.
class UsbSystem {
public:
    UsbSystem() {
        QDir top(folder_.path());
        top.mkpath(QStringLiteral("devices"));
        top.mkpath(QStringLiteral("nodes"));
        QFile::setPermissions(folder_.path(), everybody);
    }
    UsbFolders folders() const {
        return {folder_.filePath(QStringLiteral("devices")),
                folder_.filePath(QStringLiteral("nodes"))};
    }
    /// Device number 7 (or \a device) of bus 1, under the name \a name.
    void plug(const QString &name, const QByteArray &vendor, const QByteArray &product,
              const QByteArray &device = "7") const {
        const QDir place(folders().devices + u'/' + name);
        place.mkpath(QStringLiteral("."));
        QVERIFY(writeWholeFile(place.filePath(QStringLiteral("idVendor")), vendor + '\n'));
        QVERIFY(writeWholeFile(place.filePath(QStringLiteral("idProduct")), product + '\n'));
        QVERIFY(writeWholeFile(place.filePath(QStringLiteral("busnum")), "1\n"));
        QVERIFY(writeWholeFile(place.filePath(QStringLiteral("devnum")), device + '\n'));
    }
    QString makeNode(const QString &device, QFile::Permissions permissions) const {
        const QDir bus(folders().nodes + QStringLiteral("/001"));
        bus.mkpath(QStringLiteral("."));
        const QString path = bus.filePath(device);
        return writeWholeFile(path, {}) && QFile::setPermissions(path, permissions) ? path
                                                                                    : QString();
    }

    static constexpr QFile::Permissions everybody =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadUser |
        QFile::WriteUser | QFile::ExeUser | QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
        QFile::ExeOther;

private:
    QTemporaryDir folder_;
};

/// The programmers that are found, one to a line: name, IDs, access.
QString found(const UsbSystem &system) {
    static const char *const words[] = {"granted", "refused", "no node"};
    const auto programmers = pluggedProgrammers(system.folders());
    if (!programmers)
        return QStringLiteral("not told");
    QStringList lines;
    for (const UsbProgrammer &programmer : *programmers)
        lines.append(programmer.name + QStringLiteral(" | ") + programmer.vendorId + u':' +
                     programmer.productId + QStringLiteral(" | ") +
                     QDir(system.folders().nodes).relativeFilePath(programmer.node) +
                     QStringLiteral(" | ") + QLatin1String(words[int(programmer.access)]));
    return lines.join(u'\n');
}

} // namespace

void TestPluggedProgrammers::everyModel_isKnown_data() {
    QTest::addColumn<QByteArray>("vendor");
    QTest::addColumn<QByteArray>("product");
    QTest::addColumn<QString>("line");
    const auto row = [](const char *vendor, const char *product, const char *line) {
        QTest::newRow(line) << QByteArray(vendor) << QByteArray(product)
                            << QString(QLatin1String(line));
    };
    row("04d8", "e11c", "TL866A/CS | 04d8:e11c | 001/007 | no node");
    row("a466", "0a53", "TL866II+, T48 or T56 | a466:0a53 | 001/007 | no node");
    row("A466", "1A86", "T76 | a466:1a86 | 001/007 | no node");
}

void TestPluggedProgrammers::everyModel_isKnown() {
    QFETCH(QByteArray, vendor);
    QFETCH(QByteArray, product);
    const UsbSystem system;
    system.plug(QStringLiteral("1-2"), vendor, product);
    QTEST(found(system), "line");
}

void TestPluggedProgrammers::otherDevices_areNotTaken() {
    const UsbSystem system;
    QCOMPARE(found(system), QString());
    system.plug(QStringLiteral("usb1"), "1d6b", "0002", "1");
    system.plug(QStringLiteral("1-1"), "04d8", "0a53", "2");
    system.plug(QStringLiteral("1-2"), "", "", "3");
    QDir(system.folders().devices).mkpath(QStringLiteral("1-2:1.0"));
    QVERIFY(writeWholeFile(system.folders().devices + QStringLiteral("/a466"), "a466\n"));
    QCOMPARE(found(system), QString());
}

void TestPluggedProgrammers::severalProgrammers_areAllFound() {
    const UsbSystem system;
    system.plug(QStringLiteral("1-1"), "a466", "0a53", "123");
    system.plug(QStringLiteral("1-2"), "04d8", "e11c", "12");
    QCOMPARE(found(system), QStringLiteral("TL866II+, T48 or T56 | a466:0a53 | 001/123 | no node\n"
                                           "TL866A/CS | 04d8:e11c | 001/012 | no node"));
}

void TestPluggedProgrammers::linkToADevice_isFollowed() {
    const UsbSystem system;
    system.plug(QStringLiteral("../1-1"), "a466", "0a53");
    QVERIFY(
        QFile::link(QStringLiteral("../1-1"), system.folders().devices + QStringLiteral("/1-1")));
    QCOMPARE(found(system), QStringLiteral("TL866II+, T48 or T56 | a466:0a53 | 001/007 | no node"));
}

void TestPluggedProgrammers::access_isTold() {
    const UsbSystem system;
    system.plug(QStringLiteral("1-1"), "04d8", "e11c");
    const QString node =
        system.makeNode(QStringLiteral("007"), QFile::WriteOwner | QFile::WriteUser);
    QVERIFY(!node.isEmpty());
    QCOMPARE(found(system), QStringLiteral("TL866A/CS | 04d8:e11c | 001/007 | granted"));
    QVERIFY(QFile::setPermissions(node, QFile::ReadOwner | QFile::ReadOther));
    const UnprivilegedUser nobody;
    QVERIFY(nobody.isValid());
    QCOMPARE(found(system), QStringLiteral("TL866A/CS | 04d8:e11c | 001/007 | refused"));
    QCOMPARE(pluggedProgrammers(system.folders())->first().node, node);
}

void TestPluggedProgrammers::folderThatIsNotThere_tellsNothing() {
    const UsbSystem system;
    QVERIFY(QDir(system.folders().devices).removeRecursively());
    QCOMPARE(found(system), QStringLiteral("not told"));
}

QTEST_GUILESS_MAIN(TestPluggedProgrammers)
#include "tst_plugged_programmers.moc"
