// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class AppDelegate;
class MainWindow;
class RunLog;

/// Has the facts line of \a window say what is shown: the images of \a delegate, and of \a runs
/// the Read that brought the data. All must live as long.
void wireFacts(MainWindow &window, AppDelegate &delegate, const RunLog &runs);
