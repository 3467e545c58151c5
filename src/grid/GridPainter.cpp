// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridPainter.h"

#include "base/VisibleText.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "widgets/Palette.h"

#include <QChar>
#include <QHeaderView>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QtMath>

#include <algorithm>

namespace {

/// The colour of what frames the contents (addresses, cells without a byte): towards the
/// background, as far as it can still be read.
QColor faintText(const QPalette &palette) {
    constexpr double share = 0.35;
    const QColor text = palette.color(QPalette::Text);
    const QColor base = palette.color(QPalette::Base);
    const QColor faint = mixed(text, base, share);
    const double contrast = std::min(contrastRatio(faint, base),
                                     contrastRatio(faint, palette.color(QPalette::AlternateBase)));
    return contrast >= smallestTextContrast ? faint : text;
}

QColor gridLineColor(const GridView &view) {
    QStyleOptionViewItem option;
    option.initFrom(&view);
    return QColor::fromRgba(
        QRgb(view.style()->styleHint(QStyle::SH_Table_GridLineColor, &option, &view)));
}

/// The line below bytes that were found, in pixels.
constexpr int foundLineHeight = 2;
/// The edge in the block's colour above and below bytes with a ground of their own, in pixels.
constexpr int blockEdge = 2;

bool isPlain(const QString &text) {
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return isPrintableAscii(unit); });
}

} // namespace

GridPainter::GridPainter(const GridView &view, QPainter &painter)
    : view_(view),
      model_(*view.gridModel()),
      painter_(painter),
      palette_(view.palette()),
      boldFont_(view.font()),
      lineColor_(gridLineColor(view)),
      places_(view.font()),
      block_(view.selection().hasBlock() ? view.selection().bytes() : ByteRange()) {
    const bool active = view.isActiveWindow() && view.hasFocus();
    palette_.setCurrentColorGroup(!view.isEnabled() ? QPalette::Disabled
                                  : active          ? QPalette::Active
                                                    : QPalette::Inactive);
    faintText_ = faintText(palette_);
    selectedGround_ = selectedGroundColor(palette_);
    boldFont_.setBold(true);
    fixedPitch_ = QFontInfo(view.font()).fixedPitch();
    painter.setFont(view.font());
    const QFontMetrics metrics = view.fontMetrics();
    baseline_ = (view.rowHeight() - metrics.height()) / 2 + metrics.ascent();
}

void GridPainter::paintRow(int row, int top, const QRect &area) const {
    const QHeaderView &header = *view_.header();
    const QModelIndex first = model_.index(row, 0);
    const bool selected = view_.selectionModel()->isSelected(first);
    const QModelIndex current = view_.currentIndex();
    paintBackground(row, QRect(area.left(), top, area.width(), view_.rowHeight()), selected);
    for (int column = 0; column < gridColumns; ++column) {
        const QRect cell(header.sectionViewportPosition(column), top, header.sectionSize(column),
                         view_.rowHeight());
        const bool isCurrent = current.row() == row && current.column() == column;
        if (!cell.intersects(area))
            continue;
        const QRect inBlock = partInBlock(row, column, cell);
        paintCell(row, column, cell,
                  {selected || inBlock == cell, isCurrent, isPinRow(row), model_.mark(row, column),
                   inBlock});
    }
}

// The part of a cell that stands for bytes of the block.
QRect GridPainter::partInBlock(int row, int column, const QRect &cell) const {
    const qint64 start = qint64(row) * bytesInRow;
    const auto first = int(std::clamp<qint64>(block_.offset - start, 0, bytesInRow));
    const auto end = int(std::clamp<qint64>(block_.end() - start, 0, bytesInRow));
    if (first >= end || column == addressColumn)
        return {};
    if (column == charactersColumn)
        return places_.rectOf(first, end - first, cell) & cell;
    const int place = column - firstByteColumn;
    return place >= first && place < end ? cell : QRect();
}

void GridPainter::paintBackground(int row, const QRect &line, bool selected) const {
    // The first row of a report numbers the pins: it goes on where the header ends.
    QPalette::ColorRole role = QPalette::Base;
    if (selected)
        role = QPalette::Highlight;
    else if (isPinRow(row))
        role = QPalette::Window;
    else if (view_.alternatingRowColors() && row % 2 == 1)
        role = QPalette::AlternateBase;
    painter_.fillRect(line, palette_.brush(role));
}

bool GridPainter::isPinRow(int row) const {
    return row == 0 && model_.heading() == GridHeading::Pins;
}

void GridPainter::paintCell(int row, int column, const QRect &cell, Look look) const {
    const CellValue value = model_.cell(row, column);
    paintGround(value, cell, look);
    paintText(value, column, cell, look);
    if (endsGroup(column)) {
        painter_.setPen(lineColor_);
        painter_.drawLine(cell.topRight(), cell.bottomRight());
    }
    if (look.current)
        paintCursor(cell);
}

void GridPainter::paintGround(const CellValue &value, const QRect &cell, Look look) const {
    painter_.fillRect(look.inBlock, palette_.brush(QPalette::Highlight));
    const QRect ground = look.inBlock == cell ? cell.adjusted(0, blockEdge, 0, -blockEdge) : cell;
    if (look.mark.found) {
        painter_.fillRect(ground, foundGroundColor(palette_));
        const QRect line(ground.left(), ground.bottom() + 1 - foundLineHeight, ground.width(),
                         foundLineHeight);
        painter_.fillRect(line, warningTextColor(palette_));
        return;
    }
    // On the colour of the selection, neither the cursor nor what stands out could be told.
    if (look.selected && look.current)
        painter_.fillRect(ground, palette_.brush(QPalette::Base));
    else if (look.selected && (value.failed || look.mark.differs))
        painter_.fillRect(ground, selectedGround_);
}

// A line sets addresses, the halves of a row and the characters apart.
bool GridPainter::endsGroup(int column) const {
    constexpr int lastOfFirstHalf = firstByteColumn + bytesInRow / 2 - 1;
    if (model_.heading() == GridHeading::Pins)
        return column == addressColumn;
    return column == addressColumn || column == lastOfFirstHalf || column == lastByteColumn;
}

QColor GridPainter::textColor(const CellValue &value, int column, Look look) const {
    if (value.failed)
        return failureTextColor(palette_);
    if (look.mark.differs)
        return differenceTextColor(palette_);
    if (look.selected && !look.current && !look.mark.found)
        return palette_.color(QPalette::HighlightedText);
    if (look.onWindow)
        return palette_.color(QPalette::WindowText);
    const bool isFrame = column == addressColumn || value.missing;
    return isFrame ? faintText_ : palette_.color(QPalette::Text);
}

void GridPainter::paintText(const CellValue &value, int column, const QRect &cell,
                            Look look) const {
    if (value.text.isEmpty())
        return;
    painter_.setPen(textColor(value, column, look));
    if (column == charactersColumn) {
        paintCharactersAround(value.text, cell, look.inBlock);
        return;
    }
    const bool isBold = value.failed || look.mark.differs || look.mark.edited;
    if (isBold)
        painter_.setFont(boldFont_);
    const int width = widthOf(value.text);
    if (width > cell.width())
        painter_.drawText(
            cell, Qt::AlignCenter,
            painter_.fontMetrics().elidedText(value.text, Qt::ElideRight, cell.width()));
    else
        painter_.drawText(QPoint(textLeft(column, cell, width), cell.top() + baseline_),
                          value.text);
    if (isBold)
        painter_.setFont(view_.font());
}

// Addresses line up at their last digits; longer ones stand out to the left.
int GridPainter::textLeft(int column, const QRect &cell, int width) const {
    return column == addressColumn ? cell.right() + 1 - places_.padding() - width
                                   : cell.left() + (cell.width() - width) / 2;
}

// Measuring a text costs as much as drawing it, and nearly all of them need not be measured.
int GridPainter::widthOf(const QString &text) const {
    return fixedPitch_ && isPlain(text) ? qCeil(double(text.size()) * places_.width())
                                        : painter_.fontMetrics().horizontalAdvance(text);
}

// Those of the block have the colour of what is selected.
void GridPainter::paintCharactersAround(const QString &text, const QRect &cell,
                                        const QRect &block) const {
    if (block.isEmpty())
        return paintCharacters(text, cell);
    painter_.save();
    painter_.setClipRegion(QRegion(cell) - block);
    paintCharacters(text, cell);
    painter_.setPen(palette_.color(QPalette::HighlightedText));
    painter_.setClipRect(block);
    paintCharacters(text, cell);
    painter_.restore();
}

// Draws unit by unit, each in its own place, so that no unit joins, reorders or widens its
// neighbours and the characters stand in line with those of the other rows.
void GridPainter::paintCharacters(const QString &text, const QRect &cell) const {
    const QPointF start(cell.left() + places_.padding(), cell.top() + baseline_);
    if (fixedPitch_ && isPlain(text))
        painter_.drawText(start, text);
    else
        for (int place = 0; place < text.size(); ++place)
            paintUnit(text, place, start + QPointF(place * places_.width(), 0));
}

// A unit that has no shape of its own gets a dot: fonts would fill the column with boxes.
void GridPainter::paintUnit(const QString &text, int place, const QPointF &origin) const {
    const QChar unit = text[place];
    const bool followsHigh = place > 0 && text[place - 1].isHighSurrogate();
    const bool precedesLow = place + 1 < text.size() && text[place + 1].isLowSurrogate();
    if (unit.isLowSurrogate() && followsHigh)
        return;
    if (unit.isHighSurrogate() && precedesLow) {
        painter_.drawText(origin, text.mid(place, 2));
        return;
    }
    if (unit == u' ' || unit.isPrint()) {
        painter_.drawText(origin, unit);
        return;
    }
    constexpr int dot = 2;
    const QPointF centre = origin + QPointF(places_.width(), -painter_.fontMetrics().xHeight()) / 2;
    painter_.fillRect(QRect(centre.toPoint(), QSize(dot, dot)), painter_.pen().color());
}

void GridPainter::paintCursor(const QRect &cell) const {
    constexpr int focusedWidth = 2;
    painter_.setPen(Qt::NoPen);
    const QBrush brush = palette_.brush(QPalette::Highlight);
    const int width = view_.hasFocus() ? focusedWidth : 1;
    const QRegion frame = QRegion(cell) - cell.adjusted(width, width, -width, -width);
    for (const QRect &side : frame)
        painter_.fillRect(side, brush);
}
