// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/ExportWindow.h"

#include "base/BoundedText.h"
#include "base/NumberWords.h"
#include "exchange/FileFormats.h"
#include "exchange/OrderBox.h"
#include "exchange/RecordAddress.h"
#include "exchange/WindowFit.h"
#include "files/FreeName.h"
#include "image/AddressWords.h"
#include "image/BlockWords.h"
#include "inspect/ImageFacts.h"
#include "widgets/Announcement.h"
#include "widgets/FixedFont.h"
#include "widgets/WrappingLabel.h"

#include "ui_ExportWindow.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>

#include <utility>

namespace {

/// The entries of the choice of images, in their order.
enum ImageEntry { ToBurnEntry, ReadEntry };

constexpr int labelLines = 5;

} // namespace

ExportWindow::ExportWindow(const Offers &offers, QWidget *window)
    : QDialog(window), controls_(std::make_unique<Ui::ExportWindow>()), offers_(offers) {
    Ui::ExportWindow &c = *controls_;
    c.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("export"));
    setWindowTitle(tr("Export"));
    for (const FileFormat &format : fileFormats())
        c.format->addItem(format.name);
    c.image->addItems({tr("Data to burn"), tr("Data read from chip")});
    c.image->setCurrentIndex(offers.image == Image::ToBurn ? ToBurnEntry : ReadEntry);
    const QFont fixed = fixedFont();
    for (QLineEdit *field : {c.first, c.last, c.offset})
        field->setFont(fixed);
    c.order->setUp(OrderBox::Way::Split, offers.chip);
    c.name->setText(QDir::toNativeSeparators(offers.path));
    const int around = c.labels->frameWidth() + int(c.labels->document()->documentMargin());
    c.labels->setFixedHeight(labelLines * c.labels->fontMetrics().lineSpacing() + 2 * around);
    c.format->setFocus();
    connectControls();
    choosesOtherFiles();
    growToShow(*this, *c.column);
}

ExportWindow::~ExportWindow() = default;

void ExportWindow::connectControls() {
    const Ui::ExportWindow &c = *controls_;
    connect(c.image, &QComboBox::currentIndexChanged, this, &ExportWindow::prepare);
    connect(c.format, &QComboBox::currentIndexChanged, this, &ExportWindow::choosesOtherFiles);
    connect(c.order, &OrderBox::changed, this, &ExportWindow::choosesOtherFiles);
    connect(c.name, &QLineEdit::textChanged, this, &ExportWindow::choosesOtherFiles);
    for (const QLineEdit *field : {c.first, c.last, c.offset})
        connect(field, &QLineEdit::textChanged, this, &ExportWindow::prepare);
    connect(c.recordLength, &QSpinBox::valueChanged, this, &ExportWindow::prepare);
    connect(c.replace, &QCheckBox::toggled, this, &ExportWindow::prepare);
    connect(c.chooseButton, &QPushButton::clicked, this, &ExportWindow::nameAsked);
    connect(c.copyButton, &QPushButton::clicked, this, &ExportWindow::copyLabels);
    connect(c.exportButton, &QPushButton::clicked, this, &ExportWindow::write);
    connect(c.cancelButton, &QPushButton::clicked, this, &ExportWindow::reject);
    connect(&export_, &RecordExport::outOfMemory, this, &ExportWindow::showOutOfMemory);
    connect(&export_, &RecordExport::written, this, [this](const QByteArray &text) {
        content_.files.append(text);
        writeNextText();
    });
    connect(&run_, &ArrangingRun::outOfMemory, this, &ExportWindow::showOutOfMemory);
    connect(&run_, &ArrangingRun::done, this, [this] {
        showState();
        if (wanted_)
            writeOut();
    });
}

bool ExportWindow::Work::isSame(const Work &other) const {
    return image == other.image && range.offset == other.range.offset &&
           range.length == other.range.length && arrangement == other.arrangement;
}

void ExportWindow::refresh() {
    work_ = {};
    prepare();
}

void ExportWindow::setChip(const ChipSize &chip) {
    offers_.chip = chip;
    controls_->order->setChip(chip);
    showState();
}

QString ExportWindow::name() const {
    return QDir::fromNativeSeparators(controls_->name->text());
}

void ExportWindow::setName(const QString &path) {
    controls_->name->setText(QDir::toNativeSeparators(path));
}

ExportWindow::Image ExportWindow::image() const {
    return controls_->image->currentIndex() == ToBurnEntry ? Image::ToBurn : Image::Read;
}

std::optional<RecordFormat> ExportWindow::format() const {
    return fileFormats().at(size_t(controls_->format->currentIndex())).records;
}

bool ExportWindow::isSplit() const {
    return controls_->order->lanes().parts > 1;
}

// The chosen bytes of an image of \a length bytes; an empty field stands for its end.
std::optional<ByteRange> ExportWindow::range(qint64 length) const {
    const Ui::ExportWindow &c = *controls_;
    const auto first =
        c.first->text().isEmpty() ? std::optional<qint64>(0) : recordAddress(c.first->text());
    const auto last =
        c.last->text().isEmpty() ? std::optional(length - 1) : recordAddress(c.last->text());
    if (!first || !last || *first > *last || *last >= length)
        return std::nullopt;
    return ByteRange{*first, *last - *first + 1};
}

// What has been chosen, or a sentence why it makes no sense.
ExportWindow::ChosenNow ExportWindow::choice() const {
    const qint64 length = lengthOf(bytes());
    if (length == 0)
        return tr("There are no bytes to export.");
    const auto chosen = range(length);
    if (!chosen)
        return tr("The image has no such bytes: it ends at %1.").arg(addressWords(length - 1));
    const Arrangement arrangement = controls_->order->arrangement();
    const QList<qint64> lengths = {chosen->length};
    const auto arranged = canBeArranged(arrangement, lengths);
    if (const NoArrangement *why = arranged.failure())
        return whyNotWords(*why, arrangement, lengths);
    const qint64 partLength =
        arrangement.filled > 0 ? arrangement.filled : splitLength(arrangement, lengths);
    return placed({*chosen, arrangement, partLength});
}

// \a choice with its addresses, or why it cannot be written. The files of a split begin at the
// offset itself.
ExportWindow::ChosenNow ExportWindow::placed(Choice choice) const {
    if (!format())
        return choice;
    const auto offset = recordAddress(controls_->offset->text());
    const qint64 first = isSplit() ? 0 : choice.range.offset;
    if (!offset || !fitsAddresses(*offset + first, choice.partLength))
        return tr("The addresses would not be between 0 and FFFFFFFF.");
    choice.address = *offset + first;
    const RecordLayout layout{*format(), controls_->recordLength->value()};
    if (choice.arrangement.split.parts * maxTextLength(layout, choice.partLength) >
        largestRecordText)
        return tr("The file would have more than %1; longer records make it shorter.")
            .arg(boundWords(largestRecordText));
    return choice;
}

// The paths of the files of a split; none for another export.
QStringList ExportWindow::paths() const {
    QStringList paths;
    const Lanes lanes = controls_->order->lanes();
    if (isSplit())
        for (int part = 0; part < lanes.parts; ++part)
            paths << partPath(name(), lanes, part, fileFormatOf(format()).ending);
    return paths;
}

// Those that are there already, or a sentence why that is not known.
Result<QStringList, QString> ExportWindow::takenPaths() const {
    QStringList taken;
    for (const QString &path : paths()) {
        const Result<bool> isThere = isNameTaken(path);
        if (const Failure *failure = isThere.failure())
            return tr("%1 cannot be looked at: %2.")
                .arg(QDir::toNativeSeparators(path), failure->reason);
        if (*isThere)
            taken << path;
    }
    return taken;
}

// Whether a split can be saved under its name, or a sentence why not.
Result<void, QString> ExportWindow::mayMakeFiles() const {
    if (!isSplit())
        return {};
    const QFileInfo file(name());
    if (!file.isAbsolute() || file.fileName().isEmpty())
        return tr("The name of the files must begin with their folder, as in %1.")
            .arg(QDir::toNativeSeparators(offers_.path));
    if (controls_->replace->isChecked())
        return {};
    const Result<QStringList, QString> taken = takenPaths();
    if (const QString *why = taken.failure())
        return *why;
    QStringList names;
    for (const QString &path : *taken)
        names << QFileInfo(path).fileName();
    if (!names.isEmpty())
        return tr("Already there: %1.").arg(names.join(QStringLiteral(", ")));
    return {};
}

// Whether others may be replaced is asked anew.
void ExportWindow::choosesOtherFiles() {
    controls_->replace->setChecked(false);
    prepare();
}

// What would be written is made at once, since the user is shown what comes of it.
void ExportWindow::prepare() {
    wanted_ = false;
    problem_.clear();
    if (const ChosenNow chosen = choice()) {
        const Work wished{bytes(), chosen->range, chosen->arrangement};
        if (!wished.isSame(work_) || (!run_.isRunning() && !run_.outcome())) {
            work_ = wished;
            run_.start({{work_.image, work_.range}}, work_.arrangement);
        }
    } else {
        work_ = {};
        run_.stop();
    }
    showState();
}

// Everything that is on, off, out of sight or offered follows from the image and what has been
// chosen.
void ExportWindow::showState() {
    const Ui::ExportWindow &c = *controls_;
    const qint64 length = lengthOf(bytes());
    const ChosenNow chosen = choice();
    c.last->setPlaceholderText(length > 0 ? addressWords(length - 1) : QString());
    c.offset->setEnabled(format().has_value());
    c.recordLength->setEnabled(format().has_value());
    if (chosen)
        showRecordLength(*chosen);
    c.nameRow->setVisible(isSplit());
    const Result<QStringList, QString> taken = takenPaths();
    c.replace->setVisible(taken && !taken->isEmpty());
    c.labels->setPlainText(labelsText());
    c.copyButton->setEnabled(run_.outcome());
    c.result->setText(boundedText(resultText(chosen), longestRemark));
    const bool isAtWork = wanted_ || export_.isWriting();
    c.exportButton->setEnabled(chosen && mayMakeFiles() && !isAtWork);
}

void ExportWindow::showRecordLength(const Choice &choice) {
    if (format())
        controls_->recordLength->setMaximum(
            maxRecordLength(*format(), choice.address, choice.partLength));
}

QString ExportWindow::resultText(const ChosenNow &chosen) const {
    if (!problem_.isEmpty())
        return problem_;
    if (const QString *why = chosen.failure())
        return *why;
    const Result<void, QString> may = mayMakeFiles();
    return may ? sizeText(*chosen) : *may.failure();
}

QString ExportWindow::sizeText(const Choice &choice) const {
    const QString size = sizeWords(choice.partLength);
    const QString first = addressWords(choice.address);
    const QString last = addressWords(choice.address + choice.partLength - 1);
    if (!isSplit())
        return format() ? tr("The file will have %1, at the addresses from %2 to %3.")
                              .arg(size, first, last)
                        : tr("The file will have %1.").arg(size);
    const QString count = QString::number(choice.arrangement.split.parts);
    return format() ? tr("Each of the %1 files will have %2, at the addresses from %3 to %4.")
                          .arg(count, size, first, last)
                    : tr("Each of the %1 files will have %2.").arg(count, size);
}

// What comes out, once that is known.
QString ExportWindow::labelsText() const {
    const ArrangingRun::Outcome *outcome = run_.outcome();
    if (!outcome)
        return {};
    const Lanes lanes = work_.arrangement.split;
    QStringList lines;
    for (int part = 0; isSplit() && part < lanes.parts; ++part)
        lines << labelWords({QFileInfo(withoutEnding(name())).fileName(), lanes, part,
                             controls_->order->isLowByteLast(), outcome->parts[part].size(),
                             outcome->checksums[part]},
                            offers_.chip);
    if (!isSplit() && !work_.arrangement.changesNothing())
        lines << inOrderWords(outcome->parts.first().size(), outcome->checksums.first());
    lines << tr("As in the image: %1, CRC-32 %2")
                 .arg(sizeWords(work_.range.length), crc32Digits(outcome->sourceChecksums.first()));
    return lines.join(u'\n');
}

void ExportWindow::copyLabels() {
    QGuiApplication::clipboard()->setText(controls_->labels->toPlainText());
}

bool ExportWindow::isWholeAsItStands(const Choice &choice) const {
    return choice.arrangement.changesNothing() && choice.range.length == lengthOf(bytes());
}

// Assistive technology reaches a button that is off all the same.
void ExportWindow::write() {
    if (export_.isWriting() || wanted_)
        return;
    emit aboutToWrite(image());
    const ChosenNow chosen = choice();
    if (!chosen || !mayMakeFiles())
        return showState();
    if (!run_.isRunning() && !run_.outcome())
        prepare();
    // The bytes as they stand in the image need not be waited for.
    if (isWholeAsItStands(*chosen) || run_.outcome())
        return writeOut();
    wanted_ = true;
    showState();
}

void ExportWindow::writeOut() {
    wanted_ = false;
    const ChosenNow chosen = choice();
    const ArrangingRun::Outcome *outcome = run_.outcome();
    if (!chosen || !(outcome || isWholeAsItStands(*chosen)))
        return showState();
    const bool isWhole = chosen->range.length == lengthOf(bytes());
    content_ = {{},          format(), image(), isWhole, paths(), controls_->replace->isChecked(),
                labelsText()};
    toWrite_ = isWholeAsItStands(*chosen) ? QList<QByteArray>{*bytes()} : outcome->parts;
    if (format())
        layout_ = {*format(), controls_->recordLength->value(), chosen->address};
    else
        content_.files = std::exchange(toWrite_, {});
    writeNextText();
}

void ExportWindow::writeNextText() {
    if (toWrite_.isEmpty()) {
        showState();
        return emit written(std::exchange(content_, {}));
    }
    export_.write(toWrite_.takeFirst(), layout_);
    showState();
}

void ExportWindow::showOutOfMemory() {
    wanted_ = false;
    toWrite_.clear();
    content_ = {};
    showProblem(tr("There is not enough memory for this file."));
}

void ExportWindow::showProblem(const QString &sentence) {
    problem_ = boundedText(sentence, longestRemark);
    showState();
    Announcement::showIn(*controls_->result, problem_);
}
