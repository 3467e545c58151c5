// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/Announcement.h"

#include "support/SpokenWords.h"

#include <QAccessible>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

class TestAnnouncement : public QObject {
    Q_OBJECT

private slots:
    void words_comeUpAsANotification();
    void words_comeUpEachTime();
    void words_waitForTheirPlace();
    void words_goWithTheirPlace();
    void eachAnnouncement_keepsItsWords();
    void nothing_isShownNorMoved();
};

void TestAnnouncement::words_comeUpAsANotification() {
    SpokenWords listener;
    QWidget place;
    place.show();
    Announcement::make(u"Done."_s, &place);
    QCOMPARE(listener.spoken, QStringList({u"Done."_s}));
    const auto *object = QAccessible::queryAccessibleInterface(place.findChild<Announcement *>());
    QVERIFY(!object->state().invisible);
    QVERIFY(!object->state().focusable);
}

void TestAnnouncement::words_comeUpEachTime() {
    SpokenWords listener;
    QWidget place;
    place.show();
    Announcement::make(u"Done."_s, &place);
    Announcement::make(u"Done."_s, &place);
    QCOMPARE(listener.spoken, QStringList({u"Done."_s, u"Done."_s}));
}

void TestAnnouncement::words_waitForTheirPlace() {
    SpokenWords listener;
    QWidget place;
    Announcement::make(u"Done."_s, &place);
    QCOMPARE(listener.spoken, QStringList());
    place.show();
    QCOMPARE(listener.spoken, QStringList({u"Done."_s}));
}

void TestAnnouncement::words_goWithTheirPlace() {
    SpokenWords listener;
    QWidget place;
    place.show();
    Announcement::make(u"Done."_s, &place);
    place.hide();
    QTRY_VERIFY(!place.findChild<Announcement *>());
    place.show();
    QCOMPARE(listener.spoken, QStringList({u"Done."_s}));
}

// A screen reader may ask for the words only when the next have come.
void TestAnnouncement::eachAnnouncement_keepsItsWords() {
    QWidget place;
    place.show();
    Announcement::make(u"First."_s, &place);
    const auto *first = QAccessible::queryAccessibleInterface(place.findChild<Announcement *>());
    Announcement::make(u"Second."_s, &place);
    QCOMPARE(first->text(QAccessible::Name), u"First."_s);
}

void TestAnnouncement::nothing_isShownNorMoved() {
    QWidget place;
    QVBoxLayout column(&place);
    auto *button = new QPushButton(u"Read"_s);
    column.addWidget(button);
    place.show();
    const QRect before = button->geometry();
    const QImage picture = place.grab().toImage();
    Announcement::make(u"Done."_s, &place);
    QCoreApplication::processEvents();
    QCOMPARE(button->geometry(), before);
    QCOMPARE(place.grab().toImage(), picture);
    QVERIFY(place.findChild<Announcement *>()->size().isEmpty());
}

QTEST_MAIN(TestAnnouncement)
#include "tst_announcement.moc"
