// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/SelectRangeWindow.h"

#include "base/Digits.h"
#include "grid/GridSteps.h"
#include "grid/GridView.h"
#include "image/AddressWords.h"
#include "widgets/Announcement.h"
#include "widgets/FixedFont.h"

#include "ui_SelectRangeWindow.h"

namespace {

/// The entries of the choice, in their order.
enum UntilEntry { LastByte, Length };

} // namespace

SelectRangeWindow::SelectRangeWindow(GridView &grid, QWidget *window)
    : QDialog(window), controls_(std::make_unique<Ui::SelectRangeWindow>()), grid_(&grid) {
    const Ui::SelectRangeWindow &c = *controls_;
    controls_->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("selectRange"));
    setWindowTitle(tr("Select range"));
    for (QLineEdit *field : {c.first, c.end}) {
        field->setFont(fixedFont());
        connect(field, &QLineEdit::textChanged, this, [this] { say({}); });
    }
    takeSelection();
    connect(c.until, &QComboBox::currentIndexChanged, this, &SelectRangeWindow::changeUntil);
    connect(c.selectButton, &QPushButton::clicked, this, &SelectRangeWindow::select);
    connect(c.cancelButton, &QPushButton::clicked, this, &SelectRangeWindow::reject);
}

SelectRangeWindow::~SelectRangeWindow() = default;

void SelectRangeWindow::setGrid(GridView &grid) {
    if (&grid == grid_)
        return;
    grid_ = &grid;
    takeSelection();
}

void SelectRangeWindow::takeSelection() {
    const ByteRange selected = grid_->selection().bytes();
    controls_->first->setText(selected.length == 0 ? QString() : addressWords(selected.offset));
    showEnd(selected.offset, selected.length);
    controls_->first->selectAll();
}

TypedRange::Until SelectRangeWindow::until() const {
    return controls_->until->currentIndex() == LastByte ? TypedRange::Until::Address
                                                        : TypedRange::Until::Length;
}

// What is typed, with its end taken as \a until says.
Result<ByteRange, RangeTrouble> SelectRangeWindow::range(TypedRange::Until until) const {
    const qint64 cursor =
        byteOfCell(grid_->currentIndex()).value_or(grid_->selection().bytes().offset);
    return bytesOf({controls_->first->text(), controls_->end->text(), until}, cursor,
                   grid_->gridModel()->byteCount());
}

// Shows the end of \a length bytes from \a first on, as it is asked for; nothing for none.
void SelectRangeWindow::showEnd(qint64 first, qint64 length) {
    const bool isAddress = until() == TypedRange::Until::Address;
    QLineEdit &end = *controls_->end;
    end.setAccessibleName(controls_->until->currentText());
    end.setToolTip(
        isAddress ? tr("The address of the last byte to select: hexadecimal digits, or decimal "
                       "ones behind #; + or - counts from the cursor")
                  : tr("How many bytes to select: hexadecimal digits, or decimal ones behind #"));
    if (length == 0)
        end.clear();
    else
        end.setText(isAddress ? addressWords(first + length - 1) : hexDigits(length));
}

// The same bytes, told in the other way.
void SelectRangeWindow::changeUntil() {
    const auto before = until() == TypedRange::Until::Address ? TypedRange::Until::Length
                                                              : TypedRange::Until::Address;
    const auto typed = range(before);
    showEnd(typed ? typed->offset : 0, typed ? typed->length : 0);
}

void SelectRangeWindow::select() {
    const auto typed = range(until());
    if (const RangeTrouble *trouble = typed.failure())
        return say(rangeTroubleWords(*trouble,
                                     {controls_->first->text(), controls_->end->text(), until()},
                                     grid_->gridModel()->byteCount()));
    grid_->selection().select(*typed);
    accept();
    grid_->activateWindow();
    grid_->setFocus(Qt::OtherFocusReason);
}

void SelectRangeWindow::say(const QString &trouble) {
    controls_->remark->setText(trouble);
    if (!trouble.isEmpty())
        Announcement::make(trouble, this);
}
