// The data to burn, edited by hand.

#include "app/AppDelegate.h"

#include "base/WorkState.h"
#include "grid/CellEdit.h"
#include "grid/GridColumns.h"
#include "grid/GridPresentation.h"
#include "grid/GridView.h"
#include "widgets/KeyBinder.h"
#include "widgets/TabView.h"

#include <QLocale>

namespace {

const QString editsTopic = QStringLiteral("edits");
const QString entryTopic = QStringLiteral("entry");
const QString restoredTopic = QStringLiteral("restored");

} // namespace

bool AppDelegate::tableView_shouldEditTableColumn_row(QObject *, const QString &, qint64) {
    return mayEdit(selectedTab()) && work_.isIdle();
}

void AppDelegate::tableView_setObjectValue_forTableColumn_row(QObject *, const QString &value,
                                                              const QString &column, qint64 row) {
    if (selectedTab() != burnTabIdentifier() || !state_.output_data || refusesWhileBusy())
        return;
    const CellEditOutcome edit =
        commitEntry(*state_.output_data, state_.strData.length(), value, columnNumber(column), row);
    if (edit)
        takeEdit(*edit, value);
}

QString AppDelegate::hexDigitFor(quint16 value) const {
    return ::hexDigitFor(value);
}

QString AppDelegate::hexValue(quint64 value) const {
    return ::hexValue(value);
}

void AppDelegate::takeEdit(const CellEdit &edit, const QString &entry) {
    QString sentence;
    if (edit.rejected) {
        beep_();
        sentence = tr("\u201c%1\u201d was not taken: a byte is a hexadecimal value from 01 to FF.")
                       .arg(entry);
    } else {
        edits_.remember(edit);
    }
    saveAndShowEdit();
    outlets.tableview->advanceAfterEdit(edit);
    notice(entryTopic, MessageLine::Severity::Warning, sentence);
}

void AppDelegate::saveAndShowEdit() {
    write_output_data_to_temp_file(this);
    loadStrData(this);
    outlets.tableview->reloadData();
    sayTextRemark(burnTabIdentifier());
    noteImageChanged();
}

void AppDelegate::showStep(qint64 offset) {
    outlets.messageLine->clearNotice(restoredTopic);
    outlets.tabview->selectTabViewItem(burnTabIdentifier());
    state_.display_data = state_.output_data;
    saveAndShowEdit();
    outlets.tableview->showAddress(offset);
}

// Whoever takes back what is being typed means the whole entry.
void AppDelegate::undoEdit() {
    if (refusesWhileBusy())
        return;
    commitPendingInput();
    edits_.undo();
}

void AppDelegate::redoEdit() {
    if (refusesWhileBusy())
        return;
    commitPendingInput();
    edits_.redo();
}

void AppDelegate::commitPendingInput() {
    outlets.keyBinder->commitPending();
    outlets.tableview->commitOpenEditor();
}

// Edits made by hand may be an hour's work, and any control of the composition replaces them.
void AppDelegate::offerReplacedEdits(const HandEdits::Replaced &replaced,
                                     const ImageControls &madeWith) {
    if (state_.output_data && *state_.output_data == *replaced.image)
        return;
    const int edits = replaced.state.edits;
    notice(editsTopic, MessageLine::Severity::Warning,
           edits == 1 ? tr("1 hand edit was replaced.")
                      : tr("%1 hand edits were replaced.").arg(QLocale().toString(edits)),
           {tr("Restore"), [this, replaced, madeWith] { restoreEdits(replaced, madeWith); }});
}

void AppDelegate::restoreEdits(const HandEdits::Replaced &replaced, const ImageControls &madeWith) {
    if (refusesWhileBusy())
        return;
    commitPendingInput();
    outlets.messageLine->clearNotice(editsTopic);
    edits_.restore(replaced);
    const int edits = replaced.state.edits;
    QString sentence = edits == 1
                           ? tr("1 hand edit was restored.")
                           : tr("%1 hand edits were restored.").arg(QLocale().toString(edits));
    const QStringList differing = controlsThatDiffer(madeWith, imageControls(compositionInputs()));
    if (!differing.isEmpty())
        sentence +=
            QLatin1Char(' ') + tr("This image was made with other values than these now: %1.")
                                   .arg(QLocale().createSeparatedList(differing));
    notice(restoredTopic, MessageLine::Severity::Information, sentence);
    outlets.tableview->setFocus(Qt::OtherFocusReason);
}

bool AppDelegate::refusesToLoseEdits() {
    if (!edits_.areUnsaved())
        return false;
    const ImageState now = edits_.state();
    const QString sentence =
        now.edits == 1
            ? tr("1 hand edit is in no file. Save the data to burn, or close again to give it up.")
            : tr("%1 hand edits are in no file. Save the data to burn, or close again to give them "
                 "up.")
                  .arg(QLocale().toString(now.edits));
    return !secondPress_.confirms(
        {.thing = QStringLiteral("close %1").arg(now.revision),
         .sentence = sentence,
         .action = {tr("Save data to burn\u2026"), [this] { export_output_data(this); }}});
}
