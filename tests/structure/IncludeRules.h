// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "structure/SourceTree.h"

/// Rules on what the files of src, simulator and fuzz include; the form is that of layerRules. What
/// another header happens to bring along may be gone with that header's next change, so a file
/// includes what it uses itself. A .cpp file need not repeat what the header of its name includes.
namespace includeRules {

/// A file that uses a name of the standard library includes a header that gives it. Names that the
/// rule's table does not have are not judged.
QStringList standardNamesHaveTheirHeader(const SourceTree &tree);
/// What declares a class of the project or the toolkit comes with what a file includes that names
/// it, by whatever way; unless the class is announced and the file has only pointers and references
/// to it. What a file needs and does not name is the compiler's to find.
QStringList namedClassesAreReached(const SourceTree &tree);
/// Of a header of the standard library that a file includes, it uses some name.
QStringList standardHeadersAreUsed(const SourceTree &tree);
/// Of a header of the project that a file includes, it uses some name that the header declares.
QStringList ownHeadersAreUsed(const SourceTree &tree);

} // namespace includeRules
