// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/RunRemarks.h"

#include <QCoreApplication>

ImageEncoding encodingOf(const RunFacts &facts) {
    const ToolReport &report = facts.report;
    if (report.decoded != ImageEncoding::Raw)
        return report.decoded;
    // The tool does not look at the size of text that it decodes.
    return report.ignoredSize ? ImageEncoding::Raw : facts.encoding;
}

QString remarkOnChipId(const ToolReport &report) {
    if (!report.ignoredId)
        return {};
    return QCoreApplication::translate("RunOutcome", "The chip's ID was %1, not the expected %2.")
        .arg(report.ignoredId->found, report.ignoredId->expected);
}

QString putIntoAdapter() {
    return QCoreApplication::translate("RunOutcome",
                                       "Put the chip into its adapter and try again.");
}

std::optional<nextSteps::PadTo> padToReach(qint64 size, const RunFacts &facts) {
    return facts.imageIsShown ? nextSteps::PadTo::toReach(size) : std::nullopt;
}
