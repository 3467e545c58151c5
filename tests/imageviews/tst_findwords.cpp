// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/FindWords.h"

#include <QLocale>
#include <QTest>

Q_DECLARE_METATYPE(FindState)

/// What the find bar says of a search.
class TestFindWords : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English)); }
    void words_data();
    void words();
    void troubles_keepWhatWasTyped();
};

void TestFindWords::words_data() {
    using Where = FindState::Where;
    using Wrap = FindState::Wrap;
    QTest::addColumn<FindState>("state");
    QTest::addColumn<QString>("count");
    QTest::addColumn<QString>("remark");
    const auto row = [](const char *name, const FindState &state, const char16_t *count,
                        const char16_t *remark = u"") {
        QTest::newRow(name) << state << QStringView(count).toString()
                            << QStringView(remark).toString();
    };
    row("nothing to search for", {Where::Nowhere, 0, 0, Wrap::None}, u"");
    row("results", {Where::Results, 0, 0, Wrap::None}, u"",
        u"There are no bytes among the logic test results.");
    row("an empty image", {Where::NoBytes, 0, 0, Wrap::None}, u"",
        u"There are no bytes to search.");
    row("not counted", {Where::Image, {}, 0, Wrap::None}, u"counting\u2026");
    row("gone on, not counted", {Where::Image, {}, 0, Wrap::FromEnd}, u"counting\u2026",
        u"Went on from the end.");
    row("none", {Where::Image, 0, 0, Wrap::None}, u"not found");
    row("one elsewhere", {Where::Image, 1, 0, Wrap::None}, u"1 hit");
    row("many elsewhere", {Where::Image, 27000, 0, Wrap::None}, u"27,000 hits");
    row("at the third", {Where::Image, 27, 3, Wrap::None}, u"3 of 27");
    row("at a large number", {Where::Image, 27000, 1234, Wrap::None}, u"1,234 of 27,000");
    row("gone on", {Where::Image, 27, 1, Wrap::FromBeginning}, u"1 of 27",
        u"Went on from the beginning.");
}

void TestFindWords::words() {
    QFETCH(FindState, state);
    QFETCH(QString, count);
    QFETCH(QString, remark);
    QCOMPARE(countWords(state), count);
    QCOMPARE(remarkWords(state), remark);
}

void TestFindWords::troubles_keepWhatWasTyped() {
    using Kind = PatternTrouble::Kind;
    const QString typed = QStringLiteral("%1 &<b>");
    for (const Kind kind : {Kind::HalfByte, Kind::NoDigits, Kind::NoByte}) {
        const QString words = troubleWords({kind, typed});
        QVERIFY2(words.startsWith(u'\u201c' + typed + u'\u201d'), qPrintable(words));
    }
    QCOMPARE(troubleWords({Kind::TooLong, {}}),
             QStringLiteral("More than 1,024 bytes cannot be searched for."));
}

QTEST_GUILESS_MAIN(TestFindWords)
#include "tst_findwords.moc"
