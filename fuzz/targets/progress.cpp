// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "language/ToolReportReader.h"

#include <cstddef>
#include <cstdint>
#include <tuple>

// Whenever it is asked, a run has come no less far than before, and in the end as far as its text
// says, however that was cut.

namespace {

/// Text of more units is not asked about at each of them.
constexpr qsizetype longestAskedByUnit = 600;

void checkStep(const RunProgress &before, const RunProgress &now) {
    mustHold(!before.done || now.done, "a run that was counted is counted on");
    mustHold(!now.done || (*now.done >= 0 && *now.done <= 1), "a share is from 0 to 1");
    mustHold(!before.done || *now.done >= *before.done, "a run never goes back");
}

/// The progress at the end, with \a said told in pieces of \a length.
RunProgress progressAfter(const QString &said, Operation operation, qsizetype length) {
    ToolReportReader reader;
    reader.setOperation(operation);
    RunProgress progress = reader.progress();
    for (qsizetype at = 0; at < said.size(); at += length) {
        reader.take(QStringView(said).mid(at, length));
        const RunProgress now = reader.progress();
        checkStep(progress, now);
        progress = now;
    }
    return progress;
}

bool areSame(const RunProgress &one, const RunProgress &other) {
    return std::tie(one.phase, one.part, one.done) == std::tie(other.phase, other.part, other.done);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const auto operation = Operation(input.number(3));
    const qsizetype length = 2 + input.number(40);
    const QString said = QString::fromUtf8(input.rest());
    const RunProgress whole = progressAfter(said, operation, said.size() + 1);
    mustHold(areSame(progressAfter(said, operation, length), whole), "in pieces it comes as far");
    if (said.size() <= longestAskedByUnit)
        mustHold(areSame(progressAfter(said, operation, 1), whole), "unit by unit it comes as far");
    return 0;
}
