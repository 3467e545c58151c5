// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "counts/GridPaths.h"
#include "counts/HotPaths.h"

#include <QGuiApplication>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>

// velm-counts          the names of the paths, a line each
// velm-counts NAME     does the work of one of them in measured(), which callgrind watches

extern "C" [[gnu::noinline]] void measured(const std::function<void()> &work) {
    work();
}

namespace {

std::vector<HotPath> allPaths() {
    std::vector<HotPath> paths = hotPaths();
    for (HotPath &path : gridPaths())
        paths.push_back(std::move(path));
    return paths;
}

} // namespace

int main(int argc, char *argv[]) try {
    const QGuiApplication application(argc, argv);
    const std::string_view wanted = argc > 1 ? argv[1] : "";
    for (const HotPath &path : allPaths()) {
        if (wanted.empty())
            std::cout << path.name << '\n';
        if (wanted == path.name) {
            measured(path.prepared());
            return EXIT_SUCCESS;
        }
    }
    return wanted.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception &error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
}
