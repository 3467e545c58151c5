// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/RunProgressView.h"

#include "tool/ScriptedMiniPro.h"
#include "views/StepWords.h"
#include "widgets/BusyIndicator.h"

#include <optional>

RunProgressView::RunProgressView(BusyIndicator &indicator, QObject *parent)
    : QObject(parent), indicator_(indicator) {}

void RunProgressView::follow(ScriptedMiniPro *run, const std::function<void()> &show) {
    disconnect(said_);
    said_ = connect(run, &ScriptedMiniPro::said, this, show);
}

void RunProgressView::follow(ScriptedMiniPro *run) {
    follow(run, [this, run] {
        const RunProgress progress = run->progress();
        indicator_.showStep(wordsForStep(progress), progress.done);
    });
}

void RunProgressView::followSearch(ScriptedMiniPro *run) {
    follow(run, [this] { indicator_.showStep(wordsForSearch(), std::nullopt); });
}
