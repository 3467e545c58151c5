// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "setup/Environment.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
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

/// Each value that a variable can choose, with the word for it.
template <typename Value>
using Choices = std::initializer_list<std::pair<std::string_view, Value>>;

/// "auto, sample or blank".
template <typename Value>
std::string listOf(const Choices<Value> &words) {
    std::string list;
    for (const auto &each : words) {
        const bool isLast = &each == std::prev(words.end());
        list += list.empty() ? "" : isLast ? " or " : ", ";
        list += each.first;
    }
    return list;
}

/// Takes into `chosen` what the variable `name` asks for; one that is not set asks for nothing.
template <typename Value>
std::optional<EnvironmentError> choose(const char *name, const Choices<Value> &words,
                                       Value &chosen) {
    const std::string asked = variable(name);
    if (asked.empty())
        return std::nullopt;
    const auto *found = std::find_if(words.begin(), words.end(),
                                     [&asked](const auto &each) { return each.first == asked; });
    if (found == words.end())
        return unknownValue(name, asked, listOf(words));
    chosen = found->second;
    return std::nullopt;
}

std::optional<std::chrono::milliseconds> parseMilliseconds(const std::string &text) {
    long value = 0;
    const char *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || value < 0)
        return std::nullopt;
    return std::chrono::milliseconds(value);
}

std::optional<EnvironmentError> takeFaults(Environment &environment) {
    auto faults = parseFaults(variable("MINIPRO_SIM_FAULT"));
    if (const auto *unknown = std::get_if<UnknownFault>(&faults))
        return unknownValue("MINIPRO_SIM_FAULT", unknown->name,
                            "one or more of these, separated by commas:\n" + describeFaults());
    environment.faults = std::get<Faults>(std::move(faults));
    return std::nullopt;
}

std::optional<EnvironmentError> takeDialect(Environment &environment) {
    return choose("MINIPRO_SIM_DIALECT", {{"new", Dialect::New}, {"release", Dialect::Release}},
                  environment.dialect);
}

std::optional<EnvironmentError> takePace(Environment &environment) {
    return choose("MINIPRO_SIM_PACE", {{"instant", Pace::Instant}, {"real", Pace::Real}},
                  environment.pace);
}

std::optional<EnvironmentError> takeFirstContent(Environment &environment) {
    return choose("MINIPRO_SIM_CHIPS",
                  {{"auto", FirstContent::Automatic},
                   {"sample", FirstContent::Sample},
                   {"blank", FirstContent::Blank}},
                  environment.firstContent);
}

std::optional<EnvironmentError> takeGrandchildLife(Environment &environment) {
    const std::string life = variable("MINIPRO_SIM_GRANDCHILD_MS");
    if (life.empty())
        return std::nullopt;
    const auto time = parseMilliseconds(life);
    if (!time)
        return unknownValue("MINIPRO_SIM_GRANDCHILD_MS", life, "a number of milliseconds");
    environment.grandchildLife = *time;
    return std::nullopt;
}

} // namespace

std::variant<Environment, EnvironmentError> readEnvironment() {
    Environment environment;
    environment.bench = benchFolder();
    for (const auto take :
         {takeFaults, takeDialect, takePace, takeFirstContent, takeGrandchildLife})
        if (auto error = take(environment))
            return *error;
    return environment;
}

} // namespace sim
