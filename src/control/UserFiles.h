// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/FilePanels.h"
#include "control/Messages.h"
#include "files/ByteBuffer.h"

#include <QObject>
#include <QStringList>

class ActionGate;
class Log;
class WindowMemory;

/// The files that the user opens and saves: asks for them in panels that begin where the last one
/// ended, writes them, says what came of it, and remembers what was opened lately. The panels are
/// sheets on the window that each question names.
class UserFiles final : public QObject {
    Q_OBJECT

public:
    /// An image to save.
    struct Export {
        /// What is logged and said where there are no bytes; no panel is opened then.
        QString emptyLogLine;
        Topic emptyTopic;
        QString emptySentence;
        QString suggestedName;
        /// The bytes as they are at the moment of the call: what is edited while the panel is open
        /// is saved with the rest.
        std::function<ByteBuffer()> bytes;
        /// Called with the bytes once they are in a file.
        std::function<void(const ByteBuffer &saved)> saved;
    };

    /// What the window takes from outside; all must live as long.
    struct Surroundings {
        FilePanels &panels;
        WindowMemory &memory;
        Log &log;
        Messages &messages;
        const ActionGate &gate;
    };

    explicit UserFiles(const Surroundings &surroundings);

    /// Asks for a binary image; \a chosen gets the absolute path. Refused while the tool works.
    void openBinary(QWidget *window, const std::function<void(const QString &path)> &chosen);
    /// Asks where \a image is to go and saves it there, whole or not at all. Refused while the tool
    /// works.
    void saveImage(QWidget *window, const Export &image);
    /// Asks where \a text, as it is when the user confirms, is to go, and saves it there (UTF-8).
    void saveConsole(QWidget *window, const std::function<QString()> &text);

    /// Files opened lately, the newest first.
    QStringList recent() const;
    void addRecent(const QString &path);

signals:
    /// recent() may have changed.
    void recentChanged();

private:
    void ask(QWidget *window, const QString &purpose, FilePanelRequest request,
             const std::function<void(const QString &path)> &chosen);
    void write(const QString &path, const Export &image);
    bool write(const QString &path, const QByteArray &bytes);
    void failed(const QString &path, const QString &sentence);

    FilePanels &panels_;
    WindowMemory &memory_;
    Log &log_;
    Messages &messages_;
    const ActionGate &gate_;
};
