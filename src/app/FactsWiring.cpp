// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/FactsWiring.h"

#include "app/MainWindow.h"
#include "control/AppDelegate.h"
#include "language/RunLog.h"
#include "views/FactsWords.h"

#include "ui_MainWindow.h"

#include <algorithm>

namespace {

bool broughtData(const RunRecord &run) {
    return run.operation == ReadOperation &&
           (run.outcome.verdict == RunOutcome::Verdict::Succeeded ||
            run.outcome.verdict == RunOutcome::Verdict::Qualified);
}

/// Of the newest Read that brought data; nothing if these are not what it brought: a Read that
/// fails may leave a part.
QString originOfRead(const ByteBuffer &bytes, const QList<RunRecord> &runs) {
    const auto read = std::find_if(runs.rbegin(), runs.rend(), broughtData);
    if (read == runs.rend() || read->imageLength != lengthOf(bytes))
        return {};
    return readOriginWords(read->device, read->ended, QDate::currentDate());
}

std::optional<ShownImage> shownImage(const Ui::MainWindow &c, AppDelegate &delegate,
                                     const RunLog &runs) {
    const QString tab = c.tabview->selectedTabViewItem().identifier;
    const ByteBuffer &bytes = delegate.state().display_data;
    if (tab == readTabIdentifier())
        return ShownImage{bytes, 0, true, originOfRead(bytes, runs.records())};
    if (tab != burnTabIdentifier())
        return std::nullopt;
    const ImageState state = delegate.edits().state();
    return ShownImage{bytes, state.revision, false,
                      burnOriginWords(state.source, state.madeWith.binary, state.edits)};
}

} // namespace

void wireFacts(MainWindow &window, AppDelegate &delegate, const RunLog &runs) {
    const Ui::MainWindow &c = window.controls();
    c.factsLine->follow(*c.tableview,
                        [&c, &delegate, &runs] { return shownImage(c, delegate, runs); });
    QObject::connect(&delegate, &AppDelegate::imageToBurnChanged, c.factsLine, &FactsLine::refresh);
    QObject::connect(&runs, &RunLog::added, c.factsLine, &FactsLine::refresh);
}
