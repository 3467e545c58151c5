// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

class ChipInquiry;
class MainWindow;
class OtherMemoriesActions;
class QLabel;
class SettingsStore;

/// Says beside the next command, and in the tips of Verify and Write, which of a chip's memories
/// they take.
class CommandExtent final : public QObject {
    Q_OBJECT

public:
    /// What it works with; all must outlive it.
    struct Surroundings {
        MainWindow &window;
        const SettingsStore &settings;
        const ChipInquiry &inquiry;
        const OtherMemoriesActions &memories;
    };

    explicit CommandExtent(const Surroundings &surroundings);

private:
    void show();

    const Surroundings with_;
    QLabel *label_;
    QString verifyTip_; ///< of the buttons, as they are for every chip
    QString writeTip_;
};
