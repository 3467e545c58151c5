// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/ChipWiring.h"

#include "app/MainWindow.h"
#include "app/NextStepButtons.h"
#include "control/AppDelegate.h"
#include "devices/ChipInquiry.h"
#include "devices/ImageFit.h"

#include "ui_MainWindow.h"

#include <optional>

namespace {

/// What stands in the field before it is all typed may be another program's path.
void holdWhileTyped(QLineEdit *tool, ChipInquiry &inquiry) {
    inquiry.setHold([tool] { return tool->hasFocus() && tool->isModified(); });
    QObject::connect(tool, &QLineEdit::editingFinished, &inquiry, [tool, &inquiry] {
        tool->setModified(false);
        inquiry.lookAnew();
    });
}

} // namespace

void wireChip(MainWindow &window, AppDelegate &delegate, ChipInquiry &inquiry,
              const NextStepButtons &steps) {
    Ui::MainWindow &c = window.controls();
    holdWhileTyped(c.miniproLocationField, inquiry);
    const auto fit = [&delegate, &inquiry] {
        return fitOf(delegate.state().output_data, inquiry.known());
    };
    const auto show = [&c, &inquiry, fit] {
        const std::optional<ImageFit> now = fit();
        c.chipFacts->say(inquiry.known(), now);
        c.btn_pad_to_chip->setEnabled(now && now->padTo);
    };
    QObject::connect(&inquiry, &ChipInquiry::changed, c.chipFacts, show);
    QObject::connect(&delegate, &AppDelegate::imageToBurnChanged, c.chipFacts, show);
    QObject::connect(c.btn_pad_to_chip, &QPushButton::clicked, &delegate, [fit, &steps] {
        const std::optional<ImageFit> now = fit();
        if (now && now->padTo)
            steps.buttonFor(*now->padTo).run();
    });
}
