#include "Catalogue.h"

#include "Families.h"

#include <algorithm>
#include <string_view>

namespace sim {
namespace {

char lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool holds(std::string_view name, std::string_view term) {
    const auto found =
        std::search(name.begin(), name.end(), term.begin(), term.end(),
                    [](char one, char other) { return lowered(one) == lowered(other); });
    return found != name.end() || term.empty();
}

/// Logic ICs and memories alike.
template <typename Device>
void listMatching(const Device &device, const std::string &term, std::vector<std::string> &names) {
    if (holds(device.name, term))
        names.push_back(device.custom ? device.name + "(custom)" : device.name);
}

} // namespace

std::optional<Chip> findChip(const std::string &name) {
    for (const Chip &chip : memoryChips())
        if (sameDeviceName(chip.name, name))
            return chip;
    std::optional<Chip> found;
    visitFamilyChips([&](const Chip &chip) {
        if (sameDeviceName(chip.name, name))
            found = chip;
        return !found;
    });
    return found;
}

const LogicPart *findLogicPart(const std::string &name) {
    for (const LogicPart &part : logicParts())
        if (sameDeviceName(part.name, name))
            return &part;
    return nullptr;
}

std::vector<std::string> listDevices(const std::string &term) {
    std::vector<std::string> names;
    for (const LogicPart &part : logicParts())
        listMatching(part, term, names);
    for (const Chip &chip : memoryChips())
        listMatching(chip, term, names);
    visitFamilyChips([&](const Chip &chip) {
        listMatching(chip, term, names);
        return true;
    });
    return names;
}

} // namespace sim
