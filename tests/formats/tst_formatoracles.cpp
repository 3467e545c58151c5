// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/RecordReader.h"
#include "formats/RecordWriter.h"
#include "support/FileHelpers.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

/// Other programs read what is written, and what they write is read.
class TestFormatOracles : public QObject {
    Q_OBJECT

private slots:
    void othersRead_data();
    void othersRead();
    void othersWrite_data();
    void othersWrite();
    void theToolReads_data();
    void theToolReads();

private:
    QString path(const char *name) const { return folder_.filePath(QLatin1String(name)); }

    QTemporaryDir folder_;
};

namespace {

/// A command line for one of them. "@text" and "@bytes" stand for files, "@address" for the address
/// of the first byte, "@length" for how many there are.
struct Oracle {
    const char *name;
    QStringList command;
    const char *package;
};

QStringList words(const char *command) {
    return QString::fromLatin1(command).split(u' ');
}

/// The system's own, which has the packages of the system.
const QString systemPython = QStringLiteral("/usr/bin/python3");

QStringList python(const char *script) {
    return {systemPython, QStringLiteral("-c"),
            QStringLiteral("from intelhex import IntelHex, hex2bin, bin2hex\n") +
                QLatin1String(script)};
}

/// Those that make bytes of text, by format.
QList<Oracle> readers(RecordFormat format) {
    if (format == RecordFormat::SRecord)
        return {{"srec_cat", words("srec_cat @text -motorola -offset -@address -o @bytes -binary"),
                 "srecord"},
                {"objcopy", words("objcopy -I srec -O binary @text @bytes"), "binutils"}};
    return {
        {"srec_cat", words("srec_cat @text -intel -offset -@address -o @bytes -binary"), "srecord"},
        {"objcopy", words("objcopy -I ihex -O binary @text @bytes"), "binutils"},
        {"intelhex", python("hex2bin('@text', '@bytes', start=@address, size=@length)"),
         "python3-intelhex"}};
}

/// Those that make text of bytes.
QList<Oracle> writers(RecordFormat format) {
    if (format == RecordFormat::SRecord)
        return {{"srec_cat",
                 words("srec_cat @bytes -binary -offset @address -execution-start-address 0 -o "
                       "@text -motorola"),
                 "srecord"},
                {"objcopy",
                 words("objcopy -I binary -O srec --change-addresses @address @bytes @text"),
                 "binutils"}};
    return {
        {"srec_cat", words("srec_cat @bytes -binary -offset @address -o @text -intel"), "srecord"},
        {"objcopy", words("objcopy -I binary -O ihex --change-addresses @address @bytes @text"),
         "binutils"},
        {"intelhex", python("bin2hex('@bytes', '@text', offset=@address)"), "python3-intelhex"}};
}

bool isThere(const Oracle &oracle) {
    if (QLatin1String(oracle.package) != QStringLiteral("python3-intelhex"))
        return !QStandardPaths::findExecutable(oracle.command.first()).isEmpty();
    return QProcess::execute(systemPython,
                             {QStringLiteral("-c"), QStringLiteral("import intelhex")}) == 0;
}

QByteArray sample(qsizetype length) {
    QByteArray bytes;
    for (qsizetype i = 0; i < length; ++i)
        bytes += char(i * 7 + i / 256 + 1);
    return bytes;
}

void addRows(QList<Oracle> (*oracles)(RecordFormat)) {
    QTest::addColumn<RecordFormat>("format");
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QString>("missing");
    QTest::addColumn<qint64>("address");
    for (const RecordFormat format : {RecordFormat::IntelHex, RecordFormat::SRecord})
        for (const Oracle &oracle : oracles(format)) {
            const QString missing = isThere(oracle) ? QString() : QLatin1String(oracle.package);
            for (const qint64 address : {0LL, 0xFFF8LL, 0x12345LL, 0x7FFFF000LL})
                QTest::addRow("%s, %s, at %llx", oracle.name,
                              format == RecordFormat::IntelHex ? "Intel HEX" : "S-records", address)
                    << format << oracle.command << missing << address;
        }
}

/// Runs \a command with \a values in the place of its names. What it said if it failed.
QString runFilled(QStringList command, const QList<std::pair<QString, QString>> &values) {
    for (const auto &[name, value] : values)
        command.replaceInStrings(name, value);
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(command.first(), command.mid(1));
    if (process.waitForFinished() && process.exitCode() == 0)
        return {};
    return command.join(u' ') + QStringLiteral(": ") + QString::fromLocal8Bit(process.readAll());
}

} // namespace

void TestFormatOracles::othersRead_data() {
    addRows(readers);
}

void TestFormatOracles::othersRead() {
    QFETCH(RecordFormat, format);
    QFETCH(QStringList, command);
    QFETCH(QString, missing);
    QFETCH(qint64, address);
    if (!missing.isEmpty())
        QSKIP(qPrintable(QStringLiteral("needs the package ") + missing));
    const QByteArray bytes = sample(1000);
    for (const int recordLength : {1, 16, 32, maxRecordLength(format, address, bytes.size())}) {
        RecordWriter writer({format, recordLength, address, "VELM"}, bytes.size());
        QVERIFY(writer.advance(bytes, bytes.size()));
        QVERIFY(writeWholeFile(path("text"), writer.takeText()));
        QFile::remove(path("bytes"));
        QCOMPARE(runFilled(command, {{QStringLiteral("@text"), path("text")},
                                     {QStringLiteral("@bytes"), path("bytes")},
                                     {QStringLiteral("@address"), QString::number(address)},
                                     {QStringLiteral("@length"), QString::number(bytes.size())}}),
                 QString());
        QCOMPARE(readWholeFile(path("bytes")), bytes);
    }
}

void TestFormatOracles::othersWrite_data() {
    addRows(writers);
}

void TestFormatOracles::othersWrite() {
    QFETCH(RecordFormat, format);
    QFETCH(QStringList, command);
    QFETCH(QString, missing);
    QFETCH(qint64, address);
    if (!missing.isEmpty())
        QSKIP(qPrintable(QStringLiteral("needs the package ") + missing));
    const QByteArray bytes = sample(1000);
    QVERIFY(writeWholeFile(path("bytes"), bytes));
    QCOMPARE(runFilled(command, {{QStringLiteral("@text"), path("text")},
                                 {QStringLiteral("@bytes"), path("bytes")},
                                 {QStringLiteral("@address"), QString::number(address)}}),
             QString());
    const QByteArray text = readWholeFile(path("text"));
    QCOMPARE(recordFormatOf(text), std::optional(format));
    RecordReader reader(format);
    QVERIFY(reader.advance(text, text.size()));
    QCOMPARE(reader.decoded().troubles.total(), 0);
    QCOMPARE(reader.decoded().bytes.pieces(), (AddressedBytes::Pieces{{address, bytes}}));
}

void TestFormatOracles::theToolReads_data() {
    QTest::addColumn<RecordFormat>("format");
    QTest::addColumn<int>("recordLength");
    for (const int recordLength : {1, 16, 250}) {
        QTest::addRow("Intel HEX, %d", recordLength) << RecordFormat::IntelHex << recordLength;
        QTest::addRow("S-records, %d", recordLength) << RecordFormat::SRecord << recordLength;
    }
}

// The simulator decodes as the tool does. The chip is larger than 64 KiB, so that long addresses
// are read too.
void TestFormatOracles::theToolReads() {
    QFETCH(RecordFormat, format);
    QFETCH(int, recordLength);
    constexpr int chipSize = 131'072;
    const QByteArray bytes = sample(chipSize);
    RecordWriter writer({format, recordLength}, bytes.size());
    QVERIFY(writer.advance(bytes, bytes.size()));
    QVERIFY(writeWholeFile(path("text"), writer.takeText()));
    const auto run = [this](const QString &option, const QString &file) {
        QProcess tool;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("MINIPRO_SIM_BENCH"), path("bench"));
        environment.insert(QStringLiteral("MINIPRO_SIM_PACE"), QStringLiteral("instant"));
        tool.setProcessEnvironment(environment);
        tool.setProcessChannelMode(QProcess::MergedChannels);
        tool.start(QStringLiteral(MINIPRO_SIM),
                   {QStringLiteral("-p"), QStringLiteral("AM29F010@DIP32"), option, file});
        return tool.waitForFinished() && tool.exitCode() == 0 ? QString()
                                                              : QString::fromUtf8(tool.readAll());
    };
    QCOMPARE(run(QStringLiteral("-w"), path("text")), QString());
    QCOMPARE(run(QStringLiteral("-r"), path("bytes")), QString());
    QVERIFY(readWholeFile(path("bytes")) == bytes);
}

QTEST_GUILESS_MAIN(TestFormatOracles)
#include "tst_formatoracles.moc"
