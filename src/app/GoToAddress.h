// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class AppDelegate;
class GridView;
class Messages;
class QLineEdit;

/// The field that leads to a byte of the image that is shown: Enter moves the grid's cursor there
/// and gives it the keyboard; the message line says why that is not possible.
class GoToAddress final : public QObject {
    Q_OBJECT

public:
    /// All must outlive this, and \a grid have its source.
    GoToAddress(QLineEdit &field, GridView &grid, Messages &messages, const AppDelegate &delegate,
                QObject *parent);

private:
    void go();
    /// With another address, or other bytes, what was said is no longer true.
    void forgetTrouble();
    /// Moves to the address; a sentence that says why not, or nothing.
    QString goTo(const QString &address);

    QLineEdit &field_;
    GridView &grid_;
    Messages &messages_;
    const AppDelegate &delegate_;
};
