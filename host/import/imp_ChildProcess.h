#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

/// What a child process may use before it is ended.
struct imp_Limits {
    std::uint64_t memoryMiB;  ///< address space beyond that of this process
    int seconds;              ///< wall clock and processor time, 1 or more
};

/// Writes all bytes to the file descriptor; false when the other end is gone.
bool imp_WriteAll(int descriptor, const void* bytes, std::size_t count);

/// Work done in a process of its own, whose results come through a pipe, so that work that crashes,
/// hangs or eats memory ends that process and not this one.
///
/// The child starts as a copy of this process, writes no core file, prints on standard error only
/// and is killed when its time is over, when this object goes, or (on Linux) when this process
/// ends. This process should have one thread when it starts one. Under the address sanitizer, whose
/// shadow needs the whole address space, memory is not limited.
class imp_ChildProcess {
  public:
    /// Runs `work` with the writing end of the pipe; what it returns becomes the exit status of the
    /// child. It must not throw. Throws `std::system_error` when no process can be started.
    imp_ChildProcess(const imp_Limits& limits, const std::function<int(int)>& work);
    ~imp_ChildProcess();
    imp_ChildProcess(const imp_ChildProcess&) = delete;
    imp_ChildProcess& operator=(const imp_ChildProcess&) = delete;

    /// Called while the process waits for the child, ten times a second.
    void OnWait(std::function<void()> callback) { onWait = std::move(callback); }

    /// Reads up to `count` bytes, at least one; 0 when the child wrote all that it had to, or when
    /// it was ended.
    [[nodiscard]] std::size_t Read(void* bytes, std::size_t count);
    /// Waits for the end of the child, which must write no more. Returns what ended it before it
    /// was done ("it took longer than 5 s (--time-limit)"); "" when it exited with status 0.
    [[nodiscard]] std::string Finish();

  private:
    using Clock = std::chrono::steady_clock;
    bool WaitForBytes();
    void Kill() noexcept;

    int descriptor = -1;
    int process = -1;
    int seconds;
    Clock::time_point deadline;
    bool outOfTime = false;
    std::function<void()> onWait;
};
