// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/WorkState.h"
#include "language/DeviceDescription.h"

#include <QCache>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

class SettingsStore;
class ToolQuestion;
class ToolTrust;
struct ToolAnswer;

/// Asks the tool in the background what it knows of the device that is set, whenever that or the
/// tool has settled to another one. An answer is kept for the program's life; that a device is
/// unknown is asked about again after each run. While the tool works for the user nothing is asked,
/// and a question that is open then is put again afterwards.
///
/// A tool is asked only if it is trusted and is a program without further words, and only about a
/// name that is one for the shell as well: nobody sees these commands before they are run.
class ChipInquiry final : public QObject {
    Q_OBJECT

public:
    /// How long a name has to stand to be asked about.
    static constexpr std::chrono::milliseconds settlingTime{400};

    /// What the inquiry works with; all must outlive it.
    struct Surroundings {
        const SettingsStore &settings;
        const ToolTrust &trust;
        const WorkState &work;
    };

    explicit ChipInquiry(const Surroundings &surroundings);
    ~ChipInquiry() override;

    /// While \a held says so nothing is asked: the tool that is set may be the beginning of another
    /// one's path.
    void setHold(std::function<bool()> held) { held_ = std::move(held); }
    /// Asks, when the names have settled, if nothing is known.
    void lookAnew();

    /// What is known of the device as it is set now.
    const DeviceAnswer &known() const { return known_; }

signals:
    /// known() has changed.
    void changed();

private:
    /// The tool and the device, as they are set.
    using Subject = std::pair<QString, QString>;

    Subject subject() const;
    bool mayAsk(const Subject &subject) const;
    void followWork(Work now);
    void lookAfterRun();
    void ask();
    void take(const Subject &subject, const ToolAnswer &answer);
    void setKnown(const DeviceAnswer &answer);

    const Surroundings with_;
    DeviceAnswer known_;
    QCache<Subject, DeviceAnswer> answers_;
    QTimer settling_;
    std::unique_ptr<ToolQuestion> question_;
    std::function<bool()> held_ = [] { return false; };
};
