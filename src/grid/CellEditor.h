// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "grid/CellEdit.h"

#include <QLineEdit>

/// The field in which a cell's entry is typed. It remembers what it opened with, because only an
/// entry that the user changed may be committed, and widens as the entry grows.
class CellEditor final : public QLineEdit {
    Q_OBJECT

public:
    explicit CellEditor(QWidget *parent);

    /// Shows \a text as what the cell holds.
    void open(const QString &text);
    /// True if the entry differs from what was opened or committed last.
    bool isChanged() const { return text() != opened_; }
    /// Takes the entry as committed: it is not committed a second time when the focus leaves.
    void setCommitted();
    /// What the source made of the entry that was committed last; nothing if it did not take it.
    const CellEditOutcome &edit() const { return edit_; }
    void setEdit(const CellEdit &edit) { edit_ = edit; }
    /// True if an entry has been committed since the field was opened.
    bool wasCommitted() const { return committed_; }

    /// Lays the field over \a cell.
    void placeAt(const QRect &cell);

    /// Takes two hexadecimal digits for the whole entry as soon as the second is typed.
    void setEndsWithTwoDigits(bool ends) { endsWithTwoDigits_ = ends; }

signals:
    /// The second of two hexadecimal digits was typed.
    void twoDigitsTyped();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void fitWidth();

    QString opened_;
    QRect cell_;
    bool committed_ = false;
    bool endsWithTwoDigits_ = false;
    CellEditOutcome edit_;
};
