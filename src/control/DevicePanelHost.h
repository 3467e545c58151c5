// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class ActionGate;
class MainQueue;
class Messages;
class SettingsStore;
struct AppDelegateOutlets;

/// Shows the device search panel and takes the name that was chosen in it.
class DevicePanelHost final : public QObject {
    Q_OBJECT

public:
    /// Works with the panel and its searcher among \a outlets, once they are filled. All must
    /// outlive it.
    DevicePanelHost(const AppDelegateOutlets &outlets, SettingsStore &defaults, MainQueue &queue,
                    Messages &messages, const ActionGate &gate);

    /// Shows the panel as a sheet on its window. Refused while the tool works.
    void show();
    /// Ends the panel; the name selected in it becomes the device a turn of the event loop later.
    /// Refused while the tool works.
    void confirm();
    /// Ends the panel and changes nothing.
    void cancel();

private:
    void panelClosed(int code);
    void sayTooLong(qsizetype length);
    void offerToRemoveCustomSuffix(const QString &name);

    const AppDelegateOutlets &outlets_;
    SettingsStore &defaults_;
    MainQueue &queue_;
    Messages &messages_;
    const ActionGate &gate_;
};
