// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/UAStringManager.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "support/RecordingLog.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

const QString first = QStringLiteral("W27C512@DIP28");

/// The favourites with a store of their own.
struct Favourites {
    QTemporaryDir folder;
    RecordingLog log;
    std::unique_ptr<SettingsStore> settings;
    QPushButton button;
    std::unique_ptr<UAStringManager> manager;

    Favourites() { restart(); }

    void restart() {
        manager.reset();
        settings = std::make_unique<SettingsStore>(folder.filePath(QStringLiteral("velm.conf")));
        button.setMenu(nullptr);
        manager = std::make_unique<UAStringManager>(*settings, log);
        manager->dButton = &button;
        manager->awakeFromNib();
    }

    void setDevice(const QString &name) { settings->setValue(settingsKeys::device, name); }

    QStringList menu() const {
        QStringList names;
        for (const QAction *item : button.menu()->actions())
            names.append(item->data().toString());
        return names;
    }

    QStringList stored() const { return settings->stringListValue(settingsKeys::favourites); }
};

} // namespace

class TestFavourites : public QObject {
    Q_OBJECT

private slots:
    void firstStart_hasOneItem();
    void add_appendsWhatIsNotThereYet_data();
    void add_appendsWhatIsNotThereYet();
    void remarks_showTheNameAsTheListDoes_data();
    void remarks_showTheNameAsTheListDoes();
    void add_readsTheStoreAfresh();
    void remove_takesTheFirstEqualName_data();
    void remove_takesTheFirstEqualName();
    void remove_withoutADeviceChangesNothing();
    void emptyList_survivesARestart();
    void aChangeByOtherMeans_isSeenAtTheNextStart();
    void picking_setsTheDeviceToTheTitle_data();
    void picking_setsTheDeviceToTheTitle();
    void picking_isOffWithTheButton();
    void menu_holdsTheFavouritesAndNothingElse();
    void titles_showNamesAsTheListDoes();
    void arrays_areSearchedExactly();
    void writeDict_storesTheList();
    void nonsenseEditedByHand_isNoCrash_data();
    void nonsenseEditedByHand_isNoCrash();
};

void TestFavourites::firstStart_hasOneItem() {
    Favourites f;
    QCOMPARE(f.menu(), QStringList(first));
    QCOMPARE(f.log.lines, QStringList(QStringLiteral("populateMenu is adding 1 items")));
}

void TestFavourites::add_appendsWhatIsNotThereYet_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QStringList>("list");
    QTest::newRow("another name") << QStringLiteral("7400")
                                  << QStringList({first, QStringLiteral("7400")});
    QTest::newRow("in lower case: case matters")
        << first.toLower() << QStringList({first, first.toLower()});
    QTest::newRow("with a trailing blank") << first + u' ' << QStringList({first, first + u' '});
    QTest::newRow("there already") << first << QStringList(first);
    QTest::newRow("empty") << QString() << QStringList(first);
}

void TestFavourites::add_appendsWhatIsNotThereYet() {
    QFETCH(QString, device);
    QFETCH(QStringList, list);
    Favourites f;
    f.setDevice(device);
    QSignalSpy said(f.manager.get(), &UAStringManager::remark);
    f.manager->addFavourite(nullptr);
    QCOMPARE(f.stored(), list);
    QCOMPARE(f.menu(), list);
    QVERIFY(!said.last().first().toString().isEmpty());
}

void TestFavourites::remarks_showTheNameAsTheListDoes_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("shown");
    QTest::newRow("like places for words")
        << QStringLiteral("1%2x %1") << QStringLiteral("1%2x %1");
    QTest::newRow("unseen characters")
        << QStringLiteral("74\u202e00") << QStringLiteral("74\\u202e00");
    QTest::newRow("endless") << QString(100'000, u'x') << QString(1000, u'x') + u'\u2026';
}

void TestFavourites::remarks_showTheNameAsTheListDoes() {
    QFETCH(const QString, device);
    QFETCH(const QString, shown);
    Favourites f;
    f.setDevice(device);
    QSignalSpy said(f.manager.get(), &UAStringManager::remark);
    f.manager->removeFavourite(nullptr);
    f.manager->addFavourite(nullptr);
    f.manager->addFavourite(nullptr);
    f.manager->removeFavourite(nullptr);
    QStringList sentences;
    for (const QList<QVariant> &call : said)
        sentences.append(call.first().toString());
    sentences.removeAll(QString());
    QCOMPARE(sentences, QStringList({shown + QStringLiteral(" is not among the favourites."),
                                     shown + QStringLiteral(" was added to the favourites."),
                                     shown + QStringLiteral(" is a favourite already."),
                                     shown + QStringLiteral(" was removed from the favourites.")}));
}

void TestFavourites::add_readsTheStoreAfresh() {
    Favourites f;
    f.settings->setValue(settingsKeys::favourites, QStringList({QStringLiteral("4000")}));
    f.setDevice(QStringLiteral("7400"));
    f.manager->addFavourite(nullptr);
    QCOMPARE(f.menu(), QStringList({QStringLiteral("4000"), QStringLiteral("7400")}));
}

void TestFavourites::remove_takesTheFirstEqualName_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QStringList>("list");
    const QStringList all = {first, QStringLiteral("7400"), first};
    QTest::newRow("the first of two equal ones")
        << first << QStringList({QStringLiteral("7400"), first});
    QTest::newRow("not in the list") << QStringLiteral("4000") << all;
    QTest::newRow("a part of a name") << QStringLiteral("W27") << all;
    QTest::newRow("empty") << QString() << all;
}

void TestFavourites::remove_takesTheFirstEqualName() {
    QFETCH(QString, device);
    QFETCH(QStringList, list);
    Favourites f;
    f.settings->setValue(settingsKeys::favourites,
                         QStringList({first, QStringLiteral("7400"), first}));
    f.restart();
    f.setDevice(device);
    f.manager->removeFavourite(nullptr);
    QCOMPARE(f.stored(), list);
    QCOMPARE(f.menu(), list);
}

void TestFavourites::remove_withoutADeviceChangesNothing() {
    Favourites f;
    QVERIFY(f.settings->stringValue(settingsKeys::device).isNull());
    f.log.take();
    QSignalSpy changes(f.settings.get(), &SettingsStore::valueChanged);
    f.manager->removeFavourite(nullptr);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(f.menu(), QStringList(first));
    QCOMPARE(f.stored(), QStringList(first));
    QCOMPARE(f.log.lines, QStringList());
}

void TestFavourites::emptyList_survivesARestart() {
    Favourites f;
    f.setDevice(first);
    f.manager->removeFavourite(nullptr);
    QCOMPARE(f.menu(), QStringList());
    f.restart();
    QCOMPARE(f.menu(), QStringList());
    QCOMPARE(f.stored(), QStringList());
}

void TestFavourites::aChangeByOtherMeans_isSeenAtTheNextStart() {
    Favourites f;
    f.settings->setValue(settingsKeys::favourites, QStringList({QStringLiteral("4000")}));
    QCOMPARE(f.menu(), QStringList(first));
    f.restart();
    QCOMPARE(f.menu(), QStringList(QStringLiteral("4000")));
}

void TestFavourites::picking_setsTheDeviceToTheTitle_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("a plain name") << QStringLiteral("7400");
    QTest::newRow("a mark of a mnemonic") << QStringLiteral("A&B&&C");
    QTest::newRow("a trailing blank") << QStringLiteral("7400 ");
    QTest::newRow("a tab, which menus take for a shortcut") << QStringLiteral("A\tB");
}

void TestFavourites::picking_setsTheDeviceToTheTitle() {
    QFETCH(QString, name);
    Favourites f;
    f.settings->setValue(settingsKeys::favourites, QStringList({first, name}));
    f.restart();
    f.button.menu()->actions().at(1)->trigger();
    QCOMPARE(f.settings->stringValue(settingsKeys::device), name);
    QCOMPARE(f.stored(), QStringList({first, name}));
}

void TestFavourites::picking_isOffWithTheButton() {
    Favourites f;
    f.setDevice(QStringLiteral("7400"));
    f.button.setEnabled(false);
    f.button.menu()->actions().constFirst()->trigger();
    QCOMPARE(f.settings->stringValue(settingsKeys::device), QStringLiteral("7400"));
}

void TestFavourites::menu_holdsTheFavouritesAndNothingElse() {
    Favourites f;
    f.settings->setValue(settingsKeys::favourites,
                         QStringList({QStringLiteral("B"), QStringLiteral("A")}));
    f.restart();
    const QList<QAction *> items = f.button.menu()->actions();
    QCOMPARE(items.size(), 2);
    for (const QAction *item : items) {
        QVERIFY(!item->isSeparator());
        QVERIFY(!item->isChecked());
        QVERIFY(item->shortcut().isEmpty());
    }
    QCOMPARE(f.menu(), QStringList({QStringLiteral("B"), QStringLiteral("A")}));
}

// Names may come in a settings file from somebody else.
void TestFavourites::titles_showNamesAsTheListDoes() {
    const QString turned = QStringLiteral("\u202e2004");
    const QString lengthy(1000000, u'A');
    Favourites f;
    f.settings->setValue(settingsKeys::favourites, QStringList({turned, lengthy}));
    f.restart();
    const QList<QAction *> items = f.button.menu()->actions();
    QCOMPARE(items.at(0)->text(), QStringLiteral("\\u202e2004"));
    QCOMPARE(items.at(1)->text(), QString(1000, u'A') + u'\u2026');
    QCOMPARE(f.menu(), QStringList({turned, lengthy}));
}

void TestFavourites::arrays_areSearchedExactly() {
    Favourites f;
    const QStringList array = {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a")};
    QCOMPARE(f.manager->array_ContainsString(array, QStringLiteral("a")), true);
    QCOMPARE(f.manager->array_ContainsString(array, QStringLiteral("A")), false);
    QCOMPARE(f.manager->array_ContainsString({}, QString()), false);
    QCOMPARE(f.manager->array_indexOfMatchingString(array, QStringLiteral("b")), 1);
    QCOMPARE(f.manager->array_indexOfMatchingString(array, QStringLiteral("a")), 0);
    QCOMPARE(f.manager->array_indexOfMatchingString(array, QStringLiteral("c")), -1);
    QCOMPARE(f.manager->array_indexOfMatchingString({}, QStringLiteral("a")), -1);
}

void TestFavourites::writeDict_storesTheList() {
    Favourites f;
    f.settings->setValue(settingsKeys::favourites, QStringList());
    f.manager->writeDict();
    QCOMPARE(f.stored(), QStringList(first));
}

void TestFavourites::nonsenseEditedByHand_isNoCrash_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("no list") << QByteArray("favourites=");
    QTest::newRow("an open bracket") << QByteArray("favourites=\"[\\\"7400\"");
    QTest::newRow("an object") << QByteArray("favourites=\"{}\"");
    QTest::newRow("a variant") << QByteArray("favourites=@Variant(\\0\\0\\0\\b)");
    QTest::newRow("numbers") << QByteArray("favourites=1, 2, 3");
}

void TestFavourites::nonsenseEditedByHand_isNoCrash() {
    QFETCH(QByteArray, line);
    Favourites f;
    QFile file(f.folder.filePath(QStringLiteral("velm.conf")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[General]\n" + line + '\n');
    file.close();
    f.restart();
    QCOMPARE(f.menu(), f.stored());
    f.setDevice(QStringLiteral("7400"));
    f.manager->addFavourite(nullptr);
    QVERIFY(f.menu().contains(u"7400"));
    f.restart();
    QVERIFY(f.menu().contains(u"7400"));
}

QTEST_MAIN(TestFavourites)
#include "tst_favourites.moc"
