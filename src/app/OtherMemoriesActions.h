// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/OtherMemoriesWatch.h"
#include "files/FolderGuard.h"
#include "imageviews/MemoriesWindow.h"

#include <QObject>
#include <QPointer>

class ActionGate;
class AppDelegate;
class ChipInquiry;
class MainWindow;
class Messages;
class QAction;
class QLabel;
class UserFiles;
struct WindowMenus;

/// Binds what a Read brings besides code memory to the window: says that it came, shows it, saves
/// it with the image, and says beside the next command what a Write leaves out.
class OtherMemoriesActions final : public QObject {
    Q_OBJECT

public:
    /// What it works with; all must outlive it.
    struct Surroundings {
        MainWindow &window;
        AppDelegate &delegate;
        UserFiles &files;
        const ChipInquiry &inquiry;
        const SettingsStore &settings;
        const WorkState &work;
        const ActionGate &gate;
        Messages &messages;
        FolderGuard mayUseFolder; ///< of the temporary files
    };

    explicit OtherMemoriesActions(const Surroundings &surroundings);

    /// Adds its entries to the menus File and View.
    void addEntries(const WindowMenus &menus);

    /// Opens the window of the memories, or brings it to the front; does nothing without any.
    void show();
    /// Asks for a name and saves image and memories of the newest Read as files of it. Refused
    /// while the tool works; does nothing without memories.
    void saveSet();

private:
    void follow(ScriptedMiniPro *run);
    void takeRead();
    void sayWhatCame();
    void showState();
    void makeExtent();
    void showExtent();
    KnownMemories known() const;

    const Surroundings with_;
    OtherMemoriesWatch watch_;
    QAction *showEntry_;
    QAction *saveEntry_;
    QLabel *extent_;
    QString verifyTip_; ///< of the buttons, as they are for every chip
    QString writeTip_;
    QPointer<MemoriesWindow> shown_;
};
