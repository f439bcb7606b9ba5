#include "platform/anvil/src/file_access_posix.hpp"

#include <cerrno>
#include <new>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/anvil/src/extended_attributes_linux.hpp"
#include "platform/anvil/src/not_kept.hpp"
#include "platform/anvil/src/regular_file_posix.hpp"

namespace anvil {

namespace {

constexpr ::mode_t permissions = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr ::mode_t permissions_and_marks = permissions | S_ISUID | S_ISGID | S_ISVTX;

// To fchown: leave it as it is.
constexpr auto same_owner = static_cast<::uid_t>(-1);
constexpr auto same_group = static_cast<::gid_t>(-1);

[[noreturn]] void throw_error(int cause) { throw std::system_error(cause, std::system_category()); }

struct ::stat about(const file_handle& file) {
    struct ::stat result{};
    if (::fstat(descriptor_of(file), &result) != 0)
        throw_error(errno);
    return result;
}

/// A file system that has permissions of its own gives `file` what it gave to the old one.
void make_private(const struct ::stat& old, const file_handle& file) {
    const auto cause = ::fchmod(descriptor_of(file), S_IRUSR | S_IWUSR) == 0 ? EPERM : errno;
    if ((about(file).st_mode & (S_IRWXG | S_IRWXO) & ~old.st_mode) != 0)
        throw_error(cause);
}

void keep_group(const struct ::stat& old, const file_handle& file) {
    if (about(file).st_gid != old.st_gid &&
        ::fchown(descriptor_of(file), same_owner, old.st_gid) != 0)
        throw_error(errno);
}

/// True when the owner may do whatever the group, somebody on the access list, for which the
/// group's permissions are the upper bound, or anybody may: being one of those instead then gains
/// nothing.
bool owner_has_most(const struct ::stat& old) noexcept {
    const auto of_others = (old.st_mode >> 3U | old.st_mode) & S_IRWXO;
    return (of_others & ~(old.st_mode >> 6U)) == 0;
}

void keep_owner(const struct ::stat& old, const file_handle& file) {
    if (about(file).st_uid == old.st_uid ||
        ::fchown(descriptor_of(file), old.st_uid, same_group) == 0)
        return;
    if (errno != EPERM || !owner_has_most(old))
        throw_error(errno);
}

void keep_permissions(const struct ::stat& old, const file_handle& file) {
    auto wanted = old.st_mode & permissions_and_marks;
    // The mark lets everybody act as the file's owner; the new one has not agreed to that.
    if (about(file).st_uid != old.st_uid)
        wanted &= ~static_cast<::mode_t>(S_ISUID);
    const auto cause = ::fchmod(descriptor_of(file), wanted) == 0 ? EPERM : errno;
    // A file system may do something else without an error, or refuse what is there already.
    if (((about(file).st_mode ^ wanted) & permissions) != 0)
        throw_error(cause);
}

/// Takes a step; what keeps the system from it becomes the reason why `part` is not kept.
template <typename Step> void keep(kept_part part, const Step& step) {
    try {
        step();
    } catch (const std::system_error& failure) {
        throw std::system_error(not_kept(part, failure.code().value()));
    }
}

/// In an order in which no step gives or takes what another one needs: attributes are set by who
/// may write to the file, lists and permissions by its owner; a change of owner or group clears
/// marks.
void keep_all(const file_handle& old, const file_handle& file) {
    const auto wanted = about(old);
    keep(kept_part::permissions, [&] { make_private(wanted, file); });
    keep(kept_part::attribute, [&] { copy_attributes(old, file); });
    keep(kept_part::group, [&] { keep_group(wanted, file); });
    keep(kept_part::owner, [&] { keep_owner(wanted, file); });
    keep(kept_part::access_list, [&] { copy_access_lists(old, file); });
    keep(kept_part::permissions, [&] { keep_permissions(wanted, file); });
}

} // namespace

std::error_code keep_access(const file_handle& old, const file_handle& file) noexcept {
    try {
        keep_all(old, file);
        return {};
    } catch (const std::system_error& failure) {
        return failure.code();
    } catch (const std::bad_alloc&) {
        return std::make_error_code(std::errc::not_enough_memory);
    }
}

} // namespace anvil
