// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

/// The window on small screens, with large letters and in either direction.
class TestWindowFit : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void firstSize_isWithinTheScreen();
    void nothing_isCut_data();
    void nothing_isCut();
    void lowWindow_leavesTheGridItsRows();
    void sideColumn_showsAllOfItsWidth();
    void grid_readsFromLeftToRightEverywhere();
    void hexadecimal_hasNoDigitsOfAnotherScript();

private:
    QFont font_;
    QLocale locale_;
};

namespace {

bool isInScrolledPart(const QWidget &widget) {
    for (const QWidget *above = widget.parentWidget(); above; above = above->parentWidget())
        if (qobject_cast<const QScrollArea *>(above))
            return true;
    return false;
}

bool hasText(const QWidget &widget) {
    const auto *label = qobject_cast<const QLabel *>(&widget);
    return qobject_cast<const QAbstractButton *>(&widget) ||
           qobject_cast<const QGroupBox *>(&widget) || qobject_cast<const QLineEdit *>(&widget) ||
           (label && !label->text().isEmpty());
}

/// What of \a widget lies beyond an edge of those that it is in, or is squeezed.
QString whatIsCut(const QWidget &widget) {
    const QString name = widget.objectName().isEmpty()
                             ? QString::fromLatin1(widget.metaObject()->className())
                             : widget.objectName();
    const QSize least = widget.minimumSizeHint();
    if (widget.width() < least.width() || widget.height() < least.height())
        return name + QStringLiteral(" is squeezed");
    const QRect visible = widget.visibleRegion().boundingRect();
    if (visible.width() < widget.width())
        return name + QStringLiteral(" is cut at its side");
    if (visible.height() < widget.height() && !isInScrolledPart(widget))
        return name + QStringLiteral(" is cut below");
    return {};
}

/// All that is cut in the window; what is scrolled out of sight is not.
QStringList cutIn(QWidget &window) {
    QStringList cut;
    for (const QWidget *widget : window.findChildren<QWidget *>())
        if (widget->isVisible() && widget->window() == &window && hasText(*widget) &&
            !(isInScrolledPart(*widget) && widget->visibleRegion().isEmpty()))
            cut << whatIsCut(*widget);
    cut.removeAll(QString());
    return cut;
}

} // namespace

void TestWindowFit::init() {
    font_ = QApplication::font();
    locale_ = QLocale();
}

void TestWindowFit::cleanup() {
    QApplication::setFont(font_);
    QLocale::setDefault(locale_);
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

void TestWindowFit::firstSize_isWithinTheScreen() {
    WindowFixture velm;
    velm.start();
    const QWidget &window = velm.velm().window();
    QVERIFY(window.screen()->availableSize().width() < 1100);
    QVERIFY2(window.screen()->availableGeometry().contains(window.geometry()),
             qPrintable(QStringLiteral("%1 of %2")
                            .arg(window.width())
                            .arg(window.screen()->availableGeometry().width())));
}

void TestWindowFit::nothing_isCut_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("points"); // 0: as they are
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("small") << QSize(900, 600) << 0 << Qt::LeftToRight;
    QTest::newRow("small, right to left") << QSize(900, 600) << 0 << Qt::RightToLeft;
    QTest::newRow("2560 x 1440 at scale 2") << QSize(1280, 720) << 0 << Qt::LeftToRight;
    QTest::newRow("large letters") << QSize(1366, 768) << 18 << Qt::LeftToRight;
    QTest::newRow("large letters, right to left") << QSize(1366, 768) << 18 << Qt::RightToLeft;
}

void TestWindowFit::nothing_isCut() {
    QFETCH(const QSize, size);
    QFETCH(const int, points);
    QFETCH(const Qt::LayoutDirection, direction);
    if (points > 0) {
        QFont font = font_;
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    QApplication::setLayoutDirection(direction);
    WindowFixture velm;
    velm.start();
    QWidget &window = velm.velm().window();
    window.resize(size);
    QCoreApplication::processEvents();
    QCOMPARE(window.size(), size);
    for (const char *tab : {"0", "1", "2"}) {
        velm.controls().tabview->selectTabViewItem(QString::fromLatin1(tab));
        QCoreApplication::processEvents();
        QCOMPARE(cutIn(window).join(u'\n'), QString());
    }
}

void TestWindowFit::lowWindow_leavesTheGridItsRows() {
    WindowFixture velm;
    velm.start();
    velm.velm().window().resize(1100, 740);
    velm.click(velm.controls().btn_read);
    QTest::keyClick(&velm.velm().window(), Qt::Key_F, Qt::ControlModifier);
    velm.velm().window().resize(900, 600);
    velm.settle();
    const GridView *grid = velm.controls().tableview;
    QCOMPARE(velm.velm().window().size(), QSize(900, 600));
    QTRY_VERIFY(velm.controls().findBar->isVisible());
    QTRY_VERIFY2(grid->viewport()->height() >= 8 * grid->rowHeight(),
                 qPrintable(QString::number(grid->viewport()->height() / grid->rowHeight())));
    QVERIFY(velm.controls().textView->height() > 0);
}

void TestWindowFit::sideColumn_showsAllOfItsWidth() {
    WindowFixture velm;
    velm.start();
    velm.velm().window().resize(900, 600);
    QCoreApplication::processEvents();
    const QScrollArea *column = velm.controls().sideArea;
    QVERIFY(column->verticalScrollBar()->isVisible());
    QVERIFY(column->viewport()->width() >= column->widget()->minimumSizeHint().width());
}

void TestWindowFit::grid_readsFromLeftToRightEverywhere() {
    QApplication::setLayoutDirection(Qt::RightToLeft);
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.settle();
    const GridView *grid = velm.controls().tableview;
    const auto left = [grid](int column) {
        return grid->visualRect(grid->model()->index(0, column)).left();
    };
    for (int column = 1; column < grid->model()->columnCount(); ++column)
        QVERIFY(left(column) > left(column - 1));
    QVERIFY(velm.controls().optionsBox->mapToGlobal(QPoint()).x() >
            grid->mapToGlobal(QPoint()).x());
}

void TestWindowFit::hexadecimal_hasNoDigitsOfAnotherScript() {
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    WindowFixture velm;
    velm.start();
    velm.click(velm.controls().btn_read);
    velm.settle();
    velm.controls().tableview->showAddress(0x1234);
    const QRegularExpression crc(QStringLiteral("CRC-32 [0-9A-F]{8}, sum [0-9A-F]{4}"));
    QTRY_VERIFY(velm.controls().factsLine->wholeText().contains(crc));
    QTRY_VERIFY2(velm.controls().factsLine->wholeText().contains(u"at 1234: 0x"),
                 qPrintable(velm.controls().factsLine->wholeText()));
    const QRegularExpression row(QStringLiteral("^[0-9A-F]{4}( [0-9A-F]{2}){16} "));
    QVERIFY(velm.row(0x123).contains(row));
    QVERIFY(velm.controls().imageMap->valueWords().contains(
        QRegularExpression(QStringLiteral("0x[0-9A-F]+ of 0x[0-9A-F]+"))));
}

QTEST_MAIN(TestWindowFit)
#include "tst_window_fit.moc"
