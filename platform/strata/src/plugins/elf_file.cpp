#include "platform/strata/src/plugins/elf_file.hpp"

#include <cstdint>
#include <cstring>
#include <fstream>

#include <elf.h>
#include <link.h>

#include "platform/strata/src/plugins/load_failure.hpp"

namespace strata::detail {

namespace {

template <typename Record>
bool read_record(std::ifstream& file, std::uint64_t offset, Record& record) {
    file.seekg(static_cast<std::streamoff>(offset));
    return static_cast<bool>(file.read(reinterpret_cast<char*>(&record), sizeof record));
}

[[noreturn]] void throw_cut_short(std::uint64_t size) {
    throw load_failure{"it is cut short: its headers speak of more than the " +
                       std::to_string(size) + " bytes that are there"};
}

} // namespace

void require_complete_elf_file(const std::filesystem::path& path) {
    std::ifstream file{path, std::ios::binary | std::ios::ate};
    if (!file)
        throw load_failure{"it cannot be read"};
    const auto size = static_cast<std::uint64_t>(file.tellg());

    ElfW(Ehdr) header{};
    if (!read_record(file, 0, header) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) {
        throw load_failure{"it is no shared library"};
    }
    // The loader itself refuses libraries for other machines.
    if (header.e_phentsize != sizeof(ElfW(Phdr)))
        return;

    for (std::uint64_t i = 0; i < header.e_phnum; ++i) {
        ElfW(Phdr) segment{};
        const auto place = header.e_phoff + i * sizeof segment;
        if (place > size || !read_record(file, place, segment))
            throw_cut_short(size);
        if (segment.p_offset > size || segment.p_filesz > size - segment.p_offset)
            throw_cut_short(size);
    }
}

} // namespace strata::detail
