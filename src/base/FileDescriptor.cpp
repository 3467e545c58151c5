#include "base/FileDescriptor.h"

#include <unistd.h>

void FileDescriptor::close() {
    if (isOpen())
        ::close(std::exchange(value_, -1));
}
