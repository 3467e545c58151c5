// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/SecondPress.h"

bool SecondPress::confirms(const Question &question, Presser presser) {
    const bool confirmed = press_.confirms(question.thing, presser);
    if (confirmed)
        messages_.takeBack(Topic::SecondPress);
    else
        messages_.say(Topic::SecondPress, question.sentence, question.action);
    return confirmed;
}

void SecondPress::withdraw() {
    press_.forget();
    messages_.takeBack(Topic::SecondPress);
}
