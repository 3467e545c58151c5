// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/FactsLine.h"

#include "grid/GridView.h"
#include "image/BlockWords.h"
#include "imageviews/FactsWords.h"
#include "widgets/MenuEntry.h"
#include "widgets/PlainToolTip.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace {

/// How many letters of the origin are always shown.
constexpr int minOriginLetters = 10;
/// What the field keeps free before its text, and on both sides of it with a reserve; in pixels.
constexpr int innerMargin = 2;
constexpr int innerMargins = 6;
constexpr qsizetype shownDigits = 8;
/// Where factsOf() has the checksums.
constexpr qsizetype checksumPlace = 1;

bool hasBytes(const std::optional<ShownImage> &image) {
    return image && lengthOf(image->bytes) > 0;
}

} // namespace

FactsLine::FactsLine(QWidget *parent) : FittingLine(parent) {
    setTextMargins(-innerMargin, 0, 0, 0);
    connect(&turns_, &QTimer::timeout, this, &FactsLine::turn);
}

void FactsLine::follow(const GridView &grid, Source shown) {
    grid_ = &grid;
    shown_ = std::move(shown);
    connect(&grid.selection(), &GridSelection::changed, this, &FactsLine::refresh);
    refresh();
}

void FactsLine::refresh() {
    if (!turns_.isActive())
        turns_.start(0);
}

void FactsLine::turn() {
    const std::optional<ShownImage> image = shown_();
    const bool readsSha256 = reader_.isReadingSha256();
    if (!readOn(image.value_or(ShownImage{})))
        turns_.stop();
    if (readsSha256 && !reader_.sha256().isEmpty())
        QGuiApplication::clipboard()->setText(reader_.sha256());
    takeWords(image);
}

// The selected bytes if they are more than one, which has words of its own.
ByteRange FactsLine::selectedBlock() const {
    const ByteRange selected = grid_->selection().bytes();
    return selected.length > 1 ? selected : ByteRange();
}

// True while there is more to read.
bool FactsLine::readOn(const ShownImage &image) {
    const ByteRange block = selectedBlock();
    const bool readsImage = reader_.readOn(image);
    const bool readsBlock = block_.readOn(image, block);
    return readsImage || readsBlock;
}

void FactsLine::takeWords(const std::optional<ShownImage> &image) {
    const QString sha256 = reader_.sha256();
    const QString label = tr("SHA-256 %1");
    QStringList facts = image ? factsOf(*image) : QStringList();
    QStringList brief = facts;
    if (hasBytes(image))
        brief.removeAt(checksumPlace);
    origin_ = image ? image->origin : QString();
    const QString whole = joined(QStringList{origin_} + facts +
                                 QStringList{sha256.isEmpty() ? QString() : label.arg(sha256)});
    QString digest;
    if (!sha256.isEmpty())
        digest = tr("SHA-256 copied: %1").arg(sha256.first(shownDigits) + u'\u2026');
    else if (reader_.isReadingSha256())
        digest = label.arg(QStringLiteral("\u2026"));
    facts_ = joined(facts << digest);
    brief_ = joined(brief << digest);
    setPlainToolTip(*this, whole);
    say(whole);
}

// Where every byte is the same, the one under the cursor is told with them.
QStringList FactsLine::factsOf(const ShownImage &image) const {
    const qsizetype size = lengthOf(image.bytes);
    if (size == 0)
        return {sizeWords(size)};
    const std::optional<ImageFacts> facts = reader_.facts();
    const ByteRange block = selectedBlock();
    QString selected = block.length > 0 ? blockWords(block, block_.facts()) : QString();
    if (selected.isEmpty() && facts)
        selected = blankRemark(*facts, image.isRead);
    if (selected.isEmpty())
        selected = byteUnderCursor(image.bytes);
    return {sizeWords(size), checksumWords(facts), image.comparison, selected};
}

QString FactsLine::byteUnderCursor(const ByteBuffer &bytes) const {
    const ByteRange byte = grid_->selection().bytes();
    if (byte.length != 1 || byte.offset >= lengthOf(bytes))
        return {};
    return byteWords(byte.offset, quint8(bytes->constData()[byte.offset]));
}

QString FactsLine::withFittingOrigin(const QString &facts) const {
    const QFontMetrics letters = fontMetrics();
    const int rest = letters.horizontalAdvance(joined({QStringLiteral(" "), facts}));
    const int room = std::max(roomForText() - rest, minOriginLetters * letters.averageCharWidth());
    return joined({letters.elidedText(origin_, Qt::ElideMiddle, room), facts});
}

QString FactsLine::fittingText() const {
    const QFontMetrics letters = fontMetrics();
    const QString whole = joined({origin_, facts_});
    if (letters.horizontalAdvance(whole) <= roomForText())
        return whole;
    for (const QString &facts : {facts_, brief_})
        if (const QString text = withFittingOrigin(facts);
            letters.horizontalAdvance(text) <= roomForText())
            return text;
    return letters.elidedText(withFittingOrigin(brief_), Qt::ElideMiddle, roomForText());
}

int FactsLine::roomForText() const {
    return width() - innerMargins;
}

void FactsLine::copyWords() const {
    const bool isPart = hasSelectedText() && selectedText() != text();
    QGuiApplication::clipboard()->setText(isPart ? selectedText() : wholeText());
}

void FactsLine::askForSha256() {
    const std::optional<ShownImage> image = shown_();
    if (!hasBytes(image))
        return;
    reader_.askForSha256(*image);
    refresh();
}

void FactsLine::contextMenuEvent(QContextMenuEvent *event) {
    auto *menu = new QMenu(this);
    menu->addAction(tr("&Copy"), this, &FactsLine::copyWords)->setEnabled(!wholeText().isEmpty());
    menu->addAction(tr("&SHA-256"), this, &FactsLine::askForSha256)->setEnabled(hasBytes(shown_()));
    popUp(menu, event->globalPos());
}

void FactsLine::keyPressEvent(QKeyEvent *event) {
    if (event == QKeySequence::Copy)
        copyWords();
    else
        FittingLine::keyPressEvent(event);
}
