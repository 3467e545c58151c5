// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/FactsWiring.h"

#include "app/MainWindow.h"
#include "base/JoinedWords.h"
#include "control/AppDelegate.h"
#include "control/HandEdits.h"
#include "control/ReadOrigin.h"
#include "devices/ChipErasure.h"
#include "files/ByteBuffer.h"
#include "grid/ShownTab.h"
#include "imageviews/FactsLine.h"
#include "imageviews/FactsWords.h"
#include "imageviews/ImageComparison.h"
#include "imageviews/ImageMap.h"
#include "imageviews/ShownImageReader.h"
#include "language/RunLog.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include "ui_MainWindow.h"

#include <optional>

namespace {

/// Tells of the Read that brought \a bytes; empty if none is known to have done that.
QString originOfRead(const ByteBuffer &bytes, const ReadOrigin &origin) {
    const auto read = origin.of(bytes);
    return read ? readOriginWords(read->device, read->endedAt, QDate::currentDate()) : QString();
}

/// The chip that is set is known to hold the data read.
bool chipHoldsDataRead(const AppDelegate &delegate, const RunLog &runs, const QString &device) {
    const auto read = delegate.readOrigin().of(delegate.state().read_from_chip_data);
    return read && read->device == device && runs.nothingWrittenSinceRead();
}

/// How the images differ, and what that means for the chip.
QString comparisonWords(const AppDelegate &delegate, const RunLog &runs,
                        const FactsContext &context) {
    const ImageComparison &comparison = context.comparison;
    if (!comparison.hasBoth())
        return {};
    const std::optional<ImageDifferences> differences = comparison.differences();
    QStringList words = {differenceWords(differences, comparison.extraBytes())};
    const QString device = context.settings.stringValue(settingsKeys::device);
    if (differences && losesBitsOnly(device) && chipHoldsDataRead(delegate, runs, device))
        words << erasureWords(*differences, comparison.coversAllToBurn());
    return joinedWords(words, u", ");
}

/// Marks in \a map where the images differ. While they are compared anew, as after an edit, what
/// was known stays: it would flicker.
void markDifferences(ImageMap &map, const ImageComparison &comparison) {
    if (comparison.differences())
        map.setDiffering({comparison.blocks().blockSize(), comparison.blocks().differing()});
    else if (!comparison.hasBoth())
        map.setDiffering({});
}

std::optional<ShownImage> shownImage(const Ui::MainWindow &c, AppDelegate &delegate,
                                     const RunLog &runs, const FactsContext &context) {
    const ShownTab tab = shownTab(*c.tabview);
    const ByteBuffer &bytes = delegate.state().display_data;
    if (tab == ShownTab::Read)
        return ShownImage{bytes, 0, true, originOfRead(bytes, delegate.readOrigin()),
                          comparisonWords(delegate, runs, context)};
    if (tab != ShownTab::ToBurn)
        return std::nullopt;
    const ImageState state = delegate.edits().state();
    return ShownImage{bytes, state.revision, false,
                      burnOriginWords(state.source, state.madeWith.binary,
                                      delegate.openedBinary().onDisk(), state.edits),
                      comparisonWords(delegate, runs, context)};
}

} // namespace

void wireFacts(MainWindow &window, AppDelegate &delegate, const RunLog &runs,
               const FactsContext &context) {
    const Ui::MainWindow &c = window.controls();
    const auto shown = [&c, &delegate, &runs, context] {
        return shownImage(c, delegate, runs, context);
    };
    c.factsLine->follow(*c.tableview, shown);
    c.imageMap->follow(*c.tableview, shown);
    QObject::connect(&context.comparison, &ImageComparison::changed, c.imageMap,
                     [map = c.imageMap, &comparison = context.comparison] {
                         markDifferences(*map, comparison);
                     });
    QObject::connect(&delegate, &AppDelegate::shownContentChanged, c.factsLine,
                     &FactsLine::refresh);
    QObject::connect(&delegate, &AppDelegate::shownContentChanged, c.imageMap, &ImageMap::refresh);
    QObject::connect(&delegate, &AppDelegate::shownBytesChanged, c.imageMap, &ImageMap::takeChange);
    QObject::connect(&delegate, &AppDelegate::imageToBurnChanged, c.factsLine, &FactsLine::refresh);
    QObject::connect(&delegate, &AppDelegate::imageToBurnChanged, c.imageMap, &ImageMap::refresh);
    QObject::connect(&runs, &RunLog::added, c.factsLine, &FactsLine::refresh);
    QObject::connect(&delegate.openedBinary(), &OpenedBinary::onDiskChanged, c.factsLine,
                     &FactsLine::refresh);
    QObject::connect(&context.comparison, &ImageComparison::changed, c.factsLine,
                     &FactsLine::refresh);
    QObject::connect(&context.settings, &SettingsStore::valueChanged, c.factsLine,
                     &FactsLine::refresh);
}
