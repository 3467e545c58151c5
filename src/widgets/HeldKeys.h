// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

/// A button that is pressed by its letter (Alt and the letter that is underlined) is pressed once,
/// however long the keys are held; the toolkit would press it with each repetition. Works for the
/// whole program while it exists.
class HeldKeys final : public QObject {
    Q_OBJECT

public:
    explicit HeldKeys(QObject *parent);

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    bool repeats_ = false; ///< the key that was told of last is a repetition
};
