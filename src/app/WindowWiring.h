// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class ActionGate;
class AppDelegate;
class KeyBinder;
class MainWindow;
class Messages;
class UAStringManager;
class UserFiles;
class DeviceSearchPanel;
class WorkState;
class device_searcher;

/// What the window's controls work with, besides the controller.
struct WindowParts {
    KeyBinder &binder;
    UAStringManager &favourites;
    device_searcher &searcher;
    DeviceSearchPanel &searchPanel;
    const WorkState &work;
    Messages &messages;
    ActionGate &gate;
    UserFiles &files;
};

/// Connects the controls of \a window with \a delegate and binds the option controls to their
/// settings keys; the objects of \a parts get their outlets. Together with MainWindow.ui this is
/// the window's definition; called once, right after the window was made and before the controller
/// starts up.
void wireMainWindow(MainWindow &window, AppDelegate &delegate, const WindowParts &parts);
