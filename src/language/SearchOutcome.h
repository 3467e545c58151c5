// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "language/RunOutcome.h"

#include <QString>

/// Everything that tells what became of a search for devices.
struct SearchFacts {
    /// The run of the tool; the facts about an operation play no part.
    RunFacts run;
    /// How many names were found, or why the list of them could not be read.
    Result<qsizetype> devices = qsizetype(0);
    /// The folder that had no room left for the rest of a list that looks cut; empty if there is no
    /// such doubt. The status does not tell: neither the tool nor every shell looks whether its
    /// words were taken.
    QString fullFolder = {};
};

/// What a search came to, in a translated sentence or a few.
QString judgeSearch(const SearchFacts &facts);

/// True if the tool finds no programmer. A search then asks whose devices are meant, waits for
/// ever, and notices none that is plugged in meanwhile.
bool findsNoProgrammer(const ToolReport &report);

/// A translated remark on a search, as \a run tells it, that finds no programmer and goes on.
QString remarkOnWaitingSearch(const RunFacts &run);

/// A translated remark on a search in which the tool says nothing.
QString remarkOnSilentSearch();
