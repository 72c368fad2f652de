#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <functional>
#include <system_error>
#include <thread>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

namespace tallymar::test {

// Runs a body in a process of its own, so that it can be killed at any moment or hold a lock. The body gives its exit status, 250
// for an exception, and may take a Ready that it calls when it has got as far as AwaitReady waits for.
class Child {
 public:
    using Ready = std::function<void()>;
    static constexpr int kThrew = 250;
    static constexpr int kKilled = 251;

    template <typename Body>
    explicit Child(Body body) {
        if (pipe(ends_) != 0 || (id_ = fork()) < 0) throw std::system_error(errno, std::generic_category());
        if (id_ == 0) _exit(StatusOf(body));
        close(ends_[1]);
    }
    ~Child() {
        if (id_ > 0) {
            kill(id_, SIGKILL);
            Wait();
        }
        close(ends_[0]);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void AwaitReady() {
        char byte = 0;
        EXPECT_EQ(read(ends_[0], &byte, 1), 1) << "it ended before it was ready";
    }
    int Wait() {
        int status = 0;
        waitpid(std::exchange(id_, 0), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : kKilled;
    }
    // kKilled, or what the body gave when it was through before.
    int KillAfter(std::chrono::nanoseconds time) {
        std::this_thread::sleep_for(time);
        kill(id_, SIGKILL);
        return Wait();
    }

 private:
    template <typename Body>
    int StatusOf(Body& body) {
        try {
            if constexpr (std::is_invocable_v<Body, Ready>) {
                return body([this] {
                    if (write(ends_[1], "x", 1) != 1) _exit(kThrew);
                });
            } else {
                return body();
            }
        } catch (...) {
            return kThrew;
        }
    }

    int ends_[2] = {-1, -1};
    pid_t id_ = -1;
};

}  // namespace tallymar::test
