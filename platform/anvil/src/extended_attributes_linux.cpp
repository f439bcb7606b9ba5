#include "platform/anvil/src/extended_attributes_linux.hpp"
#include "platform/anvil/src/regular_file_posix.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <linux/limits.h>
#include <sys/xattr.h>

namespace anvil {

namespace {

/// Neither the attribute nor, on some file systems, attributes as such.
bool is_absence(int cause) noexcept { return cause == ENODATA || cause == ENOTSUP; }

[[noreturn]] void throw_last_error() { throw std::system_error(errno, std::system_category()); }

/// All attributes of `file` that this process may know of.
std::vector<std::string> names_of(const file_handle& file) {
    std::string list(XATTR_LIST_MAX, '\0');
    const auto length = ::flistxattr(descriptor_of(file), list.data(), list.size());
    if (length < 0 && !is_absence(errno))
        throw_last_error();
    list.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    std::vector<std::string> names;
    // Each name has a NUL behind it.
    for (std::size_t begin = 0; begin < list.size(); begin += names.back().size() + 1)
        names.emplace_back(list.c_str() + begin);
    return names;
}

std::optional<std::string> value_of(const file_handle& file, const std::string& name) {
    std::string value(XATTR_SIZE_MAX, '\0');
    const auto length = ::fgetxattr(descriptor_of(file), name.c_str(), value.data(), value.size());
    if (length < 0 && is_absence(errno))
        return {};
    if (length < 0)
        throw_last_error();
    value.resize(static_cast<std::size_t>(length));
    return value;
}

/// Changes nothing that is as it should be: much may be looked at that must not be set.
void copy(const std::string& name, const file_handle& old, const file_handle& file) {
    const auto value = value_of(old, name);
    if (value == value_of(file, name))
        return;
    const auto result =
        value ? ::fsetxattr(descriptor_of(file), name.c_str(), value->data(), value->size(), 0)
              : ::fremovexattr(descriptor_of(file), name.c_str());
    if (result != 0)
        throw_last_error();
}

/// The lists that a local file system has, and those that servers have in ways of their own.
bool is_access_list(std::string_view name) noexcept { return name.starts_with("system."); }

/// True for notes of users and the administrator, and for labels of security systems. Whatever
/// stands outside these namespaces says how one file system stores the file.
bool is_kept(std::string_view name) noexcept {
    constexpr std::array kept{"user.", "security.", "trusted."};
    constexpr std::array dropped{
        // Rights and signatures of the old content. The system, too, takes them back when a file is
        // written to.
        "security.capability",
        "security.evm",
        "security.ima",
        // The access list as XFS stores it, which shows it to root under this name as well.
        "trusted.SGI_ACL_FILE",
    };
    return std::ranges::any_of(kept, [&](auto start) { return name.starts_with(start); }) &&
           std::ranges::find(dropped, name) == dropped.end();
}

} // namespace

void copy_attributes(const file_handle& old, const file_handle& file) {
    for (const auto& name : names_of(old))
        if (is_kept(name))
            copy(name, old, file);
}

void copy_access_lists(const file_handle& old, const file_handle& file) {
    auto names = names_of(old);
    // A new file has a list where its folder has one for new files.
    std::ranges::move(names_of(file), std::back_inserter(names));
    names.emplace_back("system.posix_acl_access"); // some file systems have it and do not list it
    for (const auto& name : names)
        if (is_access_list(name))
            copy(name, old, file);
}

} // namespace anvil
