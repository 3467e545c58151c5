// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/IniText.h"

#include <QTest>

#include <random>

class TestIniText : public QObject {
    Q_OBJECT

private slots:
    void values_data();
    void values();
    void damaged_data();
    void damaged();
    void oneChange_data();
    void oneChange();
    void severalChanges();
    void sameChangeAgain_changesNothing();
    void anyChange_keepsTheOtherLines();
};

namespace {

/// Keys and values, as a picture; values of more than one part are in brackets.
QString pictureOf(const QVariantMap &values) {
    QStringList pictures;
    for (auto value = values.begin(); value != values.end(); ++value) {
        const QString text = value->typeId() == QMetaType::QStringList
                                 ? u'[' + value->toStringList().join(u'|') + u']'
                                 : value->toString();
        pictures.append(value.key() + u'=' + text);
    }
    return pictures.join(QStringLiteral("; "));
}

QString pictureOf(const QByteArray &content) {
    const auto values = iniText::values(content);
    return values ? pictureOf(*values) : QStringLiteral("damaged");
}

} // namespace

void TestIniText::values_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("picture");
    const auto row = [](const char *name, const char *content, const char *picture) {
        QTest::newRow(name) << QByteArray(content) << QString::fromUtf8(picture);
    };
    row("nothing", "", "");
    row("entries", "[General]\na=1\nb=x, y\n", "a=1; b=[x|y]");
    row("without a section", "a=1\n", "a=1");
    row("without a last line feed", "[General]\na=1", "a=1");
    row("lines ended by CR LF", "[General]\r\na=1\r\n\r\nb=2\r\n", "a=1; b=2");
    row("lines ended by CR", "[General]\ra=1\rb=2\r", "a=1; b=2");
    row("byte-order mark", "\xef\xbb\xbf[General]\na=1\n", "a=1");
    row("sections", "[General]\na=1\n[More]\na=2\n[ Two words ]\na=3\n",
        "More/a=2; Two words/a=3; a=1");
    row("General in any case, and twice", "[GENERAL]\na=1\n[More]\nb=2\n[general]\nc=3\n",
        "More/b=2; a=1; c=3");
    row("the last of a key", "a=1\n[General]\na=2\na=3\n", "a=3");
    row("blanks around", "\t[General] \n  a \t=  1 \n", "a=1");
    row("comments", "; a=1\n# b=\"2\n  ;c\n[General] ; d=3\ne=4\n", "e=4");
    row("a comment behind a value", "a=1 ; it's \"mine\nb=\";\" ;\n", "a=1; b=;");
    row("a comment sign in a value", "a=1 # 2\n", "a=1 # 2");
    row("equals signs in a value", "a=b=c\n", "a=b=c");
    row("an equals sign in quotes", "\"a=b\"=c\n", "\"a=b\"=c");
    row("no value", "a=\nb\t=\n", "a=; b=");
    row("an escaped quote", "a=b\\\"c\nd=e\n", "a=b\"c; d=e");
    row("an escaped backslash at the end", "a=b\\\\\nd=e\n", "a=b\\; d=e");
    row("a name that ends in a slash", "a/=1\nb=2\n", "a/=1; b=2");
    row("a letter outside ASCII in a name", "\xc3\xa9=1\n", "\xc3\xa9=1");
    row("a serialised object", "a=@Variant(\\0\\0\\0\\t\\0\\xff)\nb=2\n", "a=; b=2");
}

void TestIniText::values() {
    QFETCH(QByteArray, content);
    QFETCH(QString, picture);
    QCOMPARE(pictureOf(content), picture);
}

void TestIniText::damaged_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("a line without a key") << QByteArray("a=1\nnonsense\n");
    QTest::newRow("a value without a key") << QByteArray("=1\n");
    QTest::newRow("a comment instead of a value") << QByteArray("a ; =1\n");
    QTest::newRow("an open section") << QByteArray("[General\na=1\n");
    QTest::newRow("something behind a section") << QByteArray("[General] a=1\n");
    QTest::newRow("an open quote") << QByteArray("a=\"b\nc=1\n");
    QTest::newRow("a backslash at the end") << QByteArray("a=b\\\nc=1\n");
    QTest::newRow("NULs after a crash") << QByteArray("a=1\n") + QByteArray(9, '\0');
    QTest::newRow("another encoding") << QByteArray("a=jos\xe9\n");
    QTest::newRow("escape sequences") << QByteArray("a=\x1b[0mA\n");
}

void TestIniText::damaged() {
    QFETCH(QByteArray, content);
    QCOMPARE(pictureOf(content), QStringLiteral("damaged"));
}

void TestIniText::oneChange_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char *name, const char *key, const char *before, const char *after) {
        QTest::newRow(name) << QString::fromLatin1(key) << QByteArray(before) << QByteArray(after);
    };
    row("into nothing", "b", "", "[General]\nb=new\n");
    row("in place", "b", "[General]\na=1\nb=2\nc=3\n", "[General]\na=1\nb=new\nc=3\n");
    row("in place of nothing", "b", "[General]\nb=\n", "[General]\nb=new\n");
    row("in place, at the end", "b", "[General]\nb=2", "[General]\nb=new");
    row("in its spelling", "b", " b\t= \"2, 3\" ; why\r\n", " b\t= new ; why\r\n");
    row("the last of a key", "b", "b=1\nb=2\n", "b=1\nb=new\n");
    row("not in another section", "b", "[More]\nb=2\n", "[More]\nb=2\n\n[General]\nb=new\n");
    row("between others", "b", "[General]\na=1\nc=3\n", "[General]\na=1\nb=new\nc=3\n");
    row("before others", "b", "[General]\nc=3\n", "[General]\nb=new\nc=3\n");
    row("behind others", "b", "[General]\na=1\n\n[More]\nc=3\n",
        "[General]\na=1\nb=new\n\n[More]\nc=3\n");
    row("behind the last line", "b", "[General]\na=1", "[General]\na=1\nb=new\n");
    row("among lines ended by CR LF", "b", "[General]\r\na=1\r\n", "[General]\r\na=1\r\nb=new\r\n");
    row("without a section", "b", "a=1\nc=3\n", "a=1\nb=new\nc=3\n");
    row("without a section, first of all", "b", "c=3\n[More]\na=1\n", "c=3\nb=new\n[More]\na=1\n");
    row("not between a comment and its key", "b", "[General]\n; mine\nc=3\n",
        "[General]\nb=new\n; mine\nc=3\n");
    row("comments alone", "b", "; mine", "; mine\n\n[General]\nb=new\n");
    row("behind a byte-order mark", "b", "\xef\xbb\xbf[General]\n",
        "\xef\xbb\xbf[General]\nb=new\n");
    row("into a section", "x/b", "[General]\nb=1\n[x]\na=1\n", "[General]\nb=1\n[x]\na=1\nb=new\n");
    row("in place in a section", "x/b", "[General]\nb=1\n[x]\nb=1\n",
        "[General]\nb=1\n[x]\nb=new\n");
    row("into a section that is not there", "x/b", "[General]\na=1\n",
        "[General]\na=1\n\n[x]\nb=new\n");
}

void TestIniText::oneChange() {
    QFETCH(QString, key);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    const QByteArray changed = iniText::changed(before, {{key, QStringLiteral("new")}});
    QCOMPARE(changed, after);
    QCOMPARE(iniText::values(changed)->value(key).toString(), QStringLiteral("new"));
}

void TestIniText::severalChanges() {
    const QVariantMap changes = {{QStringLiteral("c"), QStringLiteral("3")},
                                 {QStringLiteral("x/y"), QByteArray("4")},
                                 {QStringLiteral("a"), QStringList({QStringLiteral("1"), {}})}};
    QCOMPARE(iniText::changed("[General]\nb=2\nc=0\n", changes),
             QByteArray("[General]\na=1,\nb=2\nc=3\n\n[x]\ny=@ByteArray(4)\n"));
    QCOMPARE(iniText::changed("any\nthing", {}), QByteArray("any\nthing"));
}

// Of what a person may have written, whatever it is, one change changes one thing.
void TestIniText::sameChangeAgain_changesNothing() {
    const QVariantMap change = {{QStringLiteral("b"), QStringList{QStringLiteral("1"), QString()}}};
    for (const char *content : {"", "b=2\n", "b=2 ; why\n"}) {
        const QByteArray once = iniText::changed(content, change);
        QCOMPARE(*iniText::values(once), change);
        QCOMPARE(iniText::changed(once, change), once);
    }
}

void TestIniText::anyChange_keepsTheOtherLines() {
    const QByteArrayList lines = {
        "a=1",     "b = \"x, y\" ; c", "[General]", "[More]", "; pad=2", "",
        "# \"old", "pad=\\\"",         "x=;",       "a/=1",   "  ",      "pad=1"};
    std::mt19937 random(22);
    for (int round = 0; round < 2000; ++round) {
        QByteArray content;
        for (auto count = random() % 8; count > 0; --count)
            content += lines.at(qsizetype(random() % unsigned(lines.size()))) +
                       (random() % 3 ? "\n" : "\r\n");
        const QByteArray changed =
            iniText::changed(content, {{QStringLiteral("pad"), QStringLiteral("new")}});
        QVariantMap expected = *iniText::values(content);
        expected.insert(QStringLiteral("pad"), QStringLiteral("new"));
        QCOMPARE(pictureOf(changed), pictureOf(expected));
        for (const QByteArray &line : content.split('\n'))
            if (!line.startsWith("pad="))
                QVERIFY2(changed.contains(line), content + "became\n" + changed);
    }
}

QTEST_GUILESS_MAIN(TestIniText)
#include "tst_initext.moc"
