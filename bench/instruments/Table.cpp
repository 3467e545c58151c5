// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Table.h"

#include <algorithm>
#include <cstdio>

namespace {

const std::vector<std::string> titles{"what", "ours", "against", "ratio", "target", "verdict"};
constexpr double bytesInMebibyte = 1 << 20;

std::string formatted(const char *unit, int decimals, double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f%s", decimals, value, unit);
    return text;
}

/// About three digits, whatever the size.
int decimalsFor(double value) {
    if (value < 1)
        return 3;
    if (value < 10)
        return 2;
    return value < 100 ? 1 : 0;
}

std::string plain(double value) {
    return formatted("", decimalsFor(value), value);
}

std::vector<size_t> widthsOf(const std::vector<std::vector<std::string>> &rows) {
    std::vector<size_t> widths;
    for (const std::string &title : titles)
        widths.push_back(title.size());
    for (const auto &row : rows)
        for (size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());
    return widths;
}

std::string line(const std::vector<std::string> &cells, const std::vector<size_t> &widths) {
    std::string text;
    for (size_t column = 0; column < cells.size(); ++column)
        text += "| " + cells[column] + std::string(widths[column] - cells[column].size() + 1, ' ');
    return text + "|\n";
}

std::string rule(const std::vector<size_t> &widths) {
    std::string text;
    for (const size_t width : widths)
        text += '|' + std::string(width + 2, '-');
    return text + "|\n";
}

} // namespace

Figure milliseconds(double value) {
    return {value, formatted(" ms", decimalsFor(value), value)};
}

Figure mebibytes(double bytes) {
    const double value = bytes / bytesInMebibyte;
    return {bytes, formatted(" MiB", decimalsFor(value), value)};
}

Figure bytesPerByte(double value) {
    return {value, formatted(" B/B", 4, value)};
}

void Table::compare(const std::string &what, const Figure &ours, const Peer &peer,
                    std::optional<double> most, const std::string &remark) {
    const double ratio = ours.value / peer.figure.value;
    Row row{what, ours.text + (remark.empty() ? "" : " (" + remark + ")"),
            peer.name + ' ' + peer.figure.text, plain(ratio)};
    if (most) {
        row.push_back("<= " + plain(*most));
        judge(std::move(row), ratio <= *most);
        return;
    }
    row.insert(row.end(), {"none", "for information"});
    rows_.push_back(std::move(row));
}

void Table::limit(const std::string &what, const Figure &ours, const Figure &most) {
    judge({what, ours.text, "-", "-", "<= " + most.text}, ours.value <= most.value);
}

void Table::judge(Row row, bool met) {
    row.push_back(met ? "met" : "NOT MET");
    ++(met ? met_ : notMet_);
    rows_.push_back(std::move(row));
}

void Table::gap(const std::string &what, const std::string &peer, const std::string &reason) {
    ++gaps_;
    rows_.push_back({what, "-", peer, "-", "-", "gap: " + reason});
}

void Table::failure(const std::string &what, const std::string &reason) {
    ++failures_;
    rows_.push_back({what, "-", "-", "-", "-", "FAILED: " + reason});
}

std::string Table::text() const {
    const std::vector<size_t> widths = widthsOf(rows_);
    std::string text = line(titles, widths) + rule(widths);
    for (const Row &row : rows_)
        text += line(row, widths);
    char count[128];
    std::snprintf(count, sizeof count, "%d met, %d not met, %d gaps, %d failed\n", met_, notMet_,
                  gaps_, failures_);
    return text + count;
}
