// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "parts/ProgrammerModel.h"
#include "setup/Environment.h"

#include <optional>
#include <string>
#include <variant>

namespace sim {

enum class Action {
    None,
    Read,
    Write,
    Verify,
    Erase,
    BlankCheck,
    LogicTest,
    List,     ///< the devices
    Describe, ///< one device
    Version,
    Presence,  ///< which programmer is connected
    Supported, ///< which programmers there can be
    Simulator, ///< what is the simulator's own
};

/// Which memory of the chip an action is for.
enum class Section { Code, Data, Config, User, Calibration };

/// How a read writes its file.
enum class FileFormat { Binary, IntelHex, SRecord };

/// What the command line asks for.
struct Options {
    Action action = Action::None;
    std::string device;     ///< of Describe too
    std::string file;       ///< of Read, Write and Verify
    std::string searchTerm; ///< of List
    std::optional<ProgrammerModel> model;
    std::optional<Section> section; ///< without one a read takes them all
    FileFormat format = FileFormat::Binary;
    bool ignoreIdMismatch = false;
    bool skipId = false;
    bool idAlone = false; ///< the run ends with the chip ID
    bool ignoreSizeMismatch = false;
    bool hideSizeWarning = false;
    bool skipErase = false;
    bool skipVerify = false;
    bool unprotect = false;
    bool protect = false;
};

/// The command line makes no sense. The text says why, without a line feed; it is empty when that
/// has been said already.
struct UsageError {
    std::string message;
};

/// Reads the words as getopt_long does: options in any order, joined (-yp7400) or apart, by letter
/// or by name. Of several actions on a chip the last one counts; an inquiry (-L, -V, ...) ends the
/// reading. What getopt_long complains about it has written to standard error itself.
std::variant<Options, UsageError> parseCommandLine(int argc, char *argv[], Dialect dialect);

/// The tool's answer to a command line that makes no sense, and to -h.
std::string usage(const std::string &program);

} // namespace sim
