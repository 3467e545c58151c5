// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class AppDelegate;
class ChipInquiry;
class MainWindow;
class NextStepButtons;

/// Has \a window say beside the device what \a inquiry knows of it and how the data to burn of
/// \a delegate fit; where padding makes them fill the chip, a button does that as \a steps do it.
/// All must live as long as \a window.
void wireChip(MainWindow &window, AppDelegate &delegate, ChipInquiry &inquiry,
              const NextStepButtons &steps);
