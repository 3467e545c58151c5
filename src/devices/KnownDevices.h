// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class SettingsStore;
class WindowMemory;

/// The devices that the user may want without typing their names: those of the last runs, the
/// favourites, and what the searches of this start have brought. Each name is there once; names
/// that cannot be shown as they are, are left out.
class KnownDevices final : public QObject {
    Q_OBJECT

public:
    /// How many searches are remembered, and the most names of each.
    static constexpr qsizetype maxSearches = 4;
    static constexpr qsizetype maxListed = 50'000;

    /// Takes the favourites from \a settings, and keeps the devices of runs in \a memory. Both must
    /// outlive it.
    KnownDevices(const SettingsStore &settings, WindowMemory &memory);

    /// The devices of the last runs, the newest first, and behind them the other favourites.
    QStringList likely() const;
    /// The likely ones, and behind them what the last searches have brought, the newest first. With
    /// 32,000 names that takes some milliseconds.
    QStringList all() const;

    /// The tool was run for \a device.
    void wasUsed(const QString &device);
    /// A search has brought \a names; they are looked at when they are asked for.
    void wereListed(const QStringList &names);

signals:
    /// likely() or all() may have changed.
    void changed();

private:
    const SettingsStore &settings_;
    WindowMemory &memory_;
    QList<QStringList> searches_;
};
