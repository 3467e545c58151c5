// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/Icons.h"
#include "window/WindowFixture.h"

#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QMenuBar>
#include <QPointer>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>

/// The guide and what the program is, in windows that stop nothing.
class TestWindowHelp : public QObject {
    Q_OBJECT

private slots:
    void guide_isOpenedByItsKey();
    void guide_hasItsPictures();
    void about_tellsTheVersion();
    void windows_areOpenedOnce();
    void windows_closeWithTheProgram();
    void icon_isThere();
};

namespace {

QAction *entry(WindowFixture &velm, const QString &text) {
    for (const QMenu *menu : velm.velm().window().menuBar()->findChildren<QMenu *>())
        for (QAction *action : menu->actions())
            if (action->iconText() == text)
                return action;
    qFatal("no such entry");
}

void choose(WindowFixture &velm, const QString &text) {
    entry(velm, text)->trigger();
    velm.settle();
}

QList<QDialog *> windows(WindowFixture &velm, const QString &name) {
    return velm.velm().window().findChildren<QDialog *>(name);
}

} // namespace

void TestWindowHelp::guide_isOpenedByItsKey() {
    WindowFixture velm;
    velm.start();
    QCOMPARE(entry(velm, QStringLiteral("User guide"))->shortcut(), QKeySequence(Qt::Key_F1));
    choose(velm, QStringLiteral("User guide"));
    const QList<QDialog *> guides = windows(velm, QStringLiteral("guide"));
    QCOMPARE(guides.size(), 1);
    QVERIFY(guides.first()->isVisible());
    QVERIFY(!guides.first()->isModal());
    const QString text = guides.first()->findChild<QTextBrowser *>()->toPlainText();
    QVERIFY(text.startsWith(u"User guide"));
    QVERIFY(text.contains(u"Second presses"));
    velm.click(velm.controls().btn_pad);
    QVERIFY(velm.controls().btn_pad->isChecked());
}

void TestWindowHelp::guide_hasItsPictures() {
    WindowFixture velm;
    velm.start();
    choose(velm, QStringLiteral("User guide"));
    const auto *browser = velm.velm().window().findChild<QTextBrowser *>();
    int pictures = 0;
    for (QTextBlock block = browser->document()->begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextImageFormat format = part.fragment().charFormat().toImageFormat();
            if (!format.isValid())
                continue;
            ++pictures;
            const QVariant picture =
                browser->document()->resource(QTextDocument::ImageResource, QUrl(format.name()));
            QVERIFY2(!picture.value<QImage>().isNull(), qPrintable(format.name()));
        }
    QVERIFY(pictures > 2);
    QCOMPARE(browser->horizontalScrollBar()->maximum(), 0);
}

void TestWindowHelp::about_tellsTheVersion() {
    const QString before = QCoreApplication::applicationVersion();
    const auto after = qScopeGuard([&] { QCoreApplication::setApplicationVersion(before); });
    QCoreApplication::setApplicationVersion(QStringLiteral("7.8.9"));
    WindowFixture velm;
    velm.start();
    choose(velm, QStringLiteral("About VELM"));
    QStringList texts;
    for (const QLabel *label :
         windows(velm, QStringLiteral("about")).first()->findChildren<QLabel *>())
        texts.append(label->text());
    QVERIFY2(texts.join(u' ').contains(u"VELM 7.8.9"), qPrintable(texts.join(u' ')));
    QCOMPARE(velm.message(), QString());
}

void TestWindowHelp::windows_areOpenedOnce() {
    WindowFixture velm;
    velm.start();
    choose(velm, QStringLiteral("About VELM"));
    choose(velm, QStringLiteral("About VELM"));
    QCOMPARE(windows(velm, QStringLiteral("about")).size(), 1);
    QTest::keyClick(windows(velm, QStringLiteral("about")).first(), Qt::Key_Escape);
    choose(velm, QStringLiteral("About VELM"));
    QVERIFY(windows(velm, QStringLiteral("about")).last()->isVisible());
}

void TestWindowHelp::windows_closeWithTheProgram() {
    WindowFixture velm;
    velm.start();
    choose(velm, QStringLiteral("User guide"));
    const QPointer<QDialog> guide = windows(velm, QStringLiteral("guide")).first();
    velm.velm().window().close();
    QVERIFY(!guide || !guide->isVisible());
}

void TestWindowHelp::icon_isThere() {
    QVERIFY(!programIcon().pixmap(64).toImage().allGray());
}

QTEST_MAIN(TestWindowHelp)
#include "tst_window_help.moc"
