// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/BusyWords.h"
#include "support/Themes.h"
#include "widgets/BusyIndicator.h"
#include "widgets/FixedFont.h"
#include "widgets/Icons.h"
#include "widgets/PlainToolTip.h"
#include "widgets/TabView.h"
#include "widgets/WindowFront.h"

#include <QAccessible>
#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>
#include <QWheelEvent>

#include <functional>

using namespace std::chrono_literals;

Q_DECLARE_METATYPE(std::function<void(TabView &)>)

class TestSmallWidgets : public QObject {
    Q_OBJECT

private slots:
    void tabView_tellsItemsApartByIdentifier();
    void tabView_tellsOfSelectionsNotOfItemsAdded();
    void tabView_isWorkedByKeyboard();
    void tabView_tellsBeforeItSelects_data();
    void tabView_tellsBeforeItSelects();
    void tabView_heedsWhoSelectsElsewhereMeanwhile();
    void busy_elapsedText_data();
    void busy_elapsedText();
    void busy_showsTheTimeWhileItRuns();
    void busy_showsHowFarItHasCome();
    void busy_barMovesAFewTimesASecond();
    void busy_saysThatNothingIsHeard();
    void busy_takesTheSameRoomAlways();
    void fixedFont_isOneWhateverThePlatformNames_data();
    void fixedFont_isOneWhateverThePlatformNames();
    void icons_followThePalette_data();
    void icons_followThePalette();
    void icons_unknownNameIsNull();
    void bringUp_leavesTheSize_data();
    void bringUp_leavesTheSize();
    void toolTip_showsTextAsItStands_data();
    void toolTip_showsTextAsItStands();
    void toolTip_leavesSomeOfTheScreenFree();
};

static void addItems(TabView &tabs) {
    tabs.addTabViewItem(QStringLiteral("0"), QStringLiteral("Data read from chip"));
    tabs.addTabViewItem(QStringLiteral("1"), QStringLiteral("Data to burn"));
    tabs.addTabViewItem(QStringLiteral("2"), QStringLiteral("Logic test results"));
}

static QStringList identifiers(const QSignalSpy &spy) {
    QStringList found;
    for (const QList<QVariant> &call : spy)
        found.append(call.first().value<TabViewItem>().identifier);
    return found;
}

void TestSmallWidgets::tabView_tellsItemsApartByIdentifier() {
    TabView tabs;
    QCOMPARE(tabs.selectedTabViewItem(), TabViewItem());
    addItems(tabs);
    QCOMPARE(tabs.selectedTabViewItem(), TabViewItem{QStringLiteral("0")});
    tabs.moveTab(0, 2);
    tabs.selectTabViewItem(QStringLiteral("1"));
    QCOMPARE(tabs.currentIndex(), 0);
    tabs.selectTabViewItem(QStringLiteral("unknown"));
    QCOMPARE(tabs.selectedTabViewItem(), TabViewItem{QStringLiteral("1")});
}

void TestSmallWidgets::tabView_tellsOfSelectionsNotOfItemsAdded() {
    TabView tabs;
    QSignalSpy spy(&tabs, &TabView::didSelectTabViewItem);
    addItems(tabs);
    QCOMPARE(identifiers(spy), QStringList());
    tabs.selectTabViewItem(QStringLiteral("2"));
    tabs.selectTabViewItem(QStringLiteral("2"));
    tabs.setCurrentIndex(1);
    QCOMPARE(identifiers(spy), QStringList({QStringLiteral("2"), QStringLiteral("1")}));
}

void TestSmallWidgets::tabView_isWorkedByKeyboard() {
    TabView tabs;
    addItems(tabs);
    QSignalSpy spy(&tabs, &TabView::didSelectTabViewItem);
    QTest::keyClick(&tabs, Qt::Key_Right);
    QCOMPARE(identifiers(spy), QStringList{QStringLiteral("1")});
}

void TestSmallWidgets::tabView_tellsBeforeItSelects_data() {
    QTest::addColumn<std::function<void(TabView &)>>("select");
    const auto row = [](const char *way, std::function<void(TabView &)> select) {
        QTest::newRow(way) << select;
    };
    row("program", [](TabView &tabs) { tabs.selectTabViewItem(QStringLiteral("1")); });
    row("index", [](TabView &tabs) { tabs.setCurrentIndex(1); });
    row("key", [](TabView &tabs) { QTest::keyClick(&tabs, Qt::Key_Right); });
    row("mouse", [](TabView &tabs) {
        QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(1).center());
    });
    row("wheel", [](TabView &tabs) {
        const QPointF place = tabs.rect().center();
        QWheelEvent down(place, tabs.mapToGlobal(place), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                         false);
        QCoreApplication::sendEvent(&tabs, &down);
    });
    row("assistive technology", [](TabView &tabs) {
        QAccessible::queryAccessibleInterface(&tabs)->child(1)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
    });
}

void TestSmallWidgets::tabView_tellsBeforeItSelects() {
    QFETCH(std::function<void(TabView &)>, select);
    TabView tabs;
    addItems(tabs);
    tabs.resize(tabs.sizeHint());
    QStringList told;
    connect(&tabs, &TabView::aboutToSelectTabViewItem, this, [&](const TabViewItem &item) {
        told.append(tabs.selectedTabViewItem().identifier + QStringLiteral(" to ") +
                    item.identifier);
    });
    connect(&tabs, &TabView::didSelectTabViewItem, this, [&](const TabViewItem &item) {
        told.append(tabs.selectedTabViewItem().identifier + QStringLiteral(" is ") +
                    item.identifier);
    });
    select(tabs);
    QCOMPARE(told, QStringList({QStringLiteral("0 to 1"), QStringLiteral("1 is 1")}));
}

void TestSmallWidgets::tabView_heedsWhoSelectsElsewhereMeanwhile() {
    TabView tabs;
    addItems(tabs);
    QSignalSpy selected(&tabs, &TabView::didSelectTabViewItem);
    const auto once = connect(&tabs, &TabView::aboutToSelectTabViewItem, this,
                              [&] { tabs.selectTabViewItem(QStringLiteral("2")); });
    tabs.selectTabViewItem(QStringLiteral("1"));
    QCOMPARE(tabs.selectedTabViewItem(), TabViewItem{QStringLiteral("2")});
    QCOMPARE(identifiers(selected), QStringList{QStringLiteral("2")});
    disconnect(once);
    tabs.selectTabViewItem(QStringLiteral("0"));
    QCOMPARE(identifiers(selected), QStringList({QStringLiteral("2"), QStringLiteral("0")}));
}

void TestSmallWidgets::busy_elapsedText_data() {
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("start") << qint64(0) << QStringLiteral("0:00");
    QTest::newRow("a second not yet full") << qint64(7999) << QStringLiteral("0:07");
    QTest::newRow("a minute") << qint64(60000) << QStringLiteral("1:00");
    QTest::newRow("just under an hour") << qint64(3599999) << QStringLiteral("59:59");
    QTest::newRow("hours") << qint64(3723000) << QStringLiteral("1:02:03");
}

void TestSmallWidgets::busy_elapsedText() {
    QFETCH(qint64, milliseconds);
    QTEST(BusyIndicator::elapsedText(std::chrono::milliseconds(milliseconds)), "text");
}

void TestSmallWidgets::busy_showsTheTimeWhileItRuns() {
    std::chrono::milliseconds now(1000);
    BusyIndicator busy(nullptr, [&] { return now; });
    busy.show();
    QCOMPARE(busyWords(busy, QStringLiteral("Elapsed time")), QString());
    busy.start();
    QVERIFY(busy.isRunning());
    QCOMPARE(busyWords(busy, QStringLiteral("Elapsed time")), QStringLiteral("0:00"));
    now += std::chrono::seconds(7);
    QTRY_COMPARE(busyWords(busy, QStringLiteral("Elapsed time")), QStringLiteral("0:07"));
    QVERIFY(busy.findChild<QProgressBar *>()->isVisible());
    QCOMPARE(busy.findChild<QProgressBar *>()->accessibleName(), QStringLiteral("Progress"));
    busy.stop();
    QVERIFY(!busy.isRunning());
    QCOMPARE(busyWords(busy, QStringLiteral("Elapsed time")), QString());
    QVERIFY(!busy.findChild<QProgressBar *>()->isVisible());
    busy.start();
    QCOMPARE(busyWords(busy, QStringLiteral("Elapsed time")), QStringLiteral("0:00"));
}

void TestSmallWidgets::busy_showsHowFarItHasCome() {
    BusyIndicator busy;
    const QProgressBar *bar = busy.findChild<QProgressBar *>();
    busy.showStep(QStringLiteral("Reading code"), 0.5);
    QCOMPARE(busyWords(busy, QStringLiteral("Step")), QString());
    busy.start(QStringLiteral("Starting"));
    QCOMPARE(busyWords(busy, QStringLiteral("Step")), QStringLiteral("Starting"));
    QCOMPARE(bar->maximum(), 0);
    busy.showStep(QStringLiteral("Reading code"), 0.5);
    QCOMPARE(busyWords(busy, QStringLiteral("Step")), QStringLiteral("Reading code"));
    QCOMPARE(bar->text(), QStringLiteral("50%"));
    QCOMPARE(bar->accessibleDescription(), QStringLiteral("Reading code"));
    for (const QLabel *label : busy.findChildren<QLabel *>())
        if (label->text() == QStringLiteral("Reading code"))
            QCOMPARE(label->textFormat(), Qt::PlainText);
    busy.stop();
    busy.start(QStringLiteral("Starting"));
    QCOMPARE(bar->maximum(), 0);
}

// A screen reader hears of each move, and drops what it is told when too much comes.
void TestSmallWidgets::busy_barMovesAFewTimesASecond() {
    BusyIndicator busy;
    const auto *bar = busy.findChild<QProgressBar *>();
    busy.start();
    busy.showStep(QStringLiteral("Reading code"), 0.0);
    const QSignalSpy moves(bar, &QProgressBar::valueChanged);
    for (int percent = 1; percent <= 70; ++percent)
        busy.showStep(QStringLiteral("Reading code"), percent / 100.0);
    QCOMPARE(moves.size(), 0);
    QTRY_COMPARE(bar->text(), QStringLiteral("70%"));
    QCOMPARE(moves.size(), 1);
    busy.showStep(QStringLiteral("Reading data"), 0.0);
    QCOMPARE(bar->text(), QStringLiteral("0%"));
}

void TestSmallWidgets::busy_saysThatNothingIsHeard() {
    std::chrono::milliseconds now(1000);
    BusyIndicator busy(nullptr, [&] { return now; });
    busy.start();
    now += 9999ms;
    QTRY_COMPARE(busyWords(busy, QStringLiteral("Elapsed time")), QStringLiteral("0:09"));
    QCOMPARE(busyWords(busy, QStringLiteral("Silence")), QString());
    now += 13001ms;
    QTRY_COMPARE(busyWords(busy, QStringLiteral("Silence")), QStringLiteral("silent for 0:23"));
    busy.showStep(QStringLiteral("Reading code"), 0.5);
    QCOMPARE(busyWords(busy, QStringLiteral("Silence")), QString());
    QCOMPARE(busyWords(busy, QStringLiteral("Elapsed time")), QStringLiteral("0:23"));
}

void TestSmallWidgets::busy_takesTheSameRoomAlways() {
    BusyIndicator busy;
    const QSize stopped = busy.sizeHint();
    busy.start();
    QCOMPARE(busy.sizeHint(), stopped);
}

void TestSmallWidgets::icons_followThePalette_data() {
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"add", "close", "copy", "failed", "favourite", "logic", "open", "read-chip", "remove",
          "save", "search", "stop", "succeeded", "verify", "warning", "write"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

/// The strongest of the colours that an icon is drawn in, apart from the smoothing at its edges.
static QColor strongestColor(const QImage &image) {
    QColor strongest(Qt::transparent);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() > strongest.alpha())
                strongest = image.pixelColor(x, y);
    return strongest;
}

/// Colours of pixels that are not quite opaque are rounded.
static bool isNearly(const QColor &one, const QColor &other) {
    constexpr int rounding = 2;
    return std::abs(one.red() - other.red()) <= rounding &&
           std::abs(one.green() - other.green()) <= rounding &&
           std::abs(one.blue() - other.blue()) <= rounding;
}

void TestSmallWidgets::icons_followThePalette() {
    QFETCH(QString, name);
    for (const QPalette &palette : {lightPalette(), darkPalette()})
        for (const int size : {16, 22, 32}) {
            const QImage image = themedIcon(name, palette).pixmap(size).toImage();
            QCOMPARE(image.size(), QSize(size, size));
            const QColor color = strongestColor(image);
            QVERIFY2(color.alpha() > 200,
                     qPrintable(QStringLiteral("alpha %1 at %2").arg(color.alpha()).arg(size)));
            QVERIFY2(isNearly(color, palette.color(QPalette::ButtonText)),
                     qPrintable(color.name()));
        }
}

void TestSmallWidgets::icons_unknownNameIsNull() {
    QVERIFY(themedIcon(QStringLiteral("unknown"), lightPalette()).isNull());
}

void TestSmallWidgets::fixedFont_isOneWhateverThePlatformNames_data() {
    QTest::addColumn<QFont>("wanted");
    QTest::newRow("the platform's") << QFontDatabase::systemFont(QFontDatabase::FixedFont);
    QTest::newRow("a proportional one") << QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    QTest::newRow("one that is not there") << QFont(QStringLiteral("No Such Font"));
}

void TestSmallWidgets::fixedFont_isOneWhateverThePlatformNames() {
    QFETCH(QFont, wanted);
    wanted.setPointSize(17);
    const QFont font = fixedFontInsteadOf(wanted);
    QVERIFY(QFontInfo(font).fixedPitch());
    QCOMPARE(font.pointSize(), 17);
    const QFontMetrics metrics(font);
    QCOMPARE(metrics.horizontalAdvance(u'i'), metrics.horizontalAdvance(u'W'));
}

void TestSmallWidgets::bringUp_leavesTheSize_data() {
    QTest::addColumn<Qt::WindowStates>("before");
    QTest::addColumn<Qt::WindowStates>("after");
    const auto row = [](const char *name, Qt::WindowStates before, Qt::WindowStates after) {
        QTest::newRow(name) << before << after;
    };
    row("usual", Qt::WindowNoState, Qt::WindowNoState);
    row("as large as the screen", Qt::WindowMaximized, Qt::WindowMaximized);
    row("minimized", Qt::WindowMinimized, Qt::WindowNoState);
    row("minimized, else as large", Qt::WindowMinimized | Qt::WindowMaximized, Qt::WindowMaximized);
}

void TestSmallWidgets::bringUp_leavesTheSize() {
    QFETCH(Qt::WindowStates, before);
    QWidget window;
    window.setWindowState(before);
    bringUp(window);
    QVERIFY(window.isVisible());
    QTEST(window.windowState() & ~Qt::WindowActive, "after");
}

void TestSmallWidgets::toolTip_showsTextAsItStands_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QString(); // one of marks alone would open an empty tip
    QTest::newRow("plain") << QStringLiteral("AT28C64B@SOIC28");
    QTest::newRow("lines") << QStringLiteral("two\nlines");
    QTest::newRow("two blanks") << QStringLiteral("two  blanks");
    QTest::newRow("what looks like markup") << QStringLiteral("<b>a</b> & <img src=x>");
}

void TestSmallWidgets::toolTip_showsTextAsItStands() {
    QFETCH(QString, text);
    QLabel label;
    setPlainToolTip(label, text);
    QTextDocument shown;
    shown.setHtml(label.toolTip());
    QCOMPARE(shown.toPlainText(), text);
    QCOMPARE(label.toolTip().isEmpty(), text.isEmpty());
    QVERIFY(text.isEmpty() || Qt::mightBeRichText(label.toolTip())); // which alone wraps
    QCOMPARE(label.accessibleDescription(), text);
}

void TestSmallWidgets::toolTip_leavesSomeOfTheScreenFree() {
    QLabel label;
    setPlainToolTip(label, QString(100'000, u'x'));
    QTextDocument shown;
    shown.setHtml(label.toolTip());
    const QString text = shown.toPlainText();
    QVERIFY2(text.size() <= longestTip && text.contains(u"characters are not shown"),
             qPrintable(text.left(longestTip)));
    QCOMPARE(label.accessibleDescription(), text);
}

QTEST_MAIN(TestSmallWidgets)
#include "tst_smallwidgets.moc"
