// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/SearchSteps.h"

#include "settings/SettingsKeys.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QContextMenuEvent>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>

/// How everything in the window is reached without a mouse.
class TestWindowReach : public QObject {
    Q_OBJECT

private slots:
    void everyControl_hasAToolTip();
    void toolTips_nameTheKeysOfTheMenus();
    void switches_nameTheOptionThatTheyAdd();
    void words_areInLowerCaseButTheFirst();
    void mnemonics_ofTheWindowDiffer();
    void mnemonics_ofEachMenuDiffer();
    void mnemonics_ofTheConsolesMenuDiffer();
    void mnemonics_ofTheSearchPanelDiffer();
    void tab_followsTheReadingOrder_data();
    void tab_followsTheReadingOrder();
    void recentFiles_areInAMenuThatIsClosed();
    void descriptions_ofFieldsHoldWhateverIsInThem();
    void openedBinary_saysWhereThereIsNone();
};

namespace {

/// The keys that more than one of \a texts is marked with, each with those texts.
QStringList sharedKeys(const QStringList &texts) {
    QMap<QString, QStringList> users;
    for (const QString &text : texts)
        if (const QKeySequence key = QKeySequence::mnemonic(text); !key.isEmpty())
            users[key.toString()].append(text);
    QStringList shared;
    for (const auto &[key, marked] : users.asKeyValueRange())
        if (marked.size() > 1)
            shared.append(key + QStringLiteral(": ") + marked.join(QStringLiteral(", ")));
    return shared;
}

/// Whether a word of \a text but the first begins with a capital and is more than an abbreviation.
bool hasLaterCapital(QString text) {
    static const QStringList names{QStringLiteral("VELM"), QStringLiteral("KiB")};
    QStringList words = text.remove(u'&').split(u' ', Qt::SkipEmptyParts);
    words.removeIf([](const QString &word) { return names.contains(word); });
    return std::any_of(
        words.begin() + std::min<qsizetype>(1, words.size()), words.end(),
        [](const QString &word) { return word.at(0).isUpper() && word != word.toUpper(); });
}

QStringList textsOf(const QList<QAction *> &actions) {
    QStringList texts;
    for (const QAction *action : actions)
        texts.append(action->text());
    return texts;
}

/// The widgets of a kind in \a window itself, without those of windows that belong to it.
template <typename Widget>
QList<Widget *> inWindow(const QWidget &window) {
    QList<Widget *> found = window.findChildren<Widget *>();
    found.removeIf([&](const Widget *widget) { return widget->window() != &window; });
    return found;
}

/// Everything in \a window whose mark a key press with Alt finds.
QStringList markedTexts(const QWidget &window) {
    QStringList texts;
    for (const QLabel *label : inWindow<QLabel>(window))
        if (label->buddy())
            texts.append(label->text());
    for (const QAbstractButton *button : inWindow<QAbstractButton>(window))
        texts.append(button->text());
    for (const QGroupBox *box : inWindow<QGroupBox>(window))
        texts.append(box->title());
    for (const QTabBar *tabs : inWindow<QTabBar>(window))
        for (int tab = 0; tab < tabs->count(); ++tab)
            texts.append(tabs->tabText(tab));
    for (const QMenuBar *bar : inWindow<QMenuBar>(window))
        texts += textsOf(bar->actions());
    return texts;
}

QString descriptionOf(QWidget *widget) {
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Description);
}

bool isStation(const QWidget &widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0;
}

QString nameOf(const QWidget &widget) {
    return widget.objectName().isEmpty() ? widget.accessibleName() : widget.objectName();
}

/// The stations of the tabulator in \a window, from the first on.
QStringList focusChain(QWidget *window) {
    QStringList names;
    for (QWidget *next = window->nextInFocusChain(); next != window;
         next = next->nextInFocusChain())
        if (next->window() == window && next->isVisible() && isStation(*next))
            names.append(nameOf(*next));
    return names;
}

/// True if somebody who reads rows from the left to the right, and these from the top down, comes
/// to \a one first.
bool isReadBefore(const QWidget *one, const QWidget *other) {
    const QRect first = one->geometry();
    const QRect second = other->geometry();
    const bool besideEachOther = first.top() <= second.bottom() && second.top() <= first.bottom();
    return besideEachOther ? first.left() < second.left() : first.top() < second.top();
}

/// The stations in \a part as they are laid out; a part that is laid out in itself is read whole.
QStringList readingOrder(const QWidget &part) {
    QList<QWidget *> children = part.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    children.removeIf(
        [](const QWidget *child) { return !child->isVisible() || child->isWindow(); });
    std::sort(children.begin(), children.end(), isReadBefore);
    QStringList names;
    if (isStation(part))
        names.append(nameOf(part));
    for (const QWidget *child : std::as_const(children))
        names += readingOrder(*child);
    return names;
}

} // namespace

void TestWindowReach::everyControl_hasAToolTip() {
    WindowFixture velm;
    velm.start();
    const QWidget &window = velm.velm().window();
    QStringList without;
    for (const QAbstractButton *button : inWindow<QAbstractButton>(window))
        if (isStation(*button) && button->isVisible() && button->toolTip().isEmpty())
            without << nameOf(*button);
    for (const QLineEdit *field : inWindow<QLineEdit>(window))
        if (isStation(*field) && field->isVisible() && field->toolTip().isEmpty())
            without << nameOf(*field);
    QCOMPARE(without.join(u' '), QString());
}

void TestWindowReach::toolTips_nameTheKeysOfTheMenus() {
    WindowFixture velm;
    velm.start();
    const QWidget &window = velm.velm().window();
    QMap<QString, QString> keys;
    for (const QAction *entry : window.findChildren<QAction *>())
        keys.insert(entry->text().remove(u'&').remove(u'\u2026'),
                    entry->shortcut().toString(QKeySequence::NativeText));
    const QMap<QString, QString> entries{
        {QStringLiteral("Previous"), QStringLiteral("Find previous")},
        {QStringLiteral("Next"), QStringLiteral("Find next")},
        {QStringLiteral("Find what"), QStringLiteral("Find")}};
    static const QRegularExpression named(QStringLiteral("\\((F\\d+|(?:Ctrl|Shift)\\+[^,):]+)|%1"));
    QStringList controls;
    for (const QWidget *control : inWindow<QWidget>(window)) {
        const auto found = named.match(control->toolTip());
        if (!found.hasMatch())
            continue;
        const QString name = control->accessibleName();
        controls << name;
        QCOMPARE(found.captured(1), keys.value(entries.value(name, name)));
    }
    controls.sort();
    QCOMPARE(controls.join(u'\n'),
             QStringLiteral("Find what\nGo to address\nLogic test\nNext\nOpen binary\nPrevious\n"
                            "Read\nSave data read from chip\nSave data to burn\nStop\nVerify\n"
                            "Write"));
}

void TestWindowReach::switches_nameTheOptionThatTheyAdd() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::noSizeMismatchError, false);
    velm.start();
    const Ui::MainWindow &c = velm.controls();
    c.btn_write->setFocus();
    const auto options = [&c] { return c.nextCommand->text().split(u' ').mid(1); };
    for (QCheckBox *choice : {c.check_noIDMismatchError, c.check_noSizeMismatchError,
                              c.check_skipErase, c.check_unprotect}) {
        const QStringList before = options();
        velm.click(choice);
        QStringList added = options();
        for (const QString &word : before)
            added.removeOne(word);
        QCOMPARE(added.size(), 1);
        const QString words = QStringLiteral("(minipro %1)").arg(added.first());
        QVERIFY2(choice->toolTip().endsWith(words), qPrintable(words));
        velm.click(choice);
    }
}

// A name of several words is written as in running text.
void TestWindowReach::words_areInLowerCaseButTheFirst() {
    WindowFixture velm;
    velm.start();
    const QWidget &window = velm.velm().window();
    QStringList texts;
    for (const QAction *action : window.findChildren<QAction *>())
        texts.append(action->text());
    for (const QAbstractButton *button : window.findChildren<QAbstractButton *>())
        texts.append(button->text());
    for (const QGroupBox *box : window.findChildren<QGroupBox *>())
        texts.append(box->title());
    QVERIFY(texts.size() > 50);
    QStringList capitals;
    for (const QString &text : std::as_const(texts))
        if (hasLaterCapital(text))
            capitals.append(text);
    QCOMPARE(capitals, QStringList());
}

void TestWindowReach::mnemonics_ofTheWindowDiffer() {
    WindowFixture velm;
    velm.start();
    const QStringList texts = markedTexts(velm.velm().window());
    QVERIFY(texts.contains(u"&File"));
    QVERIFY(texts.contains(u"&Read"));
    QCOMPARE(sharedKeys(texts), QStringList());
}

void TestWindowReach::mnemonics_ofEachMenuDiffer() {
    WindowFixture velm;
    velm.start();
    const QList<QMenu *> menus = velm.velm().window().menuBar()->findChildren<QMenu *>();
    QVERIFY(menus.size() > 5);
    for (QMenu *menu : menus) {
        QVERIFY2(!menu->isEmpty(), qPrintable(menu->title()));
        QCOMPARE(sharedKeys(textsOf(menu->actions())), QStringList());
    }
}

void TestWindowReach::mnemonics_ofTheConsolesMenuDiffer() {
    WindowFixture velm;
    velm.start();
    ConsoleView *console = velm.controls().textView;
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(), console->mapToGlobal(QPoint()));
    QCoreApplication::sendEvent(console, &asked);
    auto *menu = console->findChild<QMenu *>();
    QVERIFY(menu);
    QCOMPARE(sharedKeys(textsOf(menu->actions())), QStringList());
    menu->close();
}

void TestWindowReach::mnemonics_ofTheSearchPanelDiffer() {
    WindowFixture velm;
    velm.start();
    const Panel panel(velm);
    const QStringList texts = markedTexts(*panel.dialog);
    QVERIFY(texts.contains(u"&Search"));
    QCOMPARE(sharedKeys(texts), QStringList());
}

void TestWindowReach::tab_followsTheReadingOrder_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("as it opens") << QSize();
    QTest::newRow("the smallest that is supported") << QSize(1024, 700);
    QTest::newRow("a large screen") << QSize(1900, 1000);
}

void TestWindowReach::tab_followsTheReadingOrder() {
    QFETCH(QSize, size);
    WindowFixture velm;
    velm.start();
    MainWindow &window = velm.velm().window();
    if (size.isValid())
        window.resize(size);
    velm.controls().findBar->find();
    velm.controls().messageLine->setMessage(-1, MessageLine::Severity::Information,
                                            QStringLiteral("A button:"),
                                            {QStringLiteral("Do it"), [] {}});
    velm.settle();
    const QStringList stations = readingOrder(*window.centralWidget());
    QVERIFY(stations.contains(u"Do it"));
    QVERIFY(stations.contains(u"address"));
    QCOMPARE(focusChain(&window), stations);
    velm.click(velm.controls().btn_search);
    QWidget *panel = velm.delegate().outlets.searchDevicesWindow;
    QCOMPARE(focusChain(panel), readingOrder(*panel));
}

// Assistive technology looks for an entry without opening its menu.
void TestWindowReach::recentFiles_areInAMenuThatIsClosed() {
    WindowFixture velm;
    const QString one = velm.write(QStringLiteral("one.bin"), "1");
    const QString other = velm.write(QStringLiteral("other.bin"), "2");
    velm.start();
    QCOMPARE(velm.recentFiles(), QStringList(QStringLiteral("No files yet")));
    velm.delegate().openBinary(one);
    velm.delegate().openBinary(other);
    velm.settle();
    QCOMPARE(velm.recentFiles(), QStringList({other, one}));
    velm.end();
    velm.start();
    QCOMPARE(velm.recentFiles(), QStringList({other, one}));
}

void TestWindowReach::descriptions_ofFieldsHoldWhateverIsInThem() {
    WindowFixture velm;
    velm.start();
    const Panel panel(velm);
    const QList<QLineEdit *> fields = velm.velm().window().findChildren<QLineEdit *>();
    QVERIFY(fields.contains(panel.term));
    // The field of the opened binary shows what is stored, whoever sets its text.
    velm.settings().setValue(settingsKeys::binary, QStringLiteral("something"));
    for (QLineEdit *field : fields) {
        field->setText(QStringLiteral("something"));
        QVERIFY(!field->text().isEmpty());
        const QString described = descriptionOf(field);
        QVERIFY2(described.isEmpty() || described != field->placeholderText(),
                 qPrintable(field->objectName() + QStringLiteral(": ") + described));
    }
}

void TestWindowReach::openedBinary_saysWhereThereIsNone() {
    WindowFixture velm;
    velm.start();
    const QString none = QStringLiteral("No file opened");
    QLineEdit *field = velm.controls().readFileTextField;
    QCOMPARE(descriptionOf(field), none);
    velm.delegate().openBinary(velm.write(QStringLiteral("rom.bin"), "A"));
    QVERIFY2(descriptionOf(field) != none && !descriptionOf(field).isEmpty(),
             qPrintable(descriptionOf(field)));
    velm.settings().setValue(settingsKeys::binary, QString());
    QCOMPARE(descriptionOf(field), none);
}

QTEST_MAIN(TestWindowReach)
#include "tst_window_reach.moc"
