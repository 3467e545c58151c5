// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "demo/Demonstration.h"

#include <QString>

/// Makes the pictures of the user guide: walks through the program's tasks in the real window on
/// the simulated programmer, and saves it, and the windows and panels that it opens, along the way
/// as PNG files in \a folder, which must exist. True if every step went as it should.
bool makePictures(VelmWindow &velm, const QString &folder);
