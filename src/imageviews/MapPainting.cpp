// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/MapPainting.h"

#include "widgets/Palette.h"

#include <QBitmap>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <array>

namespace {

constexpr int tile = 4; // pixels
constexpr int lineWidth = 2;
constexpr int haloWidth = 1;
/// The bar of what differs takes this part of the width.
constexpr int barShare = 3;

/// A texture of four rows, the lowest four bits of each are its pixels.
using Texture = std::array<uchar, tile>;

constexpr Texture dashes{0b0111, 0, 0, 0};
constexpr Texture dots{0b0011, 0b0011, 0b1100, 0b1100};
constexpr Texture hatching{0b0111, 0b1011, 0b1101, 0b1110};

QBrush brushOf(const QColor &ink, const Texture &texture) {
    return {ink, QBitmap::fromData(QSize(tile, tile), texture.data(), QImage::Format_MonoLSB)};
}

QBrush brushFor(BlockClass looks, const QPalette &palette) {
    switch (looks) {
    case BlockClass::Blank:
        break;
    case BlockClass::Zero:
        return brushOf(faintMarkColor(palette), dashes);
    case BlockClass::Text:
        return brushOf(textMarkColor(palette), dots);
    case BlockClass::Code:
        return brushOf(codeMarkColor(palette), hatching);
    }
    return Qt::NoBrush;
}

} // namespace

void paintCell(QPainter &painter, const QRect &place, const MapCell &cell, const QPalette &palette,
               bool mirrored) {
    if (cell.looks) {
        painter.fillRect(place, palette.color(QPalette::Base));
        painter.fillRect(place, brushFor(*cell.looks, palette));
    }
    if (!cell.differs)
        return;
    const int width = std::max(1, place.width() / barShare);
    QRect bar(place.left(), place.top(), width + haloWidth, place.height());
    if (mirrored)
        bar.moveRight(place.right());
    painter.fillRect(bar, palette.color(QPalette::Base));
    painter.fillRect(mirrored ? bar.adjusted(haloWidth, 0, 0, 0)
                              : bar.adjusted(0, 0, -haloWidth, 0),
                     differenceTextColor(palette));
}

void paintViewFrame(QPainter &painter, const QRect &place, const QPalette &palette) {
    const int last = viewFrameWidth() - 1;
    for (int line = 0; line <= last; ++line) {
        const bool isHalo = line == 0 || line == last;
        painter.setPen(palette.color(isHalo ? QPalette::Base : QPalette::Text));
        painter.drawRect(place.adjusted(line, line, -line - 1, -line - 1));
    }
}

int viewFrameWidth() {
    return lineWidth + 2 * haloWidth;
}
