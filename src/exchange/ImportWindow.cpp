// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/ImportWindow.h"

#include "base/Digits.h"
#include "base/Units.h"
#include "exchange/FileFormats.h"
#include "exchange/ImportWords.h"
#include "exchange/OrderBox.h"
#include "exchange/PartList.h"
#include "exchange/RecordAddress.h"
#include "exchange/RecordPart.h"
#include "exchange/WindowFit.h"
#include "formats/ImageFlattening.h"
#include "image/AddressWords.h"
#include "inspect/ImageFacts.h"
#include "widgets/Announcement.h"
#include "widgets/FixedFont.h"

#include "ui_ImportWindow.h"

#include <QFileInfo>
#include <QRegularExpressionValidator>

namespace {

constexpr int foundColumns = 64;
constexpr int foundLines = 7;

} // namespace

ImportWindow::ImportWindow(const StampedFile &file, const Offers &offers, QWidget *window)
    : QDialog(window),
      controls_(std::make_unique<Ui::ImportWindow>()),
      path_(file.path),
      stamps_({{file.path, file.stamp}}),
      import_(file.bytes) {
    Ui::ImportWindow &c = *controls_;
    c.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("import"));
    setWindowTitle(tr("Import %1").arg(QFileInfo(path_).fileName()));
    for (const FileFormat &format : fileFormats())
        c.format->addItem(format.name);
    c.format->setCurrentText(fileFormatOf(recordFormatOf(import_.file())).name);
    offer(offers);
    const QFontMetrics letters = c.found->fontMetrics();
    c.found->setMinimumSize(foundColumns * letters.averageCharWidth(),
                            foundLines * letters.lineSpacing());
    c.found->setFocus();
    connectControls();
    readFile();
    growToShow(*this, *c.column);
}

ImportWindow::~ImportWindow() = default;

void ImportWindow::offer(const Offers &offers) {
    const Ui::ImportWindow &c = *controls_;
    const QFont fixed = fixedFont();
    c.base->setFont(fixed);
    c.fill->setFont(fixed);
    c.fill->setText(hexDigits(offers.fill, hexDigitsInByte));
    c.fill->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9A-Fa-f]{0,2}")), c.fill));
    c.order->setUp(OrderBox::Way::Join, offers.chip);
    c.parts->setImported(path_);
}

void ImportWindow::connectControls() {
    const Ui::ImportWindow &c = *controls_;
    connect(c.format, &QComboBox::currentIndexChanged, this, &ImportWindow::readFile);
    connect(c.base, &QLineEdit::textChanged, this, &ImportWindow::prepare);
    connect(c.fill, &QLineEdit::textChanged, this, &ImportWindow::prepare);
    connect(c.allTheSame, &QCheckBox::toggled, this, &ImportWindow::prepare);
    connect(c.order, &OrderBox::changed, this, &ImportWindow::prepare);
    connect(c.parts, &PartList::changed, this, &ImportWindow::prepare);
    connect(c.parts, &PartList::addAsked, this, &ImportWindow::partAsked);
    connect(c.importButton, &QPushButton::clicked, this, &ImportWindow::import);
    connect(c.cancelButton, &QPushButton::clicked, this, &ImportWindow::reject);
    connect(&import_, &RecordImport::advanced, this, &ImportWindow::readOn);
    connect(&import_, &RecordImport::outOfMemory, this, &ImportWindow::showOutOfMemory);
    connect(&import_, &RecordImport::imageMade, this, [this](const ByteBuffer &image) {
        image_ = image;
        arrange();
    });
    connect(&run_, &ArrangingRun::outOfMemory, this, &ImportWindow::showOutOfMemory);
    connect(&run_, &ArrangingRun::done, this, [this] {
        showState();
        if (wanted_)
            give();
    });
}

std::optional<RecordFormat> ImportWindow::format() const {
    return fileFormats().at(size_t(controls_->format->currentIndex())).records;
}

std::optional<qint64> ImportWindow::base() const {
    return recordAddress(controls_->base->text());
}

std::optional<quint8> ImportWindow::fill() const {
    bool isNumber = false;
    const uint value = controls_->fill->text().toUInt(&isNumber, hexadecimal);
    return isNumber ? std::optional(quint8(value)) : std::nullopt;
}

bool ImportWindow::isJoining() const {
    return controls_->order->lanes().parts > 1;
}

void ImportWindow::setChip(const ChipSize &chip) {
    controls_->order->setChip(chip);
}

QList<ImportWindow::Source> ImportWindow::sources() const {
    if (!isJoining())
        return {{path_, stamps_[path_]}};
    QList<Source> sources;
    for (const PartList::Part &part : controls_->parts->parts())
        sources.append({part.path, stamps_[part.path]});
    return sources;
}

QString ImportWindow::name() const {
    const QString name = QFileInfo(path_).completeBaseName();
    return isJoining() ? wholeName(name) : name;
}

void ImportWindow::addPart(const StampedFile &file) {
    const QString name = QFileInfo(file.path).fileName();
    if (controls_->parts->has(file.path))
        return showProblem(tr("%1 is one of the parts already.").arg(name));
    const std::optional<RecordFormat> records = recordFormatOf(*file.bytes);
    Result<ByteBuffer, PartTrouble> bytes = file.bytes;
    if (records)
        bytes = bytesOfRecordPart(*file.bytes, *records, fill().value_or(erasedByte));
    const PartTrouble *trouble = bytes.failure();
    if (trouble && *trouble == PartTrouble::NoMemory)
        return sayNoMemory();
    if (trouble)
        return showProblem(tr("%1 is text of records, and something about it must be asked. Import "
                              "it first, and add the binary that comes of it.")
                               .arg(name));
    stamps_[file.path] = file.stamp;
    controls_->parts->add(file.path, *bytes);
}

void ImportWindow::readFile() {
    controls_->allTheSame->setChecked(false);
    run_.stop();
    import_.stop();
    image_.reset();
    if (const auto chosen = format())
        import_.read(*chosen);
    showFound();
}

void ImportWindow::readOn() {
    controls_->progress->setValue(import_.percent());
    if (import_.decoded())
        showFound();
}

void ImportWindow::showFound() {
    const Ui::ImportWindow &c = *controls_;
    const DecodedRecords *decoded = import_.decoded();
    if (decoded) {
        c.found->setPlainText(foundWords(*format(), *decoded).join(u'\n'));
        const qint64 base = usualBase(decoded->bytes);
        c.base->setText(addressWords(base));
    } else {
        c.found->setPlainText(format() ? tr("Reading\u2026") : rawWords(import_.file().size()));
    }
    prepare();
}

// What would be imported is made at once, since the user is shown what comes of it.
void ImportWindow::prepare() {
    run_.stop();
    wanted_ = false;
    problem_.clear();
    if (!format())
        image_ = import_.buffer();
    else if (canBeRead())
        prepareImage();
    else
        image_.reset();
    if (image_)
        arrange();
    else
        showState();
}

void ImportWindow::prepareImage() {
    const Flattening wished{*base(), *fill()};
    if (wished == flattening_ && (image_ || import_.isMakingImage()))
        return;
    flattening_ = wished;
    image_.reset();
    import_.makeImage(wished.base, wished.fill);
}

void ImportWindow::arrange() {
    const Ui::ImportWindow &c = *controls_;
    c.parts->setImportedBytes(image_);
    QList<ArrangingRun::Source> sources;
    if (!isJoining())
        sources = {{image_, {0, image_->size()}}};
    else
        for (const PartList::Part &part : c.parts->parts())
            sources.append({part.bytes, {0, part.bytes->size()}});
    if (canBeArranged())
        run_.start(sources, c.order->arrangement());
    showState();
}

// Everything that is on, off or out of sight follows from what has been read and chosen.
void ImportWindow::showState() {
    const Ui::ImportWindow &c = *controls_;
    const DecodedRecords *decoded = import_.decoded();
    const bool canBeDoubted =
        decoded && !decoded->troubles.isEmpty() && !decoded->troubles.loseBytes();
    c.progress->setVisible(import_.isReading());
    c.base->setEnabled(decoded);
    c.fill->setEnabled(decoded);
    c.allTheSame->setVisible(canBeDoubted);
    const ArrangingRun::Outcome *outcome = run_.outcome();
    c.parts->showFacts(c.order->lanes(),
                       outcome && isJoining() ? outcome->sourceChecksums : QList<quint32>());
    const bool comesUp = isJoining() && c.parts->isHidden();
    c.parts->setVisible(isJoining());
    if (comesUp)
        growToShow(*this, *c.column);
    c.result->setText(resultText());
    c.outcome->setText(outcomeText());
    c.importButton->setEnabled(mayImport() && !wanted_);
}

// True if an image can be made of the records.
bool ImportWindow::canBeRead() const {
    const DecodedRecords *decoded = import_.decoded();
    if (!decoded || !base() || !fill())
        return false;
    return (decoded->troubles.isEmpty() || controls_->allTheSame->isChecked()) &&
           !decoded->troubles.loseBytes() && canBeFlattened(decoded->bytes, *base());
}

QList<qint64> ImportWindow::lengths() const {
    return isJoining() ? controls_->parts->lengths() : QList<qint64>{lengthOf(image_)};
}

// Nothing speaks against it while the bytes are not known.
Result<void, NoArrangement> ImportWindow::canBeArranged() const {
    if (!image_)
        return {};
    return ::canBeArranged(controls_->order->arrangement(), lengths());
}

bool ImportWindow::mayImport() const {
    return (!format() || canBeRead()) && canBeArranged();
}

QString ImportWindow::resultText() const {
    if (!problem_.isEmpty())
        return problem_;
    const auto arranged = canBeArranged();
    if (const NoArrangement *why = arranged.failure())
        return whyNotWords(*why, controls_->order->arrangement(), lengths());
    const DecodedRecords *decoded = import_.decoded();
    if (!decoded)
        return {};
    if (decoded->troubles.loseBytes())
        return tr("Bytes would be missing, so nothing of it can be taken.");
    if (!base())
        return tr("The base offset is no address.");
    if (!fill())
        return tr("There is no byte to fill the gaps with.");
    return imageWords(*decoded, *base(), *fill());
}

// What comes out, once that is known.
QString ImportWindow::outcomeText() const {
    const ArrangingRun::Outcome *outcome = run_.outcome();
    if (!outcome)
        return {};
    if (outcome->parts.isEmpty())
        return tr("CRC-32 of the binary: %1").arg(crc32Digits(outcome->sourceChecksums.first()));
    return inOrderWords(outcome->parts.first().size(), outcome->checksums.first());
}

void ImportWindow::showOutOfMemory() {
    wanted_ = false;
    if (format() && !import_.decoded())
        controls_->found->clear();
    sayNoMemory();
}

void ImportWindow::sayNoMemory() {
    showProblem(tr("There is not enough memory for these bytes."));
}

// Assistive technology reaches a button that is off all the same.
void ImportWindow::import() {
    if (!mayImport() || wanted_)
        return;
    if (!format() && controls_->order->arrangement().changesNothing())
        return emit rawChosen();
    if (!isAtWork() && !run_.outcome())
        prepare();
    if (run_.outcome())
        return give();
    wanted_ = isAtWork();
    showState();
}

void ImportWindow::give() {
    wanted_ = false;
    const ArrangingRun::Outcome *outcome = run_.outcome();
    if (!outcome)
        return showState();
    const QList<QByteArray> parts = outcome->parts;
    const ByteBuffer image = parts.isEmpty() ? image_ : std::make_shared<QByteArray>(parts.first());
    showState();
    emit imageChosen(image);
}

void ImportWindow::showProblem(const QString &sentence) {
    problem_ = sentence;
    showState();
    Announcement::showIn(*controls_->result, sentence);
}
