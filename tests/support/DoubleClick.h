// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QTest>

/// Double-clicks at \a place of \a widget as a mouse does: a press and a release before the press
/// and the release that make it a double-click. The toolkit's own step leaves the first two out,
/// and it is those that may change a selection.
inline void doubleClick(QWidget *widget, QPoint place) {
    QTest::mousePress(widget, Qt::LeftButton, {}, place);
    QTest::mouseRelease(widget, Qt::LeftButton, {}, place);
    QTest::mouseDClick(widget, Qt::LeftButton, {}, place);
    QTest::mouseRelease(widget, Qt::LeftButton, {}, place);
}
