// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class Table;

// Each measures its rows and adds them to the table; one that cannot measure throws.

/// Composing an image in memory, against the bare memory operations.
void benchCompose(Table &table);
/// Composing and saving an image, from file to file, against other programs.
void benchSave(Table &table);
/// Reading and writing Intel HEX, from file to file, against other programs.
void benchFormats(Table &table);
/// Decoding a buffer for display.
void benchText(Table &table);
/// Reading the checksums of an image.
void benchFacts(Table &table);
/// Searching an image for bytes.
void benchFind(Table &table);
/// Counting an image for its map, and the map beside the grid.
void benchMap(Table &table);
/// Comparing the data read with the data to burn.
void benchComparison(Table &table);
/// The grid: reset, first paint, page key, memory.
void benchGrid(Table &table);
/// A flood of output through a tool run into the console.
void benchConsole(Table &table);
/// The start of a child.
void benchChild(Table &table);
/// A search of 32,000 device names.
void benchDevices(Table &table);
/// Reading a chip, opening a binary and composing in the whole window.
void benchWindow(Table &table);
/// What holds the whole window's event loop while the tool prints much.
void benchTurns(Table &table);
/// The program and others on an X display: start-up, memory, opening a file, page key.
void benchDesktop(Table &table);
/// Editing images of all sizes in the whole window.
void benchEdit(Table &table);
