// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/TypedRange.h"

#include <QDialog>

#include <memory>

class GridView;

namespace Ui {
class SelectRangeWindow;
}

/// Asks for the addresses of the bytes to select in a grid, or for the first one and a length. It
/// begins with what is selected, says itself why it cannot select what was typed, and goes when it
/// has selected.
class SelectRangeWindow final : public QDialog {
    Q_OBJECT

public:
    /// Beside \a window, for \a grid, which must outlive it.
    SelectRangeWindow(GridView &grid, QWidget *window);
    ~SelectRangeWindow() override;

    Ui::SelectRangeWindow &controls() { return *controls_; }

    /// Asks for bytes of \a grid, which must outlive it, beginning with what is selected there.
    /// Nothing changes if it does so already.
    void setGrid(GridView &grid);

private:
    TypedRange::Until until() const;
    Result<ByteRange, RangeTrouble> range(TypedRange::Until until) const;
    void takeSelection();
    void showEnd(qint64 first, qint64 length);
    void changeUntil();
    void select();
    void say(const QString &trouble);

    std::unique_ptr<Ui::SelectRangeWindow> controls_;
    GridView *grid_;
};
