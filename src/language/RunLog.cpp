// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/RunLog.h"

void RunLog::add(const RunRecord &record) {
    records_.append(record);
    if (records_.size() > maxRememberedWords)
        records_[records_.size() - 1 - maxRememberedWords].said.clear();
    emit added();
}
