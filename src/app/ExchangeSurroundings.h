// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "exchange/OrderWords.h"

class ActionGate;
class AppDelegate;
class ChipInquiry;
class MainWindow;
class Messages;
class SettingsStore;
class UserFiles;

/// What import and export work with; all must outlive them.
struct ExchangeSurroundings {
    MainWindow &window;
    AppDelegate &delegate;
    UserFiles &files;
    const SettingsStore &settings;
    const ActionGate &gate;
    Messages &messages;
    const ChipInquiry &chip; ///< which chip the bytes are likely for
};

/// The chip under Device, as far as the tool has told; without a size if it has not.
ChipSize knownChip(const ExchangeSurroundings &with);
