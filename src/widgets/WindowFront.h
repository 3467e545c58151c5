// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

/// Shows \a window, or has it come to the front as large as it was, and the keys go there.
void bringUp(QWidget &window);
