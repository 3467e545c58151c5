// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "setup/Environment.h"

#include <charconv>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>

namespace sim {
namespace {

std::string variable(const char *name) {
    const char *value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::filesystem::path benchFolder() {
    if (const std::string chosen = variable("MINIPRO_SIM_BENCH"); !chosen.empty())
        return chosen;
    const std::filesystem::path cache = variable("XDG_CACHE_HOME");
    if (cache.is_absolute())
        return cache / "minipro-sim" / "bench";
    if (const std::string home = variable("HOME"); !home.empty())
        return std::filesystem::path(home) / ".cache" / "minipro-sim" / "bench";
    return "minipro-sim-bench";
}

EnvironmentError unknownValue(std::string_view name, std::string_view value,
                              std::string_view choices) {
    return {std::string(name) + " is \"" + std::string(value) + "\"; it can be " +
            std::string(choices)};
}

std::optional<std::chrono::milliseconds> parseMilliseconds(const std::string &text) {
    long value = 0;
    const char *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || value < 0)
        return std::nullopt;
    return std::chrono::milliseconds(value);
}

} // namespace

std::variant<Environment, EnvironmentError> readEnvironment() {
    Environment environment;
    environment.bench = benchFolder();

    auto faults = parseFaults(variable("MINIPRO_SIM_FAULT"));
    if (const auto *unknown = std::get_if<UnknownFault>(&faults))
        return unknownValue("MINIPRO_SIM_FAULT", unknown->name,
                            "one or more of these, separated by commas:\n" + describeFaults());
    environment.faults = std::get<Faults>(std::move(faults));

    const std::string dialect = variable("MINIPRO_SIM_DIALECT");
    if (dialect == "new")
        environment.dialect = Dialect::New;
    else if (!dialect.empty() && dialect != "release")
        return unknownValue("MINIPRO_SIM_DIALECT", dialect, "new or release");

    const std::string pace = variable("MINIPRO_SIM_PACE");
    if (pace == "instant")
        environment.pace = Pace::Instant;
    else if (!pace.empty() && pace != "real")
        return unknownValue("MINIPRO_SIM_PACE", pace, "instant or real");

    const std::string chips = variable("MINIPRO_SIM_CHIPS");
    if (chips == "sample")
        environment.firstContent = FirstContent::Sample;
    else if (chips == "blank")
        environment.firstContent = FirstContent::Blank;
    else if (!chips.empty() && chips != "auto")
        return unknownValue("MINIPRO_SIM_CHIPS", chips, "auto, sample or blank");

    if (const std::string life = variable("MINIPRO_SIM_GRANDCHILD_MS"); !life.empty()) {
        const auto time = parseMilliseconds(life);
        if (!time)
            return unknownValue("MINIPRO_SIM_GRANDCHILD_MS", life, "a number of milliseconds");
        environment.grandchildLife = *time;
    }
    return environment;
}

} // namespace sim
