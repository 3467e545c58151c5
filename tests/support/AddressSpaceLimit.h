// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>

#include <sys/resource.h>
#include <unistd.h>

/// While it lives, this process gets no more than some bytes of memory beyond what it has. The
/// sanitizers need their address space: there it does not work.
class AddressSpaceLimit {
public:
    explicit AddressSpaceLimit(rlim_t more) {
        getrlimit(RLIMIT_AS, &previous_);
        const rlimit limit = {used() + more, previous_.rlim_max};
        setrlimit(RLIMIT_AS, &limit);
    }
    ~AddressSpaceLimit() { setrlimit(RLIMIT_AS, &previous_); }
    AddressSpaceLimit(const AddressSpaceLimit &) = delete;
    AddressSpaceLimit &operator=(const AddressSpaceLimit &) = delete;

    static constexpr bool works() {
#ifdef __SANITIZE_ADDRESS__
        return false;
#else
        return true;
#endif
    }

private:
    static rlim_t used() {
        QFile file(QStringLiteral("/proc/self/statm"));
        if (!file.open(QIODevice::ReadOnly))
            return 0;
        const qlonglong pages = file.readAll().split(' ').first().toLongLong();
        return rlim_t(pages) * rlim_t(::sysconf(_SC_PAGESIZE));
    }

    rlimit previous_ = {};
};
