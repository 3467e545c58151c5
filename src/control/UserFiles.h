// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "control/FilePanels.h"
#include "control/Messages.h"
#include "files/ByteBuffer.h"
#include "files/SavingTogether.h"
#include "settings/WindowMemory.h"

#include <QObject>
#include <QStringList>

#include <functional>

class ActionGate;
class Log;

/// The files that the user opens and saves: asks for them in panels that begin where the last one
/// ended, writes them, says what came of it, and remembers what was opened lately. The panels are
/// sheets on the window that each question names.
class UserFiles final : public QObject {
    Q_OBJECT

public:
    /// An image to save.
    struct Image {
        /// The bytes as they are at the moment of the call: what is edited while the panel is open
        /// is saved with the rest.
        std::function<ByteBuffer()> bytes;
        /// Called with the bytes once they are in a file.
        std::function<void(const ByteBuffer &saved)> saved;
    };

    /// Something else to save.
    struct Document {
        QString title; ///< of the panel
        QString suggestedName;
        QString typeName;  ///< what such files are called, for instance "Text files"
        QString extension; ///< theirs, without a dot
        /// The content as it is to be saved, asked for when the user confirms.
        std::function<QByteArray()> bytes;
        /// Called once they are in a file.
        std::function<void()> saved = [] {};
    };

    /// Files that belong together, under one name.
    struct Set {
        struct Part {
            QString ending; ///< of the file's name behind that of the set: ".bin"
            QByteArray bytes;
        };

        QString title;         ///< of the panel
        QString suggestedName; ///< of the first part's file
        QString typeName;      ///< what such files are called
        /// The first one's ending is an extension.
        QList<Part> parts;
        /// Endings of files that sets may have and this one has not.
        QStringList absentEndings;
        /// Called once the user has given a name, before anything is saved or said.
        std::function<void()> named = [] {};
    };

    /// What it works with; all must outlive it.
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
    /// The same for a file whose bytes are to be imported, whatever its format.
    void openForImport(QWidget *window, const std::function<void(const QString &path)> &chosen);
    /// The same for a file whose bytes are to come into the data to burn.
    void openForInsertion(QWidget *window, const std::function<void(const QString &path)> &chosen);
    /// Asks for a programmer tool; \a chosen gets the absolute path. Refused while the tool works.
    void chooseTool(QWidget *window, const std::function<void(const QString &path)> &chosen);
    /// Asks where the data read from \a device are to go and saves them there, whole or not at all.
    /// Without any, says so and opens no panel. Refused while the tool works.
    void saveReadData(QWidget *window, const QString &device, const Image &image);
    /// The same for the data to burn into \a device.
    void saveDataToBurn(QWidget *window, const QString &device, const Image &image);
    /// Asks where \a text, as it is when the user confirms, is to go, and saves it there (UTF-8).
    void saveConsole(QWidget *window, const std::function<QString()> &text);
    /// Asks where \a document is to go and saves it there, whole or not at all.
    void saveDocument(QWidget *window, const Document &document);

    /// Asks for a name and saves \a set there, all of its files or none. The panel asks about the
    /// first one; where others are there already, the message line names them and offers to replace
    /// them. Refused while the tool works.
    void saveSet(QWidget *window, const Set &set);

    /// Asks how the names of several files are to begin; \a path is offered, and \a chosen gets an
    /// absolute path.
    void chooseNames(QWidget *window, const QString &path,
                     const std::function<void(const QString &path)> &chosen);
    /// Saves \a files all or none, and says so with \a facts, which may be empty, and \a action
    /// behind it, or why not.
    Result<void, UnsavedTogether> saveTogether(const QList<FileToSave> &files, Replacing replacing,
                                               const QString &facts,
                                               const Messages::Action &action = {});
    /// What is said of \a unsaved, translated.
    static QString wordsFor(const UnsavedTogether &unsaved);
    /// The folder that a file was saved in last; the user's own at first.
    QString folderForSaving() const;

    /// Absolute paths of files opened lately, the newest first, at most eight.
    QStringList recent() const;
    void addRecent(const QString &path);

    /// Remembers how the panels look, for the next start.
    void rememberLook();

signals:
    /// recent() may have changed.
    void recentChanged();

private:
    /// What is logged and said where there are no bytes.
    struct Nothing {
        QString logLine;
        Topic topic;
        QString sentence;
    };

    void saveImage(QWidget *window, const Image &image, const Nothing &nothing,
                   const QString &suggestedName);
    void openAnyFile(QWidget *window, PanelPurpose purpose, const QString &title,
                     const std::function<void(const QString &path)> &chosen);
    void ask(QWidget *window, PanelPurpose purpose, FilePanelRequest request,
             const std::function<void(const QString &path)> &chosen);
    void write(const QString &path, const Image &image);
    bool write(const QString &path, const Result<QByteArray> &bytes);
    void writeSet(const QString &name, const Set &set, const QStringList &replaceable);
    void failed(const QString &path, const QString &sentence);

    FilePanels &panels_;
    WindowMemory &memory_;
    Log &log_;
    Messages &messages_;
    const ActionGate &gate_;
};
