// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/CommandDoubt.h"

#include <QTest>

/// What is asked about a command before the shell gets it.
class TestCommandDoubt : public QObject {
    Q_OBJECT

private slots:
    void oddCharacters_areNamed_data();
    void oddCharacters_areNamed();
    void command_looksLikeWhatItIs();
};

void TestCommandDoubt::oddCharacters_areNamed_data() {
    QTest::addColumn<QString>("characters");
    QTest::addColumn<QString>("names");
    const auto row = [](const char *name, const QString &characters, const char *names) {
        QTest::newRow(name) << characters << QString::fromLatin1(names);
    };
    row("some that can be seen", QStringLiteral("$;"), "$ ;");
    row("escape", QString(QChar(0x1B)), "U+001B");
    row("line feed beside one that can be seen", QStringLiteral("|\n"), "| U+000A");
    row("zero width space", QString(QChar(0x200B)), "U+200B");
}

void TestCommandDoubt::oddCharacters_areNamed() {
    QFETCH(QString, characters);
    QFETCH(QString, names);
    const CommandDoubt doubt{QStringLiteral("minipro -l"), characters};
    QCOMPARE(sentenceOf(doubt),
             QStringLiteral("The shell takes %1 in this command for more than a name: minipro -l.")
                 .arg(names));
}

// Turned round by the mark, this path would read as one that everybody knows.
void TestCommandDoubt::command_looksLikeWhatItIs() {
    const CommandDoubt doubt{
        QStringLiteral("/tmp/\u202eorpinim/nib/rsu/ -p \"a\u200bb\""), {}, true};
    QVERIFY2(sentenceOf(doubt).endsWith(
                 u"The command is: /tmp/\\u202eorpinim/nib/rsu/ -p \"a\\u200bb\"."),
             qPrintable(sentenceOf(doubt)));
}

QTEST_GUILESS_MAIN(TestCommandDoubt)
#include "tst_command_doubt.moc"
