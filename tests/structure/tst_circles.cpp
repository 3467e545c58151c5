// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/CircleRules.h"

#include <QTest>

/// Nothing in the project's sources goes round, and what does is noticed.
class TestCircles : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void sourcesFormNone();
    void circles_areNoticed_data();
    void circles_areNoticed();
    void partsWithoutACircle_areNoticed();

private:
    SourceTree sources_;
};

namespace {

/// The files of \a lines, "src/a/A.cpp > a/B.h a/C.h", each with these includes.
SourceTree filesOf(const QString &lines) {
    SourceTree tree;
    for (const QString &line : lines.split(u'\n')) {
        const QStringList words = line.split(u' ');
        QString &text = tree[words.first()];
        for (const QString &header : words.mid(2))
            text += QStringLiteral("#include \"%1\"\n").arg(header);
    }
    return tree;
}

} // namespace

void TestCircles::initTestCase() {
    static const QString entries = QStringLiteral("src simulator bench demo fuzz tests");
    sources_ = readSourceTree(QStringLiteral(VELM_SOURCE_DIR), entries.split(u' '));
    QVERIFY(sources_.contains(QStringLiteral("src/base/Log.h")));
}

void TestCircles::sourcesFormNone() {
    QCOMPARE(circleRules::subjectsFormNoCircle(sources_).join(u'\n'), QString());
    QCOMPARE(circleRules::partsNeedTheirWhole(sources_).join(u'\n'), QString());
}

void TestCircles::circles_areNoticed_data() {
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("breaches");
    const auto row = [](const char *name, const char *lines, const char *breaches) {
        QTest::newRow(name) << QString::fromLatin1(lines) << QString::fromLatin1(breaches);
    };
    row("a header and its source", "src/a/A.h >\nsrc/a/A.cpp > a/A.h", "");
    row("one way", "src/a/A.h > a/B.h\nsrc/a/B.h > a/C.h\nsrc/a/C.h >\nsrc/a/D.cpp > a/A.h a/C.h",
        "");
    row("two headers", "src/a/A.h > a/B.h\nsrc/a/B.h > a/A.h", "src/a/A: in a circle with src/a/B");
    row("two sources", "src/a/A.h >\nsrc/a/A.cpp > a/A.h a/B.h\nsrc/a/B.h >\nsrc/a/B.cpp > a/A.h",
        "src/a/A: in a circle with src/a/B");
    row("three in two folders", "src/a/C.h > b/A.h\nsrc/b/A.h > b/B.h\nsrc/b/B.h > a/C.h",
        "src/a/C: in a circle with src/b/A, src/b/B");
    row("two circles",
        "src/a/A.h > a/B.h a/C.h\nsrc/a/B.h > a/A.h\nsrc/a/C.h > a/D.h\n"
        "src/a/D.h > a/C.h",
        "src/a/A: in a circle with src/a/B\nsrc/a/C: in a circle with src/a/D");
    row("a class in several sources", "src/a/A.h >\nsrc/a/ARest.cpp > a/A.h\nsrc/a/B.h > a/A.h",
        "");
    row("a circle by one of several sources",
        "src/a/A.h >\nsrc/a/ARest.cpp > a/B.h\nsrc/a/B.h > a/A.h",
        "src/a/A: in a circle with src/a/B");
    row("a longer name with a header",
        "src/a/A.h >\nsrc/a/A.cpp > a/AWords.h\nsrc/a/AWords.h > a/A.h",
        "src/a/A: in a circle with src/a/AWords");
    row("a longer name of another word", "src/a/As.cpp > a/B.h\nsrc/a/A.h >\nsrc/a/B.h > a/A.h",
        "");
    row("the same names elsewhere",
        "src/a/A.h > a/B.h\nsrc/a/B.h >\nsimulator/a/B.h > a/A.h\n"
        "simulator/a/A.h >",
        "");
    row("programs too", "simulator/a/A.h > a/B.h\nsimulator/a/B.h > a/A.h",
        "simulator/a/A: in a circle with simulator/a/B");
    row("a view and its part",
        "src/grid/GridView.h > grid/GridHint.h\nsrc/grid/GridHint.h >\n"
        "src/grid/GridHint.cpp > grid/GridView.h",
        "");
    row("a circle by way of a part",
        "src/grid/GridView.h >\nsrc/grid/GridHint.cpp > a/A.h\nsrc/grid/GridHint.h >\n"
        "src/a/A.h > grid/GridView.h",
        "src/a/A: in a circle with src/grid/GridView");
}

void TestCircles::circles_areNoticed() {
    QFETCH(QString, lines);
    QFETCH(QString, breaches);
    QCOMPARE(circleRules::subjectsFormNoCircle(filesOf(lines)).join(u'\n'), breaches);
}

void TestCircles::partsWithoutACircle_areNoticed() {
    SourceTree tree = sources_;
    const QString part = QStringLiteral("src/grid/GridHint.cpp");
    QVERIFY(tree[part].contains(u"GridView.h"));
    tree[part].remove(QStringLiteral("#include \"grid/GridView.h\""));
    QCOMPARE(circleRules::partsNeedTheirWhole(tree),
             QStringList(QStringLiteral("src/grid/GridHint: in no circle with src/grid/GridView")));
}

QTEST_GUILESS_MAIN(TestCircles)
#include "tst_circles.moc"
