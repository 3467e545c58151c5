// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ViewZoom.h"

#include <QFontInfo>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr std::array steps = {
    ViewZoom::smallest, 50, 60, 70, 80, 90, ViewZoom::usual, 110, 125, 150, 175, 200, 250,
    ViewZoom::largest};

} // namespace

ViewZoom::ViewZoom(QAbstractScrollArea &view, QObject *parent)
    : QObject(parent), view_(view), points_(QFontInfo(view.font()).pointSizeF()) {
    view.viewport()->installEventFilter(this);
}

void ViewZoom::setPercent(int percent) {
    percent = std::clamp(percent, smallest, largest);
    if (percent == percent_)
        return;
    percent_ = percent;
    QFont font = view_.font();
    font.setPointSizeF(points_ * percent / usual);
    view_.setFont(font);
    emit changed(percent);
}

void ViewZoom::step(int direction) {
    const auto larger = std::upper_bound(steps.begin(), steps.end(), percent_);
    const auto same = std::lower_bound(steps.begin(), steps.end(), percent_);
    if (direction > 0 && larger != steps.end())
        setPercent(*larger);
    if (direction < 0 && same != steps.begin())
        setPercent(*std::prev(same));
}

// A touch pad turns a wheel in many small pieces.
void ViewZoom::turnWheel(int angle) {
    turned_ += angle;
    for (; turned_ >= QWheelEvent::DefaultDeltasPerStep;
         turned_ -= QWheelEvent::DefaultDeltasPerStep)
        enlarge();
    for (; turned_ <= -QWheelEvent::DefaultDeltasPerStep;
         turned_ += QWheelEvent::DefaultDeltasPerStep)
        reduce();
}

bool ViewZoom::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Wheel) {
        const auto *wheel = static_cast<QWheelEvent *>(event);
        if (wheel->modifiers().testFlag(Qt::ControlModifier)) {
            turnWheel(wheel->angleDelta().y());
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
