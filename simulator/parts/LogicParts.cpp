// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/LogicParts.h"

#include <utility>

namespace sim {
namespace {

void append(std::vector<LogicPart> &all, std::vector<LogicPart> more) {
    for (LogicPart &part : more)
        all.push_back(std::move(part));
}

std::vector<LogicPart> everyPart() {
    std::vector<LogicPart> all = gateParts();
    append(all, selectorParts());
    append(all, busParts());
    append(all, clockedParts());
    all.push_back(peripheralInterfaceAdapter());
    return all;
}

} // namespace

const std::vector<LogicPart> &logicParts() {
    static const std::vector<LogicPart> parts = everyPart();
    return parts;
}

} // namespace sim
