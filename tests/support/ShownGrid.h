// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "grid/CellEditor.h"
#include "grid/GridView.h"
#include "support/DoubleClick.h"
#include "support/GridSourceDouble.h"

#include <QTest>

/// A grid in a window of its own, with the focus, as a test's user has it before them.
struct ShownGrid {
    explicit ShownGrid(const QByteArray &bytes, bool editable = false, qint64 pretended = 0)
        : source(bytes) {
        source.editable = editable;
        source.pretendedLength = pretended;
        view.setSource(source);
        view.resize(view.sizeHint());
        view.show();
        view.activateWindow();
        view.setFocus();
        shown = QTest::qWaitForWindowActive(&view);
    }

    QModelIndex cell(int row, int column) const { return view.gridModel()->index(row, column); }

    void setCursor(int row, int column) { view.setCurrentIndex(cell(row, column)); }
    /// Row and column of the cursor.
    QPair<int, int> cursor() const {
        return {view.currentIndex().row(), view.currentIndex().column()};
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(target(), Qt::Key(key), modifiers);
    }
    void type(const QString &text) {
        for (const QChar character : text)
            QTest::keyClick(target(), character.toLatin1());
    }
    /// Clicks into the middle of a visible cell.
    void click(int row, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers,
                          view.visualRect(cell(row, column)).center());
    }
    void doubleClick(int row, int column) {
        ::doubleClick(view.viewport(), view.visualRect(cell(row, column)).center());
    }

    /// The text of the open editor; null if there is none.
    QString typed() const {
        return view.entries().editor() ? view.entries().editor()->text() : QString();
    }

    GridSourceDouble source;
    GridView view;
    bool shown = false;

private:
    /// Where a key goes: to the editor while one is open.
    QWidget *target() {
        return view.entries().editor() ? static_cast<QWidget *>(view.entries().editor()) : &view;
    }
};
