// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Pair.h"

#include <algorithm>
#include <stdexcept>

double median(std::vector<double> figures) {
    if (figures.empty())
        throw std::logic_error("a median of nothing");
    const auto middle = figures.begin() + std::ptrdiff_t(figures.size() / 2);
    std::nth_element(figures.begin(), middle, figures.end());
    return *middle;
}

std::vector<double> interleaved(int rounds, const std::vector<Job> &jobs) {
    for (const Job &job : jobs)
        job();
    std::vector<std::vector<double>> figures(jobs.size());
    for (int round = 0; round < rounds; ++round)
        for (size_t index = 0; index < jobs.size(); ++index)
            figures[index].push_back(jobs[index]());
    std::vector<double> medians;
    for (auto &ofOneJob : figures)
        medians.push_back(median(std::move(ofOneJob)));
    return medians;
}
