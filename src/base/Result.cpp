// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/Result.h"

Failure Failure::ofSystem(int error) {
    return {qt_error_string(error), error};
}
