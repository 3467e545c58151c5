// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include "support/AwkwardTexts.h"
#include "support/FileHelpers.h"

#include <QTemporaryDir>
#include <QTest>

#include <utility>

using namespace settingsKeys;

namespace {

/// Texts that an INI file is known to spoil.
const QMap<QByteArray, QString> awkwardTexts() {
    return {
        {"empty", QStringLiteral("")},
        {"plain", QStringLiteral("W27C512@DIP28")},
        {"commas", QStringLiteral("a,b, c ,,d")},
        {"a lone comma", QStringLiteral(",")},
        {"double quotes", QStringLiteral("say \"chip\"")},
        {"a lone quote", QStringLiteral("\"")},
        {"single quotes", QStringLiteral("it's")},
        {"backslashes", QStringLiteral("C:\\new\\x41\\")},
        {"percent signs", QStringLiteral("100%20 %1 %%")},
        {"leading at sign", QStringLiteral("@home")},
        {"two leading at signs", QStringLiteral("@@home")},
        {"an at sign call", QStringLiteral("@Invalid()")},
        {"a size in disguise", QStringLiteral("@Size(1 2)")},
        {"leading and trailing blanks", QStringLiteral("  a  ")},
        {"only blanks", QStringLiteral("   ")},
        {"tabs", QStringLiteral("\ta\t")},
        {"line breaks", QStringLiteral("a\nb\r\nc\r")},
        {"comment signs", QStringLiteral("; # a ; b # c")},
        {"equals signs", QStringLiteral("=a=b=")},
        {"brackets", QStringLiteral("[General]")},
        {"letters outside ASCII", QStringLiteral("/home/jos\u00e9/\u00fcbung/\u6f22\u5b57.bin")},
        {"beyond sixteen bits", QStringLiteral("\U0001F4BE")},
        {"no-break space and mark", QStringLiteral("\u00a0a\ufeff")},
        {"line separators", QStringLiteral("a\u2028b\u0085c")},
        {"a NUL and a digit", QStringLiteral("a%1b").arg(QChar(u'\0')) + QStringLiteral("7")},
        {"a control and a hex digit", QStringLiteral("\u0001f\u001b[K\u007f")},
        {"a number", QStringLiteral("0010")},
        {"a truth", QStringLiteral("TRUE")},
    };
}

} // namespace

class TestSettingsRoundTrip : public QObject {
    Q_OBJECT

private slots:
    void init();
    void text_data();
    void text();
    void listOfOne_data() { text_data(); }
    void listOfOne();
    void list_data();
    void list();
    void anyTextInAnyKey();
    void boolean_data();
    void boolean();
    void fileStaysReadable();
    void handWritten_data();
    void handWritten();
    void handWrittenBoolean_data();
    void handWrittenBoolean();

private:
    QString path() const { return folder_->filePath(QStringLiteral("velm.conf")); }
    // What a program started later finds; also checks that this run sees the same.
    QString textAfterRestart(const QString &value);
    QStringList listAfterRestart(const QStringList &value);

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestSettingsRoundTrip::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

QString TestSettingsRoundTrip::textAfterRestart(const QString &value) {
    {
        SettingsStore store(path());
        store.setValue(binary, value);
        if (store.stringValue(binary) != value)
            return QStringLiteral("wrong in the same run");
    }
    // A copy under another name, so that nothing the toolkit may have cached can help.
    const QString copy = folder_->filePath(QStringLiteral("copy.conf"));
    QFile::copy(path(), copy);
    SettingsStore store(copy);
    return store.unreadFile() ? QStringLiteral("taken for damaged") : store.stringValue(binary);
}

QStringList TestSettingsRoundTrip::listAfterRestart(const QStringList &value) {
    {
        SettingsStore store(path());
        store.setValue(favourites, value);
        if (store.stringListValue(favourites) != value)
            return {QStringLiteral("wrong in the same run")};
    }
    const QString copy = folder_->filePath(QStringLiteral("copy.conf"));
    QFile::copy(path(), copy);
    SettingsStore store(copy);
    return store.unreadFile() ? QStringList(QStringLiteral("taken for damaged"))
                              : store.stringListValue(favourites);
}

void TestSettingsRoundTrip::text_data() {
    QTest::addColumn<QString>("value");
    const QMap<QByteArray, QString> texts = awkwardTexts();
    for (auto text = texts.begin(); text != texts.end(); ++text)
        QTest::newRow(text.key().constData()) << text.value();
}

void TestSettingsRoundTrip::text() {
    QFETCH(QString, value);
    QCOMPARE(textAfterRestart(value), value);
}

void TestSettingsRoundTrip::listOfOne() {
    QFETCH(QString, value);
    QCOMPARE(listAfterRestart({value}), QStringList(value));
}

void TestSettingsRoundTrip::list_data() {
    QTest::addColumn<QStringList>("value");
    const QString none = QStringLiteral("");
    const QString word = QStringLiteral("A");
    QTest::newRow("empty") << QStringList();
    QTest::newRow("two") << QStringList({word, QStringLiteral("B@DIP28")});
    QTest::newRow("twice the same") << QStringList({word, word});
    QTest::newRow("two empty texts") << QStringList({none, none});
    QTest::newRow("three empty texts") << QStringList({none, none, none});
    QTest::newRow("empty text first") << QStringList({none, word});
    QTest::newRow("empty text last") << QStringList({word, none});
    QTest::newRow("empty text between") << QStringList({word, none, word});
    QTest::newRow("every awkward text") << QStringList(awkwardTexts().values());
}

void TestSettingsRoundTrip::list() {
    QFETCH(QStringList, value);
    QCOMPARE(listAfterRestart(value), value);
}

void TestSettingsRoundTrip::anyTextInAnyKey() {
    QStringList keys = startupDefaults().keys();
    keys.append({binary, device});
    AwkwardTexts texts(35);
    SettingsStore store(path());
    for (int round = 0; round < 20; ++round) {
        QMap<QString, QString> expected;
        for (const QString &key : keys) {
            expected.insert(key, texts.next());
            store.setValue(key, expected.value(key));
        }
        const QStringList list = {texts.next(), texts.next()};
        store.setValue(favourites, list);
        const SettingsStore later(path());
        QVERIFY(!later.unreadFile());
        for (const SettingsStore *found : {&std::as_const(store), &later}) {
            QCOMPARE(found->stringListValue(favourites), list);
            for (const QString &key : keys)
                QCOMPARE(found->stringValue(key), expected.value(key));
        }
    }
}

void TestSettingsRoundTrip::boolean_data() {
    QTest::addColumn<bool>("value");
    QTest::newRow("true") << true;
    QTest::newRow("false") << false;
}

void TestSettingsRoundTrip::boolean() {
    QFETCH(bool, value);
    {
        SettingsStore store(path());
        store.setValue(pad, value);
    }
    SettingsStore store(path());
    store.registerDefaults({{pad, !value}});
    QCOMPARE(store.boolValue(pad), value);
}

void TestSettingsRoundTrip::fileStaysReadable() {
    {
        SettingsStore store(path());
        store.setValue(device, QStringLiteral("W27C512@DIP28"));
        store.setValue(pad, true);
        store.setValue(favourites,
                       QStringList({QStringLiteral("W27C512@DIP28"), QStringLiteral("AT28C256")}));
        store.setValue(binary, QStringLiteral("/home/jos\u00e9/a, b.bin"));
    }
    QCOMPARE(readWholeFile(path()), QByteArray("[General]\n"
                                               "binary=\"/home/jos\xc3\xa9/a, b.bin\"\n"
                                               "device=W27C512@DIP28\n"
                                               "favourites=W27C512@DIP28, AT28C256\n"
                                               "pad=true\n"));
}

void TestSettingsRoundTrip::handWritten_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("list");
    const auto row = [](const char *name, const char *value, const char *text,
                        const QByteArrayList &list) {
        QStringList entries;
        for (const QByteArray &entry : list)
            entries.append(QString::fromUtf8(entry));
        QTest::newRow(name) << QByteArray(value) << QString::fromUtf8(text) << entries;
    };
    row("a list", "A, B", "A, B", {"A", "B"});
    row("a list without blanks", "A,B", "A, B", {"A", "B"});
    row("quoted entries", "\"A, B\", C", "A, B, C", {"A, B", "C"});
    row("one word", "A", "A", {"A"});
    row("one word in quotes", "\"A\"", "A", {"A"});
    row("nothing", "", "", {});
    row("blanks around", "   A   ", "A", {"A"});
    row("a number", "12", "12", {"12"});
    row("unescaped letters outside ASCII", "jos\xc3\xa9", "jos\u00e9", {"jos\u00e9"});
    row("a rectangle", "@Rect(1 2 3 4)", "default", {});
    row("no value", "@Invalid()", "default", {});
    row("an unknown call", "@Chip(7)", "@Chip(7)", {"@Chip(7)"});
    row("a broken call", "@Rect(1", "@Rect(1", {"@Rect(1"});
    row("a broken escape", "\\xZZ\\q", "ZZ", {"ZZ"});
}

void TestSettingsRoundTrip::handWritten() {
    QFETCH(QByteArray, value);
    QFETCH(QString, text);
    QFETCH(QStringList, list);
    QVERIFY(writeWholeFile(path(), "[General]\nfavourites=" + value + "\n"));
    SettingsStore store(path());
    store.registerDefaults({{favourites, QStringLiteral("default")}});
    QVERIFY(!store.unreadFile());
    QCOMPARE(store.stringValue(favourites), text);
    QCOMPARE(store.stringListValue(favourites), list);
}

void TestSettingsRoundTrip::handWrittenBoolean_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("withDefaultTrue");
    QTest::addColumn<bool>("withDefaultFalse");
    for (const char *word : {"true", "TRUE", "Yes", "on", "1", "  1  ", "\"true\""})
        QTest::newRow(word) << QByteArray(word) << true << true;
    for (const char *word : {"false", "False", "no", "OFF", "0", "\" 0 \""})
        QTest::newRow(word) << QByteArray(word) << false << false;
    for (const char *word : {"", "perhaps", "2", "1, 0", "@Invalid()", "@Rect(1 1 1 1)"})
        QTest::addRow("no boolean: %s", word) << QByteArray(word) << true << false;
}

void TestSettingsRoundTrip::handWrittenBoolean() {
    QFETCH(QByteArray, value);
    QFETCH(bool, withDefaultTrue);
    QFETCH(bool, withDefaultFalse);
    QVERIFY(writeWholeFile(path(), "[General]\npad=" + value + "\n"));
    SettingsStore store(path());
    store.registerDefaults({{pad, true}});
    QCOMPARE(store.boolValue(pad), withDefaultTrue);
    store.registerDefaults({{pad, false}});
    QCOMPARE(store.boolValue(pad), withDefaultFalse);
}

QTEST_GUILESS_MAIN(TestSettingsRoundTrip)
#include "tst_settings_roundtrip.moc"
