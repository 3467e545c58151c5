// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/InsertFileWindow.h"

#include "base/NumberWords.h"
#include "formats/RecordFormat.h"
#include "image/AddressWords.h"
#include "image/BlockWords.h"
#include "image/TypedAddress.h"
#include "widgets/Announcement.h"
#include "widgets/FixedFont.h"

#include "ui_InsertFileWindow.h"

#include <QFileInfo>

#include <utility>

InsertFileWindow::InsertFileWindow(File file, std::optional<qint64> offset, qint64 imageSize,
                                   QWidget *window)
    : QDialog(window),
      controls_(std::make_unique<Ui::InsertFileWindow>()),
      file_(std::move(file)),
      cursor_(offset.value_or(0)),
      imageSize_(imageSize) {
    Ui::InsertFileWindow &c = *controls_;
    c.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("insertFile"));
    setWindowTitle(tr("Insert %1").arg(QFileInfo(file_.path).fileName()));
    c.size->setText(sizeWords(file_.bytes->size()));
    c.text->setVisible(recordFormatOf(*file_.bytes).has_value());
    c.address->setFont(fixedFont());
    c.address->setText(offset ? addressWords(*offset) : QString());
    connect(c.address, &QLineEdit::textChanged, this, &InsertFileWindow::showState);
    connect(c.over, &QRadioButton::toggled, this, &InsertFileWindow::showState);
    connect(c.insertButton, &QPushButton::clicked, this, &InsertFileWindow::insert);
    connect(c.cancelButton, &QPushButton::clicked, this, &InsertFileWindow::reject);
    showState();
}

InsertFileWindow::~InsertFileWindow() = default;

void InsertFileWindow::setImageSize(qint64 size) {
    imageSize_ = size;
    showState();
}

std::optional<BlockChange> InsertFileWindow::overwriting(qint64 offset, QString &sentence) const {
    const qint64 length = file_.bytes->size();
    if (imageSize_ - offset < length) {
        sentence = doNotFitWords(length, offset, imageSize_);
        return std::nullopt;
    }
    sentence = tr("Will replace %1.").arg(bytesAtWords({offset, length}));
    return overwriteOf(offset, *file_.bytes, imageSize_);
}

std::optional<BlockChange> InsertFileWindow::moving(qint64 offset, QString &sentence) const {
    BlockChange change = insertionOf(offset, *file_.bytes);
    const auto trouble = troubleWith(change, imageSize_);
    if (trouble)
        sentence = blockTroubleWords(*trouble);
    else
        sentence = tr("The data to burn become %1 bytes long.")
                       .arg(grouped(imageSize_ + file_.bytes->size()));
    return trouble ? std::nullopt : std::optional(std::move(change));
}

/// What is chosen, and in \a sentence what it will do; if nothing can be done, why not.
std::optional<BlockChange> InsertFileWindow::change(QString &sentence) const {
    const QString text = controls_->address->text();
    const auto typed = typedAddress(text);
    const auto offset = typed ? typed->offset(quint64(cursor_)) : std::nullopt;
    if (!typed)
        sentence = noAddressWords(text);
    else if (!offset)
        sentence = tr("There is no byte at %1.").arg(text.trimmed());
    else if (*offset > quint64(imageSize_))
        sentence = tr("The data to burn end before %1.").arg(addressWords(*offset));
    else if (file_.bytes->isEmpty())
        sentence = tr("The file is empty.");
    else
        return controls_->over->isChecked() ? overwriting(qint64(*offset), sentence)
                                            : moving(qint64(*offset), sentence);
    return std::nullopt;
}

void InsertFileWindow::showState() {
    QString sentence;
    const bool mayInsert = change(sentence).has_value();
    controls_->result->setText(sentence);
    controls_->insertButton->setEnabled(mayInsert);
}

// Assistive technology reaches a button that is off all the same.
void InsertFileWindow::insert() {
    QString sentence;
    if (const auto wanted = change(sentence))
        emit chosen(*wanted);
}

void InsertFileWindow::showProblem(const QString &sentence) {
    controls_->result->setText(sentence);
    Announcement::make(sentence, this);
}
