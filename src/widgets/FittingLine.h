// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/JoinedWords.h"

#include <QLineEdit>
#include <QString>

/// A line of text that can be selected but not changed, without a frame or a ground of its own. It
/// begins with its first letter and says no more than there is room for.
class FittingLine : public QLineEdit {
    Q_OBJECT

public:
    explicit FittingLine(QWidget *parent = nullptr);

    /// All that there is to say, however much of it is shown.
    QString wholeText() const { return whole_; }

protected:
    /// Has \a whole to say from here on.
    void say(const QString &whole);
    /// What there is room for.
    virtual QString fittingText() const = 0;
    /// Those of \a pieces that say something, with dots between them.
    static QString joined(const QStringList &pieces) { return joinedWords(pieces, u" \u00b7 "); }

    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void showText();

    QString whole_;
};
