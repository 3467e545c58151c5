// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "devices/DeviceListView.h"
#include "settings/SettingsKeys.h"

#include "ui_DeviceSearchPanel.h"

#include <QAccessible>
#include <QFileInfo>
#include <QMenuBar>
#include <QPushButton>

/// While the tool runs, whatever way somebody takes, nothing is started and nothing changes.
class TestWindowGuard : public QObject {
    Q_OBJECT

private slots:
    void whileBusy_nothingChanges_data();
    void whileBusy_nothingChanges();
    void refusal_isSaidAndGoes_data();
    void refusal_isSaidAndGoes();
    void messageButton_doesNotChangeTheDevice();
    void confirmedSearch_isRefusedOnceARunHasBegun();
    void cancelledSearch_staysBusyUntilTheToolHasEnded();
    void askedToEndTwice_stopsASearchAndThenCloses();
    void askedToEndDuringASearch_countsForNothingLater();
    void closing_closesAnOpenPanelToo();
};

namespace {

const QByteArray silentTool = "while :; do sleep 1; done\n";
const QByteArray stubbornTool = "trap '' TERM; echo ready; while :; do sleep 0.05; done\n";

/// Everything that must be the same afterwards, as text.
QStringList snapshot(WindowFixture &velm) {
    const auto text = [](const ByteBuffer &buffer) {
        return buffer ? QString::fromLatin1(*buffer) : QStringLiteral("(none)");
    };
    const AppDelegate::State &state = velm.state();
    QStringList all{QString::fromUtf8(WindowFixture::bytesOf(velm.settings().filePath())),
                    text(state.read_from_chip_data),
                    text(state.opened_bin_data),
                    text(state.output_data),
                    QString::number(state.retainArray.size()),
                    QString::number(velm.delegate().edits().history().index())};
    const QFileInfo image(velm.temporary(QStringLiteral("temp.bin")));
    all << QString::fromLatin1(WindowFixture::bytesOf(image.filePath()))
        << image.lastModified().toString(Qt::ISODateWithMs)
        << QString::number(velm.panels.requests.size())
        << QString::number(velm.velm().searchPanel().isVisible());
    const QList<QWidget *> widgets =
        velm.velm().window().centralWidget()->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (const auto *field = qobject_cast<QLineEdit *>(widget); field && !field->isReadOnly())
            all << field->accessibleName() + u'=' + field->text();
        if (const auto *button = qobject_cast<QAbstractButton *>(widget))
            all << button->accessibleName() + QLatin1Char(button->isChecked() ? '+' : '-');
    }
    // Searching for bytes while the tool runs changes nothing but what is in view.
    return all.filter(
        QRegularExpression(QStringLiteral("^(?!Go to address|Find what|Match case)")));
}

bool mayBePressed(const QString &name) {
    return name == QStringLiteral("Stop") || name == QStringLiteral("Stop search") ||
           name == QStringLiteral("Cancel");
}

/// What assistive technology can do to \a widget: every action that it offers, and a text.
void useByAssistiveTechnology(QWidget *widget) {
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(widget);
    if (!accessible || mayBePressed(accessible->text(QAccessible::Name)))
        return;
    if (qobject_cast<QLineEdit *>(widget))
        accessible->setText(QAccessible::Value, QStringLiteral("27"));
    QAccessibleActionInterface *actions = accessible->actionInterface();
    if (!actions)
        return;
    for (const char *name : {"Press", "Toggle"})
        if (actions->actionNames().contains(QLatin1String(name)))
            actions->doAction(QLatin1String(name));
}

void pressCells(GridView *grid) {
    QAccessibleTableInterface *table =
        QAccessible::queryAccessibleInterface(grid)->tableInterface();
    for (const int column : {0, 1, 17}) {
        QAccessibleInterface *cell = table->cellAt(0, column);
        cell->setText(QAccessible::Value, QStringLiteral("5A"));
        if (QAccessibleActionInterface *actions = cell->actionInterface())
            for (const QString &name : actions->actionNames())
                actions->doAction(name);
    }
    QTest::keyClick(grid, Qt::Key_F2);
    QTest::keyClick(grid, Qt::Key_7);
    if (CellEditor *editor = grid->entries().editor())
        qWarning("a cell is open: %p", static_cast<void *>(editor));
    grid->model()->setData(grid->model()->index(0, 1), QStringLiteral("5A"));
}

void byAssistiveTechnology(WindowFixture &velm) {
    const QList<QWidget *> widgets = velm.velm().window().findChildren<QWidget *>();
    for (QWidget *widget : widgets)
        if (!qobject_cast<QDialog *>(widget) && widget != velm.controls().tabview)
            useByAssistiveTechnology(widget);
    pressCells(velm.controls().tableview);
    // Such a press holds the button down for a moment before it clicks.
    const QList<QAbstractButton *> buttons = velm.velm().window().findChildren<QAbstractButton *>();
    const auto noneIsDown = [&buttons] {
        return std::none_of(buttons.begin(), buttons.end(),
                            [](const QAbstractButton *button) { return button->isDown(); });
    };
    if (!QTest::qWaitFor(noneIsDown))
        qWarning("a button stays down");
}

void byClick(WindowFixture &velm) {
    const QList<QAbstractButton *> buttons = velm.velm().window().findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons)
        if (button->isVisible() && !mayBePressed(button->accessibleName()))
            velm.click(button);
    const QList<QLineEdit *> fields = velm.controls().centralwidget->findChildren<QLineEdit *>();
    for (QLineEdit *field : fields) {
        QTest::keyClicks(field, QStringLiteral("27"));
        QTest::keyClick(field, Qt::Key_Return);
    }
    QTest::mouseDClick(velm.controls().tableview->viewport(), Qt::LeftButton, {}, {150, 10});
}

void byMenu(WindowFixture &velm) {
    const QList<QAction *> actions = velm.velm().window().menuBar()->findChildren<QAction *>();
    for (QAction *action : actions)
        if (!action->menu() && action->text() != QStringLiteral("&Stop") &&
            action->text() != QStringLiteral("&Quit"))
            action->trigger();
    QCoreApplication::processEvents();
}

QStringList offers(WindowFixture &velm) {
    QStringList labels;
    for (const QPushButton *button : velm.controls().messageLine->findChildren<QPushButton *>())
        if (!button->isHidden())
            labels.append(button->text());
    return labels;
}

void pressOffers(WindowFixture &velm) {
    for (QPushButton *button : velm.controls().messageLine->findChildren<QPushButton *>())
        if (!button->isHidden())
            button->click();
}

void testLogic(WindowFixture &velm) {
    const QString tab = velm.controls().tabview->selectedTabViewItem().identifier;
    velm.delegate().testLogic(velm.controls().btn_logic);
    QCOMPARE(velm.controls().tabview->selectedTabViewItem().identifier, tab);
}

/// What the controls and the menus lead to, whoever comes to call it.
void byEntryPoint(WindowFixture &velm) {
    AppDelegate &delegate = velm.delegate();
    Ui::MainWindow &c = velm.controls();
    for (QObject *button : {c.btn_read, c.btn_verify, c.btn_write, c.btn_logic})
        delegate.go(button);
    testLogic(velm);
    pressOffers(velm);
    for (QObject *control :
         {static_cast<QObject *>(c.startAddTextField), static_cast<QObject *>(c.btn_pad_00)})
        delegate.handleControl(control);
    delegate.browseBinaryFile(c.btn_open);
    delegate.openBinary(velm.write(QStringLiteral("other.bin"), "other"));
    delegate.export_read_from_chip_data(c.btn_export_read);
    delegate.export_output_data(c.btn_export_output);
    delegate.edits().undo();
    delegate.edits().redo();
    delegate.showListPanel(nullptr);
    delegate.deviceSearchPanelOK(nullptr);
    delegate.outlets.devicesearcher->list(nullptr);
    delegate.tableView_setObjectValue_forTableColumn_row(nullptr, QStringLiteral("5A"),
                                                         QStringLiteral("1"), 0);
    velm.settings().setValue(settingsKeys::device, QStringLiteral("elsewhere"));
}

void edit(WindowFixture &velm, int column, const QString &text) {
    GridModel *model = velm.controls().tableview->gridModel();
    model->setData(model->index(0, column), text);
}

/// An image with an edit made and one taken back, on the tab that can be edited. What the message
/// line can offer during a run is on offer: to restore edits, and to reload the file.
void prepare(WindowFixture &velm) {
    velm.settings().setValue(settingsKeys::binary,
                             velm.write(QStringLiteral("rom.bin"), "0123456789ABCDEFGHIJ"));
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    edit(velm, 3, QStringLiteral("43"));
    velm.click(velm.controls().btn_pad_00);
    velm.settle();
    velm.write(QStringLiteral("rom.bin"), "changed by somebody else");
    QTRY_COMPARE(offers(velm), QStringList({QStringLiteral("Reload"), QStringLiteral("Restore")}));
    edit(velm, 1, QStringLiteral("41"));
    edit(velm, 2, QStringLiteral("42"));
    velm.delegate().edits().undo();
    GridView *grid = velm.controls().tableview;
    grid->setCurrentIndex(grid->model()->index(0, 1));
}

/// A question is open before a search: the beginning of a run would have taken it back.
void askAboutAForeignFile(WindowFixture &velm) {
    velm.write(QStringLiteral("workspace/temp.bin"), "somebody else's image");
    velm.delegate().go(velm.controls().btn_write);
    QCOMPARE(offers(velm).value(0), QStringLiteral("Write the image file again"));
}

void search(WindowFixture &velm) {
    velm.delegate().showListPanel(nullptr);
    velm.delegate().outlets.devicesearcher->devicesearchterm->setText(QStringLiteral("27"));
    velm.delegate().outlets.devicesearcher->list(nullptr);
}

} // namespace

void TestWindowGuard::whileBusy_nothingChanges_data() {
    QTest::addColumn<QString>("during");
    QTest::addColumn<QString>("way");
    for (const char *during : {"run", "search", "stopping run", "stopping search"})
        for (const char *way : {"assistive technology", "click", "menu", "entry point"})
            QTest::addRow("%s, %s", during, way)
                << QString::fromLatin1(during) << QString::fromLatin1(way);
}

void TestWindowGuard::whileBusy_nothingChanges() {
    QFETCH(QString, during);
    QFETCH(QString, way);
    WindowFixture velm;
    const bool stops = during.startsWith(u"stopping");
    velm.useTool(stops ? stubbornTool : silentTool);
    prepare(velm);
    QStringList before;
    QStringList after;
    qsizetype offered = 0;
    const auto use = [&] {
        if (stops)
            velm.delegate().stopRun();
        before = snapshot(velm);
        offered = offers(velm).size();
        if (way == QStringLiteral("assistive technology"))
            byAssistiveTechnology(velm);
        else if (way == QStringLiteral("click"))
            byClick(velm);
        else if (way == QStringLiteral("menu"))
            byMenu(velm);
        else
            byEntryPoint(velm);
        after = snapshot(velm);
        velm.delegate().stopRun();
    };
    velm.whileBusy(use);
    if (during.endsWith(u"search")) {
        askAboutAForeignFile(velm);
        search(velm);
    } else {
        velm.delegate().go(velm.controls().btn_verify);
    }
    velm.settle();
    QVERIFY(!before.isEmpty());
    QCOMPARE(offered, during.endsWith(u"search") ? 3 : 2);
    QCOMPARE(after, before);
    QVERIFY(velm.velm().work().isIdle());
    QCOMPARE(snapshot(velm), before);
}

void TestWindowGuard::refusal_isSaidAndGoes_data() {
    QTest::addColumn<bool>("searches");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("run") << false << QStringLiteral("The programmer tool is running:");
    QTest::newRow("search") << true << QStringLiteral("A search is running:");
}

void TestWindowGuard::refusal_isSaidAndGoes() {
    QFETCH(bool, searches);
    QFETCH(QString, sentence);
    WindowFixture velm;
    velm.useTool(silentTool);
    prepare(velm);
    QString message;
    velm.whileBusy([&] {
        velm.settings().setValue(settingsKeys::device, QStringLiteral("elsewhere"));
        message = velm.message();
        velm.delegate().stopRun();
    });
    if (searches)
        search(velm);
    else
        velm.delegate().go(velm.controls().btn_read);
    QVERIFY2(message.contains(sentence), qPrintable(message));
    QVERIFY2(!velm.message().contains(sentence), qPrintable(velm.message()));
}

void TestWindowGuard::messageButton_doesNotChangeTheDevice() {
    WindowFixture velm;
    velm.useTool(
        "case $1 in -L) echo 'MINE@DIP28(custom)';; *) while :; do sleep 1; done;; esac\n");
    velm.start();
    search(velm);
    velm.delegate().outlets.devicesearcher->tableview->setCurrentIndex(
        velm.delegate().outlets.devicesearcher->tableview->model()->index(0, 0));
    velm.delegate().deviceSearchPanelOK(nullptr);
    velm.settle();
    auto *remove = velm.controls().messageLine->findChild<QPushButton *>();
    QVERIFY(remove->isVisible());
    velm.whileBusy([&] {
        velm.click(remove);
        velm.delegate().stopRun();
    });
    velm.click(velm.controls().btn_read);
    QCOMPARE(velm.settings().stringValue(settingsKeys::device),
             QStringLiteral("MINE@DIP28(custom)"));
}

// Somebody confirms, and something else starts a run before the choice is stored.
void TestWindowGuard::confirmedSearch_isRefusedOnceARunHasBegun() {
    WindowFixture velm;
    velm.useTool("case $1 in -L) echo OTHER;; *) while :; do sleep 1; done;; esac\n");
    velm.start();
    search(velm);
    velm.delegate().outlets.devicesearcher->tableview->setCurrentIndex(
        velm.delegate().outlets.devicesearcher->tableview->model()->index(0, 0));
    velm.whileBusy([&] { velm.delegate().stopRun(); });
    velm.delegate().deviceSearchPanelOK(nullptr);
    velm.delegate().go(velm.controls().btn_read);
    velm.settle();
    QCOMPARE(velm.settings().stringValue(settingsKeys::device), QStringLiteral("W27C512@DIP28"));
}

void TestWindowGuard::cancelledSearch_staysBusyUntilTheToolHasEnded() {
    WindowFixture velm;
    velm.useTool(stubbornTool);
    prepare(velm);
    Work afterCancelling = Work::Idle;
    bool readWasOn = true;
    bool busyWasShown = false;
    velm.whileBusy([&] {
        velm.velm().searchPanel().cancelButton()->click();
        afterCancelling = velm.velm().work().now();
        readWasOn = velm.controls().btn_read->isEnabled();
        busyWasShown = velm.controls().busy->isRunning();
    });
    search(velm);
    QCOMPARE(afterCancelling, Work::Stopping);
    QVERIFY(!readWasOn);
    QVERIFY(busyWasShown);
    QVERIFY(velm.controls().btn_read->isEnabled());
}

void TestWindowGuard::askedToEndTwice_stopsASearchAndThenCloses() {
    WindowFixture velm;
    velm.useTool(silentTool);
    velm.start();
    bool openAfterFirst = false;
    velm.whileBusy([&] {
        velm.velm().askToEnd();
        openAfterFirst = velm.velm().window().isVisible() && !velm.velm().work().isIdle();
        velm.velm().askToEnd();
    });
    search(velm);
    QVERIFY(openAfterFirst);
    QTRY_VERIFY(!velm.velm().window().isVisible());
    QVERIFY(!velm.velm().searchPanel().isVisible());
}

void TestWindowGuard::askedToEndDuringASearch_countsForNothingLater() {
    WindowFixture velm;
    velm.useTool(silentTool);
    prepare(velm);
    velm.whileBusy([&] {
        velm.velm().askToEnd();
        velm.delegate().stopRun();
    });
    search(velm);
    QVERIFY2(!velm.message().contains(u"Stop it first"), qPrintable(velm.message()));
    Work afterAsking = Work::Idle;
    velm.whileBusy([&] {
        velm.velm().askToEnd();
        afterAsking = velm.velm().work().now();
        velm.delegate().stopRun();
    });
    velm.delegate().go(velm.controls().btn_write);
    velm.settle();
    QCOMPARE(afterAsking, Work::Running);
    QVERIFY(velm.velm().window().isVisible());
}

void TestWindowGuard::closing_closesAnOpenPanelToo() {
    WindowFixture velm;
    velm.start();
    velm.delegate().showListPanel(nullptr);
    QVERIFY(velm.velm().searchPanel().isVisible());
    velm.velm().askToEnd();
    QVERIFY(!velm.velm().window().isVisible());
    QVERIFY(!velm.velm().searchPanel().isVisible());
}

QTEST_MAIN(TestWindowGuard)
#include "tst_window_guard.moc"
