// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/FindBar.h"

#include "base/JoinedWords.h"
#include "grid/GridView.h"
#include "imageviews/FindWords.h"
#include "widgets/Announcement.h"
#include "widgets/EnterKey.h"
#include "widgets/FixedFont.h"
#include "widgets/Icons.h"
#include "widgets/MenuKeys.h"
#include "widgets/PlainToolTip.h"

#include "ui_FindBar.h"

#include <QKeyEvent>

#include <chrono>
#include <utility>

namespace {

/// The entries of the choice, in their order.
enum PatternKind { HexadecimalPattern, Text8, Text16 };

/// A pause in typing: each key cuts short what is being spoken.
constexpr std::chrono::milliseconds announcementDelay{400};

/// Not with the reason of a shortcut, which selects the text before the focus is announced: a
/// screen reader then takes the field for one that it has named already.
void typeAnew(QLineEdit &field) {
    field.setFocus(Qt::OtherFocusReason);
    field.selectAll();
}

} // namespace

FindBar::FindBar(QWidget *parent)
    : QWidget(parent), controls_(std::make_unique<Ui::FindBar>()), finder_(this) {
    Ui::FindBar &c = *controls_;
    c.setupUi(this);
    setFocusProxy(c.what);
    const QFont fixed = fixedFont();
    c.what->setFont(fixed);
    c.address->setFont(fixed);
    c.what->installEventFilter(this);
    announcement_.setSingleShot(true);
    announcement_.setInterval(announcementDelay);
    setIcon();
    showKind();
    nameKeysIn(*c.previous, menuKeys::findPrevious);
    nameKeysIn(*c.next, menuKeys::findNext);
    nameKeysIn(*c.address, menuKeys::goToAddress);
    connectControls();
    hide();
}

FindBar::~FindBar() = default;

void FindBar::connectControls() {
    const Ui::FindBar &c = *controls_;
    connect(c.what, &QLineEdit::textChanged, this, &FindBar::takePattern);
    connect(c.what, &QLineEdit::returnPressed, this, &FindBar::findNext);
    connect(c.kind, &QComboBox::currentIndexChanged, this, &FindBar::showKind);
    connect(c.kind, &QComboBox::currentIndexChanged, this, &FindBar::takePattern);
    connect(c.matchCase, &QCheckBox::toggled, this, &FindBar::takePattern);
    connect(c.previous, &QPushButton::clicked, this, &FindBar::findPrevious);
    connect(c.next, &QPushButton::clicked, this, &FindBar::findNext);
    connect(c.dismissButton, &QToolButton::clicked, this, &FindBar::dismiss);
    connect(&finder_, &ImageFinder::changed, this, &FindBar::showState);
    connect(&finder_, &ImageFinder::stepped, this, &FindBar::announceSoon);
    connect(&announcement_, &QTimer::timeout, this, &FindBar::announce);
}

void FindBar::follow(GridView &grid, ImageFinder::Source shown) {
    grid_ = &grid;
    finder_.follow(grid, std::move(shown));
}

QLineEdit &FindBar::addressField() {
    return *controls_->address;
}

void FindBar::find() {
    open();
    typeAnew(*controls_->what);
}

void FindBar::findAddress() {
    open();
    typeAnew(*controls_->address);
}

void FindBar::open() {
    if (!isHidden())
        return;
    show();
    takePattern();
}

// The focus goes first, or it would visit whatever comes after the bar.
void FindBar::dismiss() {
    grid_->setFocus(Qt::OtherFocusReason);
    hide();
    finder_.setPattern({});
    announcement_.stop();
}

void FindBar::step(ImageFinder::Direction direction) {
    open();
    const QString &typed = controls_->what->text();
    if (typed.isEmpty() || !trouble_.isEmpty())
        find();
    announceSoon();
    finder_.step(direction);
}

PatternOutcome FindBar::outcome() const {
    const QString text = controls_->what->text();
    const auto matchCase = controls_->matchCase->isChecked() ? MatchCase::Yes : MatchCase::No;
    switch (controls_->kind->currentIndex()) {
    case Text8:
        return patternFromText(text, matchCase);
    case Text16:
        return patternFromText16(text, matchCase);
    default:
        return patternFromHex(text);
    }
}

void FindBar::takePattern() {
    const PatternOutcome taken = outcome();
    const PatternTrouble *trouble = taken.failure();
    trouble_ = trouble ? troubleWords(*trouble) : QString();
    controls_->what->setAccessibleDescription(trouble_);
    if (isHidden())
        return;
    finder_.setPattern(trouble ? BytePattern() : *taken);
    showState();
    announceSoon();
}

void FindBar::showKind() {
    const bool isText = controls_->kind->currentIndex() != HexadecimalPattern;
    controls_->matchCase->setEnabled(isText);
    controls_->what->setPlaceholderText(isText ? tr("Find text") : tr("Find DE AD ?? E?"));
    controls_->what->setToolTip(
        isText ? tr("The text to search for (%1)")
               : tr("Hexadecimal digits to search for (%1); ? stands for any digit"));
    nameKeysIn(*controls_->what, menuKeys::find);
}

void FindBar::showState() {
    if (!trouble_.isEmpty())
        return say({}, trouble_);
    const FindState state = finder_.state();
    say(countWords(state), remarkWords(state));
}

void FindBar::say(const QString &count, const QString &remark) {
    QLabel &countLabel = *controls_->count;
    countLabel.setText(count);
    countLabel.setAccessibleDescription(count);
    countLabel.setVisible(!count.isEmpty());
    controls_->remark->setText(remark);
    setPlainToolTip(*controls_->remark, remark);
}

void FindBar::announceSoon() {
    announcement_.start();
}

// As long as the hits are counted there is nothing to tell.
void FindBar::announce() {
    const FindState state = finder_.state();
    if (state.where == FindState::Where::Image && !state.hits)
        return announceSoon();
    showState();
    const QString said = joinedWords({controls_->count->text(), controls_->remark->text()}, u". ");
    if (said.isEmpty())
        return;
    Announcement::make(said, this);
    emit announced(said);
}

bool FindBar::eventFilter(QObject *field, QEvent *event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(field, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (!isEnter(*key) || !key->modifiers().testFlag(Qt::ShiftModifier))
        return QWidget::eventFilter(field, event);
    findPrevious();
    return true;
}

// Keys that the fields do not take come here.
void FindBar::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape)
        dismiss();
    else
        QWidget::keyPressEvent(event);
}

void FindBar::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        setIcon();
}

void FindBar::setIcon() {
    controls_->dismissButton->setIcon(themedIcon(QStringLiteral("close"), palette()));
}
