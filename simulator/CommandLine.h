#pragma once

#include <string>
#include <variant>

namespace sim {

enum class Action { None, Read, Write, Verify, Erase, LogicTest, Search, Version, Help };

/// What the command line asks for.
struct Options {
    Action action = Action::None;
    std::string device;
    std::string file;       ///< of Read, Write and Verify
    std::string searchTerm; ///< of Search
    std::string programmerModel;
    bool ignoreIdMismatch = false;
    bool ignoreSizeMismatch = false;
    bool hideSizeWarning = false;
    bool skipErase = false;
    bool unprotect = false;
};

/// The command line makes no sense; the text says why, without a line feed.
struct UsageError {
    std::string message;
};

/// Reads the words as getopt does: options in any order, joined (-TyP) or apart.
std::variant<Options, UsageError> parseCommandLine(int argc, char *argv[]);

/// The usage text, the environment variables included.
std::string usage();

} // namespace sim
