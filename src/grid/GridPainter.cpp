#include "grid/GridPainter.h"

#include "grid/GridView.h"
#include "widgets/Palette.h"

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
    constexpr double share = 0.65;
    const QColor text = palette.color(QPalette::Text);
    const QColor base = palette.color(QPalette::Base);
    const auto mixed = [](float one, float other) {
        return float(share) * one + float(1 - share) * other;
    };
    const QColor faint =
        QColor::fromRgbF(mixed(text.redF(), base.redF()), mixed(text.greenF(), base.greenF()),
                         mixed(text.blueF(), base.blueF()));
    const double contrast = std::min(contrastRatio(faint, base),
                                     contrastRatio(faint, palette.color(QPalette::AlternateBase)));
    return contrast >= smallestTextContrast ? faint : text;
}

QColor gridLineColor(const GridView &view) {
    QStyleOptionViewItem option;
    option.initFrom(&view);
    return QColor::fromRgba(
        static_cast<QRgb>(view.style()->styleHint(QStyle::SH_Table_GridLineColor, &option, &view)));
}

/// Space between the edge of a column and its text, in characters.
constexpr double paddingShare = 0.75;

bool isPlain(const QString &text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar unit) { return unit >= u' ' && unit <= u'~'; });
}

} // namespace

GridPainter::GridPainter(const GridView &view, QPainter &painter)
    : m_view(view),
      m_model(*view.gridModel()),
      m_painter(painter),
      m_palette(view.palette()),
      m_failedFont(view.font()),
      m_lineColor(gridLineColor(view)) {
    const bool active = view.isActiveWindow() && view.hasFocus();
    m_palette.setCurrentColorGroup(!view.isEnabled() ? QPalette::Disabled
                                   : active          ? QPalette::Active
                                                     : QPalette::Inactive);
    m_faintText = faintText(m_palette);
    m_failedFont.setBold(true);
    m_fixedPitch = QFontInfo(view.font()).fixedPitch();
    painter.setFont(view.font());
    const QFontMetrics metrics = view.fontMetrics();
    m_characterWidth = QFontMetricsF(view.font()).horizontalAdvance(u'0');
    m_padding = qRound(m_characterWidth * paddingShare);
    m_baseline = (view.rowHeight() - metrics.height()) / 2 + metrics.ascent();
}

void GridPainter::paintRow(int row, int top, const QRect &area) const {
    const QHeaderView &header = *m_view.header();
    const QModelIndex first = m_model.index(row, 0);
    const bool selected = m_view.selectionModel()->isSelected(first);
    const QModelIndex current = m_view.currentIndex();
    paintBackground(row, QRect(area.left(), top, area.width(), m_view.rowHeight()), selected);
    for (int column = 0; column < gridColumns; ++column) {
        const QRect cell(header.sectionViewportPosition(column), top, header.sectionSize(column),
                         m_view.rowHeight());
        const bool isCurrent = current.row() == row && current.column() == column;
        if (cell.intersects(area))
            paintCell(row, column, cell, {selected, isCurrent, isPinRow(row)});
    }
}

void GridPainter::paintBackground(int row, const QRect &line, bool selected) const {
    // The first row of a report numbers the pins: it goes on where the header ends.
    QPalette::ColorRole role = QPalette::Base;
    if (selected)
        role = QPalette::Highlight;
    else if (isPinRow(row))
        role = QPalette::Window;
    else if (m_view.alternatingRowColors() && row % 2 == 1)
        role = QPalette::AlternateBase;
    m_painter.fillRect(line, m_palette.brush(role));
}

bool GridPainter::isPinRow(int row) const {
    return row == 0 && m_model.heading() == GridHeading::Pins;
}

void GridPainter::paintCell(int row, int column, const QRect &cell, Look look) const {
    const CellValue value = m_model.cell(row, column);
    // On the colour of the selection, neither the cursor nor a failure could be told.
    if (look.selected && (look.current || value.failed))
        m_painter.fillRect(cell, m_palette.brush(QPalette::Base));
    paintText(value, column, cell, look);
    if (endsGroup(column)) {
        m_painter.setPen(m_lineColor);
        m_painter.drawLine(cell.topRight(), cell.bottomRight());
    }
    if (look.current)
        paintCursor(cell);
}

/// A line sets addresses, the halves of a row and the characters apart.
bool GridPainter::endsGroup(int column) const {
    constexpr int lastOfFirstHalf = firstByteColumn + bytesInRow / 2 - 1;
    if (m_model.heading() == GridHeading::Pins)
        return column == addressColumn;
    return column == addressColumn || column == lastOfFirstHalf || column == lastByteColumn;
}

QColor GridPainter::textColor(const CellValue &value, int column, Look look) const {
    if (value.failed)
        return failureTextColor(m_palette);
    if (look.selected && !look.current)
        return m_palette.color(QPalette::HighlightedText);
    if (look.onWindow)
        return m_palette.color(QPalette::WindowText);
    const bool isFrame =
        column == addressColumn || (isByteColumn(column) && value.text == QLatin1String("XX"));
    return isFrame ? m_faintText : m_palette.color(QPalette::Text);
}

void GridPainter::paintText(const CellValue &value, int column, const QRect &cell,
                            Look look) const {
    if (value.text.isEmpty())
        return;
    m_painter.setPen(textColor(value, column, look));
    if (column == charactersColumn) {
        paintCharacters(value.text, cell);
        return;
    }
    if (value.failed)
        m_painter.setFont(m_failedFont);
    const int width = widthOf(value.text);
    if (width > cell.width())
        m_painter.drawText(
            cell, Qt::AlignCenter,
            m_painter.fontMetrics().elidedText(value.text, Qt::ElideRight, cell.width()));
    else
        m_painter.drawText(QPoint(textLeft(column, cell, width), cell.top() + m_baseline),
                           value.text);
    if (value.failed)
        m_painter.setFont(m_view.font());
}

/// Addresses line up at their last digits, so that longer ones stand out to the left.
int GridPainter::textLeft(int column, const QRect &cell, int width) const {
    return column == addressColumn ? cell.right() + 1 - m_padding - width
                                   : cell.left() + (cell.width() - width) / 2;
}

/// Measuring a text costs as much as drawing it, and nearly all of them need not be measured.
int GridPainter::widthOf(const QString &text) const {
    return m_fixedPitch && isPlain(text) ? qCeil(double(text.size()) * m_characterWidth)
                                         : m_painter.fontMetrics().horizontalAdvance(text);
}

/// Draws unit by unit, each in its own place, so that no unit joins, reorders or widens its
/// neighbours and the characters stand in line with those of the other rows.
void GridPainter::paintCharacters(const QString &text, const QRect &cell) const {
    const QPointF start(cell.left() + m_padding, cell.top() + m_baseline);
    if (m_fixedPitch && isPlain(text))
        m_painter.drawText(start, text);
    else
        for (int place = 0; place < text.size(); ++place)
            paintUnit(text, place, start + QPointF(place * m_characterWidth, 0));
}

/// A unit that has no shape of its own gets a dot: fonts would fill the column with boxes.
void GridPainter::paintUnit(const QString &text, int place, const QPointF &origin) const {
    const QChar unit = text[place];
    const bool followsHigh = place > 0 && text[place - 1].isHighSurrogate();
    const bool precedesLow = place + 1 < text.size() && text[place + 1].isLowSurrogate();
    if (unit.isLowSurrogate() && followsHigh)
        return;
    if (unit.isHighSurrogate() && precedesLow) {
        m_painter.drawText(origin, text.mid(place, 2));
        return;
    }
    if (unit == u' ' || unit.isPrint()) {
        m_painter.drawText(origin, unit);
        return;
    }
    constexpr int dot = 2;
    const QPointF centre =
        origin + QPointF(m_characterWidth, -m_painter.fontMetrics().xHeight()) / 2;
    m_painter.fillRect(QRect(centre.toPoint(), QSize(dot, dot)), m_painter.pen().color());
}

void GridPainter::paintCursor(const QRect &cell) const {
    constexpr int focusedWidth = 2;
    m_painter.setPen(Qt::NoPen);
    const QBrush brush = m_palette.brush(QPalette::Highlight);
    const int width = m_view.hasFocus() ? focusedWidth : 1;
    const QRegion frame = QRegion(cell) - cell.adjusted(width, width, -width, -width);
    for (const QRect &side : frame)
        m_painter.fillRect(side, brush);
}
