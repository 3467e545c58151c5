// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

class QDropEvent;

/// Takes a file that is dropped on a widget, or on a text field in it, which would take the file's
/// name instead; shows that it does while one is held over it. Several files at once, and what is
/// no file of this machine, are not taken.
class FileDropArea final : public QLabel {
    Q_OBJECT

public:
    /// Belongs to \a area, and covers it with \a text while a file is held over it.
    FileDropArea(const QString &text, QWidget *area);

signals:
    /// The file at the absolute \a path was dropped.
    void dropped(const QString &path);

protected:
    bool eventFilter(QObject *area, QEvent *event) override;

private:
    bool takes(QObject *area, QDropEvent *drag);
    void setHeld(bool held);
};
