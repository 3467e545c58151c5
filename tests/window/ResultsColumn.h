// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/PinPicture.h"
#include "views/PackageView.h"
#include "window/WindowFixture.h"

#include <QAccessible>
#include <QAction>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>

/// The column beside the table of a logic test, found as somebody finds it who goes by names.
struct ResultsColumn {
    explicit ResultsColumn(WindowFixture &velm)
        : pins(named<PackageView>(velm, QStringLiteral("Pins"))),
          text(named<QPlainTextEdit>(velm, QStringLiteral("Failed pins"))),
          repeat(named<QPushButton>(velm, QStringLiteral("Run 10 times"))),
          times(named<QSpinBox>(velm, QStringLiteral("How many times"))) {}

    QString description() const {
        return QAccessible::queryAccessibleInterface(pins)->text(QAccessible::Description);
    }
    QString picture() const { return pictureOf(pins->picture().pins); }
    /// The first \a count lines of the text, with a stroke between them.
    QString lines(qsizetype count) const {
        return text->toPlainText().split(u'\n').first(count).join(u'/');
    }
    void choose(const QString &entry) const {
        for (QAction *action : pins->actions())
            if (action->text().remove(u'&') == entry)
                return action->trigger();
        qFatal("no such entry");
    }

    PackageView *const pins;
    QPlainTextEdit *const text;
    QPushButton *const repeat;
    QSpinBox *const times;

private:
    template <typename Widget>
    static Widget *named(WindowFixture &velm, const QString &name) {
        for (Widget *widget : velm.velm().window().findChildren<Widget *>())
            if (widget->accessibleName() == name)
                return widget;
        qFatal("no %s", qPrintable(name));
    }
};
