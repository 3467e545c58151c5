// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "structure/SourceTree.h"

/// Rules on what the build files say; the form is that of layerRules.
namespace buildRules {

/// Of each library of ours and each module of the toolkit that a folder's build file links, some
/// file of that folder includes a header. A link that nothing uses draws an arrow that is not
/// there, and the next file takes it for a permission.
QStringList linksAreUsed(const SourceTree &tree);

} // namespace buildRules
