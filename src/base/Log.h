// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringView>

/// Stands in a line of the log for a text that is not there.
inline constexpr QStringView loggedForNone = u"(null)";

/// Where the program reports its events, one line for each. The texts are fixed English
/// sentences and are never translated: they are read by people who compare them with older runs.
class Log {
public:
    Log() = default;
    Log(const Log &) = delete;
    Log &operator=(const Log &) = delete;
    virtual ~Log() = default;

    /// Reports one event. \a text goes out as it stands, embedded line breaks and escape
    /// sequences included, followed by one line feed.
    virtual void write(const QString &text) = 0;
};

/// The log of the running program: standard error, one write for each event.
class StandardErrorLog final : public Log {
public:
    void write(const QString &text) override;

    /// Sends what the toolkit itself has to say (QtMsgType messages) to standard error in the same
    /// form: one write an event, the text as it stands.
    static void installForToolkit();
};
