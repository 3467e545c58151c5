// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/RepeatedPress.h"

#include <QApplication>

bool RepeatedPress::confirms(const QString &thing, Presser presser) {
    const bool asked = asked_ == thing;
    const int interval = presser == Presser::Hand ? QApplication::doubleClickInterval() : 0;
    if (asked && sinceAsked_.elapsed() >= interval) {
        forget();
        return true;
    }
    if (!asked) {
        asked_ = thing;
        sinceAsked_.start();
    }
    return false;
}
