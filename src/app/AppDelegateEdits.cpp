// The data to burn, edited by hand.

#include "app/AppDelegate.h"

#include "app/ByteChange.h"
#include "base/WorkState.h"
#include "grid/CellEdit.h"
#include "grid/GridColumns.h"
#include "grid/GridPresentation.h"
#include "grid/GridView.h"
#include "widgets/KeyBinder.h"
#include "widgets/TabView.h"

#include <QLocale>

#include <utility>

namespace {

const QString editsTopic = QStringLiteral("edits");
const QString entryTopic = QStringLiteral("entry");

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
        rememberEdit(edit);
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
}

void AppDelegate::rememberEdit(const CellEdit &edit) {
    const QByteArray written = state_.output_data->mid(edit.offset, edit.bytesWritten);
    if (written == edit.replaced)
        return;
    const auto replace = [this](qsizetype offset, qsizetype length, const QByteArray &bytes) {
        replaceBytes(offset, length, bytes);
    };
    ++handEdits_;
    editHistory_.push(new ByteChange(replace, edit.offset, edit.replaced, written));
}

void AppDelegate::replaceBytes(qsizetype offset, qsizetype length, const QByteArray &bytes) {
    state_.output_data->replace(offset, length, bytes);
    outlets.tabview->selectTabViewItem(burnTabIdentifier());
    saveAndShowEdit();
    outlets.tableview->showAddress(offset);
}

// Whoever takes back what is being typed means the whole entry.
void AppDelegate::undoEdit() {
    if (refusesWhileBusy())
        return;
    commitPendingInput();
    if (!editHistory_.canUndo())
        return;
    --handEdits_;
    editHistory_.undo();
}

void AppDelegate::redoEdit() {
    if (refusesWhileBusy())
        return;
    commitPendingInput();
    if (!editHistory_.canRedo())
        return;
    ++handEdits_;
    editHistory_.redo();
}

void AppDelegate::commitPendingInput() {
    outlets.keyBinder->commitPending();
    outlets.tableview->commitOpenEditor();
}

// Edits made by hand may be an hour's work, and any control of the composition replaces them.
void AppDelegate::offerReplacedEdits(const ByteBuffer &edited) {
    const int edits = std::exchange(handEdits_, 0);
    if (state_.output_data && *state_.output_data == *edited)
        return;
    outlets.messageLine->setNotice(
        editsTopic, MessageLine::Severity::Warning,
        edits == 1 ? tr("1 hand edit was replaced.")
                   : tr("%1 hand edits were replaced.").arg(QLocale().toString(edits)),
        {tr("Restore"), [this, edited, edits] { restoreEdits(edited, edits); }});
}

void AppDelegate::restoreEdits(const ByteBuffer &edited, int edits) {
    if (refusesWhileBusy())
        return;
    editHistory_.clear();
    state_.output_data = edited;
    handEdits_ = edits;
    emptyWriteAnnounced_ = false;
    outlets.messageLine->clearNotice(editsTopic);
    write_output_data_to_temp_file(this);
    tabView_didSelectTabViewItem(outlets.tabview, outlets.tabview->selectedTabViewItem());
}
