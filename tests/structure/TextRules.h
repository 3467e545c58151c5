// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "structure/SourceTree.h"

/// Rules on what may stand in the text of a file; the form is that of layerRules.
namespace textRules {

/// Colours come from the desktop's palette or from the one helper that keeps their contrast.
QStringList coloursStandInThePaletteHelper(const SourceTree &tree);
/// Programs start through the one runner: a plain fork copies the page tables of an image of a
/// gigabyte, and system() and popen() run a shell of their own choice.
QStringList nothingForks(const SourceTree &tree);
/// Whoever opens a descriptor gives it to the one class that closes them: what is closed by hand
/// is closed twice one day, and by then its number is another's.
QStringList descriptorsHaveOneOwner(const SourceTree &tree);
/// A number has one form wherever it is told, and so has a time: whoever asks the user's locale
/// for it by hand forms it a second way one day.
QStringList numbersAndTimesHaveOneForm(const SourceTree &tree);
/// A text has one form wherever it is written down: that of a macro, and not a suffix's.
QStringList textsHaveOneForm(const SourceTree &tree);
/// A file beyond 500 lines is more than one subject.
QStringList filesAreShort(const SourceTree &tree);
/// Every source and script names its licence in its first lines, after a script's interpreter: a
/// file that goes elsewhere takes it along.
QStringList filesNameTheirLicence(const SourceTree &tree);

} // namespace textRules
