// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/FillWindow.h"

#include "blocks/PasteWords.h"
#include "image/AddressWords.h"
#include "image/BlockWords.h"
#include "image/PastedText.h"
#include "image/TypedRange.h"
#include "widgets/Announcement.h"
#include "widgets/FixedFont.h"

#include "ui_FillWindow.h"

#include <QRandomGenerator>

#include <utility>
#include <variant>

FillWindow::FillWindow(qint64 imageSize, QWidget *window)
    : QDialog(window), controls_(std::make_unique<Ui::FillWindow>()), imageSize_(imageSize) {
    Ui::FillWindow &c = *controls_;
    c.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("fill"));
    setWindowTitle(tr("Fill"));
    const QFont fixed = fixedFont();
    for (QLineEdit *field : {c.first, c.last, c.pattern})
        field->setFont(fixed);
    connectControls();
    showState();
}

FillWindow::~FillWindow() = default;

void FillWindow::connectControls() {
    const Ui::FillWindow &c = *controls_;
    for (const QLineEdit *field : {c.first, c.last, c.pattern})
        connect(field, &QLineEdit::textChanged, this, &FillWindow::showState);
    connect(c.random, &QCheckBox::toggled, this, &FillWindow::showState);
    connect(c.fillButton, &QPushButton::clicked, this, &FillWindow::fill);
    connect(c.cancelButton, &QPushButton::clicked, this, &FillWindow::reject);
}

void FillWindow::offer(ByteRange bytes, qint64 cursor) {
    const bool isEmpty = bytes.length == 0;
    cursor_ = cursor;
    controls_->first->setText(isEmpty ? QString() : addressWords(bytes.offset));
    controls_->last->setText(isEmpty ? QString() : addressWords(bytes.end() - 1));
    controls_->pattern->selectAll();
    (isEmpty ? controls_->first : controls_->pattern)->setFocus();
}

void FillWindow::setImageSize(qint64 size) {
    imageSize_ = size;
    showState();
}

Result<ByteRange, QString> FillWindow::range() const {
    const TypedRange typed = {controls_->first->text(), controls_->last->text(),
                              TypedRange::Until::Address};
    const auto range = bytesOf(typed, cursor_, imageSize_);
    if (!range)
        return rangeTroubleWords(*range.failure(), typed, imageSize_);
    return *range;
}

Result<QByteArray, QString> FillWindow::pattern() const {
    PastedText text(controls_->pattern->text());
    while (!text.advance(text.size() + 1)) {
    }
    auto bytes = text.result();
    if (const PasteTrouble *trouble = bytes.failure())
        return trouble->kind == PasteTrouble::Kind::NoBytes ? tr("There is no byte to fill with.")
                                                            : pasteTroubleWords(*trouble);
    return *std::move(bytes);
}

Result<FillWindow::Wanted, QString> FillWindow::wanted() const {
    const auto where = range();
    if (!where)
        return *where.failure();
    const QString whole = tr("Will fill %1.").arg(bytesAtWords(*where));
    if (controls_->random->isChecked())
        return Wanted{*where, RandomBytes{}, whole};
    const auto repeated = pattern();
    if (!repeated)
        return *repeated.failure();
    const QString part =
        tr("Will fill %1 with the beginning of the pattern.").arg(bytesAtWords(*where));
    return Wanted{*where, RepeatedBytes{*repeated},
                  repeated->size() > where->length ? part : whole};
}

void FillWindow::showState() {
    const Ui::FillWindow &c = *controls_;
    const auto now = wanted();
    c.pattern->setEnabled(!c.random->isChecked());
    c.result->setText(now ? now->words : *now.failure());
    c.fillButton->setEnabled(bool(now));
}

// Assistive technology reaches a button that is off all the same.
void FillWindow::fill() {
    auto now = wanted();
    if (!now)
        return;
    if (auto *random = std::get_if<RandomBytes>(&now->content))
        random->seed = QRandomGenerator::global()->generate();
    emit chosen(now->where, now->content);
}

void FillWindow::showProblem(const QString &sentence) {
    Announcement::showIn(*controls_->result, sentence);
}
