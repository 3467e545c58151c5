// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/WindowFit.h"

#include <QDialog>
#include <QScreen>
#include <QScrollArea>

#include <algorithm>

namespace {

constexpr int usualLetters = 84;

} // namespace

void growToShow(QDialog &window, const QScrollArea &column) {
    constexpr QSize frame(16, 48);
    const int around = window.sizeHint().height() - column.sizeHint().height();
    const int usual = usualLetters * window.fontMetrics().averageCharWidth();
    const QSize whole(std::max(usual, window.sizeHint().width()),
                      around + column.widget()->sizeHint().height());
    const QSize room = window.screen()->availableSize() - frame;
    window.resize(whole.expandedTo(window.size()).boundedTo(room));
}
