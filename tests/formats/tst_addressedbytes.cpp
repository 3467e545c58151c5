// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/AddressedBytes.h"

#include <QRandomGenerator>
#include <QTest>

/// Bytes at addresses, whatever the order in which they come.
class TestAddressedBytes : public QObject {
    Q_OBJECT

private slots:
    void empty_hasNoBounds();
    void pieces_neverTouch_data();
    void pieces_neverTouch();
    void bytes_areThoseOfAPlainArray();
    void fallingAddresses_makeOnePiece();
};

namespace {

constexpr int space = 200;

/// The same kept in the plainest way.
struct Plain {
    QByteArray bytes = QByteArray(space, '\0');
    std::array<bool, space> used{};

    bool put(int address, const QByteArray &put) {
        bool covered = false;
        for (int i = 0; i < put.size(); ++i) {
            covered = covered || used[std::size_t(address + i)];
            used[std::size_t(address + i)] = true;
            bytes[address + i] = put[i];
        }
        return covered;
    }
};

/// True if \a bytes are those of \a plain, in pieces as long as they can be.
bool areThoseOf(const AddressedBytes &bytes, const Plain &plain) {
    Plain found;
    qint64 last = -1;
    for (const auto &[address, piece] : bytes.pieces()) {
        if (address <= last || piece.isEmpty() || found.put(int(address), piece))
            return false;
        last = address + piece.size();
    }
    return found.bytes == plain.bytes && found.used == plain.used &&
           bytes.count() == std::count(plain.used.begin(), plain.used.end(), true);
}

} // namespace

void TestAddressedBytes::empty_hasNoBounds() {
    AddressedBytes bytes;
    QVERIFY(!bytes.put(5, {}));
    QVERIFY(bytes.isEmpty());
    QCOMPARE(bytes.first(), 0);
    QCOMPARE(bytes.end(), 0);
    QCOMPARE(bytes.count(), 0);
}

void TestAddressedBytes::pieces_neverTouch_data() {
    QTest::addColumn<QList<int>>("order");
    QTest::newRow("rising") << QList<int>{0, 1, 2, 3, 4};
    QTest::newRow("falling") << QList<int>{4, 3, 2, 1, 0};
    QTest::newRow("from outside") << QList<int>{0, 4, 1, 3, 2};
    QTest::newRow("every second, then the others") << QList<int>{0, 2, 4, 1, 3};
    QTest::newRow("the others from behind") << QList<int>{0, 2, 4, 3, 1};
}

void TestAddressedBytes::pieces_neverTouch() {
    QFETCH(QList<int>, order);
    AddressedBytes bytes;
    for (const int at : order)
        QVERIFY(!bytes.put(100 + 2 * at, QByteArray(2, char('a' + at))));
    const AddressedBytes::Pieces whole = {{100, "aabbccddee"}};
    QCOMPARE(bytes.pieces(), whole);
    QCOMPARE(bytes.first(), 100);
    QCOMPARE(bytes.end(), 110);
}

void TestAddressedBytes::bytes_areThoseOfAPlainArray() {
    QRandomGenerator random(20261122);
    for (int round = 0; round < 300; ++round) {
        AddressedBytes bytes;
        Plain plain;
        for (int step = 0; step < 40; ++step) {
            const QByteArray put(random.bounded(12), char(random.bounded(256)));
            const int address = random.bounded(space - 12);
            QCOMPARE(bytes.put(address, put), plain.put(address, put));
            QVERIFY(areThoseOf(bytes, plain));
        }
    }
}

void TestAddressedBytes::fallingAddresses_makeOnePiece() {
    constexpr int count = 200'000;
    AddressedBytes bytes;
    for (int at = count; at > 0; --at)
        QVERIFY(!bytes.put(16 * at, "0123456789ABCDEF"));
    QCOMPARE(bytes.pieces().size(), std::size_t(1));
    QCOMPARE(bytes.count(), qint64(16) * count);
}

QTEST_GUILESS_MAIN(TestAddressedBytes)
#include "tst_addressedbytes.moc"
