// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/PartList.h"

#include "exchange/OrderWords.h"
#include "image/BlockWords.h"
#include "inspect/ImageFacts.h"

#include "ui_PartList.h"

#include <QFileInfo>

#include <algorithm>

PartList::PartList(QWidget *parent) : QWidget(parent), controls_(std::make_unique<Ui::PartList>()) {
    const Ui::PartList &c = *controls_;
    controls_->setupUi(this);
    const int frame = 2 * c.list->frameWidth();
    c.list->setMinimumHeight((Lanes::maxParts + 1) * fontMetrics().height() + frame);
    connect(c.list, &QListWidget::currentRowChanged, this, &PartList::showState);
    connect(c.addButton, &QPushButton::clicked, this, &PartList::addAsked);
    connect(c.removeButton, &QPushButton::clicked, this, &PartList::remove);
    connect(c.upButton, &QPushButton::clicked, this, [this] { move(-1); });
    connect(c.downButton, &QPushButton::clicked, this, [this] { move(1); });
}

PartList::~PartList() = default;

void PartList::setImported(const QString &path) {
    parts_ = {{path, nullptr, true}};
    controls_->list->addItem(QString());
    controls_->list->setCurrentRow(0);
    showState();
}

void PartList::setImportedBytes(const ByteBuffer &bytes) {
    for (Part &part : parts_)
        if (part.isTheImported)
            part.bytes = bytes;
}

bool PartList::has(const QString &path) const {
    return std::any_of(parts_.begin(), parts_.end(),
                       [&path](const Part &part) { return part.path == path; });
}

void PartList::add(const QString &path, const ByteBuffer &bytes) {
    parts_.append({path, bytes});
    controls_->list->addItem(QString());
    controls_->list->setCurrentRow(int(parts_.size()) - 1);
    emit changed();
}

QList<qint64> PartList::lengths() const {
    QList<qint64> lengths;
    for (const Part &part : parts_)
        lengths.append(lengthOf(part.bytes));
    return lengths;
}

void PartList::showFacts(const Lanes &lanes, const QList<quint32> &checksums) {
    for (int at = 0; at < parts_.size(); ++at) {
        QStringList words = {QFileInfo(parts_[at].path).fileName(),
                             sizeWords(lengthOf(parts_[at].bytes))};
        if (at < checksums.size())
            words << tr("CRC-32 %1").arg(crc32Digits(checksums[at]));
        const QString name = at < lanes.parts ? partName(lanes, at) : tr("not joined");
        controls_->list->item(at)->setText(
            tr("%1: %2").arg(name, words.join(QStringLiteral(", "))));
    }
    showState();
}

// Assistive technology reaches a button that is off all the same.
void PartList::remove() {
    const int row = controls_->list->currentRow();
    if (row < 0 || parts_[row].isTheImported)
        return;
    parts_.removeAt(row);
    delete controls_->list->takeItem(row);
    emit changed();
}

void PartList::move(int by) {
    const int row = controls_->list->currentRow();
    if (row < 0 || row + by < 0 || row + by >= parts_.size())
        return;
    parts_.move(row, row + by);
    controls_->list->setCurrentRow(row + by);
    emit changed();
}

void PartList::showState() {
    const Ui::PartList &c = *controls_;
    const int row = c.list->currentRow();
    const bool isPart = row >= 0 && row < parts_.size();
    c.addButton->setEnabled(parts_.size() < Lanes::maxParts);
    c.removeButton->setEnabled(isPart && !parts_[row].isTheImported);
    c.upButton->setEnabled(isPart && row > 0);
    c.downButton->setEnabled(isPart && row + 1 < parts_.size());
}
