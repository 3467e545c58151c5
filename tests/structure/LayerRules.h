// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "structure/SourceTree.h"

/// Rules on who may know whom. Each takes the files and gives one line for every breach,
/// "path: what is wrong", in the order of the paths; none if the rule holds.
namespace layerRules {

/// A folder of src includes headers of the folders below it alone.
QStringList arrowsPointDown(const SourceTree &tree);
/// Each arrow that a folder of src may have is one that it has.
QStringList arrowsAreUsed(const SourceTree &tree);
/// A folder's library links the libraries of the folders below it alone.
QStringList librariesLinkDown(const SourceTree &tree);
/// A folder's library links by name the library of each folder that it includes something of, but
/// for a header that it may include by itself.
QStringList librariesLinkWhatTheyInclude(const SourceTree &tree);
/// An include in quotes says its folder: "grid/GridModel.h", never "GridModel.h".
QStringList includesNameTheirFolder(const SourceTree &tree);
/// The pure folders include no header of the toolkit's graphical modules.
QStringList pureFoldersSeeNoGraphics(const SourceTree &tree);
/// The pure folders' libraries link no module of the toolkit but Core.
QStringList pureFoldersLinkCoreAlone(const SourceTree &tree);
/// The grid's rules and its model see no widget header, directly or through a header of theirs.
QStringList gridRulesSeeNoWidgets(const SourceTree &tree);
/// Nothing below app speaks of the controller.
QStringList controllerIsUnknownBelow(const SourceTree &tree);
/// The simulated programmer is a program of the standard library alone.
QStringList simulatorStandsAlone(const SourceTree &tree);
/// The folders of the simulator and of the measurements stand in an order, and one includes only
/// those before it.
QStringList programsPointDown(const SourceTree &tree);

} // namespace layerRules
