// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/OrderBox.h"

#include "base/Units.h"
#include "widgets/FixedFont.h"
#include "widgets/PlainToolTip.h"

#include "ui_OrderBox.h"

#include <QRegularExpressionValidator>

#include <array>
#include <cstddef>

namespace {

/// The entries of the choices, in their order.
constexpr std::array<Lanes, 4> chipEntries = {{{1, 1}, {2, 1}, {4, 1}, {2, 2}}};
constexpr std::array<int, 3> swapEntries = {1, 2, 4};

} // namespace

OrderBox::OrderBox(QWidget *parent)
    : QGroupBox(parent), controls_(std::make_unique<Ui::OrderBox>()) {
    Ui::OrderBox &c = *controls_;
    c.setupUi(this);
    c.chips->addItems({tr("One"), tr("Two: even, odd"), tr("Four"), tr("Two of 16 bits")});
    c.lowByte->addItems({tr("First"), tr("Last")});
    c.swap->addItems({tr("No"), tr("In each 16 bits"), tr("In each 32 bits")});
    c.filled->setFont(fixedFont());
    // No numbers with group marks: those depend on the language.
    static const QRegularExpression number(QStringLiteral("[0-9]{0,7}"));
    c.filled->setValidator(new QRegularExpressionValidator(number, c.filled));
    connect(c.chipSize, &QPushButton::clicked, this,
            [this] { controls_->filled->setText(QString::number(chip_.bytes / kibibyte)); });
    for (const QComboBox *box : {c.chips, c.lowByte, c.swap})
        connect(box, &QComboBox::currentIndexChanged, this, &OrderBox::showState);
    connect(c.bits, &QCheckBox::toggled, this, &OrderBox::showState);
    connect(c.filled, &QLineEdit::textChanged, this, &OrderBox::showState);
}

OrderBox::~OrderBox() = default;

void OrderBox::setUp(Way way, const ChipSize &chip) {
    Ui::OrderBox &c = *controls_;
    way_ = way;
    c.lowByteLabel->setVisible(way == Way::Split);
    c.lowByte->setVisible(way == Way::Split);
    setChip(chip);
    showState();
}

void OrderBox::setChip(const ChipSize &chip) {
    chip_ = chip;
    QPushButton &button = *controls_->chipSize;
    const bool isWholeKib = chip.bytes > 0 && chip.bytes % kibibyte == 0;
    button.setEnabled(isWholeKib);
    setPlainToolTip(button, isWholeKib
                                ? tr("Fill a chip as it stands under Device: %1 has %2")
                                      .arg(chip.name, chipSizeWords(chip.bytes))
                                : tr("Fill a chip as it stands under Device, once its size is "
                                     "known"));
}

Lanes OrderBox::lanes() const {
    return chipEntries.at(std::size_t(controls_->chips->currentIndex()));
}

bool OrderBox::isLowByteLast() const {
    return controls_->lowByte->currentIndex() == 1;
}

Arrangement OrderBox::arrangement() const {
    const Ui::OrderBox &c = *controls_;
    Arrangement arrangement;
    (way_ == Way::Join ? arrangement.joined : arrangement.split) = lanes();
    arrangement.swapped = swapEntries.at(std::size_t(c.swap->currentIndex()));
    arrangement.bitsReversed = c.bits->isChecked();
    arrangement.filled = c.filled->text().toLongLong() * kibibyte;
    return arrangement;
}

void OrderBox::showState() {
    controls_->lowByte->setEnabled(lanes().parts > 1);
    controls_->picture->setArrangement(arrangement(), partNames(lanes()));
    emit changed();
}
