// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QListView>

/// The panel's list of device names, painted as shownName() has them. Beyond a plain list it says
/// when it was double-clicked anywhere, below the last row included, and when Enter was pressed in
/// it. A click below the last row leaves the selection as it is.
class DeviceListView final : public QListView {
    Q_OBJECT

public:
    explicit DeviceListView(QWidget *parent = nullptr);

    /// Takes the keyboard and selects the first name, if there is one.
    void selectFirst();

signals:
    void doubleClickedAnywhere();
    void enterPressed();

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QItemSelectionModel::SelectionFlags
    selectionCommand(const QModelIndex &index, const QEvent *event = nullptr) const override;
};
