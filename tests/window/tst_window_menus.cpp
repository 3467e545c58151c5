// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/WindowMenus.h"

#include <QTest>
#include <QUndoStack>

/// What the entries of the menus say.
class TestWindowMenus : public QObject {
    Q_OBJECT

private slots:
    void history_isNamedByItsSteps();
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

QTEST_MAIN(TestWindowMenus)
#include "tst_window_menus.moc"
