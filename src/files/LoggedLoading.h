// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Log.h"
#include "base/Result.h"

/// \a loaded, from a temporary file; that there was none or none that could be read goes to \a log.
template <typename T>
Result<T> orLogged(Result<T> loaded, Log &log) {
    if (const Failure *failure = loaded.failure())
        log.write(QStringLiteral("error reading temp file: ") + failure->reason);
    return loaded;
}
