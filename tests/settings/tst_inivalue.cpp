// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/IniValue.h"

#include "support/AwkwardTexts.h"
#include "support/FileHelpers.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace {

constexpr int rounds = 4000;

QString keyOf(int round) {
    return QStringLiteral("k%1").arg(round);
}

bool isOnePlainLine(const QByteArray &spelling) {
    const bool isPlain = std::none_of(spelling.begin(), spelling.end(),
                                      [](char c) { return (c >= 0 && c < ' ') || c == '\x7f'; });
    return isPlain && spelling.isValidUtf8();
}

/// What stands around a value in its line is not taken for a part of it.
QVariant fromLine(const QByteArray &spelling) {
    return iniValue::decoded(spelling.trimmed());
}

QStringList listFrom(AwkwardTexts &texts, bool withHalves = true) {
    return {texts.next(withHalves), texts.next(withHalves), texts.next(withHalves)};
}

} // namespace

class TestIniValue : public QObject {
    Q_OBJECT

private slots:
    void anyText_comesBack();
    void anyList_comesBack();
    void anyBytes_comeBack();
    void spelling_data();
    void spelling();
    void meaning_data();
    void meaning();
    void toolkit_readsWhatIsWritten();
    void whatTheToolkitWrote_isRead();

private:
    QString path() const { return folder_.filePath(QStringLiteral("a.conf")); }

    QTemporaryDir folder_;
};

void TestIniValue::anyText_comesBack() {
    AwkwardTexts texts(30);
    for (int round = 0; round < rounds; ++round) {
        const QString text = texts.next();
        const QByteArray spelling = iniValue::encoded(text);
        QVERIFY2(isOnePlainLine(spelling), spelling.constData());
        QCOMPARE(fromLine(spelling), QVariant(text));
    }
}

void TestIniValue::anyList_comesBack() {
    AwkwardTexts texts(31);
    for (int round = 0; round < rounds; ++round) {
        const QStringList list = listFrom(texts);
        const QByteArray spelling = iniValue::encoded(list);
        QVERIFY2(isOnePlainLine(spelling), spelling.constData());
        QCOMPARE(fromLine(spelling), QVariant(list));
    }
}

void TestIniValue::anyBytes_comeBack() {
    std::mt19937 random(32);
    for (int round = 0; round < rounds; ++round) {
        QByteArray bytes(qsizetype(random() % 40), '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return char(random()); });
        const QByteArray spelling = iniValue::encoded(bytes);
        QVERIFY2(isOnePlainLine(spelling), spelling.constData());
        QCOMPARE(fromLine(spelling), QVariant(bytes));
    }
}

void TestIniValue::spelling_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("spelling");
    const auto row = [](const char *name, const QVariant &value, const char *spelling) {
        QTest::newRow(name) << value << QByteArray(spelling);
    };
    row("a word", QStringLiteral("W27C512@DIP28"), "W27C512@DIP28");
    row("nothing", QString(), "");
    row("letters outside ASCII", QStringLiteral("jos\u00e9"), "jos\xc3\xa9");
    row("a comma", QStringLiteral("a, b"), "\"a, b\"");
    row("a semicolon", QStringLiteral("a;b"), "\"a;b\"");
    row("an equals sign", QStringLiteral("a=b"), "\"a=b\"");
    row("blanks around", QStringLiteral(" a "), "\" a \"");
    row("quotes and backslashes", QStringLiteral("\"C:\\\""), "\\\"C:\\\\\\\"");
    row("line breaks and tabs", QStringLiteral("a\r\n\tb"), "a\\r\\n\\tb");
    row("a control character", QStringLiteral("a\u0001z"), "a\\x1z");
    row("a control character and a digit", QStringLiteral("\u00017g"), "\\x1\\x37g");
    row("half a pair", QString(QChar(u'\xd83d')), "\\xd83d");
    row("a call", QStringLiteral("@Variant(1)"), "@@Variant(1)");
    row("a list", QStringList({QStringLiteral("A"), QStringLiteral("@b"), QStringLiteral("c,")}),
        "A, @@b, \"c,\"");
    row("bytes", QByteArray("\1a\xff", 3), "@ByteArray(\\x1\\x61\xc3\xbf)");
}

void TestIniValue::spelling() {
    QFETCH(QVariant, value);
    QFETCH(QByteArray, spelling);
    QCOMPARE(iniValue::encoded(value), spelling);
    QCOMPARE(iniValue::decoded(spelling), value);
}

void TestIniValue::meaning_data() {
    QTest::addColumn<QByteArray>("spelling");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char *name, const char *spelling, const QVariant &value) {
        QTest::newRow(name) << QByteArray(spelling) << value;
    };
    const auto list = [](const char *entries) {
        return QVariant(QString::fromLatin1(entries).split(u'|'));
    };
    row("blanks around", "  A b  ", QStringLiteral("A b"));
    row("blanks in quotes", " \" A \"  ", QStringLiteral(" A "));
    row("escaped blanks at the end", "A\\t", QStringLiteral("A\t"));
    row("an octal number", "\\0\\101", QStringLiteral("%1A").arg(QChar(u'\0')));
    row("every short escape", "\\a\\b\\f\\n\\r\\t\\v\\\"\\?\\'\\\\",
        QStringLiteral("\a\b\f\n\r\t\v\"?'\\"));
    row("broken escapes", "\\xZZ\\q\\", QStringLiteral("ZZ"));
    row("an open quote", "\"A, b", QStringLiteral("A, b"));
    row("a list without blanks", "A,B,", list("A|B|"));
    row("quoted entries", "\"A, B\" , C", list("A, B|C"));
    row("a lone comma", ",", list("|"));
    row("no value", "@Invalid()", QVariant());
    row("no value in a list", "@Invalid(), A", list("|A"));
    row("a serialised object", "@Variant(\\0\\0\\0\\t\\0\\xff\\xff\\xff\\xf0)", QVariant());
    row("a date", "@DateTime(\\0\\0\\0\\x10)", QVariant());
    row("a size", "@Size(1 2)", QVariant());
    row("a text as a call", "@String(A)", QStringLiteral("A"));
    row("an unknown call", "@Chip(7)", QStringLiteral("@Chip(7)"));
    row("an open call", "@Variant(1", QStringLiteral("@Variant(1"));
}

void TestIniValue::meaning() {
    QFETCH(QByteArray, spelling);
    QFETCH(QVariant, value);
    QCOMPARE(iniValue::decoded(spelling), value);
}

void TestIniValue::toolkit_readsWhatIsWritten() {
    AwkwardTexts texts(33);
    QVariantMap values;
    QByteArray content("[General]\n");
    for (int round = 0; round < rounds; ++round) {
        const QVariant value = round % 2 ? QVariant(texts.next()) : QVariant(listFrom(texts));
        values.insert(keyOf(round), value);
        content += keyOf(round).toUtf8() + '=' + iniValue::encoded(value) + '\n';
    }
    QVERIFY(writeWholeFile(path(), content));
    const QSettings settings(path(), QSettings::IniFormat);
    QCOMPARE(settings.status(), QSettings::NoError);
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (value->typeId() == QMetaType::QStringList)
            QCOMPARE(settings.value(value.key()).toStringList(), value->toStringList());
        else
            QCOMPARE(settings.value(value.key()).toString(), value->toString());
    }
}

void TestIniValue::whatTheToolkitWrote_isRead() {
    AwkwardTexts texts(34);
    QVariantMap values;
    const QString written = folder_.filePath(QStringLiteral("toolkit.conf"));
    {
        QSettings settings(written, QSettings::IniFormat);
        for (int round = 0; round < rounds; ++round) {
            const QVariant value = round % 3 == 0   ? QVariant(texts.next(false))
                                   : round % 3 == 1 ? QVariant(listFrom(texts, false))
                                                    : QVariant(texts.next(false).toLatin1());
            values.insert(keyOf(round), value);
            settings.setValue(keyOf(round), value);
        }
    }
    const QList<QByteArray> lines = readWholeFile(written).split('\n').mid(1, rounds);
    QCOMPARE(lines.size(), rounds);
    for (const QByteArray &line : lines) {
        const qsizetype equals = line.indexOf('=');
        const QString key = QString::fromLatin1(line.first(equals));
        QCOMPARE(iniValue::decoded(line.sliced(equals + 1)), values.value(key));
    }
}

QTEST_GUILESS_MAIN(TestIniValue)
#include "tst_inivalue.moc"
