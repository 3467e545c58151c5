// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/ExportWindow.h"

#include "base/Digits.h"
#include "exchange/FormatEntries.h"
#include "exchange/ImportWords.h"
#include "image/TypedAddress.h"
#include "imageviews/FactsWords.h"
#include "widgets/FixedFont.h"

#include "ui_ExportWindow.h"

#include <utility>

namespace {

/// The entries of the choice of images, in their order.
enum ImageEntry { ToBurnEntry, ReadEntry };

std::optional<qint64> addressIn(const QLineEdit &field) {
    const auto typed = typedAddress(field.text());
    if (!typed || typed->from != TypedAddress::From::Start ||
        typed->distance > std::numeric_limits<quint32>::max())
        return std::nullopt;
    return qint64(typed->distance);
}

QString hex(qint64 value) {
    return QString::number(value, hexadecimal).toUpper();
}

} // namespace

ExportWindow::ExportWindow(Images images, Image image, QWidget *window)
    : QDialog(window), controls_(std::make_unique<Ui::ExportWindow>()), images_(std::move(images)) {
    Ui::ExportWindow &c = *controls_;
    c.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("export"));
    setWindowTitle(tr("Export"));
    c.format->addItems(
        {formatWords(RecordFormat::IntelHex), formatWords(RecordFormat::SRecord), tr("Raw bytes")});
    c.image->addItems({tr("Data to burn"), tr("Data read from chip")});
    c.image->setCurrentIndex(image == Image::ToBurn ? ToBurnEntry : ReadEntry);
    const QFont fixed = fixedFont();
    for (QLineEdit *field : {c.first, c.last, c.offset})
        field->setFont(fixed);
    c.format->setFocus();
    connectControls();
    showState();
}

ExportWindow::~ExportWindow() = default;

void ExportWindow::connectControls() {
    const Ui::ExportWindow &c = *controls_;
    for (const QComboBox *box : {c.image, c.format})
        connect(box, &QComboBox::currentIndexChanged, this, &ExportWindow::showState);
    for (const QLineEdit *field : {c.first, c.last, c.offset})
        connect(field, &QLineEdit::textChanged, this, &ExportWindow::showState);
    connect(c.recordLength, &QSpinBox::valueChanged, this, &ExportWindow::showState);
    connect(c.exportButton, &QPushButton::clicked, this, &ExportWindow::write);
    connect(c.cancelButton, &QPushButton::clicked, this, &ExportWindow::reject);
    connect(&export_, &RecordExport::outOfMemory, this, [this] {
        showState();
        controls_->result->setText(tr("There is not enough memory for this file."));
    });
    connect(&export_, &RecordExport::written, this, [this](const QByteArray &text) {
        content_.bytes = text;
        showState();
        emit written(std::exchange(content_, {}));
    });
}

ExportWindow::Image ExportWindow::image() const {
    return controls_->image->currentIndex() == ToBurnEntry ? Image::ToBurn : Image::Read;
}

std::optional<RecordFormat> ExportWindow::format() const {
    return formatOf(controls_->format->currentIndex());
}

/// The chosen bytes of an image of \a length bytes; an empty field stands for its end.
std::optional<ByteRange> ExportWindow::range(qint64 length) const {
    const Ui::ExportWindow &c = *controls_;
    const auto first = c.first->text().isEmpty() ? std::optional<qint64>(0) : addressIn(*c.first);
    const auto last = c.last->text().isEmpty() ? std::optional(length - 1) : addressIn(*c.last);
    if (!first || !last || *first > *last || *last >= length)
        return std::nullopt;
    return ByteRange{*first, *last - *first + 1};
}

std::optional<ExportWindow::Choice> ExportWindow::choice() const {
    const auto chosen = range(lengthOf(images_(image())));
    if (!chosen)
        return std::nullopt;
    if (!format())
        return Choice{*chosen};
    const auto offset = addressIn(*controls_->offset);
    if (!offset || !fitsAddresses(*offset + chosen->offset, chosen->length))
        return std::nullopt;
    const RecordLayout layout{*format(), controls_->recordLength->value()};
    return Choice{*chosen, *offset + chosen->offset,
                  maxTextLength(layout, chosen->length) > largestRecordText};
}

/// Everything that is on, off or offered follows from the image and what has been chosen.
void ExportWindow::showState() {
    const Ui::ExportWindow &c = *controls_;
    const qint64 length = lengthOf(images_(image()));
    const auto chosen = choice();
    c.last->setPlaceholderText(length > 0 ? hex(length - 1) : QString());
    c.offset->setEnabled(format().has_value());
    c.recordLength->setEnabled(format().has_value());
    showRecordLength(chosen);
    c.result->setText(resultText(chosen));
    c.exportButton->setEnabled(chosen && !chosen->isTooLong && !export_.isWriting());
}

void ExportWindow::showRecordLength(const std::optional<Choice> &choice) {
    if (choice && format())
        controls_->recordLength->setMaximum(
            maxRecordLength(*format(), choice->address, choice->range.length));
}

QString ExportWindow::resultText(const std::optional<Choice> &choice) const {
    const qint64 length = lengthOf(images_(image()));
    if (length == 0)
        return tr("There are no bytes to export.");
    if (!range(length))
        return tr("The image has no such bytes: it ends at %1.").arg(hex(length - 1));
    if (!choice)
        return tr("The addresses would not be between 0 and FFFFFFFF.");
    if (choice->isTooLong)
        return tr("The file would have more than 3 GiB; longer records make it shorter.");
    const QString size = sizeWords(choice->range.length);
    if (!format())
        return tr("The file will have %1.").arg(size);
    return tr("The file will have %1, at the addresses from %2 to %3.")
        .arg(size, hex(choice->address), hex(choice->address + choice->range.length - 1));
}

// Assistive technology reaches a button that is off all the same.
void ExportWindow::write() {
    if (export_.isWriting())
        return;
    emit aboutToWrite(image());
    const auto chosen = choice();
    if (!chosen || chosen->isTooLong)
        return showState();
    const ByteBuffer bytes = images_(image());
    const QByteArray part = chosen->range.length == bytes->size()
                                ? *bytes
                                : bytes->mid(chosen->range.offset, chosen->range.length);
    content_ = {part, format(), image(), part.size() == bytes->size()};
    if (!format())
        return emit written(std::exchange(content_, {}));
    export_.write(part, {*format(), controls_->recordLength->value(), chosen->address});
    content_.bytes.clear();
    showState();
}
