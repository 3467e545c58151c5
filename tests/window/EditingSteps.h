// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "window/WindowFixture.h"

#include "grid/CellEditor.h"
#include "grid/GridColumns.h"
#include "settings/SettingsKeys.h"

#include <QLineEdit>

/// Starts with twenty known bytes on the data-to-burn tab: a row and four bytes more.
inline void showTwentyBytes(WindowFixture &velm) {
    velm.settings().setValue(settingsKeys::binary,
                             velm.write(QStringLiteral("rom.bin"), "0123456789ABCDEFGHIJ"));
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    velm.log.take();
}

/// Opens a cell as F2 does, types over what it holds and ends with Enter.
inline void enter(WindowFixture &velm, int row, int column, const QString &text) {
    GridView *grid = velm.controls().tableview;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(row, column));
    QTest::keyClick(grid, Qt::Key_F2);
    auto *editor = qobject_cast<QLineEdit *>(grid->entries().editor());
    QVERIFY(editor);
    editor->selectAll();
    if (text.isEmpty())
        QTest::keyClick(editor, Qt::Key_Delete);
    else
        editor->insert(text); // some letters are on no simulated keyboard
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    QVERIFY(!grid->entries().editor());
}

/// The image as the programmer tool will find it.
inline QByteArray onDisk(const WindowFixture &velm) {
    return WindowFixture::bytesOf(velm.temporary(QStringLiteral("temp.bin")));
}
