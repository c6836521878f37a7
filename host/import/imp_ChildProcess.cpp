#include "host/import/imp_ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <system_error>

#if defined(__linux__)
#include <sys/prctl.h>
#endif

#if defined(__SANITIZE_ADDRESS__)
#define IMP_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define IMP_ADDRESS_SANITIZER 1
#endif
#endif

namespace {

constexpr int kPollMilliseconds = 100;

[[noreturn]] void ThrowSystemError(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

void SetLimit(decltype(RLIMIT_CPU) resource, std::uint64_t value) {
    rlimit limit{};
    getrlimit(resource, &limit);
    limit.rlim_cur = std::min<rlim_t>(value, limit.rlim_max);
    setrlimit(resource, &limit);
}

#if !defined(IMP_ADDRESS_SANITIZER)
/// The size of this process's address space, 0 where the system does not tell it.
std::uint64_t AddressSpaceBytes() {
    std::uint64_t pages = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        unsigned long long number = 0;
        if (std::fscanf(file, "%llu", &number) == 1) pages = number;
        std::fclose(file);
    }
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}
#endif

void LimitMemory([[maybe_unused]] std::uint64_t memoryMiB) {
#if !defined(IMP_ADDRESS_SANITIZER)
    constexpr std::uint64_t kMaxMiB = std::uint64_t{1} << 40;
    SetLimit(RLIMIT_AS, AddressSpaceBytes() + (std::min(memoryMiB, kMaxMiB) << 20));
#endif
}

/// Where memory runs out below the limit, the child is the process to go.
void OfferToOutOfMemoryKiller() {
    const int file = open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC);
    if (file < 0) return;
    imp_WriteAll(file, "1000", 4);
    close(file);
}

void RestrictThisProcess(const imp_Limits& limits, pid_t parent) {
#if defined(__linux__)
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(EXIT_FAILURE);
#endif
    dup2(STDERR_FILENO, STDOUT_FILENO);
    SetLimit(RLIMIT_CORE, 0);
    // The wall clock is watched from outside; this ends the child where nobody watches any more.
    SetLimit(RLIMIT_CPU, static_cast<std::uint64_t>(limits.seconds) + 1);
    LimitMemory(limits.memoryMiB);
    OfferToOutOfMemoryKiller();
}

}  // namespace

bool imp_WriteAll(int descriptor, const void* bytes, std::size_t count) {
    const char* next = static_cast<const char*>(bytes);
    while (count > 0) {
        const ssize_t written = write(descriptor, next, count);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        next += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
}

imp_ChildProcess::imp_ChildProcess(const imp_Limits& limits, const std::function<int(int)>& work)
    : seconds(limits.seconds), deadline(Clock::now() + std::chrono::seconds(limits.seconds)) {
    int ends[2];
    if (pipe(ends) != 0) ThrowSystemError("pipe");
    std::fflush(nullptr);
    const pid_t parent = getpid();
    process = fork();
    if (process < 0) {
        const int error = errno;
        close(ends[0]);
        close(ends[1]);
        throw std::system_error(error, std::generic_category(), "fork");
    }
    if (process == 0) {
        close(ends[0]);
        RestrictThisProcess(limits, parent);
        _exit(work(ends[1]));
    }
    close(ends[1]);
    descriptor = ends[0];
}

imp_ChildProcess::~imp_ChildProcess() {
    Kill();
    if (process > 0) waitpid(process, nullptr, 0);
    if (descriptor >= 0) close(descriptor);
}

void imp_ChildProcess::Kill() noexcept {
    if (process > 0) kill(process, SIGKILL);
}

bool imp_ChildProcess::WaitForBytes() {
    while (Clock::now() < deadline) {
        pollfd waited{descriptor, POLLIN, 0};
        const int ready = poll(&waited, 1, kPollMilliseconds);
        if (ready > 0) return true;
        if (ready < 0 && errno != EINTR) ThrowSystemError("poll");
        if (onWait) onWait();
    }
    outOfTime = true;
    Kill();
    return false;
}

std::size_t imp_ChildProcess::Read(void* bytes, std::size_t count) {
    if (outOfTime || !WaitForBytes()) return 0;
    ssize_t got = 0;
    do {
        got = read(descriptor, bytes, count);
    } while (got < 0 && errno == EINTR);
    if (got < 0) ThrowSystemError("read");
    return static_cast<std::size_t>(got);
}

std::string imp_ChildProcess::Finish() {
    // The end of the pipe comes with the end of the child: after it, waiting is short.
    char surplus;
    const bool wroteMore = Read(&surplus, 1) != 0;
    if (wroteMore) Kill();
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    process = -1;
    if (outOfTime || (WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU)) {
        return "it took longer than " + std::to_string(seconds) + " s (--time-limit)";
    }
    if (wroteMore) return "its reader wrote more than it should";
    if (WIFSIGNALED(status)) {
        return std::string("its reader died: ") + strsignal(WTERMSIG(status));
    }
    if (WEXITSTATUS(status) != 0) return "its reader gave up";
    return {};
}
