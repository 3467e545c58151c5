// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/ImageEncoding.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

/// What the programmer tool names as the cause of a failure.
namespace toolErrors {

struct NoProgrammer {};
struct ProgrammerBusy {};
struct ProgrammerUnplugged {};
/// Any other trouble with the USB connection, in the tool's words.
struct ConnectionProblem {
    QString words;
};
struct BootloaderMode {};
struct Overcurrent {};
struct UnknownDevice {
    /// As the tool was given it; empty if it was given none.
    QString name;
};
/// A device that the tool knows, but not for this.
struct UnsupportedDevice {};
struct WrongChipId {
    QString expected;
    QString found;
};
/// Sizes in bytes.
struct WrongSize {
    qint64 found = 0;
    qint64 needed = 0;
};
struct Difference {
    QString address;
    QString inFile;
    QString inChip;
};
struct LogicErrors {
    int count = 0;
};
/// The device has nothing that a logic test could try.
struct NoTestVectors {
    QString device;
};
struct LogicTestNotRun {};
/// The file for the chip is empty, or no file.
struct NoData {};
struct UnopenedFile {
    QString path;
    bool forWriting = false;
    /// In the system's words; empty if the tool gave none.
    QString reason;
};
/// A mistake in text that the tool decodes, in the tool's words.
struct BadRecord {
    QString words;
};
/// Fuses or lock bits were asked for, and the device has none.
struct NoConfiguration {};
/// The chip ID was asked for, and the device has none.
struct NoChipId {};
struct WrongCommandLine {
    /// What the tool does not like; empty if it only explained its use.
    QString complaint;
};
/// A line that nobody knows, at a place where the cause is said.
struct OtherTrouble {
    QString words;
};

} // namespace toolErrors

using ToolError =
    std::variant<toolErrors::NoProgrammer, toolErrors::ProgrammerBusy,
                 toolErrors::ProgrammerUnplugged, toolErrors::ConnectionProblem,
                 toolErrors::BootloaderMode, toolErrors::Overcurrent, toolErrors::UnknownDevice,
                 toolErrors::UnsupportedDevice, toolErrors::WrongChipId, toolErrors::WrongSize,
                 toolErrors::Difference, toolErrors::LogicErrors, toolErrors::NoTestVectors,
                 toolErrors::LogicTestNotRun, toolErrors::NoData, toolErrors::UnopenedFile,
                 toolErrors::BadRecord, toolErrors::NoConfiguration, toolErrors::NoChipId,
                 toolErrors::WrongCommandLine, toolErrors::OtherTrouble>;

/// What the programmer tool said in one run.
struct ToolReport {
    /// The first sentence that names a cause of failure; what follows it is its consequence.
    std::optional<ToolError> error;
    /// Where the tool looked for its list of devices in vain: folders, each once.
    QStringList missingDatabase;
    /// "This chip may be write-protected." follows every failed write of a chip that can be; it
    /// is no cause.
    bool protectionGuessed = false;
    /// The adapter that the device needs is not there. One version of the tool fails then, the
    /// newer goes on.
    bool adapterMissing = false;

    /// What the run put up with, because it was told to.
    std::optional<toolErrors::WrongChipId> ignoredId;
    std::optional<toolErrors::WrongSize> ignoredSize;

    /// What the tool took the file for.
    ImageEncoding decoded = ImageEncoding::Raw;
    /// The parts of the chip that were read and written to the end, as the tool calls them:
    /// "Code", "Data", "config" and so on, each once.
    QStringList partsRead;
    QStringList partsWritten;
    bool stepBegun = false;
    /// The step that was begun last came to its end.
    bool lastStepDone = false;
    bool verified = false;
    bool logicPassed = false;
    /// A logic test had at least one vector. For a chip that is no logic IC the tool "passes" a
    /// test of none.
    bool logicTested = false;
    /// Without a programmer a search asks whose devices are meant, and waits for the answer.
    bool choiceAsked = false;

    /// The last line with words of its own behind the last step: neither empty, a vector or a
    /// warning, nor one of the lines that every run begins with.
    QString lastLine;
};
