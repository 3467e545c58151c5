#pragma once

#include <QString>

#include <optional>
#include <variant>

/// The sentences of failure that the programmer tool has.
namespace toolErrors {

struct NoProgrammer {};
struct ProgrammerBusy {};
struct ProgrammerUnplugged {};
/// Any other trouble with the USB connection, in the tool's words.
struct ConnectionProblem {
    QString words;
};
struct Overcurrent {};
struct UnknownDevice {
    QString name;
};
struct WrongChipId {
    QString expected;
    QString found;
};
struct WrongSize {
    QString found;
    QString needed;
};
struct Difference {
    QString address;
    QString inFile;
    QString inChip;
};
struct LogicErrors {
    int count = 0;
};

} // namespace toolErrors

using ToolError =
    std::variant<toolErrors::NoProgrammer, toolErrors::ProgrammerBusy,
                 toolErrors::ProgrammerUnplugged, toolErrors::ConnectionProblem,
                 toolErrors::Overcurrent, toolErrors::UnknownDevice, toolErrors::WrongChipId,
                 toolErrors::WrongSize, toolErrors::Difference, toolErrors::LogicErrors>;

/// What the programmer tool said in one run.
struct ToolReport {
    /// The first sentence of failure; what follows it is mostly its consequence.
    std::optional<ToolError> error;
    /// A read, or a write, was reported as done.
    bool readDone = false;
    bool writeDone = false;
    bool verified = false;
    bool logicPassed = false;
    /// A logic test had at least one vector. For a chip that is no logic IC the tool "passes" a
    /// test of none.
    bool logicTested = false;
    /// The last line that is not empty; counting percentages and vectors are no such lines.
    QString lastLine;
};
