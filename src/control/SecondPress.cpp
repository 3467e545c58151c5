// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/SecondPress.h"

#include <QApplication>

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
    messages_.say(Topic::SecondPress, question.sentence, question.action);
    return false;
}

void SecondPress::withdraw() {
    asked_.clear();
    messages_.takeBack(Topic::SecondPress);
}
