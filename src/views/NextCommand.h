// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/CommandLine.h"

#include <QHash>
#include <QLineEdit>

class QAbstractButton;
class SettingsStore;

/// Shows the command line that a press would run: that of the button under the pointer, else of the
/// button with the focus, else a Write. It follows every setting at once.
class NextCommand final : public QLineEdit {
    Q_OBJECT

public:
    explicit NextCommand(QWidget *parent = nullptr);

    /// Shows commands made of \a settings, which must outlive it.
    void setSettings(SettingsStore &settings);
    /// Shows the command of \a operation while \a button is pointed at or has the focus.
    void follow(QAbstractButton *button, Operation operation);

    /// The operation whose command is shown.
    Operation nextOperation() const;
    /// Puts the command on the clipboard.
    void copyAll() const;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void showCommand();

    SettingsStore *settings_ = nullptr;
    QHash<QAbstractButton *, Operation> operations_;
    /// The field itself holds no more than its first 32,767 characters.
    QString command_;
};
