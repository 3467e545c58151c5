// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ConsoleView.h"
#include "widgets/ViewZoom.h"

#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

/// Larger and smaller letters.
class TestViewZoom : public QObject {
    Q_OBJECT

private slots:
    void wheel_zoomsWithCtrl_data();
    void wheel_zoomsWithCtrl();
    void smallTurns_addUp();
    void steps_endAtTheLimits();
    void stepsFromBetween_goToTheNext();
    void console_showsWhatItHasLarger();
};

namespace {

struct Zoomed {
    ConsoleView console;
    ViewZoom zoom{console};
    QSignalSpy changes{&zoom, &ViewZoom::changed};

    double points() const { return console.font().pointSizeF(); }

    void turn(int angle, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        const QPointF place(5, 5);
        QWheelEvent event(place, console.viewport()->mapToGlobal(place), {}, QPoint(0, angle),
                          Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(console.viewport(), &event);
    }
};

} // namespace

void TestViewZoom::wheel_zoomsWithCtrl_data() {
    QTest::addColumn<int>("angle");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<int>("percent");
    const auto row = [](const char *name, int angle, Qt::KeyboardModifiers modifiers, int percent) {
        QTest::newRow(name) << angle << modifiers << percent;
    };
    row("up", 120, Qt::ControlModifier, 110);
    row("down", -120, Qt::ControlModifier, 90);
    row("two steps at once", 240, Qt::ControlModifier, 125);
    row("without Ctrl it scrolls", 120, Qt::NoModifier, 100);
    row("with another key as well", 120, Qt::ControlModifier | Qt::ShiftModifier, 110);
}

void TestViewZoom::wheel_zoomsWithCtrl() {
    QFETCH(int, angle);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(int, percent);
    Zoomed zoomed;
    zoomed.turn(angle, modifiers);
    QCOMPARE(zoomed.zoom.percent(), percent);
    QCOMPARE(zoomed.points(), ConsoleView::fontPoints * percent / 100);
}

void TestViewZoom::smallTurns_addUp() {
    Zoomed zoomed;
    for (int turn = 0; turn < 7; ++turn)
        zoomed.turn(15);
    QCOMPARE(zoomed.zoom.percent(), 100);
    zoomed.turn(15);
    QCOMPARE(zoomed.zoom.percent(), 110);
    QCOMPARE(zoomed.changes.count(), 1);
}

void TestViewZoom::steps_endAtTheLimits() {
    Zoomed zoomed;
    for (int step = 0; step < 30; ++step)
        zoomed.zoom.enlarge();
    QCOMPARE(zoomed.zoom.percent(), ViewZoom::largest);
    for (int step = 0; step < 30; ++step)
        zoomed.zoom.reduce();
    QCOMPARE(zoomed.zoom.percent(), ViewZoom::smallest);
    zoomed.zoom.setPercent(-7);
    QCOMPARE(zoomed.zoom.percent(), ViewZoom::smallest);
    zoomed.zoom.setPercent(100000);
    QCOMPARE(zoomed.zoom.percent(), ViewZoom::largest);
}

void TestViewZoom::stepsFromBetween_goToTheNext() {
    Zoomed zoomed;
    zoomed.zoom.setPercent(105);
    zoomed.zoom.reduce();
    QCOMPARE(zoomed.zoom.percent(), 100);
    zoomed.zoom.setPercent(105);
    zoomed.zoom.enlarge();
    QCOMPARE(zoomed.zoom.percent(), 110);
}

void TestViewZoom::console_showsWhatItHasLarger() {
    Zoomed zoomed;
    zoomed.console.appendText(QStringLiteral("before\n"));
    zoomed.zoom.setPercent(200);
    zoomed.console.appendText(QStringLiteral("after\n"));
    zoomed.console.flush();
    for (const char *word : {"before", "after"}) {
        const QTextCursor found = zoomed.console.document()->find(QString::fromLatin1(word));
        QCOMPARE(found.charFormat().fontPointSize(), ConsoleView::fontPoints * 2);
    }
}

QTEST_MAIN(TestViewZoom)
#include "tst_viewzoom.moc"
