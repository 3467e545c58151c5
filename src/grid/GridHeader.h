// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHeaderView>

/// The header above the grid's columns, which knows how wide their cells are. A column can be
/// made wider or narrower, and a double-click on its handle gives it the width it needs.
class GridHeader final : public QHeaderView {
public:
    explicit GridHeader(QWidget *parent);

    /// Gives every column the width that its cells need in \a font.
    void setCellFont(const QFont &font);
    void setModel(QAbstractItemModel *model) override;
    /// The width that the cells of \a column need, in pixels.
    int neededWidth(int column) const;
    /// Gives the last column what the others leave of \a width pixels, and never less than it
    /// needs.
    void fill(int width);
    /// The offset to scroll to for \a column to be in view.
    int offsetFor(int column) const;

private:
    void resetWidths();

    QFont cellFont_;
};
