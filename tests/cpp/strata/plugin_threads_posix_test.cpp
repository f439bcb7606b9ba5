// Threads that look offers up while plugins come and go, and processes that are forked meanwhile.

#include <atomic>
#include <thread>
#include <vector>

#include <strata/data_importer.hpp>
#include <strata/data_store.hpp>

#include "tests/cpp/anvil/support/child_process.hpp"
#include "tests/cpp/strata/support/memory_device.hpp"
#include "tests/cpp/strata/support/plugin_test.hpp"

namespace {

using strata_test::plugin_path;

bool is_read() {
    strata_test::memory_device device{"AAAA"};
    const strata::data_store store;
    return static_cast<bool>(strata::data_importer(&device, "").read(store.root())) &&
           store.root().exists_group("AAAA");
}

/// Threads that read until it is destroyed.
class readers {
  public:
    readers() {
        for (int i = 0; i < 3; ++i) {
            threads_.emplace_back([this] {
                while (!stops_)
                    read_ += is_read() ? 1 : 0;
            });
        }
    }
    readers(const readers&) = delete;
    readers& operator=(const readers&) = delete;
    ~readers() {
        stops_ = true;
        for (auto& thread : threads_)
            thread.join();
    }

    /// Returns when more has been read.
    void wait_for_a_read() const {
        for (const int before = read_; read_ == before;)
            std::this_thread::yield();
    }

  private:
    std::atomic<bool> stops_ = false;
    std::atomic<int> read_ = 0;
    std::vector<std::thread> threads_;
};

/// Without a sink, which the lines of several threads are too many for.
class PluginThreads : public strata_test::plugin_test {
  protected:
    PluginThreads() { anvil::install_default_log_sink(nullptr); }
};

TEST_F(PluginThreads, ReadWhilePluginsComeAndGo) {
    const readers running;
    for (int round = 0; round < 50; ++round) {
        ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
        running.wait_for_a_read();
        manager_.clear();
    }
}

TEST_F(PluginThreads, LeaveNoLockToAForkedChild) {
    ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
    const readers running;
    for (int round = 0; round < 100; ++round) {
        const auto child = anvil_test::start_child([] {
            if (!is_read())
                throw 1;
        });
        ASSERT_TRUE(anvil_test::ended_well(child)) << "round " << round;
    }
}

} // namespace
