// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/Sentences.h"

QString joinedSentences(const QString &sentence, const QString &following) {
    return following.isEmpty() ? sentence : sentence + u' ' + following;
}
