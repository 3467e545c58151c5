// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class Messages;
class NextStepButtons;
class QObject;
class SettingsStore;

/// If the programmer tool of \a settings is known to be missing, or to be no program that may be
/// run, says so in \a messages, with what to do: take the one that is found elsewhere, or choose it
/// as \a steps do. That lasts until a run begins or another tool is set. All must live as long as
/// \a window.
void lookForTool(QObject &window, SettingsStore &settings, Messages &messages,
                 const NextStepButtons &steps);
