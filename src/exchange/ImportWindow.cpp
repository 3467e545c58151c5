// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/ImportWindow.h"

#include "base/Digits.h"
#include "exchange/FormatEntries.h"
#include "exchange/ImportWords.h"
#include "image/TypedAddress.h"
#include "widgets/FixedFont.h"

#include "ui_ImportWindow.h"

#include <QFileInfo>
#include <QRegularExpressionValidator>

namespace {

constexpr int foundColumns = 64;
constexpr int foundLines = 12;

} // namespace

ImportWindow::ImportWindow(File file, quint8 fill, QWidget *window)
    : QDialog(window),
      controls_(std::make_unique<Ui::ImportWindow>()),
      path_(std::move(file.path)),
      import_(std::move(file.bytes)) {
    Ui::ImportWindow &c = *controls_;
    c.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("import"));
    setWindowTitle(tr("Import %1").arg(QFileInfo(path_).fileName()));
    c.format->addItems(
        {formatWords(RecordFormat::IntelHex), formatWords(RecordFormat::SRecord), tr("Raw bytes")});
    c.format->setCurrentIndex(entryOf(recordFormatOf(import_.file())));
    const QFont fixed = fixedFont();
    c.base->setFont(fixed);
    c.fill->setFont(fixed);
    c.fill->setText(QString::number(fill, hexadecimal).toUpper().rightJustified(2, u'0'));
    c.fill->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9A-Fa-f]{0,2}")), c.fill));
    const QFontMetrics letters = c.found->fontMetrics();
    c.found->setMinimumSize(foundColumns * letters.averageCharWidth(),
                            foundLines * letters.lineSpacing());
    c.found->setFocus();
    connectControls();
    readFile();
}

ImportWindow::~ImportWindow() = default;

void ImportWindow::connectControls() {
    const Ui::ImportWindow &c = *controls_;
    connect(c.format, &QComboBox::currentIndexChanged, this, &ImportWindow::readFile);
    connect(c.base, &QLineEdit::textChanged, this, &ImportWindow::showState);
    connect(c.fill, &QLineEdit::textChanged, this, &ImportWindow::showState);
    connect(c.allTheSame, &QCheckBox::toggled, this, &ImportWindow::showState);
    connect(c.importButton, &QPushButton::clicked, this, &ImportWindow::import);
    connect(c.cancelButton, &QPushButton::clicked, this, &ImportWindow::reject);
    connect(&import_, &RecordImport::advanced, this, &ImportWindow::readOn);
    connect(&import_, &RecordImport::outOfMemory, this, &ImportWindow::showOutOfMemory);
    connect(&import_, &RecordImport::imageMade, this, [this](const ByteBuffer &image) {
        showState();
        emit imageChosen(image);
    });
}

std::optional<RecordFormat> ImportWindow::format() const {
    return formatOf(controls_->format->currentIndex());
}

std::optional<qint64> ImportWindow::base() const {
    const auto typed = typedAddress(controls_->base->text());
    if (!typed || typed->from != TypedAddress::From::Start ||
        typed->distance > std::numeric_limits<quint32>::max())
        return std::nullopt;
    return qint64(typed->distance);
}

std::optional<quint8> ImportWindow::fill() const {
    bool isNumber = false;
    const uint value = controls_->fill->text().toUInt(&isNumber, hexadecimal);
    return isNumber ? std::optional(quint8(value)) : std::nullopt;
}

void ImportWindow::readFile() {
    controls_->allTheSame->setChecked(false);
    import_.stop();
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
        c.base->setText(QString::number(base, hexadecimal).toUpper());
    } else {
        c.found->setPlainText(format() ? tr("Reading\u2026") : rawWords(import_.file().size()));
    }
    showState();
}

/// Everything that is on, off or out of sight follows from what has been read and chosen.
void ImportWindow::showState() {
    const Ui::ImportWindow &c = *controls_;
    const DecodedRecords *decoded = import_.decoded();
    const bool canBeDoubted =
        decoded && !decoded->troubles.isEmpty() && !decoded->troubles.loseBytes();
    c.progress->setVisible(format() && !decoded);
    c.base->setEnabled(decoded);
    c.fill->setEnabled(decoded);
    c.allTheSame->setVisible(canBeDoubted);
    c.result->setText(resultText());
    c.importButton->setEnabled(mayImport());
}

bool ImportWindow::mayImport() const {
    if (!format())
        return true;
    const DecodedRecords *decoded = import_.decoded();
    if (!decoded || import_.isMakingImage() || !base() || !fill())
        return false;
    return (decoded->troubles.isEmpty() || controls_->allTheSame->isChecked()) &&
           !decoded->troubles.loseBytes() && !whyNoImage(decoded->bytes, *base());
}

QString ImportWindow::resultText() const {
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

void ImportWindow::showOutOfMemory() {
    showState();
    if (!import_.decoded()) {
        controls_->progress->hide();
        controls_->found->clear();
    }
    showProblem(tr("There is not enough memory for these bytes."));
}

// Assistive technology reaches a button that is off all the same.
void ImportWindow::import() {
    if (!mayImport())
        return;
    if (!format())
        return emit rawChosen();
    import_.makeImage(*base(), *fill());
    if (import_.isMakingImage())
        showState();
}

void ImportWindow::showProblem(const QString &sentence) {
    controls_->result->setText(sentence);
}
