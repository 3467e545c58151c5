#pragma once

#include <utility>

/// Owns one file descriptor and closes it; -1 is none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : value(descriptor) {}
    FileDescriptor(FileDescriptor &&other) noexcept : value(std::exchange(other.value, -1)) {}
    FileDescriptor &operator=(FileDescriptor &&other) noexcept {
        std::swap(value, other.value);
        return *this;
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    ~FileDescriptor() { close(); }

    int get() const { return value; }
    bool isOpen() const { return value >= 0; }
    /// Closes the descriptor; does nothing if there is none.
    void close();

private:
    int value = -1;
};
