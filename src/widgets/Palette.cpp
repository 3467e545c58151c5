// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/Palette.h"

#include <QList>

#include <algorithm>
#include <cmath>

namespace {

/// One meaning, with its colour on light and on dark backgrounds.
struct TextHue {
    QColor onLight;
    QColor onDark;
};

const TextHue failureHue{QColor(0xb8, 0x00, 0x14), QColor(0xff, 0x7a, 0x70)};
const TextHue warningHue{QColor(0x8a, 0x4b, 0x00), QColor(0xff, 0xc1, 0x4d)};
const TextHue successHue{QColor(0x0b, 0x6b, 0x2e), QColor(0x6f, 0xd6, 0x8c)};
const TextHue differenceHue{QColor(0x86, 0x16, 0x9c), QColor(0xe9, 0xa6, 0xff)};
const TextHue faintHue{QColor(0x6b, 0x6b, 0x6b), QColor(0x95, 0x95, 0x95)};
const TextHue textMarkHue{QColor(0x00, 0x6a, 0x6a), QColor(0x63, 0xd2, 0xd2)};
const TextHue codeMarkHue{QColor(0x0b, 0x4f, 0xa8), QColor(0x8f, 0xbd, 0xff)};
const QColor foundHue(0xff, 0xd8, 0x3d);

double linearized(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double relativeLuminance(const QColor &color) {
    return 0.2126 * linearized(color.redF()) + 0.7152 * linearized(color.greenF()) +
           0.0722 * linearized(color.blueF());
}

double worstContrast(const QColor &color, const QPalette &palette) {
    double worst = contrastRatio(color, palette.color(QPalette::Base));
    for (const QPalette::ColorRole role : {QPalette::AlternateBase, QPalette::Window})
        worst = std::min(worst, contrastRatio(color, palette.color(role)));
    return worst;
}

/// A theme between light and dark leaves a colour too faint: it then moves towards black or white
/// no further than it must, so that it keeps as much of its hue as can be read.
QColor readable(const TextHue &hue, const QPalette &palette) {
    constexpr int steps = 16;
    const bool light = worstContrast(Qt::black, palette) >= worstContrast(Qt::white, palette);
    const QColor start = light ? hue.onLight : hue.onDark;
    const QColor end = light ? Qt::black : Qt::white;
    for (int step = 0; step < steps; ++step) {
        const QColor color = mixed(start, end, double(step) / steps);
        if (worstContrast(color, palette) >= smallestTextContrast)
            return color;
    }
    return end;
}

/// The Base colour, moved towards \a hue as far as all of \a texts can be read on it.
QColor ground(const QColor &hue, const QList<QColor> &texts, const QPalette &palette) {
    constexpr int steps = 16;
    const QColor base = palette.color(QPalette::Base);
    for (int step = steps * 3 / 4; step > 0; --step) {
        const QColor color = mixed(base, hue, double(step) / steps);
        if (std::all_of(texts.begin(), texts.end(), [&color](const QColor &text) {
                return contrastRatio(color, text) >= smallestTextContrast;
            }))
            return color;
    }
    return base;
}

} // namespace

double contrastRatio(const QColor &one, const QColor &other) {
    constexpr double flare = 0.05;
    const double a = relativeLuminance(one) + flare;
    const double b = relativeLuminance(other) + flare;
    return std::max(a, b) / std::min(a, b);
}

QColor mixed(const QColor &from, const QColor &to, double share) {
    const auto channel = [share](int a, int b) { return int(std::lround(a + (b - a) * share)); };
    return QColor(channel(from.red(), to.red()), channel(from.green(), to.green()),
                  channel(from.blue(), to.blue()));
}

QColor failureTextColor(const QPalette &palette) {
    return readable(failureHue, palette);
}

QColor warningTextColor(const QPalette &palette) {
    return readable(warningHue, palette);
}

QColor successTextColor(const QPalette &palette) {
    return readable(successHue, palette);
}

QColor differenceTextColor(const QPalette &palette) {
    return readable(differenceHue, palette);
}

QColor foundGroundColor(const QPalette &palette) {
    return ground(foundHue, {palette.color(QPalette::Text), differenceTextColor(palette)}, palette);
}

QColor selectedGroundColor(const QPalette &palette) {
    return ground(
        palette.color(QPalette::Highlight),
        {palette.color(QPalette::Text), differenceTextColor(palette), failureTextColor(palette)},
        palette);
}

QColor faintMarkColor(const QPalette &palette) {
    return readable(faintHue, palette);
}

QColor textMarkColor(const QPalette &palette) {
    return readable(textMarkHue, palette);
}

QColor codeMarkColor(const QPalette &palette) {
    return readable(codeMarkHue, palette);
}

QColor focusLineColor(const QPalette &palette) {
    const QColor own = palette.color(QPalette::Highlight);
    return readable({own, own}, palette);
}
