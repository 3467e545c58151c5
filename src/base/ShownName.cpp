// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/ShownName.h"

#include "base/VisibleText.h"

#include <QList>

QString shownName(QStringView name) {
    // No character is shown by fewer units than it has, so one unit more fills what is shown.
    const auto characters = name.first(qMin(name.size(), longestShownName + 1)).toUcs4();
    QString shown;
    for (const uint character : characters) {
        const QString next = visibleCharacter(character);
        if (shown.size() + next.size() > longestShownName)
            return shown + u'\u2026';
        shown += next;
    }
    return shown;
}
