// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/WholeRows.h"

#include <utility>

void WholeRows::note(const QByteArray &chunk, ToolStream stream) {
    const bool isOpen = !chunk.endsWith('\n');
    if (stream == ToolStream::Error) {
        errorLineIsOpen_ = isOpen;
        return;
    }
    rowIsOpen_ = isOpen;
    errorsMayPass_ = false;
}

// They wait here and not in their pipe: the tool would stand still once that is full, and how much
// it takes is the system's business.
void WholeRows::keep(const QByteArray &errors) {
    waiting_ += errors;
    errorsMayPass_ = waiting_.size() > maxWaiting;
}

QByteArray WholeRows::release() {
    return std::exchange(waiting_, {});
}
