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
    row("zeros", false, [](auto &inputs) { inputs.padWithZero = true; });
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
    const quint64 before = revisions.ofComposition(inputs);
    QVERIFY(before > 0);
    change(inputs);
    const quint64 after = revisions.ofComposition(inputs);
    QCOMPARE(after == before, same);
    // Whatever the numbers say of two images must be true of their bytes.
    CompositionInputs first = fromFile();
    first.opened_bin_data = inputs.opened_bin_data ? inputs.opened_bin_data : bytes("file");
    if (same)
        QCOMPARE(*composeImage(inputs).image, *composeImage(first).image);
}

void TestImageRevisions::inputsTakenBack_giveTheEarlierRevision() {
    ImageRevisions revisions;
    CompositionInputs inputs = fromFile();
    const quint64 before = revisions.ofComposition(inputs);
    inputs.pad = true;
    QVERIFY(revisions.ofComposition(inputs) != before);
    inputs.pad = false;
    QCOMPARE(revisions.ofComposition(inputs), before);
}

void TestImageRevisions::anotherFileWithTheSameBytes_isAnotherImage() {
    ImageRevisions revisions;
    const CompositionInputs inputs = fromFile();
    const CompositionInputs other = fromFile();
    QVERIFY(revisions.ofComposition(inputs) != revisions.ofComposition(other));
}

void TestImageRevisions::aFileThatIsGone_isNeverMistakenForANewOne() {
    ImageRevisions revisions;
    QList<quint64> seen;
    for (int i = 0; i < 20; ++i) {
        // The allocator is likely to hand out the same place again.
        CompositionInputs inputs = fromFile();
        const quint64 revision = revisions.ofComposition(inputs);
        QVERIFY(!seen.contains(revision));
        seen.append(revision);
    }
}

void TestImageRevisions::manyImages_areForgottenOldestFirst() {
    ImageRevisions revisions;
    CompositionInputs inputs = fromFile();
    const auto at = [&](int address) {
        inputs.rom_start_address = QString::number(address, 16);
        return revisions.ofComposition(inputs);
    };
    const quint64 oldest = at(0);
    for (int address = 1; address < 100; ++address)
        at(address);
    QCOMPARE(at(99), at(99));
    QCOMPARE(at(90), at(90));
    QVERIFY(at(0) != oldest);
}

QTEST_GUILESS_MAIN(TestImageRevisions)
#include "tst_imagerevisions.moc"
