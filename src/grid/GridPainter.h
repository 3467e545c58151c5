// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "grid/CharacterPlaces.h"
#include "grid/GridMarks.h"

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QPointF>
#include <QRect>

class GridModel;
class GridView;
class QPainter;
struct CellValue;

/// Draws the rows of a grid, with the view's palette and font. Made anew for every repaint.
class GridPainter {
public:
    GridPainter(const GridView &view, QPainter &painter);

    /// Draws the part of \a row within \a area; \a top is the height of its upper edge.
    void paintRow(int row, int top, const QRect &area) const;

private:
    /// What one cell is drawn with.
    struct Look {
        bool selected = false;
        bool current = false;
        bool onWindow = false;
        ByteMark mark = {};
        QRect inBlock = {}; ///< the part of the cell that stands for bytes of the block
    };

    void paintBackground(int row, const QRect &line, bool selected) const;
    void paintCell(int row, int column, const QRect &cell, Look look) const;
    void paintGround(const CellValue &value, const QRect &cell, Look look) const;
    void paintText(const CellValue &value, int column, const QRect &cell, Look look) const;
    void paintCharactersAround(const QString &text, const QRect &cell, const QRect &block) const;
    void paintCharacters(const QString &text, const QRect &cell) const;
    int textLeft(int column, const QRect &cell, int width) const;
    int widthOf(const QString &text) const;
    void paintUnit(const QString &text, int place, const QPointF &origin) const;
    void paintCursor(const QRect &cell) const;
    QRect partInBlock(int row, int column, const QRect &cell) const;
    bool isPinRow(int row) const;
    bool endsGroup(int column) const;
    QColor textColor(const CellValue &value, int column, Look look) const;

    const GridView &view_;
    const GridModel &model_;
    QPainter &painter_;
    QPalette palette_;
    QFont boldFont_;
    QColor lineColor_;
    QColor faintText_;
    QColor selectedGround_;
    CharacterPlaces places_;
    ByteRange block_; ///< empty if there is none
    bool fixedPitch_;
    int baseline_;
};
