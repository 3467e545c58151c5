// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <optional>
#include <utility>
#include <variant>

/// Why something could not be done.
struct Failure {
    /// A short description such as "No such file or directory", as a sentence's end; never empty.
    QString reason;
    /// The system's number of the error; 0 where the system has none for it.
    int systemError = 0;

    /// The failure that has the system's number \a error, in the system's words.
    static Failure ofSystem(int error);
};

/// What something gave that can fail: a value, or the reason why there is none. Where that is not
/// what the system says, the reason is an enumeration whose words stand elsewhere, a sentence that
/// is shown as it is, or a type of its own that knows more.
template <typename T, typename Reason = Failure>
class [[nodiscard]] Result {
public:
    Result(T value) : content_(std::move(value)) {}
    Result(Reason failure) : content_(std::move(failure)) {}

    /// True if there is a value.
    explicit operator bool() const { return !failure(); }
    /// Why there is no value; null if there is one.
    const Reason *failure() const { return std::get_if<Reason>(&content_); }

    /// The value. There must be one.
    const T &operator*() const & { return std::get<T>(content_); }
    T &operator*() & { return std::get<T>(content_); }
    T &&operator*() && { return std::get<T>(std::move(content_)); }
    const T *operator->() const { return &std::get<T>(content_); }
    T *operator->() { return &std::get<T>(content_); }

private:
    std::variant<T, Reason> content_;
};

/// A Result without a value: whether something has worked, and if not, why.
template <typename Reason>
class [[nodiscard]] Result<void, Reason> {
public:
    Result() = default;
    Result(Reason failure) : failure_(std::move(failure)) {}

    /// True if it has worked.
    explicit operator bool() const { return !failure_; }
    /// Why it has not worked; null if it has.
    const Reason *failure() const { return failure_ ? &*failure_ : nullptr; }

private:
    std::optional<Reason> failure_;
};
