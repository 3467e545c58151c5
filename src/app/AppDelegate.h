// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "app/ActionGate.h"
#include "app/AppDelegateOutlets.h"
#include "app/BurnDoubt.h"
#include "app/CompositionRemarks.h"
#include "app/DevicePanelHost.h"
#include "app/HandEdits.h"
#include "app/OpenedBinary.h"
#include "app/SecondPress.h"
#include "files/ByteBuffer.h"
#include "grid/GridSource.h"
#include "image/DisplayText.h"
#include "image/ImageComposition.h"
#include "image/ImageRevisions.h"
#include "image/TemporaryWorkspace.h"
#include "tool/RunRecord.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>

class Log;
class MainQueue;
class ScriptedMiniPro;
class SettingsStore;
class TabView;
class UserFiles;
class WorkState;
struct CellEdit;
struct ShownContent;
struct TabViewItem;

/// The main window's controller: it owns the images, the logic-test tables and the tool runs, and
/// says who does what. Every rule (composing, decoding, presenting, judging a run) lives in a
/// folder of its own; the methods here fetch the inputs, call the rule and keep the result.
/// Everything runs on the main thread.
class AppDelegate final : public QObject, public GridSource {
    Q_OBJECT

public:
    /// The images and tables of the window. An absent buffer is null and reads as length 0.
    struct State {
        ByteBuffer read_from_chip_data; ///< the bytes of the last Read
        ByteBuffer opened_bin_data;     ///< the whole opened binary file
        ByteBuffer output_data;         ///< the image to burn, replaced by every composition
        ByteBuffer display_data;        ///< what the grid shows: one of the above, not a copy
        DisplayText strData;            ///< display_data as text
        QStringList logictest_headers;
        QList<QStringList> logictest_rows;
        QList<ScriptedMiniPro *> retainArray; ///< every tool run, kept for the program's life
    };

    /// \a beep sounds the system beep, \a files asks the user for files, \a work is the state that
    /// every action asks \a gate about first, and \a messages takes what there is to say. All are
    /// used as long as the controller lives.
    AppDelegate(SettingsStore &defaults, Log &log, MainQueue &queue, std::function<void()> beep,
                UserFiles &files, WorkState &work, Messages &messages, const ActionGate &gate);
    ~AppDelegate() override;

    AppDelegateOutlets outlets;

    // Start-up and shutdown

    /// Registers the defaults, clears what an earlier run left, reloads the opened binary,
    /// composes the image and shows the selected tab. Called once, after the wiring.
    void applicationDidFinishLaunching();
    /// Nothing to do: the temporary files stay until the next start, the settings save themselves.
    void applicationWillTerminate();
    /// Loads the file that the settings name as the opened binary; null if it cannot be read.
    void load_opened_binary();

    // Operations

    /// The action of the operation buttons, whose "tag" property is the operation code: runs the
    /// tool and takes in what it left. Returns when the tool has exited. Refused (with a sentence)
    /// while a run is in progress.
    void go(QObject *sender);
    /// The action of the Logic test button: clears the results tab, shows it and calls go().
    void testLogic(QObject *sender);
    /// Ends the run or search in progress, if any: the tool's whole process group is asked, then
    /// killed.
    void stopRun();

    // Edits made by hand

    /// The edits of the data to burn since it was composed last, to look at.
    const QUndoStack &editHistory() const { return edits_.history(); }
    /// True, and said, if closing now would lose edits that are in no file; a second call is taken
    /// for the consent of \a presser.
    bool refusesToLoseEdits(SecondPress::Presser presser);
    /// Takes the last edit back and shows its place. Does nothing without one.
    void undoEdit();
    /// Makes the edit again that was taken back last.
    void redoEdit();

    // The image and its files

    void createTempDirectory(QObject *sender);
    void write_output_data_to_temp_file(QObject *sender);
    void clear_temp_files(QObject *sender);
    /// Composes output_data from the current inputs and writes it to the temporary output file.
    void build_output_data(QObject *sender);
    /// Composes at once and redisplays the selected tab a turn of the event loop later.
    void build_and_reload();
    /// The action of the composition controls.
    void handleControl(QObject *sender);

    // Files

    /// Asks for a binary file, keeps its path in the settings, loads it and composes again.
    void browseBinaryFile(QObject *sender);
    /// Makes the file at the absolute \a path the opened binary.
    void openBinary(const QString &path);
    /// Saves the data read from the chip; without any, says so and opens no panel.
    void export_read_from_chip_data(QObject *sender);
    /// Saves the data to burn; without any, says so and opens no panel.
    void export_output_data(QObject *sender);

    // The device search panel

    /// Shows the panel as a sheet on the window.
    void showListPanel(QObject *sender);
    /// Ends the panel; the name selected in it becomes the device a turn of the event loop later.
    void deviceSearchPanelOK(QObject *sender);
    /// Ends the panel and changes nothing.
    void deviceSearchPanelCancel(QObject *sender);

    // Tabs and display

    /// Shows what belongs to \a item; an unknown identifier changes nothing.
    void tabView_didSelectTabViewItem(TabView *tabView, const TabViewItem &item);
    /// Decodes display_data into strData.
    void loadStrData(QObject *sender);
    /// The same strings in the same order, less the empty ones.
    QStringList trimEmptyStrings(const QStringList &strings) const;
    /// The hexadecimal digit for \a value; empty from 16 on.
    QString hexDigitFor(quint16 value) const;
    /// The digits of \a value as hexDigitFor() gives them for its upper part and for what is left.
    QString hexValue(quint64 value) const;
    /// Appends \a text to the console, a turn of the event loop later. From any thread.
    void appendToOutputView(const QString &text);

    // What the grid asks (GridSource)

    quint64 numberOfRowsInTableView(QObject *table) override;
    CellValue tableView_objectValueForTableColumn_row(QObject *table, const QString &column,
                                                      qint64 row) override;
    bool tableView_shouldEditTableColumn_row(QObject *table, const QString &column,
                                             qint64 row) override;
    void tableView_setObjectValue_forTableColumn_row(QObject *table, const QString &value,
                                                     const QString &column, qint64 row) override;
    bool tableView_shouldSelectRow(QObject *table, qint64 row) override;
    bool tableView_shouldSelectTableColumn(QObject *table, const QString &column) override;
    DragOperation tableView_validateDrop_proposedRow_proposedDropOperation(QObject *table,
                                                                           const QMimeData *drag,
                                                                           qint64 row,
                                                                           int operation) override;

    /// The images and tables, to look at.
    const State &state() const { return state_; }
    /// Which state of the data to burn it is: equal numbers mean equal bytes.
    quint64 imageRevision() const { return edits_.state().revision; }

signals:
    /// \a run was made; it lives as long as this object.
    void runMade(ScriptedMiniPro *run);
    /// A run of an operation is over, and what it left has been taken in.
    void runEnded(const RunRecord &record);
    /// The data to burn have other bytes, or are another image.
    void imageToBurnChanged();

private:
    void chooseOperation(ScriptedMiniPro &run, int tag);
    BurnSituation burnSituation(int tag) const;
    bool asksBeforeRun(const BurnSituation &burn);
    void writeImageAgain();
    RunRecord launchAndWait(ScriptedMiniPro &run, const BurnSituation &burn);
    QString takeReadData();
    void takeLogicReport(RunRecord &record);
    void sayWhatReadLeft(RunRecord &record, const QString &trouble);
    CompositionInputs compositionInputs() const;
    ImageControls imageControls(const CompositionInputs &inputs) const;
    void settingChanged(const QString &key);
    void noteImageChanged();
    void reloadOpenedBinary();
    void sayReplacedEdits();
    void sayRestoredEdits(int edits);
    void restoreEdits();
    void takeEdit(const CellEdit &edit, const QString &entry);
    void showStep(qint64 offset);
    void saveAndShowEdit();
    ShownContent shownContent() const;
    void noteSaved(const ByteBuffer &bytes);
    void sayTextRemark(const QString &tab);
    QString selectedTab() const;

    SettingsStore &defaults_;
    Log &log_;
    MainQueue &queue_;
    std::function<void()> beep_;
    UserFiles &files_;
    WorkState &work_;
    Messages &messages_;
    const ActionGate &gate_;
    TemporaryWorkspace workspace_;
    State state_;
    QPointer<ScriptedMiniPro> currentRun_;
    HandEdits edits_{state_.output_data};
    ImageRevisions revisions_;
    OpenedBinary openedBinary_{state_.opened_bin_data, messages_};
    DevicePanelHost panelHost_{outlets, defaults_, queue_, messages_, gate_};
    SecondPress secondPress_{messages_};
    /// The device that read_from_chip_data came from.
    QString readDevice_;
};
