// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <vector>

/// A figure and how it is printed.
struct Figure {
    double value = 0;
    std::string text;
};

Figure milliseconds(double value);
/// Bytes of memory, printed in MiB.
Figure mebibytes(double bytes);
/// Bytes of memory for each byte of data.
Figure bytesPerByte(double value);

/// A yardstick: its name and its figure.
struct Peer {
    std::string name;
    Figure figure;
};

/// The table of ratios. Rows are added as they are measured and printed together.
class Table {
public:
    /// Adds a ratio of \a ours to \a peer; with \a most, the target that the ratio stays at or
    /// below it, else the row is for information. \a remark is printed behind our own figure.
    void compare(const std::string &what, const Figure &ours, const Peer &peer,
                 std::optional<double> most = std::nullopt, const std::string &remark = {});
    /// Adds a figure that has no peer, with the target that it stays at or below \a most.
    void limit(const std::string &what, const Figure &ours, const Figure &most);
    /// Adds a comparison that could not be made on this machine.
    void gap(const std::string &what, const std::string &peer, const std::string &reason);
    /// Adds a measurement that went wrong.
    void failure(const std::string &what, const std::string &reason);

    /// The whole table and the count of its verdicts.
    std::string text() const;
    /// True if a measurement went wrong.
    bool hasFailures() const { return failures_ > 0; }

private:
    using Row = std::vector<std::string>;

    void judge(Row row, bool met);

    std::vector<Row> rows_;
    int met_ = 0;
    int notMet_ = 0;
    int gaps_ = 0;
    int failures_ = 0;
};
