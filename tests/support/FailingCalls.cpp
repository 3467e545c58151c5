// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/FailingCalls.h"

#include "support/HeldDisk.h"

#include <QSet>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <pthread.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace {

std::mutex callsMutex; // guards what follows, up to the time slept
bool armed = false;
std::thread::id countedThread;
FailingCalls::Mishap mishapGiven = FailingCalls::Mishap::Fails;
int callsLeft = 0;
QSet<int> failingAgain; // calls behind the struck one, from 1
int callsBehind = 0;
int errorGiven = 0;
const char *struckName = nullptr;
std::function<void()> done;
QByteArray namesStruck;     // what stands for them
QMap<QByteArray, int> made; // calls by name
std::atomic<double> slept = 0;

enum class Effect { Reads, Changes };

bool isStruck(const char *name) {
    if (!standsFor(namesStruck, name) || callsLeft-- != 1)
        return false;
    struckName = name;
    callsBehind = 0;
    return true;
}

/// True if this call is one of the test's thread, or asks the disk for it from another.
bool isCounted(const char *name) {
    const bool isOfTheTest = std::this_thread::get_id() == countedThread;
    return armed && (isOfTheTest || (!done && QByteArrayView(name).endsWith("sync")));
}

/// How many of \a size bytes this call may read or write.
size_t allowed(const char *name, size_t size) {
    const std::lock_guard lock(callsMutex);
    const bool counts =
        isCounted(name) && mishapGiven == FailingCalls::Mishap::Shortens && size > 1;
    if (!counts || !isStruck(name))
        return size;
    callsBehind = -1; // this call is counted once more, and works
    return size / 2;
}

/// True if this call is to fail, with errno set.
bool letFail(const char *name, Effect effect) {
    std::unique_lock lock(callsMutex);
    if (!isCounted(name))
        return false;
    ++made[name];
    const bool again = struckName && failingAgain.contains(++callsBehind);
    if (again)
        errno = errorGiven;
    if (again || mishapGiven == FailingCalls::Mishap::Shortens)
        return again;
    const bool isDead = mishapGiven == FailingCalls::Mishap::Kills && struckName &&
                        effect == Effect::Changes && standsFor(namesStruck, name);
    const bool strikes = isStruck(name);
    if (strikes && done) {
        armed = false;
        lock.unlock();
        done();
        lock.lock();
        armed = true;
        return false;
    }
    if (strikes || isDead)
        errno = errorGiven;
    return strikes || isDead;
}

/// The function of the C library that the one in this file hides.
template <typename Function>
Function *libraryFunction(const char *name) {
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

template <typename Function, typename... Arguments>
auto reading(const char *name, Arguments... arguments) {
    using Result = decltype(libraryFunction<Function>(name)(arguments...));
    return letFail(name, Effect::Reads) ? Result(-1)
                                        : libraryFunction<Function>(name)(arguments...);
}

template <typename Function, typename... Arguments>
auto changing(const char *name, Arguments... arguments) {
    using Result = decltype(libraryFunction<Function>(name)(arguments...));
    return letFail(name, Effect::Changes) ? Result(-1)
                                          : libraryFunction<Function>(name)(arguments...);
}

/// Pipes and the like wake up the event loop, and those do not fail.
bool isFile(int descriptor) {
    struct stat facts = {};
    return libraryFunction<int(int, struct stat *)>("fstat")(descriptor, &facts) == 0 &&
           S_ISREG(facts.st_mode);
}

bool makesAFile(int flags) {
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

int opening(const char *name, const char *path, int flags, mode_t mode) {
    using Function = int(const char *, int, ...);
    const bool changesTheDisk = makesAFile(flags) || (flags & O_TRUNC) != 0;
    return changesTheDisk ? changing<Function>(name, path, flags, mode)
                          : reading<Function>(name, path, flags, mode);
}

/// Only what makes a descriptor is counted: the other commands cannot fail here.
int controlling(const char *name, int file, int command, void *argument) {
    using Function = int(int, int, ...);
    const bool makesADescriptor = command == F_DUPFD || command == F_DUPFD_CLOEXEC;
    return makesADescriptor ? reading<Function>(name, file, command, argument)
                            : libraryFunction<Function>(name)(file, command, argument);
}

int flushing(const char *name, int file) {
    const int error = answerOfHeldDisk();
    if (error == 0)
        return reading<int(int)>(name, file);
    errno = error;
    return -1;
}

void addSleep(const timespec *time) {
    slept = slept + double(time->tv_sec) * 1e3 + double(time->tv_nsec) / 1e6;
}

} // namespace

FailingCalls::FailingCalls(int call, Mishap mishap, int error) {
    const std::lock_guard lock(callsMutex);
    countedThread = std::this_thread::get_id();
    callsLeft = call;
    mishapGiven = mishap;
    failingAgain.clear();
    errorGiven = error;
    struckName = nullptr;
    namesStruck.clear();
    made.clear();
    armed = true;
}

FailingCalls::FailingCalls(const QByteArray &name, int call, int error)
    : FailingCalls(name, call, Mishap::Fails, error) {}

FailingCalls::FailingCalls(const QByteArray &name, int call, Mishap mishap, int error)
    : FailingCalls(call, mishap, error) {
    const std::lock_guard lock(callsMutex);
    namesStruck = name;
}

FailingCalls::FailingCalls(int call, std::function<void()> meanwhile)
    : FailingCalls(call, Mishap::Fails, 0) {
    const std::lock_guard lock(callsMutex);
    done = std::move(meanwhile);
}

FailingCalls::~FailingCalls() {
    const std::lock_guard lock(callsMutex);
    armed = false;
    done = {};
}

void FailingCalls::failAgain(int later) {
    const std::lock_guard lock(callsMutex);
    if (later > 0)
        failingAgain.insert(later);
}

bool FailingCalls::hasStruck() const {
    const std::lock_guard lock(callsMutex);
    return struckName != nullptr;
}

QByteArray FailingCalls::struckCall() const {
    const std::lock_guard lock(callsMutex);
    return struckName;
}

QMap<QByteArray, int> FailingCalls::callsMade() const {
    const std::lock_guard lock(callsMutex);
    return made;
}

bool standsFor(QByteArrayView given, QByteArrayView name) {
    return name.startsWith(given);
}

double millisecondsSlept() {
    return slept;
}

// The functions of the C library by which the program and the toolkit reach files.
extern "C" {

int open(const char *path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = makesAFile(flags) ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return opening("open", path, flags, mode);
}

int open64(const char *path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = makesAFile(flags) ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return opening("open64", path, flags, mode);
}

// A file whose closing fails is closed.
int close(int file) {
    const int result = libraryFunction<int(int)>("close")(file);
    return letFail("close", Effect::Reads) ? -1 : result;
}

int openat(int folder, const char *path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = makesAFile(flags) ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    using Function = int(int, const char *, int, ...);
    return changing<Function>("openat", folder, path, flags, mode);
}

ssize_t read(int file, void *bytes, size_t size) {
    if (!isFile(file))
        return libraryFunction<ssize_t(int, void *, size_t)>("read")(file, bytes, size);
    return reading<ssize_t(int, void *, size_t)>("read", file, bytes, allowed("read", size));
}

ssize_t write(int file, const void *bytes, size_t size) {
    if (!isFile(file))
        return libraryFunction<ssize_t(int, const void *, size_t)>("write")(file, bytes, size);
    return changing<ssize_t(int, const void *, size_t)>("write", file, bytes,
                                                        allowed("write", size));
}

ssize_t pwrite(int file, const void *bytes, size_t size, off_t place) {
    return changing<ssize_t(int, const void *, size_t, off_t)>("pwrite", file, bytes,
                                                               allowed("pwrite", size), place);
}

ssize_t pwrite64(int file, const void *bytes, size_t size, off64_t place) {
    return changing<ssize_t(int, const void *, size_t, off64_t)>("pwrite64", file, bytes,
                                                                 allowed("pwrite64", size), place);
}

void *mmap(void *address, size_t size, int use, int flags, int file, off_t place) noexcept {
    using Function = void *(void *, size_t, int, int, int, off_t);
    return letFail("mmap", Effect::Reads)
               ? MAP_FAILED
               : libraryFunction<Function>("mmap")(address, size, use, flags, file, place);
}

void *mmap64(void *address, size_t size, int use, int flags, int file, off64_t place) noexcept {
    using Function = void *(void *, size_t, int, int, int, off64_t);
    return letFail("mmap64", Effect::Reads)
               ? MAP_FAILED
               : libraryFunction<Function>("mmap64")(address, size, use, flags, file, place);
}

int fcntl(int file, int command, ...) {
    va_list rest;
    va_start(rest, command);
    void *argument = va_arg(rest, void *);
    va_end(rest);
    return controlling("fcntl", file, command, argument);
}

int fcntl64(int file, int command, ...) {
    va_list rest;
    va_start(rest, command);
    void *argument = va_arg(rest, void *);
    va_end(rest);
    return controlling("fcntl64", file, command, argument);
}

// It gives its error, and leaves errno alone.
int pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*work)(void *),
                   void *argument) noexcept {
    using Function = int(pthread_t *, const pthread_attr_t *, void *(*)(void *), void *);
    return letFail("pthread_create", Effect::Reads)
               ? errno
               : libraryFunction<Function>("pthread_create")(thread, attributes, work, argument);
}

int fsync(int file) {
    return flushing("fsync", file);
}

int fdatasync(int file) {
    return flushing("fdatasync", file);
}

int flock(int file, int operation) noexcept {
    return reading<int(int, int)>("flock", file, operation);
}

int stat(const char *path, struct stat *facts) noexcept {
    return reading<int(const char *, struct stat *)>("stat", path, facts);
}

int lstat(const char *path, struct stat *facts) noexcept {
    return reading<int(const char *, struct stat *)>("lstat", path, facts);
}

int fstat(int file, struct stat *facts) noexcept {
    return reading<int(int, struct stat *)>("fstat", file, facts);
}

int stat64(const char *path, struct stat64 *facts) noexcept {
    return reading<int(const char *, struct stat64 *)>("stat64", path, facts);
}

int lstat64(const char *path, struct stat64 *facts) noexcept {
    return reading<int(const char *, struct stat64 *)>("lstat64", path, facts);
}

int fstat64(int file, struct stat64 *facts) noexcept {
    return reading<int(int, struct stat64 *)>("fstat64", file, facts);
}

int statx(int folder, const char *path, int flags, unsigned mask, struct statx *facts) noexcept {
    return reading<int(int, const char *, int, unsigned, struct statx *)>("statx", folder, path,
                                                                          flags, mask, facts);
}

int access(const char *path, int mode) noexcept {
    return reading<int(const char *, int)>("access", path, mode);
}

int faccessat(int folder, const char *path, int mode, int flags) noexcept {
    return reading<int(int, const char *, int, int)>("faccessat", folder, path, mode, flags);
}

char *realpath(const char *path, char *resolved) noexcept {
    return letFail("realpath", Effect::Reads)
               ? nullptr
               : libraryFunction<char *(const char *, char *)>("realpath")(path, resolved);
}

// What a toolkit calls that was built with checks of its buffers.
char *__realpath_chk(const char *path, char *resolved, size_t size) noexcept {
    using Function = char *(const char *, char *, size_t);
    return letFail("realpath", Effect::Reads)
               ? nullptr
               : libraryFunction<Function>("__realpath_chk")(path, resolved, size);
}

ssize_t readlink(const char *path, char *target, size_t size) noexcept {
    return reading<ssize_t(const char *, char *, size_t)>("readlink", path, target, size);
}

DIR *opendir(const char *path) {
    return letFail("opendir", Effect::Reads)
               ? nullptr
               : libraryFunction<DIR *(const char *)>("opendir")(path);
}

int mkdir(const char *path, mode_t mode) noexcept {
    return changing<int(const char *, mode_t)>("mkdir", path, mode);
}

int rmdir(const char *path) noexcept {
    return changing<int(const char *)>("rmdir", path);
}

int fchmod(int file, mode_t mode) noexcept {
    return changing<int(int, mode_t)>("fchmod", file, mode);
}

int fchown(int file, uid_t owner, gid_t group) noexcept {
    return changing<int(int, uid_t, gid_t)>("fchown", file, owner, group);
}

ssize_t lgetxattr(const char *path, const char *name, void *value, size_t size) noexcept {
    return reading<ssize_t(const char *, const char *, void *, size_t)>("lgetxattr", path, name,
                                                                        value, size);
}

int fsetxattr(int file, const char *name, const void *value, size_t size, int flags) noexcept {
    return changing<int(int, const char *, const void *, size_t, int)>("fsetxattr", file, name,
                                                                       value, size, flags);
}

int fremovexattr(int file, const char *name) noexcept {
    return changing<int(int, const char *)>("fremovexattr", file, name);
}

int ftruncate(int file, off_t size) noexcept {
    return changing<int(int, off_t)>("ftruncate", file, size);
}

int ftruncate64(int file, off64_t size) noexcept {
    return changing<int(int, off64_t)>("ftruncate64", file, size);
}

int truncate64(const char *path, off64_t size) noexcept {
    return changing<int(const char *, off64_t)>("truncate64", path, size);
}

int chmod(const char *path, mode_t mode) noexcept {
    return changing<int(const char *, mode_t)>("chmod", path, mode);
}

int fchmodat(int folder, const char *path, mode_t mode, int flags) noexcept {
    return changing<int(int, const char *, mode_t, int)>("fchmodat", folder, path, mode, flags);
}

int link(const char *from, const char *to) noexcept {
    return changing<int(const char *, const char *)>("link", from, to);
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept {
    return changing<int(int, const char *, int, const char *, int)>("linkat", fromFolder, from,
                                                                    toFolder, to, flags);
}

int unlink(const char *path) noexcept {
    return changing<int(const char *)>("unlink", path);
}

int rename(const char *from, const char *to) noexcept {
    return changing<int(const char *, const char *)>("rename", from, to);
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
              unsigned flags) noexcept {
    return changing<int(int, const char *, int, const char *, unsigned)>("renameat2", fromFolder,
                                                                         from, toFolder, to, flags);
}

int nanosleep(const timespec *time, timespec *left) {
    addSleep(time);
    return libraryFunction<int(const timespec *, timespec *)>("nanosleep")(time, left);
}

int clock_nanosleep(clockid_t clock, int flags, const timespec *time, timespec *left) {
    if ((flags & TIMER_ABSTIME) == 0)
        addSleep(time);
    return libraryFunction<int(clockid_t, int, const timespec *, timespec *)>("clock_nanosleep")(
        clock, flags, time, left);
}
}
