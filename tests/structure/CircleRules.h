// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "structure/SourceTree.h"

/// Rules on what goes round; the form is that of layerRules.
namespace circleRules {

/// What includes another subject, by however many includes, is not included by it. A header and the
/// sources of its name are one subject: "GridModel.h", "GridModel.cpp", and "GridModelRows.cpp" if
/// that has no header. So are a class and the parts that it hands itself to.
QStringList subjectsFormNoCircle(const SourceTree &tree);
/// Each part that the rule above takes for one subject with its class would form a circle with it.
QStringList partsNeedTheirWhole(const SourceTree &tree);

} // namespace circleRules
