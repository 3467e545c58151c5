// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/LanePicture.h"

#include "orders/Arrangement.h"
#include "widgets/Palette.h"
#include "widgets/PlainToolTip.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

/// The measures of the picture, in pixels; all depend on the font and the width that there is.
struct Measures {
    Measures(const QFontMetrics &font, int width)
        : row(font.height() + 2),
          caption(font.height()),
          flow(2 * font.height()),
          gap(row / 2),
          box((width - 1 - (Lanes::maxParts - 1) * gap) / shownBytes) {}

    int row;     ///< height of a byte
    int caption; ///< of a part's name
    int flow;    ///< height of the lines
    int gap;     ///< between two parts
    int box;     ///< width of a byte

    int height() const { return 2 * caption + 2 * row + flow + 1; }
};

/// One row of bytes, part beside part.
struct Row {
    const QList<QList<int>> &parts;
    int top;

    QRect boxAt(const Measures &m, qsizetype part, qsizetype at) const {
        const auto before = int(part * parts.first().size() + at);
        const int spare = (Lanes::maxParts - int(parts.size())) * m.gap / 2;
        return {spare + before * m.box + int(part) * m.gap, top, m.box, m.row};
    }
    /// The place of \a byte.
    QRect boxOf(const Measures &m, int byte) const {
        for (qsizetype part = 0; part < parts.size(); ++part)
            if (const qsizetype at = parts[part].indexOf(byte); at >= 0)
                return boxAt(m, part, at);
        return {};
    }
};

/// The ink of a part; that of text where there is only one.
QColor inkOf(qsizetype part, qsizetype parts, const QPalette &palette) {
    if (parts == 1)
        return palette.color(QPalette::Text);
    const std::array inks = {codeMarkColor(palette), warningTextColor(palette),
                             textMarkColor(palette), differenceTextColor(palette)};
    return inks[std::size_t(part) % inks.size()];
}

void drawRow(QPainter &painter, const Measures &m, const Row &row, const LaneFlow &flow,
             const QPalette &palette) {
    for (qsizetype part = 0; part < row.parts.size(); ++part)
        for (qsizetype at = 0; at < row.parts[part].size(); ++at) {
            const QRect box = row.boxAt(m, part, at);
            painter.setPen(inkOf(part, row.parts.size(), palette));
            painter.setBrush(palette.color(QPalette::Base));
            painter.drawRect(box);
            painter.setPen(palette.color(QPalette::Text));
            painter.drawText(box, Qt::AlignCenter, byteName(flow, row.parts[part][at]));
        }
}

void drawCaptions(QPainter &painter, const Measures &m, const Row &row, int top,
                  const QStringList &names) {
    for (qsizetype part = 0; part < row.parts.size(); ++part) {
        const QRect first = row.boxAt(m, part, 0);
        const QRect place(first.left(), top, int(row.parts[part].size()) * m.box, m.caption);
        painter.drawText(place, Qt::AlignCenter, names.value(part));
    }
}

/// A line for each byte, in the ink of the part that it comes from or goes to.
void drawLines(QPainter &painter, const Measures &m, const Row &from, const Row &to,
               const QPalette &palette) {
    const Row &many = to.parts.size() > 1 ? to : from;
    for (qsizetype part = 0; part < many.parts.size(); ++part)
        for (const int byte : many.parts[part]) {
            const QRect source = from.boxOf(m, byte);
            const QRect goal = to.boxOf(m, byte);
            painter.setPen(inkOf(part, many.parts.size(), palette));
            painter.drawLine(QPointF(source.center().x(), source.bottom() + 1),
                             QPointF(goal.center().x(), goal.top()));
        }
}

} // namespace

LanePicture::LanePicture(QWidget *parent) : QWidget(parent), flow_(flowOf({})) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void LanePicture::setArrangement(const Arrangement &arrangement, const QStringList &names) {
    flow_ = flowOf(arrangement);
    names_ = names;
    const QString words = flowWords(arrangement, names);
    setAccessibleDescription(words);
    setPlainToolTip(*this, words);
    update();
}

QSize LanePicture::sizeHint() const {
    const int byte = fontMetrics().horizontalAdvance(QStringLiteral("D00"));
    const Measures m(fontMetrics(), 0);
    return {shownBytes * byte + (Lanes::maxParts - 1) * m.gap + 1, m.height()};
}

QSize LanePicture::minimumSizeHint() const {
    const int byte = fontMetrics().horizontalAdvance(QStringLiteral("D0"));
    const Measures m(fontMetrics(), 0);
    return {shownBytes * byte + (Lanes::maxParts - 1) * m.gap + 1, m.height()};
}

void LanePicture::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LeftToRight);
    const Measures m(fontMetrics(), std::min(width(), sizeHint().width()));
    const Row from{flow_.from, m.caption};
    const Row to{flow_.to, m.caption + m.row + m.flow};
    painter.setRenderHint(QPainter::Antialiasing);
    drawLines(painter, m, from, to, palette());
    painter.setRenderHint(QPainter::Antialiasing, false);
    drawRow(painter, m, from, flow_, palette());
    drawRow(painter, m, to, flow_, palette());
    painter.setPen(palette().color(QPalette::WindowText));
    if (flow_.from.size() > 1)
        drawCaptions(painter, m, from, 0, names_);
    if (flow_.to.size() > 1)
        drawCaptions(painter, m, to, to.top + m.row, names_);
}
