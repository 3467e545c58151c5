// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/Messages.h"
#include "control/VerdictWords.h"

#include <QObject>

#include <functional>
#include <optional>
#include <utility>

class RunLog;

/// Keeps the verdict on the newest run in the message line, worded by what is shown.
class VerdictLine final : public QObject {
    Q_OBJECT

public:
    /// What is shown at the moment of the call; nothing while it is about to change, as it is while
    /// the tool runs.
    using Ask = std::function<std::optional<ShownNow>()>;

    /// Makes the button that lets the user take a step.
    using Offer = std::function<Messages::Action(const NextStep &step)>;

    /// \a runs and \a messages must live longer than this object, and what \a ask uses.
    VerdictLine(const RunLog &runs, Messages &messages, Ask ask, QObject *parent = nullptr);

    /// Verdicts get the buttons that \a offer makes; none without it.
    void setOffer(Offer offer) { offer_ = std::move(offer); }

    /// Compares the verdict with what is shown now.
    void refresh();

private:
    void showNewest();

    const RunLog &runs_;
    Messages &messages_;
    Ask ask_;
    Offer offer_;
    /// As the line has it: what stands there already is not said again.
    QString shown_;
    /// Of the file that a Write would hand over, when it was seen last since that run.
    QString seenMark_;
};
