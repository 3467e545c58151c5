// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/WindowMenus.h"

#include "window/WindowFixture.h"

#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QUndoStack>

namespace {

/// The entries of the menu that is called \a title, with a line for each separator.
QString entriesOf(WindowFixture &velm, const QString &title) {
    QStringList entries;
    for (const QAction *menu : velm.velm().window().menuBar()->actions())
        if (menu->iconText() == title)
            for (const QAction *entry : menu->menu()->actions())
                entries << (entry->isSeparator() ? QStringLiteral("-") : entry->iconText());
    return entries.join(u'|');
}

} // namespace

/// What the entries of the menus say, and where they stand.
class TestWindowMenus : public QObject {
    Q_OBJECT

private slots:
    void history_isNamedByItsSteps();
    void entriesOfOthers_standBesideTheirKind();
};

void TestWindowMenus::history_isNamedByItsSteps() {
    QUndoStack history;
    QAction undo;
    QAction redo;
    const auto texts = [&] { return QStringList({undo.text(), redo.text()}); };
    const QString undoEdit = QStringLiteral("&Undo edit");
    const QString redoEdit = QStringLiteral("&Redo edit");
    nameBySteps(undo, redo, history);
    QCOMPARE(texts(), QStringList({undoEdit, redoEdit}));
    history.push(new QUndoCommand(QStringLiteral("restoring")));
    QCOMPARE(texts(), QStringList({QStringLiteral("&Undo restoring"), redoEdit}));
    history.push(new QUndoCommand);
    QCOMPARE(texts(), QStringList({undoEdit, redoEdit}));
    history.undo();
    QCOMPARE(texts(), QStringList({QStringLiteral("&Undo restoring"), redoEdit}));
    history.undo();
    QCOMPARE(texts(), QStringList({undoEdit, QStringLiteral("&Redo restoring")}));
    history.clear();
    QCOMPARE(texts(), QStringList({undoEdit, redoEdit}));
}

void TestWindowMenus::entriesOfOthers_standBesideTheirKind() {
    WindowFixture velm;
    velm.start();
    QCOMPARE(entriesOf(velm, QStringLiteral("File")),
             QStringLiteral("Open binary\u2026|Import\u2026|Save data read from chip\u2026|"
                            "Save data to burn\u2026|Export\u2026|Save the set\u2026|"
                            "Save console\u2026|Open recent|-|Quit"));
    QCOMPARE(entriesOf(velm, QStringLiteral("Edit")),
             QStringLiteral("Undo edit|Redo edit|-|Copy|Copy as|Select all|Select range\u2026|"
                            "Move on after two digits|-|Paste|Paste characters|Fill\u2026|"
                            "Write 00|Insert a file\u2026|-|Find\u2026|Find next|Find previous|"
                            "Go to address\u2026|Next difference|Previous difference"));
    QCOMPARE(entriesOf(velm, QStringLiteral("View")).section(u'|', 0, 5),
             QStringLiteral("Data read from chip|Data to burn|Logic test results|"
                            "Other memories\u2026|-|Follow output"));
}

QTEST_MAIN(TestWindowMenus)
#include "tst_window_menus.moc"
