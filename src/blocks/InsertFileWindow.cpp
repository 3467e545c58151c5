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

InsertFileWindow::InsertFileWindow(StampedFile file, std::optional<qint64> offset, qint64 imageSize,
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

InsertFileWindow::WantedOrNot InsertFileWindow::overwriting(qint64 offset) const {
    const qint64 length = file_.bytes->size();
    if (imageSize_ - offset < length)
        return doNotFitWords(length, offset, imageSize_);
    return Wanted{overwriteOf(offset, *file_.bytes, imageSize_),
                  tr("Will replace %1.").arg(bytesAtWords({offset, length}))};
}

InsertFileWindow::WantedOrNot InsertFileWindow::moving(qint64 offset) const {
    BlockChange change = insertionOf(offset, *file_.bytes);
    if (const auto possible = canBeMade(change, imageSize_); !possible)
        return blockTroubleWords(*possible.failure());
    return Wanted{std::move(change), tr("The data to burn become %1 bytes long.")
                                         .arg(grouped(imageSize_ + file_.bytes->size()))};
}

InsertFileWindow::WantedOrNot InsertFileWindow::wanted() const {
    const QString text = controls_->address->text();
    const auto typed = typedAddress(text);
    if (!typed)
        return noAddressWords(text);
    const auto offset = typed->offset(quint64(cursor_));
    if (!offset)
        return tr("There is no byte at %1.").arg(text.trimmed());
    if (*offset > quint64(imageSize_))
        return tr("The data to burn end before %1.").arg(addressWords(*offset));
    if (file_.bytes->isEmpty())
        return tr("The file is empty.");
    return controls_->over->isChecked() ? overwriting(qint64(*offset)) : moving(qint64(*offset));
}

void InsertFileWindow::showState() {
    const WantedOrNot now = wanted();
    controls_->result->setText(now ? now->words : *now.failure());
    controls_->insertButton->setEnabled(bool(now));
}

// Assistive technology reaches a button that is off all the same. Of a file that has gone these
// bytes may be all that is left.
void InsertFileWindow::insert() {
    const WantedOrNot now = wanted();
    if (!now)
        return;
    const std::optional<FileStamp> onDisk = FileStamp::of(file_.path);
    if (onDisk && onDisk != file_.stamp)
        return showProblem(tr("%1 has been written since it was read here: choose it again.")
                               .arg(QFileInfo(file_.path).fileName()));
    emit chosen(now->change);
}

void InsertFileWindow::showProblem(const QString &sentence) {
    Announcement::showIn(*controls_->result, sentence);
}
