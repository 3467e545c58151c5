// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/CommandLine.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestCommandLine : public QObject {
    Q_OBJECT

private slots:
    void operationCommand_joinsTheWordsInTheFixedOrder_data();
    void operationCommand_joinsTheWordsInTheFixedOrder();
    void operationCommand_quotesDeviceAndPathAlone_data();
    void operationCommand_quotesDeviceAndPathAlone();
    void oddCharacters_areThoseThatTheShellTakes_data();
    void oddCharacters_areThoseThatTheShellTakes();
    void oddCharacters_inACatalogueAreThoseOfToolAndPath();
    void catalogueCommand_redirectsIntoTheQuotedPath();
    void descriptionCommand_asksForOneModelAfterTheOther();
    void shellWord_quotesWhatTheShellWouldTreatSpecially_data();
    void shellWord_quotesWhatTheShellWouldTreatSpecially();
    void toolSettings_areReadAtTheMomentOfTheCall();
    void toolSettings_ofAnEmptyStoreAreEmpty();
    void toolSettings_nameTheSameFileFromEveryFolder();
};

void TestCommandLine::operationCommand_joinsTheWordsInTheFixedOrder_data() {
    QTest::addColumn<int>("operation");
    QTest::addColumn<ToolSettings>("settings");
    QTest::addColumn<QString>("expected");

    // In each row of four: bit 0 is the ID switch, bits 1 to 3 are size, erase and protection.
    const char *const idWord[] = {"", " -y"};
    const char *const fileWords[] = {"",    " -s",    " -e",    " -s -e",
                                     " -u", " -s -u", " -e -u", " -s -e -u"};
    const char *const starts[] = {"/opt/minipro -p \"W27C512@DIP28\" -r \"/t/temp_read.bin\"",
                                  "/opt/minipro -p \"W27C512@DIP28\" -m \"/t/temp.bin\"",
                                  "/opt/minipro -p \"W27C512@DIP28\" -w \"/t/temp.bin\"",
                                  "/opt/minipro -T -p \"W27C512@DIP28\""};
    const char *const names[] = {"Read", "Verify", "Write", "Logic"};
    for (int operation = ReadOperation; operation <= LogicOperation; ++operation) {
        for (int switches = 0; switches < 16; ++switches) {
            const bool takesFileWords = operation != LogicOperation;
            const QByteArray words =
                QByteArray(idWord[switches & 1]) + (takesFileWords ? fileWords[switches >> 1] : "");
            const ToolSettings settings{.tool = QStringLiteral("/opt/minipro"),
                                        .device = QStringLiteral("W27C512@DIP28"),
                                        .outputPath = QStringLiteral("/t/temp.bin"),
                                        .readPath = QStringLiteral("/t/temp_read.bin"),
                                        .noIDMismatchError = (switches & 1) != 0,
                                        .noSizeMismatchError = (switches & 2) != 0,
                                        .skipErase = (switches & 4) != 0,
                                        .unprotect = (switches & 8) != 0};
            QTest::addRow("%s with switches %d", names[operation], switches)
                << operation << settings << QString::fromLatin1(starts[operation] + words);
        }
    }
}

void TestCommandLine::operationCommand_joinsTheWordsInTheFixedOrder() {
    QFETCH(int, operation);
    QFETCH(ToolSettings, settings);
    QTEST(operationCommand(Operation(operation), settings), "expected");
}

void TestCommandLine::operationCommand_quotesDeviceAndPathAlone_data() {
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("readPath");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a device with a space is one word, a tool with a space is two")
        << "/my tools/minipro"
        << "AT 28"
        << "/t/r"
        << "/my tools/minipro -p \"AT 28\" -r \"/t/r\"";
    QTest::newRow("the tool's tilde is the shell's") << "~/bin/minipro"
                                                     << "X"
                                                     << "/t/r"
                                                     << "~/bin/minipro -p \"X\" -r \"/t/r\"";
    QTest::newRow("nothing is escaped") << "t"
                                        << "a\"b$c"
                                        << "/t/\"q\""
                                        << "t -p \"a\"b$c\" -r \"/t/\"q\"\"";
    QTest::newRow("nothing is checked") << ""
                                        << ""
                                        << ""
                                        << " -p \"\" -r \"\"";
    QTest::newRow("place markers are ordinary text") << "%1"
                                                     << "%2"
                                                     << "%3"
                                                     << "%1 -p \"%2\" -r \"%3\"";
}

void TestCommandLine::operationCommand_quotesDeviceAndPathAlone() {
    QFETCH(QString, tool);
    QFETCH(QString, device);
    QFETCH(QString, readPath);
    const ToolSettings settings{
        .tool = tool, .device = device, .outputPath = QString(), .readPath = readPath};
    QTEST(operationCommand(ReadOperation, settings), "expected");
}

void TestCommandLine::oddCharacters_areThoseThatTheShellTakes_data() {
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<ToolSettings>("settings");
    QTest::addColumn<QString>("odd");
    const auto row = [](const char *name, Operation operation, const QString &tool,
                        const QString &device, const QString &path, const QString &odd) {
        QTest::newRow(name) << operation
                            << ToolSettings{.tool = tool,
                                            .device = device,
                                            .outputPath = path,
                                            .readPath = path}
                            << odd;
    };
    const QString tool = QStringLiteral("sudo -n ~/bin/minipro");
    const QString device = QStringLiteral("MY (27C512)@DIP28; 'x' & <y> | *");
    const QString path = QStringLiteral("/home/a b/temp.bin");
    for (const Operation operation :
         {ReadOperation, VerifyOperation, WriteOperation, LogicOperation})
        row(qPrintable(QStringLiteral("plain, %1").arg(operation)), operation, tool, device, path,
            QString());
    row("a command in the device", ReadOperation, tool, QStringLiteral("a$(b)`c`$d"), path,
        QStringLiteral("$`"));
    row("the end of the quotes", LogicOperation, tool, QStringLiteral("a\"; b \\"), path,
        QStringLiteral("\"\\"));
    row("a line break", WriteOperation, tool, QStringLiteral("a\nb"), path, QStringLiteral("\n"));
    row("a path", VerifyOperation, tool, device, QStringLiteral("/tmp/$HOME"), QStringLiteral("$"));
    row("a path that is not in the command", LogicOperation, tool, device,
        QStringLiteral("/tmp/$HOME"), QString());
    row("another command behind the tool", ReadOperation, QStringLiteral("minipro; x & y | z"),
        device, path, QStringLiteral(";&|"));
    row("what the tool's text opens and redirects", ReadOperation,
        QStringLiteral("(minipro) <a >b"), device, path, QStringLiteral("()<>"));
}

void TestCommandLine::oddCharacters_areThoseThatTheShellTakes() {
    QFETCH(const Operation, operation);
    QFETCH(const ToolSettings, settings);
    QTEST(oddCharacters(operation, settings), "odd");
}

void TestCommandLine::oddCharacters_inACatalogueAreThoseOfToolAndPath() {
    const QString tool = QStringLiteral("sudo -n ~/bin/minipro");
    const QString path = QStringLiteral("/home/a b; 'c' & <d> | *");
    QCOMPARE(oddCharactersInCatalogue(tool, path), QString());
    QCOMPARE(oddCharactersInCatalogue(tool + u';', path), QStringLiteral(";"));
    QCOMPARE(oddCharactersInCatalogue(tool, path + QStringLiteral("$(e)\n")),
             QStringLiteral("$\n"));
}

void TestCommandLine::catalogueCommand_redirectsIntoTheQuotedPath() {
    QCOMPARE(catalogueCommand(QStringLiteral("/opt/minipro"), QStringLiteral("27C"),
                              QStringLiteral("/my files/sr.bin")),
             QStringLiteral("/opt/minipro -L 27C > \"/my files/sr.bin\""));
}

void TestCommandLine::descriptionCommand_asksForOneModelAfterTheOther() {
    QCOMPARE(descriptionCommand(QStringLiteral("'/my tools/minipro'"), QStringLiteral("A*B")),
             QStringLiteral("'/my tools/minipro' -q tl866ii -d 'A*B' || "
                            "'/my tools/minipro' -q t48 -d 'A*B' || "
                            "'/my tools/minipro' -q t56 -d 'A*B' || "
                            "'/my tools/minipro' -q tl866a -d 'A*B'"));
}

void TestCommandLine::shellWord_quotesWhatTheShellWouldTreatSpecially_data() {
    QTest::addColumn<QString>("term");
    QTest::addColumn<QString>("expected");
    QTest::newRow("letters, digits and harmless marks stay") << "azAZ09@._+-/:="
                                                             << "azAZ09@._+-/:=";
    QTest::newRow("a blank is quoted") << "27C 512"
                                       << "'27C 512'";
    QTest::newRow("an inner quote is taken out of the quotes") << "a'b"
                                                               << "'a'\\''b'";
    QTest::newRow("a term of quotes") << "''"
                                      << "''\\'''\\'''";
    QTest::newRow("no term is an empty word") << ""
                                              << "''";
    QTest::newRow("a letter outside ASCII is quoted")
        << QStringLiteral("\u00e9") << QStringLiteral("'\u00e9'");
    for (const char *mark : {";",  "|",  "&", "$x", "`x`", "*", "?", "(",  ")",  "[", "<", ">",
                             "\\", "\"", "!", "#",  "~",   "%", ",", "\n", "\t", "{", "^"})
        QTest::addRow("quoted: %s", mark)
            << QString::fromLatin1(mark) << u'\'' + QString::fromLatin1(mark) + u'\'';
}

void TestCommandLine::shellWord_quotesWhatTheShellWouldTreatSpecially() {
    QFETCH(QString, term);
    QTEST(shellWord(term), "expected");
}

void TestCommandLine::toolSettings_areReadAtTheMomentOfTheCall() {
    const QTemporaryDir folder;
    SettingsStore store(folder.filePath(QStringLiteral("test.conf")));
    store.registerDefaults(settingsKeys::startupDefaults());
    store.setValue(settingsKeys::device, QStringLiteral("AT28C256"));
    store.setValue(settingsKeys::temp_output_file, QStringLiteral("~/out put.bin"));
    store.setValue(settingsKeys::temp_read_from_chip_file, QStringLiteral("/t/read.bin"));
    const QString home = qEnvironmentVariable("HOME");

    QCOMPARE(operationCommand(WriteOperation, ToolSettings::readFrom(store)),
             QStringLiteral("/usr/local/bin/minipro -p \"AT28C256\" -w \"%1/out put.bin\" -s")
                 .arg(home));
    store.setValue(settingsKeys::miniproLocation, QStringLiteral("~/minipro"));
    store.setValue(settingsKeys::noIDMismatchError, true);
    store.setValue(settingsKeys::noSizeMismatchError, false);
    store.setValue(settingsKeys::skipErase, true);
    store.setValue(settingsKeys::unprotect, true);
    QCOMPARE(operationCommand(ReadOperation, ToolSettings::readFrom(store)),
             QStringLiteral("~/minipro -p \"AT28C256\" -r \"/t/read.bin\" -y -e -u"));
}

void TestCommandLine::toolSettings_ofAnEmptyStoreAreEmpty() {
    const QTemporaryDir folder;
    const SettingsStore store(folder.filePath(QStringLiteral("test.conf")));
    QCOMPARE(operationCommand(VerifyOperation, ToolSettings::readFrom(store)),
             QStringLiteral(" -p \"\" -m \"\""));
}

void TestCommandLine::toolSettings_nameTheSameFileFromEveryFolder() {
    const QTemporaryDir folder;
    SettingsStore store(folder.filePath(QStringLiteral("test.conf")));
    store.setValue(settingsKeys::temp_output_file, QStringLiteral("images/out.bin"));
    store.setValue(settingsKeys::temp_read_from_chip_file, QStringLiteral("read.bin"));
    const ToolSettings settings = ToolSettings::readFrom(store);
    QCOMPARE(settings.outputPath, QDir::currentPath() + QStringLiteral("/images/out.bin"));
    QCOMPARE(settings.readPath, QDir::currentPath() + QStringLiteral("/read.bin"));
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_command_line.moc"
