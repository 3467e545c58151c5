// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/ProgrammerModel.h"

#include <array>

#include <strings.h>

namespace sim {
namespace {

struct ModelName {
    const char *name;
    ProgrammerModel model;
};

constexpr std::array modelNames{
    ModelName{"tl866a", ProgrammerModel::Tl866a}, ModelName{"tl866ii", ProgrammerModel::Tl866ii},
    ModelName{"t48", ProgrammerModel::T48},       ModelName{"t56", ProgrammerModel::T56},
    ModelName{"t76", ProgrammerModel::T76},
};

} // namespace

std::optional<ProgrammerModel> modelNamed(const std::string &name, Dialect dialect) {
    for (const ModelName &each : modelNames)
        if (strcasecmp(each.name, name.c_str()) == 0 &&
            (each.model != ProgrammerModel::T76 || dialect == Dialect::New))
            return each.model;
    return std::nullopt;
}

} // namespace sim
