// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCompleter>
#include <QObject>
#include <QStringListModel>

class DeviceSearchPanel;
class KnownDevices;
class QLineEdit;

/// Offers known devices where one is chosen: in the device field, which completes from them while
/// one types and shows them on Down, and in the search panel.
class DeviceOffers final : public QObject {
    Q_OBJECT

public:
    /// Follows \a known; all must outlive it.
    DeviceOffers(const KnownDevices &known, QLineEdit &field, DeviceSearchPanel &panel);

protected:
    bool eventFilter(QObject *field, QEvent *event) override;

private:
    void takeChange();
    void listNames();
    void showAll();

    const KnownDevices &known_;
    QLineEdit &field_;
    DeviceSearchPanel &panel_;
    QStringListModel names_;
    QCompleter completer_;
    /// The known names have changed since the completer got them.
    bool isBehind_ = true;
};
