// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/ActionGate.h"
#include "control/AppDelegateOutlets.h"
#include "control/BurnFile.h"
#include "control/DevicePanelHost.h"
#include "control/EditOffers.h"
#include "control/HandEdits.h"
#include "control/Messages.h"
#include "control/OpenedBinary.h"
#include "control/ReadOrigin.h"
#include "control/RunConsent.h"
#include "control/SecondPress.h"
#include "control/UserFiles.h"
#include "files/ByteBuffer.h"
#include "files/FolderGuard.h"
#include "grid/CellEdit.h"
#include "grid/GridPresentation.h"
#include "grid/GridSource.h"
#include "grid/ShownTab.h"
#include "image/DisplayText.h"
#include "image/ImageRevisions.h"
#include "image/TemporaryWorkspace.h"
#include "language/LogicReport.h"
#include "language/RunRecord.h"

#include <QMainWindow>
#include <QPointer>
#include <QStringList>

#include <functional>

class ScriptedMiniPro;
class WorkState;
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

    /// What the controller works with; all must outlive it.
    struct Surroundings {
        SettingsStore &defaults;
        ToolTrust &toolTrust; ///< whose command the tool is
        Log &log;
        MainQueue &queue;
        std::function<void()> beep; ///< the system beep
        WorkState &work;
        Messages &messages;
        const ActionGate &gate; ///< every action asks it first
        UserFiles &files;
        FolderGuard mayUseFolder; ///< of the temporary files
    };

    explicit AppDelegate(const Surroundings &surroundings);

    AppDelegateOutlets outlets;

    QMainWindow *window() const { return window_; }
    void setWindow(QMainWindow *window) { window_ = window; }

    // Start-up and shutdown

    /// Registers the defaults, clears what an earlier run left, reloads the opened binary,
    /// composes the image and shows the selected tab. Called once, after the wiring.
    void applicationDidFinishLaunching();
    /// Nothing to do: the temporary files stay until the next start, the settings save themselves.
    void applicationWillTerminate() {}
    /// Loads the file that the settings name as the opened binary; null if it cannot be read.
    void load_opened_binary();

    // Operations

    /// The action of the operation buttons, whose "tag" property is the operation code: runs the
    /// tool and takes in what it left. Returns when the tool has exited; false if it was not run.
    bool go(QObject *sender, RunPress press = RunPress::Own);
    /// The action of the Logic test button: clears the results tab, shows it and calls go().
    bool testLogic(QObject *sender, RunPress press = RunPress::Own);
    /// Ends the run or search in progress, if any: the tool's whole process group is asked, then
    /// killed.
    void stopRun();

    // The image and its files

    void createTempDirectory(QObject *) { workspace_.createTempDirectory(); }
    void write_output_data_to_temp_file(QObject *) { burnFile_.write(); }
    void clear_temp_files(QObject *) { workspace_.clear_temp_files(); }
    /// Composes output_data from the current inputs and writes it to the temporary output file.
    void build_output_data(QObject *sender);
    /// Composes at once and redisplays the selected tab a turn of the event loop later.
    void build_and_reload();
    /// The action of the composition controls.
    void handleControl(QObject *sender);

    // Files and panels

    /// Asks for a binary file and opens it.
    void browseBinaryFile(QObject *sender);
    /// Makes the file at the absolute \a path the opened binary: keeps it in the settings, loads
    /// it and composes again.
    void openBinary(const QString &path);
    /// Saves the data read from the chip; without any, says so and opens no panel.
    void export_read_from_chip_data(QObject *sender);
    /// Saves the data to burn; without any, says so and opens no panel.
    void export_output_data(QObject *sender);
    /// Shows the device search panel as a sheet on the window.
    void showListPanel(QObject *) { panelHost_.show(); }
    /// Ends the panel; the name selected in it becomes the device a turn of the event loop later.
    void deviceSearchPanelOK(QObject *) { panelHost_.confirm(); }
    /// Ends the panel and changes nothing.
    void deviceSearchPanelCancel(QObject *) { panelHost_.cancel(); }

    // Tabs and display

    /// Shows what belongs to \a item; an unknown identifier changes nothing.
    void tabView_didSelectTabViewItem(TabView *tabView, const TabViewItem &item);
    /// Decodes display_data into strData.
    void loadStrData(QObject *sender);
    /// The same strings in the same order, less the empty ones.
    QStringList trimEmptyStrings(const QStringList &all) const { return ::trimEmptyStrings(all); }
    /// The hexadecimal digit for \a value; empty from 16 on.
    QString hexDigitFor(quint16 value) const { return ::hexDigitFor(value); }
    /// The digits of \a value as hexDigitFor() gives them for its upper part and for what is left.
    QString hexValue(quint64 value) const { return ::hexValue(value); }
    /// Appends \a text to the console, a turn of the event loop later. From any thread.
    void appendToOutputView(const QString &text);

    // What the grid asks (GridSource)

    quint64 numberOfRowsInTableView(QObject *) override { return rowCount(shownContent()); }
    CellValue tableView_objectValueForTableColumn_row(QObject *table, const QString &column,
                                                      qint64 row) override;
    bool tableView_shouldEditTableColumn_row(QObject *table, const QString &column,
                                             qint64 row) override;
    void tableView_setObjectValue_forTableColumn_row(QObject *table, const QString &value,
                                                     const QString &column, qint64 row) override;
    bool tableView_shouldSelectRow(QObject *, qint64) override { return true; }
    bool tableView_shouldSelectTableColumn(QObject *, const QString &) override { return false; }
    DragOperation tableView_validateDrop_proposedRow_proposedDropOperation(QObject *,
                                                                           const QMimeData *drag,
                                                                           qint64, int) override {
        return dropOperation(drag);
    }

    /// The opened file, to look at.
    const OpenedBinary &openedBinary() const { return openedBinary_; }
    /// The images and tables, to look at.
    const State &state() const { return state_; }
    /// Which Read the data read from the chip are of.
    const ReadOrigin &readOrigin() const { return readOrigin_; }
    /// Which state of the data to burn it is: equal numbers mean equal bytes.
    quint64 imageRevision() const { return edits_.state().revision; }
    /// The edits of the data to burn, and what can be done with them.
    EditOffers &edits() { return offers_; }

signals:
    /// \a run was made; it lives as long as this object.
    void runMade(ScriptedMiniPro *run);
    /// A run of an operation is over, and what it left has been taken in.
    void runEnded(const RunRecord &record);
    /// The data to burn have other bytes, or are another image.
    void imageToBurnChanged();
    /// What a Read left has taken the place of the data read from the chip, be it the same or none.
    void readDataTaken();
    /// The grid shows another image or other test results, or the same anew.
    void shownContentChanged();
    /// In the image that the grid shows the bytes of \a changed were edited, or are gone.
    void shownBytesChanged(ByteRange changed);

private:
    ScriptedMiniPro *makeRun(int tag);
    void takeReadData(RunRecord &record);
    void takeLogicReport(RunRecord &record);
    void noteImageChanged();
    CellEditOutcome commit(const QString &entry, const QString &column, qint64 row);
    void noteEdited(ByteRange shown);
    void showAnew();
    ByteRange saveEdit(ByteRange edited);
    void showBlock(ByteRange changed);
    void showStep(ByteRange changed);
    ShownContent shownContent() const;
    ShownTab selectedTab() const;
    void showSelectedTab();

    const Surroundings with_;
    State state_;
    QPointer<QMainWindow> window_;
    QPointer<ScriptedMiniPro> currentRun_;
    TemporaryWorkspace workspace_;
    ImageRevisions revisions_;
    SecondPress secondPress_;
    BurnFile burnFile_;
    RunConsent consent_;
    HandEdits edits_;
    EditOffers offers_;
    OpenedBinary openedBinary_;
    DevicePanelHost panelHost_;
    ReadOrigin readOrigin_; ///< of read_from_chip_data
};
