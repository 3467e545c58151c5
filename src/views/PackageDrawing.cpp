// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/PackageDrawing.h"

#include "widgets/Palette.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace {

QString countText(int failed, int runs) {
    return QStringLiteral("%1/%2").arg(QString::number(failed), QString::number(runs));
}

/// Width of a count of \a runs, in pixels; 0 for a single test.
int countWidth(QFont font, int runs) {
    if (runs == 0)
        return 0;
    font.setBold(true);
    return QFontMetrics(font).horizontalAdvance(countText(runs, runs));
}

/// The measures of a package, in pixels; all depend on the font.
struct Measures {
    Measures(const QFont &font, int plannedRuns)
        : row(QFontMetrics(font).height()),
          number(QFontMetrics(font).horizontalAdvance(QStringLiteral("400"))),
          count(countWidth(font, plannedRuns)) {}

    int row;    ///< height of a pin, and width of its sign, letter and metal
    int number; ///< width of a pin's number
    int count;  ///< width of what stands beside its sign
    int margin() const { return row / 3; }
    int gap() const { return row / 4; }
    int leg() const { return row * 2 / 3; }
    int body() const { return 2 * number + 2 * row + 2 * gap(); }
    int countAndGap() const { return count > 0 ? count + gap() : 0; }
    int side() const { return countAndGap() + 2 * row + gap() + leg(); }
};

/// Where the parts of one pin are.
struct PinPlaces {
    QRect count;
    QRect sign;
    QRect letter;
    QRect leg;
    QRect number;
};

class PackagePainter {
public:
    PackagePainter(QPainter &painter, const QRect &place, const PackagePicture &picture,
                   const QPalette &palette)
        : painter_(painter),
          palette_(palette),
          picture_(picture),
          measures_(painter.font(), picture.plannedRuns),
          place_(place) {}

    void draw();

private:
    void drawCaption();
    void drawBody(qsizetype rows);
    void drawPin(const TestedPin &pin, const PinPlaces &places);
    void drawSign(PinState state, const QRect &place);
    void drawCount(int pin, const QRect &place, Qt::Alignment alignment);
    void drawText(const QRect &place, Qt::Alignment alignment, const QString &text, bool bold);
    QRect body(qsizetype rows) const;
    PinPlaces placesOf(qsizetype pin, qsizetype pins) const;
    QColor colorOf(PinState state) const;

    QPainter &painter_;
    const QPalette &palette_;
    const PackagePicture &picture_;
    const Measures measures_;
    const QRect place_;
};

void PackagePainter::draw() {
    painter_.setRenderHint(QPainter::Antialiasing);
    drawCaption();
    drawBody(picture_.pins.size() / 2);
    for (qsizetype pin = 0; pin < picture_.pins.size(); ++pin)
        drawPin(picture_.pins[pin], placesOf(pin, picture_.pins.size()));
}

void PackagePainter::drawCaption() {
    const QRect line(place_.left() + measures_.margin(), place_.top() + measures_.margin(),
                     place_.width() - 2 * measures_.margin(), measures_.row);
    painter_.setPen(palette_.color(QPalette::Text));
    painter_.drawText(
        line, Qt::AlignCenter,
        painter_.fontMetrics().elidedText(picture_.caption, Qt::ElideMiddle, line.width()));
}

QRect PackagePainter::body(qsizetype rows) const {
    const int top = place_.top() + 2 * measures_.margin() + measures_.row;
    return {place_.left() + (place_.width() - measures_.body()) / 2, top, measures_.body(),
            int(rows + 1) * measures_.row};
}

void PackagePainter::drawBody(qsizetype rows) {
    const QRect outline = body(rows);
    const int radius = measures_.row / 2;
    QPainterPath notch;
    notch.addEllipse(QPoint(outline.center().x(), outline.top()), radius, radius);
    QPainterPath package;
    package.addRect(outline);
    painter_.setPen(palette_.color(QPalette::Text));
    painter_.setBrush(palette_.color(QPalette::AlternateBase));
    painter_.drawPath(package.subtracted(notch));
    const int dot = measures_.row / 6;
    const QPoint mark(outline.left() + measures_.gap() + measures_.number,
                      outline.top() + measures_.row);
    painter_.setBrush(palette_.color(QPalette::Text));
    painter_.drawEllipse(mark, dot, dot);
}

PinPlaces PackagePainter::placesOf(qsizetype pin, qsizetype pins) const {
    const QRect outline = body(pins / 2);
    const bool left = pin < pins / 2;
    const int row = int(left ? pin : pins - 1 - pin);
    const int top = outline.top() + measures_.row / 2 + row * measures_.row;
    // From the body outwards; both sides are mirror images.
    const auto place = [&](int distance, int width) {
        const int x = left ? outline.left() - distance - width : outline.right() + 1 + distance;
        return QRect(x, top, width, measures_.row);
    };
    const int gap = measures_.gap();
    const int letter = measures_.leg() + gap;
    return {place(letter + 2 * measures_.row + gap, measures_.count),
            place(letter + measures_.row, measures_.row), place(letter, measures_.row),
            place(0, measures_.leg()).adjusted(0, gap, 0, -gap),
            place(-measures_.number - gap, measures_.number)};
}

QColor PackagePainter::colorOf(PinState state) const {
    switch (state) {
    case PinState::Failed:
        return failureTextColor(palette_);
    case PinState::Good:
        return successTextColor(palette_);
    case PinState::Unchecked:
        break;
    }
    return palette_.color(QPalette::Text);
}

void PackagePainter::drawPin(const TestedPin &pin, const PinPlaces &places) {
    const bool failed = pin.state == PinState::Failed;
    painter_.setPen(colorOf(pin.state));
    painter_.setBrush(pin.state == PinState::Unchecked ? palette_.color(QPalette::Base)
                                                       : colorOf(pin.state));
    painter_.drawRect(places.leg);
    if (!pin.letter.isNull())
        drawText(places.letter, Qt::AlignCenter, pin.letter, failed);
    const bool left = places.leg.left() < places.number.left();
    drawText(places.number, Qt::AlignVCenter | (left ? Qt::AlignLeft : Qt::AlignRight),
             QString::number(pin.number), failed);
    drawSign(pin.state, places.sign);
    drawCount(pin.number, places.count, Qt::AlignVCenter | (left ? Qt::AlignRight : Qt::AlignLeft));
}

void PackagePainter::drawCount(int pin, const QRect &place, Qt::Alignment alignment) {
    if (const auto failed = picture_.failedRuns.find(pin); failed != picture_.failedRuns.end())
        drawText(place, alignment, countText(*failed, picture_.runs), true);
}

void PackagePainter::drawText(const QRect &place, Qt::Alignment alignment, const QString &text,
                              bool bold) {
    QFont font = painter_.font();
    const bool before = font.bold();
    font.setBold(bold || before);
    painter_.setFont(font);
    painter_.drawText(place, int(alignment), text);
    font.setBold(before);
    painter_.setFont(font);
}

void PackagePainter::drawSign(PinState state, const QRect &place) {
    if (state == PinState::Unchecked)
        return;
    const int inset = measures_.row / 4;
    const QRectF sign = QRectF(place).adjusted(inset, inset, -inset, -inset);
    QPainterPath path;
    if (state == PinState::Failed) {
        path.moveTo(sign.topLeft());
        path.lineTo(sign.bottomRight());
        path.moveTo(sign.topRight());
        path.lineTo(sign.bottomLeft());
    } else {
        path.moveTo(sign.left(), sign.center().y());
        path.lineTo(sign.left() + sign.width() / 3, sign.bottom());
        path.lineTo(sign.topRight());
    }
    painter_.strokePath(path, QPen(colorOf(state), double(measures_.row) / 9));
}

} // namespace

QSize packageSize(qsizetype pins, const QFont &font, int plannedRuns) {
    const Measures measures(font, plannedRuns);
    return {measures.body() + 2 * measures.side() + 2 * measures.margin(),
            3 * measures.margin() + int(pins / 2 + 2) * measures.row};
}

void drawPackage(QPainter &painter, const QRect &place, const PackagePicture &picture,
                 const QPalette &palette) {
    PackagePainter(painter, place, picture, palette).draw();
}
