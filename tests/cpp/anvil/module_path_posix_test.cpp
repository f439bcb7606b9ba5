#include <filesystem>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <anvil/module_path.hpp>

namespace {

TEST(ModulePath, OfAProgramIsTheProgramsFile) {
    EXPECT_EQ(anvil::module_path(), std::filesystem::read_symlink("/proc/self/exe"));
}

TEST(ModulePath, OfCodeInALibraryIsTheLibrarysFile) {
    const auto path = anvil::path_of_code(::dlsym(RTLD_DEFAULT, "getpid"));
    EXPECT_TRUE(path.is_absolute()) << path;
    EXPECT_TRUE(std::filesystem::is_regular_file(path)) << path;
    EXPECT_EQ(path.filename().string().substr(0, 4), "libc");
}

TEST(ModulePath, OfNoCodeIsEmpty) {
    const int on_the_stack = 0;
    EXPECT_EQ(anvil::path_of_code(&on_the_stack), "");
    EXPECT_EQ(anvil::path_of_code(nullptr), "");
}

} // namespace
