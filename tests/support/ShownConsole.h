// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/ConsoleView.h"

#include <QTest>
#include <QTextCursor>

/// Shows \a view with room for a few lines.
inline void showView(ConsoleView &view) {
    view.resize(600, 160);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
}

/// "0", "1" and so on, a line each.
inline QString numberedLines(int count) {
    QString lines;
    for (int line = 0; line < count; ++line)
        lines += QString::number(line) + u'\n';
    return lines;
}

/// True if the end of the text is in sight.
inline bool showsEnd(const ConsoleView &view) {
    QTextCursor end(view.document());
    end.movePosition(QTextCursor::End);
    return view.viewport()->rect().contains(view.cursorRect(end));
}
