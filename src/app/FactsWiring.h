// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class AppDelegate;
class ImageComparison;
class MainWindow;
class RunLog;
class SettingsStore;

/// What the facts are told with, beside the image itself; both must live as long as the window.
struct FactsContext {
    const SettingsStore &settings; ///< whose device the chip is
    const ImageComparison &comparison;
};

/// Has the facts line and the map of \a window tell what is shown, anew after each of \a runs: the
/// images of \a delegate, the Read that brought the data, and by \a context how the two images
/// differ. All must live as long as \a window.
void wireFacts(MainWindow &window, AppDelegate &delegate, const RunLog &runs,
               const FactsContext &context);
