// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <vector>

/// One measured job: does its work once and gives the figure (milliseconds, or whatever its row
/// compares).
using Job = std::function<double()>;

/// The middle one of \a figures, which may not be empty.
double median(std::vector<double> figures);

/// Runs \a jobs one after the other, \a rounds times, and gives the median figure of each. Every
/// job of a round sees the machine as the others do. A first round, which fills the caches, does
/// not count.
std::vector<double> interleaved(int rounds, const std::vector<Job> &jobs);
