// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/DeviceSearchPanel.h"

#include "devices/device_searcher.h"

#include "ui_DeviceSearchPanel.h"
#include "widgets/EnterKey.h"

#include <QKeyEvent>
#include <QShowEvent>

#include <algorithm>

namespace {

/// The most rows that the likely names take: the list of all names below keeps its room.
constexpr qsizetype maxLikelyRows = 4;

/// Selects the first name of \a list; false if that cannot be done.
bool enter(DeviceListView &list) {
    const bool hasNames = list.isEnabled() && list.model()->rowCount() > 0;
    if (hasNames)
        list.selectFirst();
    return hasNames;
}

} // namespace

DeviceSearchPanel::DeviceSearchPanel(device_searcher &searcher, QWidget *parent)
    : QDialog(parent), searcher_(searcher), controls_(std::make_unique<Ui::DeviceSearchPanel>()) {
    Ui::DeviceSearchPanel &c = *controls_;
    c.setupUi(this);
    whatToDo_ = c.remarkLabel->text();
    setWindowModality(Qt::WindowModal);
    searcher.tableview = c.tableview;
    searcher.likelyView = c.likelyView;
    searcher.devicesearchterm = c.devicesearchterm;
    searcher.OKButton = c.OKButton;
    searcher.connectPanel();
    c.devicesearchterm->installEventFilter(this);
    connect(c.devicesearchterm, &QLineEdit::returnPressed, &searcher,
            [this] { searcher_.list(controls_->devicesearchterm); });
    connect(c.filterField, &QLineEdit::textChanged, &searcher, &device_searcher::filter);
    connect(c.searchButton, &QPushButton::clicked, &searcher,
            [this] { searcher_.list(controls_->searchButton); });
    connect(c.stopButton, &QPushButton::clicked, &searcher, &device_searcher::stop);
    connect(&searcher, &device_searcher::searchRunningChanged, this,
            &DeviceSearchPanel::setSearching);
    connect(&searcher, &device_searcher::remark, c.remarkLabel, &QLabel::setText);
}

DeviceSearchPanel::~DeviceSearchPanel() = default;

QPushButton *DeviceSearchPanel::okButton() const {
    return controls_->OKButton;
}

QPushButton *DeviceSearchPanel::cancelButton() const {
    return controls_->cancelButton;
}

void DeviceSearchPanel::done(int code) {
    searcher_.stop();
    QDialog::done(code);
}

void DeviceSearchPanel::showEvent(QShowEvent *event) {
    controls_->devicesearchterm->selectAll();
    controls_->devicesearchterm->setFocus(Qt::OtherFocusReason);
    if (!event->spontaneous()) {
        controls_->filterField->clear();
        controls_->likelyView->clearSelection();
        controls_->remarkLabel->setText(whatToDo_);
        searcher_.forgetQuestion();
    }
    QDialog::showEvent(event);
}

// Enter that is held down is one press.
bool DeviceSearchPanel::eventFilter(QObject *field, QEvent *event) {
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(field, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    return key->isAutoRepeat() && isEnter(*key);
}

// Keys that the fields do not take come here.
void DeviceSearchPanel::keyPressEvent(QKeyEvent *event) {
    const Ui::DeviceSearchPanel &c = *controls_;
    const bool isDown = event->key() == Qt::Key_Down;
    const bool isInFilter = isDown && c.filterField->hasFocus();
    const bool isInTerm = isDown && c.devicesearchterm->hasFocus();
    const bool entered =
        ((isInTerm || isInFilter) && enter(*c.tableview)) || (isInFilter && enter(*c.likelyView));
    if (!entered)
        QDialog::keyPressEvent(event);
}

void DeviceSearchPanel::setLikely(const QStringList &names) {
    DeviceListView *list = controls_->likelyView;
    searcher_.setLikely(names);
    for (QWidget *widget :
         {static_cast<QWidget *>(list), static_cast<QWidget *>(controls_->likelyLabel)})
        widget->setVisible(!names.isEmpty());
    // Where the filter leaves none of them there is no row to measure.
    const int rows = int(std::min(names.size(), maxLikelyRows));
    if (const int height = list->sizeHintForRow(0); height > 0)
        list->setFixedHeight(2 * list->frameWidth() + rows * height);
}

void DeviceSearchPanel::setSearching(bool searching) {
    Ui::DeviceSearchPanel &c = *controls_;
    const bool termHadFocus = c.devicesearchterm->hasFocus();
    c.stopButton->setEnabled(searching);
    for (QWidget *widget :
         {static_cast<QWidget *>(c.searchButton), static_cast<QWidget *>(c.tableview),
          static_cast<QWidget *>(c.likelyView), static_cast<QWidget *>(c.OKButton)})
        widget->setEnabled(!searching);
    // Read-only, not disabled: the field keeps the focus, and Escape still reaches the panel.
    c.devicesearchterm->setReadOnly(searching);
    if (!searching && termHadFocus)
        c.devicesearchterm->setFocus(Qt::OtherFocusReason);
}
