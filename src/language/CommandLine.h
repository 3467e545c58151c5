// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class SettingsStore;

/// What the programmer tool is asked to do; the values are the tags of the window's buttons.
enum Operation : qint32 {
    ReadOperation = 0,
    VerifyOperation = 1,
    WriteOperation = 2,
    LogicOperation = 3
};

/// True for the operations that hand the tool the image to burn.
constexpr bool takesImage(Operation operation) {
    return operation == VerifyOperation || operation == WriteOperation;
}

/// What the command line of an operation is made of, as the settings stand at one moment.
struct ToolSettings {
    /// Goes to the shell as it stands: never quoted, a leading "~" left to the shell.
    QString tool;
    QString device;
    /// Absolute paths of the temporary files: the tool starts in a folder of its own.
    QString outputPath;
    QString readPath;
    bool noIDMismatchError = false;
    bool noSizeMismatchError = false;
    bool skipErase = false;
    bool unprotect = false;

    /// Reads everything from \a settings; paths are resolved and made absolute.
    static ToolSettings readFrom(const SettingsStore &settings);
};

/// The command string of \a operation for the shell: tool, "-T", "-p", device, action, path, "-y",
/// "-s", "-e", "-u", each only where it applies. Device and path are wrapped in double quotes and
/// otherwise unchanged.
QString operationCommand(Operation operation, const ToolSettings &settings);

/// The characters in the command for \a operation that the shell takes for more than themselves,
/// each once: within the quotes around device and path those that begin a command, a variable or
/// an escape, or end the quotes, in the tool's own text also those that end a command; and control
/// characters anywhere. Empty for a command of plain names.
QString oddCharacters(Operation operation, const ToolSettings &settings);

/// The same for the command that leaves a list of devices in the file \a path.
QString oddCharactersInCatalogue(const QString &tool, const QString &path);

/// The command string that leaves the names of the devices matching \a term in the file \a path.
QString catalogueCommand(const QString &tool, const QString &term, const QString &path);

/// The command string that has the tool describe \a device without a programmer.
QString descriptionCommand(const QString &tool, const QString &device);

/// \a term as one word of a shell command: as it stands if it is made of ASCII letters, digits
/// and @ . _ + - / : = alone, else in single quotes.
QString shellWord(const QString &term);
