// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/CompositionRemarks.h"
#include "image/ImageComposition.h"

class QObject;
class SettingsStore;
struct AppDelegateOutlets;

/// True if \a control is one of those by which the image to burn is composed.
bool composes(const AppDelegateOutlets &outlets, const QObject *control);

/// What a composition gets from the settings and the controls as they are now; the buffers are
/// left for the caller to fill in.
CompositionInputs compositionInputs(const AppDelegateOutlets &outlets,
                                    const SettingsStore &settings);

/// What the controls say, to compare with what an image was made with.
ImageControls imageControls(const AppDelegateOutlets &outlets, const SettingsStore &settings);
