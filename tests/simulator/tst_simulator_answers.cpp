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

using namespace Qt::StringLiterals;

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
    if (device == "M27C512@DIP28"_L1)
        return QByteArray(64 * kib, '\xff');
    constexpr char inverted = 0x5A;
    const int size = device == "W25Q80BV"_L1        ? kib * kib
                     : device == "W27C512@DIP28"_L1 ? 64 * kib
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
        bench.makeFile(u"img%1k.bin"_s.arg(size / kib), sample(size));
    bench.makeFile(u"img30k.bin"_s, sample(30'000));
    bench.makeFile(u"img40k.bin"_s, sample(40'000));
    bench.makeFile(u"empty.bin"_s, {});
    bench.makeFile(u"short.hex"_s, intelHex(sample(256)));
    bench.makeFile(u"full.hex"_s, intelHex(sample(chipSize)));
    const QByteArray content = chipContent(u"AT28C256"_s);
    bench.makeFile(u"chip.copy"_s, content);
    bench.makeFile(u"chip.long"_s, content + QByteArray("more").repeated(25));
    bench.makeFile(u"chip.short"_s, content.left(1000));
    bench.makeFile(u"x.bin"_s, "OLD CONTENT");
}

QString chipFile(const QString &device) {
    return u"bench/%1.bin"_s.arg(device);
}

/// Where a fault strikes is given by what the programmer was asked until then; here it is given
/// in blocks. The other conditions are faults by their own names.
QString faultOf(const QJsonObject &example) {
    const QString condition = example["condition"_L1].toString();
    const QJsonObject programmer = example["programmer"_L1].toObject();
    const struct {
        QLatin1StringView detail;
        QLatin1StringView value;
        QLatin1StringView fault;
    } places[] = {{"ovc"_L1, "0"_L1, "overcurrent:0"_L1},
                  {"ovc"_L1, "2"_L1, "overcurrent:2"_L1},
                  {"ovc"_L1, "3"_L1, "overcurrent:2"_L1},
                  {"unplug"_L1, "200"_L1, "unplugged:40"_L1},
                  {"unplug"_L1, "400"_L1, "unplugged:78"_L1}};
    for (const auto &place : places)
        if (programmer[place.detail].toString() == place.value)
            return place.fault;
    return condition;
}

/// A text as it stands, or the updates of a progress line.
QByteArray pieceOf(const QJsonValue &piece) {
    if (piece.isString())
        return piece.toString().toLatin1();
    QByteArray text;
    const int blocks = piece["blocks"_L1].toInt();
    for (int i = 0; i < piece["updates"_L1].toInt(); ++i)
        text += piece["progress"_L1].toString().toLatin1() +
                QByteArray::number(100 * i / blocks).rightJustified(2) + '%';
    return text;
}

QByteArray standardError(const QJsonObject &example) {
    QByteArray text;
    for (const QJsonValue &piece : example["stderr"_L1].toArray())
        text += pieceOf(piece);
    return text.replace("ARGV0n", "minipro-sim").replace("ARGV0", MINIPRO_SIM);
}

/// Long contents are on file as length and hash.
QByteArray digest(const QByteArray &content) {
    return QByteArray::number(content.size()) + ' ' + sha256(content).toHex();
}

QByteArray digestOnFile(const QJsonValue &value) {
    return QByteArray::number(value["length"_L1].toInt()) + ' ' +
           value["sha256"_L1].toString().toLatin1();
}

void compareContent(const QByteArray &found, const QJsonValue &onFile, const QByteArray &before) {
    QCOMPARE(digest(found), onFile.isString() ? digest(before) : digestOnFile(onFile));
}

QString deviceOf(const QStringList &arguments) {
    const auto option = std::find_if(arguments.begin(), arguments.end(), [](const QString &word) {
        return word == "-p"_L1 || word == "--device"_L1;
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
        QTest::addRow("%d %s", i, qPrintable(examples[i]["case"_L1].toString()))
            << examples[i].toObject();
}

void TestSimulatorAnswers::answers() {
    QFETCH(QJsonObject, example);
    const QStringList arguments = example["arguments"_L1].toVariant().toStringList();
    const QString device = deviceOf(arguments);
    TestBench bench;
    makeFiles(bench);
    bench.makeFile(chipFile(device), chipContent(device));
    bench.set(u"FAULT"_s, faultOf(example));

    Answer answer = bench.run(arguments, example["answer"_L1].toString().toLatin1());

    const QJsonValue out = example["stdout"_L1];
    Answer expected{example["exit"_L1].toInt(), out.toString().toLatin1(), standardError(example)};
    if (out.isObject()) {
        answer.out = digest(answer.out);
        expected.out = digestOnFile(out);
    }
    QCOMPARE(answer, expected);
    compareContent(bench.contentOf(u"x.bin"_s), example["file_x"_L1], "OLD CONTENT");
    compareContent(bench.contentOf(chipFile(device)), example["chip"_L1], chipContent(device));
}

QTEST_GUILESS_MAIN(TestSimulatorAnswers)
#include "tst_simulator_answers.moc"
