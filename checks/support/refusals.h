// What makes an operating system refuse to write a file.
#pragma once

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace quorvanta::checks {

// While this lives the process has the rights of an ordinary user: to the superuser nothing is
// read-only.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        constexpr uid_t nobody = 65534;
        if (former_ == 0) {
            EXPECT_EQ(::seteuid(nobody), 0);
        }
    }
    ~OrdinaryUser() { EXPECT_EQ(::seteuid(former_), 0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    uid_t former_ = ::geteuid();
};

// The kernel refuses every byte beyond the limit, as a full disk does.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        former_ = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &formerLimit_);
        const rlimit limit{bytes, formerLimit_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &formerLimit_);
        std::signal(SIGXFSZ, former_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    void (*former_)(int) = nullptr;
    rlimit formerLimit_{};
};

} // namespace quorvanta::checks
