#pragma once

#include <filesystem>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace anvil_test {

/// An empty folder that lives as long as the object, named after the test suite. The random part
/// keeps runs of the tests apart that go on at the same time.
class temporary_folder {
  public:
    temporary_folder() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = "anvil_";
        name += test->test_suite_name();
        name += '_' + std::to_string(std::random_device{}());
        path_ = std::filesystem::path{testing::TempDir()} / name;
        std::filesystem::create_directories(path_);
    }
    temporary_folder(const temporary_folder&) = delete;
    temporary_folder& operator=(const temporary_folder&) = delete;
    ~temporary_folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(const std::filesystem::path& name) const {
        return path_ / name;
    }

  private:
    std::filesystem::path path_;
};

} // namespace anvil_test
