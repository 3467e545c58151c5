// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/KnownMemories.h"

#include <QTest>

/// What is said of memories that a Write leaves out.
class TestKnownMemories : public QObject {
    Q_OBJECT

private slots:
    void words_nameThem_data();
    void words_nameThem();
    void parts_ofTheRun_areLeftOut_data();
    void parts_ofTheRun_areLeftOut();
    void knowledge_adds();
    void command_thatChooses_data();
    void command_thatChooses();
};

namespace {

constexpr KnownMemories data{.data = true};
constexpr KnownMemories user{.user = true};
constexpr KnownMemories fuses{.fuses = true};
constexpr KnownMemories others{.others = true};

} // namespace

void TestKnownMemories::words_nameThem_data() {
    QTest::addColumn<KnownMemories>("memories");
    QTest::addColumn<QString>("written");
    const auto row = [](const KnownMemories &memories, const char *written) {
        QTest::newRow(written) << memories << QString::fromLatin1(written);
    };
    row({}, "");
    row(data, "The chip's data memory was not written.");
    row(user, "The chip's user memory was not written.");
    row(fuses, "The chip's fuses were not written.");
    row(others, "The chip's other memories were not written.");
    row(data | fuses, "The chip's data memory and fuses were not written.");
    row(data | user | fuses, "The chip's data memory, user memory and fuses were not written.");
    row(others | fuses, "The chip's other memories and fuses were not written.");
    row(others | data, "The chip's data memory was not written.");
}

void TestKnownMemories::words_nameThem() {
    QFETCH(KnownMemories, memories);
    QFETCH(QString, written);
    QCOMPARE(notWrittenWords(memories), written);
    QCOMPARE(notComparedWords(memories),
             written.replace(QStringLiteral("written"), QStringLiteral("compared")));
    const QString before = codeAloneWords(memories);
    QCOMPARE(before.isEmpty(), written.isEmpty());
    if (before.isEmpty())
        return;
    const QString erased =
        memories.data ? QStringLiteral(" Erasing may blank the data memory.") : QString();
    QCOMPARE(before,
             QStringLiteral("Write and Verify concern the code memory alone, not the chip's %1.")
                     .arg(written.section(u' ', 2, -4)) +
                 erased);
}

void TestKnownMemories::parts_ofTheRun_areLeftOut_data() {
    QTest::addColumn<QString>("part");
    QTest::addColumn<KnownMemories>("left");
    QTest::newRow("code") << QStringLiteral("Code") << (data | user | fuses);
    QTest::newRow("data") << QStringLiteral("Data") << (user | fuses);
    QTest::newRow("user") << QStringLiteral("User") << (data | fuses);
    QTest::newRow("config") << QStringLiteral("config") << (data | user);
    QTest::newRow("fuses") << QStringLiteral("fuses") << (data | user);
    QTest::newRow("lock bits") << QStringLiteral("lock bits") << (data | user | fuses);
}

void TestKnownMemories::parts_ofTheRun_areLeftOut() {
    QFETCH(QString, part);
    QTEST((data | user | fuses).without({part}), "left");
}

void TestKnownMemories::knowledge_adds() {
    QVERIFY(!KnownMemories().any());
    QVERIFY((data | KnownMemories()).any());
    QCOMPARE(data | fuses, (KnownMemories{.data = true, .fuses = true}));
    QCOMPARE(others.without({QStringLiteral("Data")}), KnownMemories());
}

void TestKnownMemories::command_thatChooses_data() {
    QTest::addColumn<bool>("chooses");
    QTest::newRow("minipro") << false;
    QTest::newRow("ionice -c 3 minipro") << false;
    QTest::newRow("minipro -yc code") << false;
    QTest::newRow("minipro -c data") << true;
    QTest::newRow("minipro -yc \"user\"") << true;
    QTest::newRow("minipro -cconfig") << true;
    QTest::newRow("minipro -c datasheet") << false;
}

void TestKnownMemories::command_thatChooses() {
    QTEST(choosesMemory(QString::fromUtf8(QTest::currentDataTag())), "chooses");
}

QTEST_GUILESS_MAIN(TestKnownMemories)
#include "tst_known_memories.moc"
