// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

class QMimeData;

/// Takes a file that is dropped on a widget, and shows while one is held over it that it does.
/// Several files at once, and what is no file of this machine, are not taken.
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
    void setHeld(bool held);
};
