// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/ImageRevisions.h"

#include <QTest>

class TestImageRevisions : public QObject {
    Q_OBJECT

private slots:
    void sameInputs_giveTheSameRevision_data();
    void sameInputs_giveTheSameRevision();
    void inputsTakenBack_giveTheEarlierRevision();
    void anotherFileWithTheSameBytes_isAnotherImage();
    void aFileThatIsGone_isNeverMistakenForANewOne();
    void manyImages_areForgottenOldestFirst();
    void padByte_countsOnlyWhereItStands();
};

namespace {

ByteBuffer bytes(const char *text) {
    return std::make_shared<QByteArray>(text);
}

CompositionInputs fromFile() {
    CompositionInputs inputs;
    inputs.opened_bin_data = bytes("file");
    inputs.rom_start_address = QStringLiteral("0010");
    inputs.pad_to = QStringLiteral("1");
    return inputs;
}

quint64 numberOf(ImageRevisions &revisions, const CompositionInputs &inputs) {
    return revisions.ofComposition(inputs, composeImage(inputs));
}

} // namespace

void TestImageRevisions::sameInputs_giveTheSameRevision_data() {
    using Change = std::function<void(CompositionInputs &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("same");
    const auto row = [](const char *name, bool same, Change change) {
        QTest::newRow(name) << change << same;
    };
    row("nothing", true, [](auto &) {});
    row("the address in other digits", true,
        [](auto &inputs) { inputs.rom_start_address = QStringLiteral("0x10"); });
    row("another address", false,
        [](auto &inputs) { inputs.rom_start_address = QStringLiteral("11"); });
    row("a size that is not padded to", true,
        [](auto &inputs) { inputs.pad_to = QStringLiteral("2"); });
    row("padded", false, [](auto &inputs) { inputs.pad = true; });
    row("padded to less than it has", true, [](auto &inputs) {
        inputs.pad = true;
        inputs.pad_to = QStringLiteral("0");
    });
    row("zeros before it", false, [](auto &inputs) { inputs.padWithZero = true; });
    row("refused", false, [](auto &inputs) {
        inputs.pad = true;
        inputs.pad_to = QStringLiteral("-1");
    });
    row("read data that are not used", true,
        [](auto &inputs) { inputs.read_from_chip_data = bytes("read"); });
    row("nothing read to use", true, [](auto &inputs) { inputs.combineReadData = true; });
    row("read data that are used", false, [](auto &inputs) {
        inputs.combineReadData = true;
        inputs.read_from_chip_data = bytes("read");
    });
    row("no file", false, [](auto &inputs) { inputs.opened_bin_data = nullptr; });
}

void TestImageRevisions::sameInputs_giveTheSameRevision() {
    QFETCH(std::function<void(CompositionInputs &)>, change);
    QFETCH(bool, same);
    ImageRevisions revisions;
    CompositionInputs inputs = fromFile();
    const CompositionInputs beforeInputs = inputs;
    const quint64 before = numberOf(revisions, inputs);
    QVERIFY(before > 0);
    change(inputs);
    const quint64 after = numberOf(revisions, inputs);
    QCOMPARE(after == before, same);
    // Whatever the numbers say of two images must be true of their bytes.
    if (same)
        QCOMPARE(**composeImage(inputs).image, **composeImage(beforeInputs).image);
}

void TestImageRevisions::inputsTakenBack_giveTheEarlierRevision() {
    ImageRevisions revisions;
    CompositionInputs inputs = fromFile();
    const quint64 before = numberOf(revisions, inputs);
    inputs.pad = true;
    QVERIFY(numberOf(revisions, inputs) != before);
    inputs.pad = false;
    QCOMPARE(numberOf(revisions, inputs), before);
}

void TestImageRevisions::anotherFileWithTheSameBytes_isAnotherImage() {
    ImageRevisions revisions;
    const CompositionInputs inputs = fromFile();
    const CompositionInputs other = fromFile();
    QVERIFY(numberOf(revisions, inputs) != numberOf(revisions, other));
}

void TestImageRevisions::aFileThatIsGone_isNeverMistakenForANewOne() {
    ImageRevisions revisions;
    QList<quint64> seen;
    for (int i = 0; i < 20; ++i) {
        // The allocator is likely to hand out the same place again.
        CompositionInputs inputs = fromFile();
        const quint64 revision = numberOf(revisions, inputs);
        QVERIFY(!seen.contains(revision));
        seen.append(revision);
    }
}

void TestImageRevisions::manyImages_areForgottenOldestFirst() {
    ImageRevisions revisions;
    CompositionInputs inputs = fromFile();
    const auto at = [&](int address) {
        inputs.rom_start_address = QString::number(address, 16);
        return numberOf(revisions, inputs);
    };
    const quint64 oldest = at(0);
    for (int address = 1; address < 100; ++address)
        at(address);
    QCOMPARE(at(99), at(99));
    QCOMPARE(at(90), at(90));
    QVERIFY(at(0) != oldest);
}

void TestImageRevisions::padByte_countsOnlyWhereItStands() {
    ImageRevisions revisions;
    CompositionInputs inputs = fromFile();
    inputs.rom_start_address = QStringLiteral("0");
    const quint64 before = numberOf(revisions, inputs);
    inputs.padWithZero = true;
    QCOMPARE(numberOf(revisions, inputs), before);
    inputs.pad = true;
    QVERIFY(numberOf(revisions, inputs) != before);
    inputs.opened_bin_data = nullptr;
    const quint64 zeros = numberOf(revisions, inputs);
    inputs.rom_start_address = QStringLiteral("7");
    QCOMPARE(numberOf(revisions, inputs), zeros); // a kibibyte of zeros from end to end
}

QTEST_GUILESS_MAIN(TestImageRevisions)
#include "tst_imagerevisions.moc"
