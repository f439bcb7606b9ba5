#pragma once

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

namespace anvil_test {

/// While it lives, no file of this process can grow beyond a length: a disk that is full.
class full_disk {
  public:
    explicit full_disk(::rlim_t longest_file) {
        ::getrlimit(RLIMIT_FSIZE, &former_);
        ::rlimit lower = former_;
        lower.rlim_cur = longest_file;
        ::setrlimit(RLIMIT_FSIZE, &lower);
        former_handler_ = std::signal(SIGXFSZ, SIG_IGN);
    }
    full_disk(const full_disk&) = delete;
    full_disk& operator=(const full_disk&) = delete;
    ~full_disk() {
        std::signal(SIGXFSZ, former_handler_);
        ::setrlimit(RLIMIT_FSIZE, &former_);
    }

  private:
    ::rlimit former_{};
    void (*former_handler_)(int) = nullptr;
};

/// While it lives, the permissions of files count also where the tests run as root.
class ordinary_user {
  public:
    ordinary_user() {
        constexpr ::uid_t nobody = 65534;
        if (user_ == 0)
            static_cast<void>(::seteuid(nobody));
    }
    ordinary_user(const ordinary_user&) = delete;
    ordinary_user& operator=(const ordinary_user&) = delete;
    ~ordinary_user() { static_cast<void>(::seteuid(user_)); }

  private:
    ::uid_t user_ = ::geteuid();
};

} // namespace anvil_test
