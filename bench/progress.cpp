// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Prints as many bytes of progress as its argument says, as the programmer tool does: to standard
// error, unbuffered, each update in two writes.

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv) {
    constexpr int percents = 100;
    const long size = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 0;
    int percent = 0;
    for (long printed = 0; printed < size; percent = (percent + 1) % percents) {
        printed += std::fprintf(stderr, "\r\033[KReading Code...  ");
        printed += std::fprintf(stderr, "%2d%%", percent);
    }
    std::fprintf(stderr, "\r\033[KReading Code...  1.00Sec  OK\n");
}
