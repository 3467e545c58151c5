// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "devices/DeviceSearch.h"
#include "devices/NameFilter.h"
#include "files/FolderGuard.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QStringListModel>

#include <functional>
#include <optional>
#include <utility>

class DeviceListModel;
class DeviceListView;
class Log;
class MainQueue;
class QLineEdit;
class QPushButton;
class ScriptedMiniPro;
class SettingsStore;
class ToolTrust;
class WorkState;

/// The controller of the device search panel: asks the tool for the devices whose names hold a
/// term and lists them. It writes no settings; the main window takes the choice from it.
class device_searcher final : public QObject {
    Q_OBJECT

public:
    /// \a toolTrust knows whose command the tool is; \a beep sounds the system beep; \a work is the
    /// program's state of work, which a search takes part in.
    device_searcher(SettingsStore &settings, ToolTrust &toolTrust, Log &log, MainQueue &queue,
                    std::function<void()> beep, WorkState &work, QObject *parent = nullptr);
    ~device_searcher() override;

    // The panel's controls, set before connectPanel().
    DeviceListView *tableview = nullptr;
    /// Lists what can be taken without a search; may be null.
    DeviceListView *likelyView = nullptr;
    QLineEdit *devicesearchterm = nullptr;
    QPushButton *OKButton = nullptr;

    /// Gives the lists their models, and lets a double-click and Enter on a selected name confirm.
    /// A name is selected in one of them at most.
    void connectPanel();

    /// The search: runs the tool with the term and shows what it lists. Returns when the tool has
    /// exited. An empty term beeps and leaves the list as it is; while the tool runs already the
    /// search is refused with a remark. The command may be asked about first, in a remark as well.
    void list(QObject *sender);
    /// Leaves those names in sight that hold every word of \a typed.
    void filter(const QString &typed);
    /// Asks \a mayUseFolder before each search; where it says no, a remark says why.
    void setFolderGuard(FolderGuard mayUseFolder) {
        search_.setFolderGuard(std::move(mayUseFolder));
    }
    /// Offers \a names without a search.
    void setLikely(const QStringList &names);
    /// What was asked is no longer to be seen: the next search is a first one.
    void forgetQuestion() { search_.forgetQuestion(); }
    /// Ends the search in progress, if any; what was listed until then is shown.
    void stop() { search_.stop(); }

    /// The name in the selected row of either list; nothing if no row is selected.
    std::optional<QString> selectedItem(QObject *sender) const;
    /// Confirms, a turn of the event loop later, just as the confirm button does.
    void doubleClick(QObject *sender);

    quint64 numberOfRowsInTableView(QObject *table) const;
    QString tableView_objectValueForTableColumn_row(QObject *table, const QString &column,
                                                    qint64 row) const;
    bool tableView_shouldEditTableColumn_row(QObject *table, const QString &column,
                                             qint64 row) const;
    bool tableView_shouldSelectRow(QObject *table, qint64 row) const;
    bool tableView_shouldSelectTableColumn(QObject *table, const QString &column) const;

signals:
    /// \a run was made; it lives as long as this object.
    void runMade(ScriptedMiniPro *run);
    /// A search begins (true) or has ended (false).
    void searchRunningChanged(bool running);
    /// A search has brought \a names.
    void listed(const QStringList &names);
    /// Something worth saying in the panel; empty: nothing.
    void remark(const QString &sentence);

private:
    void connectList(DeviceListView &list);
    void showLikely();
    void show(const QString &sentence);
    void say(const QString &sentence);
    void sayOutcome();
    void take(const DeviceSearch::Found &found);
    void confirmSelection();
    void endRequest();

    SettingsStore &defaults;
    /// The tool runs that this panel has made; they are kept for its life.
    QList<ScriptedMiniPro *> retainArray;
    std::optional<QStringList> dataArray;

    Log &log_;
    MainQueue &queue_;
    std::function<void()> beep_;
    WorkState &work_;
    DeviceSearch search_;
    DeviceListModel *model_ = nullptr;
    QStringListModel likelyModel_;
    QStringList likely_;
    NameFilter filter_;
    /// What the last search came to.
    QString outcome_;
    /// The user has been asked to select a device.
    bool requestStands_ = false;
};
