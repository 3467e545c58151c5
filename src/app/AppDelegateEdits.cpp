// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// The data to burn, edited by hand.

#include "app/AppDelegate.h"

#include "base/WorkState.h"
#include "grid/CellEdit.h"
#include "grid/GridColumns.h"
#include "grid/GridPresentation.h"
#include "grid/GridView.h"
#include "widgets/TabView.h"

#include <QLocale>

bool AppDelegate::tableView_shouldEditTableColumn_row(QObject *, const QString &, qint64) {
    return mayEdit(selectedTab()) && work_.isIdle();
}

void AppDelegate::tableView_setObjectValue_forTableColumn_row(QObject *, const QString &value,
                                                              const QString &column, qint64 row) {
    if (selectedTab() != burnTabIdentifier() || !state_.output_data || gate_.refuses())
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
    messages_.say(Topic::Entry, sentence);
}

void AppDelegate::saveAndShowEdit() {
    write_output_data_to_temp_file(this);
    loadStrData(this);
    outlets.tableview->reloadData();
    sayTextRemark(burnTabIdentifier());
    noteImageChanged();
}

void AppDelegate::showStep(qint64 offset) {
    outlets.tabview->selectTabViewItem(burnTabIdentifier());
    state_.display_data = state_.output_data;
    saveAndShowEdit();
    sayRestoredEdits(0);
    outlets.tableview->showAddress(offset);
}

// Whoever takes back what is being typed means the whole entry.
void AppDelegate::undoEdit() {
    if (gate_.refusesElseCommits())
        return;
    edits_.undo();
}

void AppDelegate::redoEdit() {
    if (gate_.refusesElseCommits())
        return;
    edits_.redo();
}

// Edits made by hand may be an hour's work, and any control of the composition replaces them.
void AppDelegate::sayReplacedEdits() {
    const int edits = edits_.replaced().isEmpty() ? 0 : edits_.replaced().last().state.edits;
    messages_.say(Topic::ReplacedEdits,
                  edits == 0   ? QString()
                  : edits == 1 ? tr("1 hand edit was replaced.")
                               : tr("%1 hand edits were replaced.").arg(QLocale().toString(edits)),
                  {tr("Restore"), [this] { restoreEdits(); }});
}

// How many edits have just come back, if any, and where the image and the controls part.
void AppDelegate::sayRestoredEdits(int edits) {
    QStringList sentences;
    if (edits > 0)
        sentences << (edits == 1
                          ? tr("1 hand edit was restored.")
                          : tr("%1 hand edits were restored.").arg(QLocale().toString(edits)));
    const QStringList differing =
        controlsThatDiffer(edits_.state().madeWith, imageControls(compositionInputs()));
    if (!differing.isEmpty())
        sentences << tr("This image was made with other values than these now: %1.")
                         .arg(QLocale().createSeparatedList(differing));
    messages_.say(Topic::RestoredImage, sentences.join(QLatin1Char(' ')));
}

void AppDelegate::restoreEdits() {
    if (gate_.refusesElseCommits())
        return;
    if (edits_.replaced().isEmpty())
        return;
    const int edits = edits_.replaced().last().state.edits;
    edits_.restore();
    sayReplacedEdits();
    sayRestoredEdits(edits);
    outlets.tableview->setFocus(Qt::OtherFocusReason);
}

bool AppDelegate::refusesToLoseEdits(SecondPress::Presser presser) {
    const HandEdits::Unsaved edits = edits_.unsaved();
    if (edits.present + edits.replaced == 0)
        return false;
    SecondPress::Question question;
    question.thing = QStringLiteral("close %1 %2 %3")
                         .arg(QString::number(imageRevision()), QString::number(edits.present),
                              QString::number(edits.replaced));
    if (edits.present > 0) {
        question.sentence =
            edits.present == 1
                ? tr("1 hand edit is in no file. Save the data to burn, or close again to give it "
                     "up.")
                : tr("%1 hand edits are in no file. Save the data to burn, or close again to give "
                     "them up.")
                      .arg(QLocale().toString(edits.present));
        question.action = {tr("Save data to burn\u2026"), [this] { export_output_data(this); }};
    } else {
        question.sentence =
            edits.replaced == 1
                ? tr("1 hand edit that was replaced is in no file. Restore it, or close again to "
                     "give it up.")
                : tr("%1 hand edits that were replaced are in no file. Restore them, or close "
                     "again to give them up.")
                      .arg(QLocale().toString(edits.replaced));
        question.action = {tr("Restore"), [this] { restoreEdits(); }};
    }
    return !secondPress_.confirms(question, presser);
}
