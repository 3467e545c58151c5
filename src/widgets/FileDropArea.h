// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

class QDropEvent;

/// Takes a file that is dropped on a widget, and shows while one is held over it that it does.
/// So do the text fields in it, which would take a file for its name. Several files at once, and
/// what is no file of this machine, are not taken.
class FileDropArea final : public QLabel {
    Q_OBJECT

public:
    /// Covers \a area, which it belongs to, while a file is held over it, with \a text.
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
