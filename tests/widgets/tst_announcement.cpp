// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/Announcement.h"

#include "support/SpokenWords.h"

#include <QAccessible>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

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
    Announcement::make(QStringLiteral("Done."), &place);
    QCOMPARE(listener.spoken, QStringList({QStringLiteral("Done.")}));
    const auto *object = QAccessible::queryAccessibleInterface(place.findChild<Announcement *>());
    QVERIFY(!object->state().invisible);
    QVERIFY(!object->state().focusable);
}

void TestAnnouncement::words_comeUpEachTime() {
    SpokenWords listener;
    QWidget place;
    place.show();
    Announcement::make(QStringLiteral("Done."), &place);
    Announcement::make(QStringLiteral("Done."), &place);
    QCOMPARE(listener.spoken, QStringList({QStringLiteral("Done."), QStringLiteral("Done.")}));
}

void TestAnnouncement::words_waitForTheirPlace() {
    SpokenWords listener;
    QWidget place;
    Announcement::make(QStringLiteral("Done."), &place);
    QCOMPARE(listener.spoken, QStringList());
    place.show();
    QCOMPARE(listener.spoken, QStringList({QStringLiteral("Done.")}));
}

void TestAnnouncement::words_goWithTheirPlace() {
    SpokenWords listener;
    QWidget place;
    place.show();
    Announcement::make(QStringLiteral("Done."), &place);
    place.hide();
    QTRY_VERIFY(!place.findChild<Announcement *>());
    place.show();
    QCOMPARE(listener.spoken, QStringList({QStringLiteral("Done.")}));
}

// A screen reader may ask for the words only when the next have come.
void TestAnnouncement::eachAnnouncement_keepsItsWords() {
    QWidget place;
    place.show();
    Announcement::make(QStringLiteral("First."), &place);
    const auto *first = QAccessible::queryAccessibleInterface(place.findChild<Announcement *>());
    Announcement::make(QStringLiteral("Second."), &place);
    QCOMPARE(first->text(QAccessible::Name), QStringLiteral("First."));
}

void TestAnnouncement::nothing_isShownNorMoved() {
    QWidget place;
    QVBoxLayout column(&place);
    auto *button = new QPushButton(QStringLiteral("Read"));
    column.addWidget(button);
    place.show();
    const QRect before = button->geometry();
    const QImage picture = place.grab().toImage();
    Announcement::make(QStringLiteral("Done."), &place);
    QCoreApplication::processEvents();
    QCOMPARE(button->geometry(), before);
    QCOMPARE(place.grab().toImage(), picture);
    QVERIFY(place.findChild<Announcement *>()->size().isEmpty());
}

QTEST_MAIN(TestAnnouncement)
#include "tst_announcement.moc"
