// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/MemoriesWindow.h"

#include "base/ShownName.h"
#include "grid/GridView.h"
#include "imageviews/FactsWords.h"
#include "imageviews/MemoriesWords.h"

#include <QAction>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace {

/// What a column of fuses keeps free behind its text, and the most that it takes, so that the next
/// one is seen as well; in letters of average width.
constexpr int gapInCharacters = 4;
constexpr int maxInCharacters = 40;

QString tabText(OtherMemory memory) {
    return u'&' + memoryName(memory);
}

/// The most letters of a device's name: a label is as wide as its longest word.
constexpr int lettersOfName = 60;

/// The name \a device as \a label has room for it.
QString nameIn(const QLabel &label, const QString &device) {
    const QFontMetrics metrics = label.fontMetrics();
    return metrics.elidedText(shownName(device), Qt::ElideMiddle,
                              lettersOfName * metrics.averageCharWidth());
}

QLabel *makeLabel(QWidget *parent) {
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setWordWrap(true);
    return label;
}

} // namespace

MemoriesWindow::MemoriesWindow(QWidget *window)
    : QDialog(window),
      origin_(makeLabel(this)),
      remark_(makeLabel(this)),
      tabs_(new QTabWidget(this)) {
    setObjectName(QStringLiteral("otherMemories"));
    setWindowTitle(tr("Other memories"));
    makeGrid(data_, OtherMemory::Data);
    makeGrid(user_, OtherMemory::User);
    makeFuses();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    save_ = buttons->addButton(tr("&Save the set\u2026"), QDialogButtonBox::ActionRole);
    save_->setAccessibleName(tr("Save the set\u2026"));
    save_->setToolTip(tr("Save the code memory and these memories as files of one name"));
    save_->setAutoDefault(false);
    connect(save_, &QPushButton::clicked, this, &MemoriesWindow::saveRequested);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(origin_);
    layout->addWidget(remark_);
    layout->addWidget(tabs_, 1);
    layout->addWidget(buttons);
}

void MemoriesWindow::makeGrid(BytesPage &page, OtherMemory memory) {
    page.grid = new GridView(tabs_);
    page.grid->setAccessibleName(memoryName(memory));
    page.grid->setSource(page.image);
    page.grid->hide();
}

void MemoriesWindow::makeFuses() {
    fuseList_ = new QTableView(tabs_);
    fuseList_->setAccessibleName(memoryName(OtherMemory::Fuses));
    fuseList_->setModel(&fuses_);
    fuseList_->setSelectionBehavior(QAbstractItemView::SelectRows);
    fuseList_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    fuseList_->setTabKeyNavigation(false);
    fuseList_->setWordWrap(false);
    fuseList_->verticalHeader()->hide();
    fuseList_->horizontalHeader()->setHighlightSections(false);
    fuseList_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    fuseList_->horizontalHeader()->setStretchLastSection(true);
    auto *copy = new QAction(tr("&Copy"), fuseList_);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &MemoriesWindow::copyFuses);
    fuseList_->addAction(copy);
    fuseList_->setContextMenuPolicy(Qt::ActionsContextMenu);
    fuseList_->hide();
}

void MemoriesWindow::copyFuses() const {
    const QModelIndexList selected = fuseList_->selectionModel()->selectedRows();
    if (!selected.isEmpty())
        QGuiApplication::clipboard()->setText(fuses_.textOf(selected));
}

void MemoriesWindow::showMemories(const ReadMemories &memories, const QString &remark) {
    origin_->setText(tr("%1: %2").arg(
        readOriginWords(nameIn(*origin_, memories.device), memories.endedAt, QDate::currentDate()),
        memoriesWords(memories.others)));
    remark_->setText(remark);
    remark_->setHidden(remark.isEmpty());
    fill(data_, memories.others.data);
    fill(user_, memories.others.user);
    fuses_.setLines(memories.others.fuses);
    fitColumns();
    QWidget *current = tabs_->currentWidget();
    tabs_->clear();
    showPage(data_.grid, OtherMemory::Data, bool(memories.others.data));
    showPage(user_.grid, OtherMemory::User, bool(memories.others.user));
    showPage(fuseList_, OtherMemory::Fuses, bool(memories.others.fuseText));
    if (current && tabs_->indexOf(current) >= 0)
        tabs_->setCurrentWidget(current);
}

// What is no fuse may be a long line.
void MemoriesWindow::fitColumns() {
    const int gap = fuseList_->fontMetrics().averageCharWidth() * gapInCharacters;
    const int maxWidth = fuseList_->fontMetrics().averageCharWidth() * maxInCharacters;
    fuseList_->resizeColumnsToContents();
    for (const int column : {FuseListModel::Name, FuseListModel::Hexadecimal})
        fuseList_->setColumnWidth(column, std::min(fuseList_->columnWidth(column) + gap, maxWidth));
}

void MemoriesWindow::fill(BytesPage &page, const ByteBuffer &bytes) {
    page.image.setBytes(bytes);
    page.grid->reloadData();
}

void MemoriesWindow::showPage(QWidget *page, OtherMemory memory, bool isThere) {
    page->hide();
    if (isThere)
        tabs_->addTab(page, tabText(memory));
}

void MemoriesWindow::setSaving(bool isPossible) {
    save_->setEnabled(isPossible);
}
