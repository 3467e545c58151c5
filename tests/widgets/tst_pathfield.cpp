// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/PathField.h"
#include "widgets/PlainToolTip.h"

#include <QHelpEvent>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <tuple>

/// A path in a narrow field.
class TestPathField : public QObject {
    Q_OBJECT

private slots:
    void shortPath_isShownWhole();
    void longPath_showsItsEnds();
    void focus_showsTheTextAsItIsTyped();
    void toolTip_hasTheWhole();
    void toolTip_ofAnEndlessPathIsBounded();
};

namespace {

const QString start = QStringLiteral("/home/bench");
const QString file = QStringLiteral("/monitor.bin");

QString pathWith(QChar middle) {
    return start + u'/' + QString(200, middle) + file;
}

struct Shown {
    explicit Shown(const QString &path) {
        field.setText(path);
        field.resize(240, field.sizeHint().height());
        other.setGeometry(0, 40, 100, 30);
        window.resize(300, 100);
        window.show();
        std::ignore = QTest::qWaitForWindowActive(&window);
        other.setFocus();
    }

    QImage picture() { return field.grab().toImage(); }

    QWidget window;
    PathField field{&window};
    QLineEdit other{&window};
};

/// What the tip of a field with \a path says.
QString tipOf(const QString &path) {
    Shown shown(path);
    shown.field.setToolTip(QStringLiteral("The file"));
    QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), shown.field.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&shown.field, &asked);
    return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
}

} // namespace

void TestPathField::shortPath_isShownWhole() {
    Shown shown(QStringLiteral("/a/b.bin"));
    QCOMPARE(shown.field.shownText(), QStringLiteral("/a/b.bin"));
}

void TestPathField::longPath_showsItsEnds() {
    Shown shown(pathWith(u'i'));
    QVERIFY(shown.field.shownText().startsWith(u"/home"));
    QVERIFY(shown.field.shownText().endsWith(file));
    QCOMPARE(shown.field.text(), pathWith(u'i'));
    const QImage before = shown.picture();
    shown.field.setText(start + u'/' + QString(250, u'i') + file);
    QCOMPARE(shown.picture(), before);
    shown.field.setText(pathWith(u'i') + u'x');
    QVERIFY(shown.picture() != before);
}

void TestPathField::focus_showsTheTextAsItIsTyped() {
    Shown shown(pathWith(u'i'));
    const QImage without = shown.picture();
    shown.field.setFocus();
    shown.field.home(false);
    QVERIFY(shown.picture() != without);
    QTest::keyClick(&shown.field, Qt::Key_X);
    QCOMPARE(shown.field.text(), u'x' + pathWith(u'i'));
}

void TestPathField::toolTip_hasTheWhole() {
    QCOMPARE(tipOf(pathWith(u'<')), QStringLiteral("The file\n") + pathWith(u'<'));
}

void TestPathField::toolTip_ofAnEndlessPathIsBounded() {
    const QString tip = tipOf(start + QString(32'000, u'x') + file);
    QVERIFY2(tip.size() <= longestTip, qPrintable(tip));
    QVERIFY2(tip.startsWith(u"The file\n/home") && tip.endsWith(file), qPrintable(tip));
}

QTEST_MAIN(TestPathField)
#include "tst_pathfield.moc"
