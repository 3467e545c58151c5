// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

/// While it lives, a test that runs as root acts as a user without rights, to whom a read-only
/// folder is read-only. For any other user it changes nothing.
class UnprivilegedUser {
public:
    UnprivilegedUser() : saved_(geteuid()) {
        if (saved_ == 0)
            valid_ = seteuid(nobody) == 0;
    }
    ~UnprivilegedUser() {
        if (saved_ == 0 && valid_)
            valid_ = seteuid(saved_) == 0;
    }
    UnprivilegedUser(const UnprivilegedUser &) = delete;
    UnprivilegedUser &operator=(const UnprivilegedUser &) = delete;

    bool isValid() const { return valid_; }

    static constexpr uid_t nobody = 65534;

private:
    uid_t saved_;
    bool valid_ = true;
};

/// While it lives, no file of this process grows beyond the given size: a full disk for a test.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        previousHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &previous_);
        const rlimit limit = {bytes, previous_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, previousHandler_);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit previous_ = {};
    void (*previousHandler_)(int) = SIG_DFL;
};
