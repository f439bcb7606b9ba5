// Makes one call of the system fail that concerns files in one folder. To be loaded with
// LD_PRELOAD; what shall fail is told by environment variables, which are looked up at each call:
//
//     MOX_FAULT_FOLDER   absolute path; calls elsewhere are passed on
//     MOX_FAULT_CALL     the name of one of the functions at the end of this file
//     MOX_FAULT_NUMBER   the call that fails, from 1; "every"
//     MOX_FAULT_KIND     a number: errno; "half": write some of the bytes; "zero": do nothing and
//                        give 0; "kill": end the process; "stop": halt it until somebody continues
//                        it; "vanish": the folder gets another name
//     MOX_FAULT_NAMED    set: the system has no files without a name

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <unistd.h>

#define FAULT_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

std::atomic<int> calls{0}; // of the chosen function in the folder, since the last reset

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

template <typename Function> Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool is_in_folder(std::string_view path) {
    const auto folder = variable("MOX_FAULT_FOLDER");
    return !folder.empty() && path.starts_with(folder + "/");
}

std::string path_of(int descriptor) {
    char path[4096];
    const auto link = "/proc/self/fd/" + std::to_string(descriptor);
    const auto length = ::readlink(link.c_str(), path, sizeof path);
    return length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string();
}

/// What shall happen in this call; empty: nothing.
std::string fault_of(const char* call, std::string_view path) {
    if (variable("MOX_FAULT_CALL") != call || !is_in_folder(path))
        return {};
    const auto number = variable("MOX_FAULT_NUMBER");
    const auto call_number = ++calls;
    if (number != "every" && std::atoi(number.c_str()) != call_number)
        return {};
    return variable("MOX_FAULT_KIND");
}

void move_folder_away() {
    const auto folder = variable("MOX_FAULT_FOLDER");
    next<int(const char*, const char*)>("rename")(folder.c_str(), (folder + ".moved").c_str());
}

/// Does what can be done to any call. True when the call itself shall fail, errno being set.
bool is_refused(const std::string& kind) {
    if (kind == "kill")
        ::raise(SIGKILL);
    if (kind == "stop")
        ::raise(SIGSTOP);
    if (kind == "vanish")
        move_folder_away();
    errno = std::atoi(kind.c_str());
    return errno != 0;
}

/// Calls the function `call` of the system, which has these arguments, unless it shall fail.
template <typename Result, typename... Arguments>
Result pass_on(const char* call, int descriptor, Arguments... arguments) {
    const auto kind = fault_of(call, path_of(descriptor));
    if (kind == "zero")
        return 0;
    if (is_refused(kind))
        return -1;
    return next<Result(int, Arguments...)>(call)(descriptor, arguments...);
}

} // namespace

FAULT_EXPORT int mox_fault_calls() { return calls; }

FAULT_EXPORT void mox_fault_reset() { calls = 0; }

FAULT_EXPORT ssize_t write(int descriptor, const void* bytes, std::size_t count) {
    static auto* const real = next<ssize_t(int, const void*, std::size_t)>("write");
    if (!std::getenv("MOX_FAULT_CALL"))
        return real(descriptor, bytes, count);
    const auto kind = fault_of("write", path_of(descriptor));
    if (kind == "zero")
        return 0;
    if (is_refused(kind))
        return -1;
    return real(descriptor, bytes, kind == "half" ? (count + 1) / 2 : count);
}

FAULT_EXPORT ssize_t pread(int descriptor, void* bytes, std::size_t count, off_t offset) {
    return pass_on<ssize_t>("pread", descriptor, bytes, count, offset);
}

FAULT_EXPORT int fsync(int descriptor) { return pass_on<int>("fsync", descriptor); }

FAULT_EXPORT int fchmod(int descriptor, mode_t permissions) {
    return pass_on<int>("fchmod", descriptor, permissions);
}

FAULT_EXPORT int fchown(int descriptor, uid_t owner, gid_t group) {
    return pass_on<int>("fchown", descriptor, owner, group);
}

FAULT_EXPORT ssize_t flistxattr(int descriptor, char* names, std::size_t size) {
    return pass_on<ssize_t>("flistxattr", descriptor, names, size);
}

FAULT_EXPORT ssize_t fgetxattr(int descriptor, const char* name, void* value, std::size_t size) {
    return pass_on<ssize_t>("fgetxattr", descriptor, name, value, size);
}

FAULT_EXPORT int fsetxattr(int descriptor, const char* name, const void* value, std::size_t size,
                           int flags) {
    return pass_on<int>("fsetxattr", descriptor, name, value, size, flags);
}

FAULT_EXPORT int fremovexattr(int descriptor, const char* name) {
    return pass_on<int>("fremovexattr", descriptor, name);
}

FAULT_EXPORT int flock(int descriptor, int operation) {
    return pass_on<int>("flock", descriptor, operation);
}

FAULT_EXPORT int open(const char* path, int flags, ...) {
    static auto* const real = next<int(const char*, int, ...)>("open");
    std::va_list arguments;
    va_start(arguments, flags);
    // Given with these two flags alone; else it is not looked at.
    const auto permissions =
        (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : mode_t{0};
    va_end(arguments);
    if ((flags & O_TMPFILE) == O_TMPFILE && std::getenv("MOX_FAULT_NAMED")) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return real(path, flags, permissions);
}

FAULT_EXPORT int linkat(int old_folder, const char* old_name, int folder, const char* name,
                        int flags) {
    static auto* const real = next<int(int, const char*, int, const char*, int)>("linkat");
    if (is_refused(fault_of("linkat", name)))
        return -1;
    return real(old_folder, old_name, folder, name, flags);
}

FAULT_EXPORT int rename(const char* old_name, const char* new_name) {
    static auto* const real = next<int(const char*, const char*)>("rename");
    return is_refused(fault_of("rename", new_name)) ? -1 : real(old_name, new_name);
}
