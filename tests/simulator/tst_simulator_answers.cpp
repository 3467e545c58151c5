// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include "support/FileHelpers.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

/// Every command line whose answer by the tool itself is on file: exit status, both streams, the
/// file that a read leaves and the chip.
class TestSimulatorAnswers : public QObject {
    Q_OBJECT

private slots:
    void answers_data();
    void answers();
};

namespace {

constexpr int kib = 1024;
constexpr int chipSize = 32 * kib;

QByteArray sha256(const QByteArray &bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

/// The first bytes of the hashes of "sample 0", "sample 1" and so on, one after the other.
QByteArray sample(int size) {
    static const QByteArray all = [] {
        QByteArray bytes;
        for (int i = 0; bytes.size() < kib * kib; ++i)
            bytes += sha256("sample " + QByteArray::number(i));
        return bytes;
    }();
    return all.left(size);
}

QByteArray chipContent(const QString &device) {
    if (device == u"M27C512@DIP28")
        return QByteArray(64 * kib, '\xff');
    constexpr char inverted = 0x5A;
    const int size = device == u"W25Q80BV"        ? kib * kib
                     : device == u"W27C512@DIP28" ? 64 * kib
                                                  : chipSize;
    QByteArray content = sample(size);
    for (char &byte : content)
        byte ^= inverted;
    return content;
}

QByteArray intelHex(const QByteArray &content) {
    constexpr int lineLength = 16;
    QByteArray text;
    for (int address = 0; address < content.size(); address += lineLength) {
        QByteArray record;
        record += char(lineLength);
        record += char(address >> 8);
        record += char(address);
        record += '\0' + content.mid(address, lineLength);
        char sum = 0;
        for (const char byte : record)
            sum = char(sum + byte);
        text += ':' + (record + char(-sum)).toHex().toUpper() + "\r\n";
    }
    return text + ":00000001FF";
}

void makeFiles(const TestBench &bench) {
    for (const int size : {32 * kib, 64 * kib})
        bench.makeFile(QStringLiteral("img%1k.bin").arg(size / kib), sample(size));
    bench.makeFile(QStringLiteral("img30k.bin"), sample(30'000));
    bench.makeFile(QStringLiteral("img40k.bin"), sample(40'000));
    bench.makeFile(QStringLiteral("empty.bin"), {});
    bench.makeFile(QStringLiteral("short.hex"), intelHex(sample(256)));
    bench.makeFile(QStringLiteral("full.hex"), intelHex(sample(chipSize)));
    const QByteArray content = chipContent(QStringLiteral("AT28C256"));
    bench.makeFile(QStringLiteral("chip.copy"), content);
    bench.makeFile(QStringLiteral("chip.long"), content + QByteArray("more").repeated(25));
    bench.makeFile(QStringLiteral("chip.short"), content.left(1000));
    bench.makeFile(QStringLiteral("x.bin"), "OLD CONTENT");
}

QString chipFile(const QString &device) {
    return QStringLiteral("bench/%1.bin").arg(device);
}

/// Where a fault strikes is given by what the programmer was asked until then; here it is given
/// in blocks. The other conditions are faults by their own names.
QString faultOf(const QJsonObject &example) {
    const QString condition = example[u"condition"].toString();
    const QJsonObject programmer = example[u"programmer"].toObject();
    const struct {
        QStringView detail;
        QStringView value;
        QStringView fault;
    } places[] = {{u"ovc", u"0", u"overcurrent:0"},
                  {u"ovc", u"2", u"overcurrent:2"},
                  {u"ovc", u"3", u"overcurrent:2"},
                  {u"unplug", u"200", u"unplugged:40"},
                  {u"unplug", u"400", u"unplugged:78"}};
    for (const auto &place : places)
        if (programmer[place.detail].toString() == place.value)
            return place.fault.toString();
    return condition;
}

/// A text as it stands, or the updates of a progress line.
QByteArray pieceOf(const QJsonValue &piece) {
    if (piece.isString())
        return piece.toString().toLatin1();
    QByteArray text;
    const int blocks = piece[u"blocks"].toInt();
    for (int i = 0; i < piece[u"updates"].toInt(); ++i)
        text += piece[u"progress"].toString().toLatin1() +
                QByteArray::number(100 * i / blocks).rightJustified(2) + '%';
    return text;
}

QByteArray standardError(const QJsonObject &example) {
    QByteArray text;
    for (const QJsonValue &piece : example[u"stderr"].toArray())
        text += pieceOf(piece);
    return text.replace("ARGV0n", "minipro-sim").replace("ARGV0", MINIPRO_SIM);
}

/// Long contents are on file as length and hash.
QByteArray digest(const QByteArray &content) {
    return QByteArray::number(content.size()) + ' ' + sha256(content).toHex();
}

QByteArray digestOnFile(const QJsonValue &value) {
    return QByteArray::number(value[u"length"].toInt()) + ' ' +
           value[u"sha256"].toString().toLatin1();
}

void compareContent(const QByteArray &found, const QJsonValue &onFile, const QByteArray &before) {
    QCOMPARE(digest(found), onFile.isString() ? digest(before) : digestOnFile(onFile));
}

QString deviceOf(const QStringList &arguments) {
    const auto option = std::find_if(arguments.begin(), arguments.end(), [](const QString &word) {
        return word == u"-p" || word == u"--device";
    });
    return arguments.value(option - arguments.begin() + 1).toUpper();
}

} // namespace

void TestSimulatorAnswers::answers_data() {
    QTest::addColumn<QJsonObject>("example");
    const QJsonArray examples =
        QJsonDocument::fromJson(readWholeFile(QStringLiteral(TOOL_ANSWERS))).array();
    QCOMPARE(examples.size(), 69);
    for (int i = 0; i < examples.size(); ++i)
        QTest::addRow("%d %s", i, qPrintable(examples[i][u"case"].toString()))
            << examples[i].toObject();
}

void TestSimulatorAnswers::answers() {
    QFETCH(QJsonObject, example);
    const QStringList arguments = example[u"arguments"].toVariant().toStringList();
    const QString device = deviceOf(arguments);
    TestBench bench;
    makeFiles(bench);
    bench.makeFile(chipFile(device), chipContent(device));
    bench.set(QStringLiteral("FAULT"), faultOf(example));

    Answer answer = bench.run(arguments, example[u"answer"].toString().toLatin1());

    const QJsonValue out = example[u"stdout"];
    Answer expected{example[u"exit"].toInt(), out.toString().toLatin1(), standardError(example)};
    if (out.isObject()) {
        answer.out = digest(answer.out);
        expected.out = digestOnFile(out);
    }
    QCOMPARE(answer, expected);
    compareContent(bench.contentOf(QStringLiteral("x.bin")), example[u"file_x"], "OLD CONTENT");
    compareContent(bench.contentOf(chipFile(device)), example[u"chip"], chipContent(device));
}

QTEST_GUILESS_MAIN(TestSimulatorAnswers)
#include "tst_simulator_answers.moc"
