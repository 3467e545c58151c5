// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QLabel;

/// Words for whoever does not see them: to assistive technology it is a notification that comes up,
/// and is spoken wherever the focus is. It takes no room, shows nothing and goes by itself.
class Announcement final : public QWidget {
    Q_OBJECT

public:
    /// Has \a words (translated) spoken once, as soon as \a place shows. What is not spoken by the
    /// time that \a place is hidden again, never is.
    static void make(const QString &words, QWidget *place);
    /// Shows \a words in \a label, and has them spoken.
    static void showIn(QLabel &label, const QString &words);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    Announcement(const QString &words, QWidget *place);
};
