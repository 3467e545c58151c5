// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/VerdictHeading.h"

#include "control/VerdictWords.h"
#include "language/RunLog.h"
#include "widgets/Icons.h"
#include "widgets/PlainToolTip.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

namespace {

QString iconOf(MessageLine::Severity severity) {
    switch (severity) {
    case MessageLine::Severity::Success:
        return QStringLiteral("succeeded");
    case MessageLine::Severity::Problem:
        return QStringLiteral("failed");
    case MessageLine::Severity::Warning:
    case MessageLine::Severity::Information:
        break;
    }
    return QStringLiteral("warning");
}

} // namespace

VerdictHeading::VerdictHeading(QWidget *parent)
    : QWidget(parent), icon_(new QLabel(this)), words_(new QLabel(this)) {
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    icon_->setFixedSize(size, size);
    QFont bold = words_->font();
    bold.setBold(true);
    words_->setFont(bold);
    words_->setTextFormat(Qt::PlainText);
    // A device may have any name; the window keeps its width.
    words_->setMinimumWidth(1);
    words_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    icon_->hide();
    text_ = tr("No run yet");
    words_->setText(text_);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(icon_);
    row->addWidget(words_, 1);
}

void VerdictHeading::setRuns(const RunLog &runs) {
    runs_ = &runs;
    connect(&runs, &RunLog::added, this, &VerdictHeading::showNewest);
}

// The middle goes: the operation stands at the beginning, and names of devices differ at their
// ends.
void VerdictHeading::fitWords() {
    words_->setText(words_->fontMetrics().elidedText(text_, Qt::ElideMiddle, words_->width()));
}

void VerdictHeading::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    layout()->activate();
    fitWords();
}

void VerdictHeading::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && runs_)
        showNewest();
}

void VerdictHeading::showNewest() {
    if (runs_->records().isEmpty())
        return;
    const RunRecord &run = runs_->records().last();
    const MessageLine::Severity severity = severityOf(run);
    const QColor color = MessageLine::colorOf(severity, palette());
    icon_->setPixmap(coloredIcon(iconOf(severity), color).pixmap(icon_->size()));
    icon_->show();
    layout()->activate();
    text_ = headingOf(run);
    fitWords();
    words_->setAccessibleName(text_);
    setPlainToolTip(*words_, text_);
}
