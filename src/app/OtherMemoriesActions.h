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
class UserFiles;
struct WindowMenus;

/// What can be done with what a Read brings besides code memory: says that it came, shows it and
/// saves it with the image.
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

    /// What the device, as it is set, is known to hold besides its code memory.
    KnownMemories known() const;

signals:
    /// A Read has brought memories, or none.
    void readTaken();

private:
    void follow(ScriptedMiniPro *run);
    void takeRead();
    void sayWhatCame();
    void showState();

    const Surroundings with_;
    OtherMemoriesWatch watch_;
    QAction *showEntry_;
    QAction *saveEntry_;
    QPointer<MemoriesWindow> shown_;
};
