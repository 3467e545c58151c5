// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/ImageComposition.h"

#include <QStringList>

/// What the controls say of the image to burn.
struct ImageControls {
    QString binary; ///< path of the opened binary
    QString rom_start_address;
    QString pad_to;
    bool combineReadData = false;
    bool pad = false;
    bool padWithZero = false;
};

/// The names (translated, as in the window) of those controls whose values differ between \a one
/// and \a other, in the window's order.
QStringList controlsThatDiffer(const ImageControls &one, const ImageControls &other);

/// What the user should be told about a composition that did not go as the controls may suggest:
/// a number that is none, or only partly one, a size that wraps, read data that is not there, a
/// refusal. One translated sentence for each, the most important first; empty when there is
/// nothing to say.
QStringList compositionRemarks(const CompositionInputs &inputs, const Composition &composition);
