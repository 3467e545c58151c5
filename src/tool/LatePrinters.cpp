// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/LatePrinters.h"

#include "tool/ScriptedMiniPro.h"

void LatePrinters::watch(ScriptedMiniPro *run) {
    connect(run, &ScriptedMiniPro::stillPrintingChanged, this,
            [this, run](bool printing) { take(run, printing); });
    connect(run, &QObject::destroyed, this, [this, run] { take(run, false); });
}

void LatePrinters::stop() {
    const QList<ScriptedMiniPro *> printing = printing_; // stopping one takes it off the list
    for (ScriptedMiniPro *run : printing)
        run->stop();
}

void LatePrinters::take(ScriptedMiniPro *run, bool printing) {
    const bool before = any();
    printing_.removeAll(run);
    if (printing)
        printing_.append(run);
    if (any() != before)
        emit anyChanged(any());
}
