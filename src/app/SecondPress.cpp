// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/SecondPress.h"

#include <QApplication>

namespace {

const QString topic = QStringLiteral("press");

} // namespace

bool SecondPress::confirms(const Question &question, Presser presser) {
    const bool asked = asked_ == question.thing;
    const int interval = presser == Presser::Hand ? QApplication::doubleClickInterval() : 0;
    if (asked && sinceAsked_.elapsed() >= interval) {
        withdraw();
        return true;
    }
    if (!asked) {
        asked_ = question.thing;
        sinceAsked_.start();
    }
    line_->setNotice(topic, MessageLine::Severity::Warning, question.sentence, question.action);
    return false;
}

void SecondPress::withdraw() {
    asked_.clear();
    if (line_)
        line_->clearNotice(topic);
}
