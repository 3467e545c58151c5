// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/Catalogue.h"

#include "parts/DeviceNames.h"
#include "parts/Families.h"
#include "parts/NameRules.h"

#include <algorithm>
#include <string_view>

namespace sim {
namespace {

constexpr std::string_view customSuffix = "(custom)";

char lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? char(letter - 'A' + 'a') : letter;
}

bool sameLetter(char one, char other) {
    return lowered(one) == lowered(other);
}

bool holds(std::string_view name, std::string_view term) {
    return std::search(name.begin(), name.end(), term.begin(), term.end(), sameLetter) !=
               name.end() ||
           term.empty();
}

std::string_view withoutSuffix(std::string_view name) {
    if (isCustom(name))
        name.remove_suffix(customSuffix.size());
    return name;
}

/// Calls `visit` for each line until it returns false; tells whether all were visited.
template <typename Visitor>
bool visitLines(std::string_view lines, Visitor visit) {
    while (!lines.empty()) {
        const auto end = lines.find('\n');
        if (!visit(lines.substr(0, end)))
            return false;
        lines.remove_prefix(end + 1);
    }
    return true;
}

/// The name as the list writes it.
std::optional<std::string> listedName(std::string_view lines, const std::string &name) {
    std::optional<std::string> found;
    visitLines(lines, [&](std::string_view line) {
        if (sameDeviceName(std::string(withoutSuffix(line)), name))
            found = withoutSuffix(line);
        return !found;
    });
    return found;
}

std::optional<Chip> findFamilyChip(const std::string &name) {
    std::optional<Chip> found;
    visitFamilyChips([&](const Chip &chip) {
        if (sameDeviceName(chip.name, name))
            found = chip;
        return !found;
    });
    return found;
}

/// A user's own entries belong to one kind of database each.
bool listsEntry(std::string_view name, ProgrammerModel model) {
    if (!isCustom(name) || model == ProgrammerModel::Tl866ii)
        return true;
    return model == ProgrammerModel::Tl866a && withoutSuffix(name) != "ATF750C-TEST";
}

} // namespace

bool isCustom(std::string_view name) {
    return name.ends_with(customSuffix);
}

std::optional<Chip> findChip(const std::string &name, Dialect dialect) {
    for (const Chip &chip : memoryChips())
        if (sameDeviceName(chip.name, name))
            return chip;
    if (const auto listed = listedName(memoryNames(), name))
        return chipFromName(*listed);
    return dialect == Dialect::New ? findFamilyChip(name) : std::nullopt;
}

std::optional<LogicPart> findLogicPart(const std::string &name) {
    const auto listed = listedName(logicNames(), name);
    if (!listed)
        return std::nullopt;
    for (const LogicPart &part : logicParts())
        if (part.name == *listed)
            return part;
    return LogicPart{.name = *listed, .rows = {}};
}

std::vector<std::string> listDevices(const std::string &term, ProgrammerModel model,
                                     Dialect dialect) {
    std::vector<std::string> names;
    const auto take = [&](std::string_view name) {
        if (holds(withoutSuffix(name), term))
            names.emplace_back(name);
        return true;
    };
    visitLines(logicNames(), take);
    visitLines(memoryNames(),
               [&](std::string_view name) { return !listsEntry(name, model) || take(name); });
    if (dialect == Dialect::New)
        visitFamilyChips([&](const Chip &chip) { return take(chip.name); });
    return names;
}

} // namespace sim
