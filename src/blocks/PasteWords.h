// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/PastedText.h"

/// Why a text was not understood as bytes: a translated sentence that names the place.
QString pasteTroubleWords(const PasteTrouble &trouble);
