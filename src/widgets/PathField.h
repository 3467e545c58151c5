// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLineEdit>

/// A field that holds a path. Where it has no room for all of it, beginning and end are in view
/// until the field has the focus: names of files stand at the end. The tool tip has the whole.
class PathField final : public QLineEdit {
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

    /// What is in view without the focus.
    QString shownText() const;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QRect textArea() const;
};
