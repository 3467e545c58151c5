// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/NameFilter.h"

#include <QTest>

class TestNameFilter : public QObject {
    Q_OBJECT

private slots:
    void names_passThatHoldEveryWord_data();
    void names_passThatHoldEveryWord();
};

void TestNameFilter::names_passThatHoldEveryWord_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("found");
    const QString all = QStringLiteral("AM27C256@DIP28 AM27C256@PLCC32 M27C512@DIP28 7400");
    const auto row = [](const char *typed, const QString &found) {
        QTest::newRow(typed) << QString::fromLatin1(typed) << found;
    };
    row("", all);
    row("  ", all);
    row("27c256 dip", QStringLiteral("AM27C256@DIP28"));
    row("dip 27C256", QStringLiteral("AM27C256@DIP28"));
    row(" DIP\t28 ", QStringLiteral("AM27C256@DIP28 M27C512@DIP28"));
    row("27c", QStringLiteral("AM27C256@DIP28 AM27C256@PLCC32 M27C512@DIP28"));
    row("@", QStringLiteral("AM27C256@DIP28 AM27C256@PLCC32 M27C512@DIP28"));
    row(".*", QString());
    row("27c256 28c", QString());
}

void TestNameFilter::names_passThatHoldEveryWord() {
    QFETCH(const QString, typed);
    QFETCH(const QString, found);
    const QStringList names =
        QStringLiteral("AM27C256@DIP28 AM27C256@PLCC32 M27C512@DIP28 7400").split(u' ');
    QCOMPARE(NameFilter(typed).passing(names).join(u' '), found);
}

QTEST_GUILESS_MAIN(TestNameFilter)
#include "tst_name_filter.moc"
