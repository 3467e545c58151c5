// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

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
    /// With another address, or other bytes, or at the byte, what was said is no longer true.
    void forgetTrouble();
    /// The place of the byte at \a address, or a sentence that says why there is none.
    Result<qint64, QString> placeOf(const QString &address) const;

    QLineEdit &field_;
    GridView &grid_;
    Messages &messages_;
    const AppDelegate &delegate_;
};
