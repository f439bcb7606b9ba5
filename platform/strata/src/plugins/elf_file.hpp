#pragma once

#include <filesystem>

namespace strata::detail {

/// Throws load_failure when `file` cannot be read, is no ELF file, or ends before what it tells the
/// loader to map: the loader would map it all the same, and the process would die when it touches
/// what is not there.
void require_complete_elf_file(const std::filesystem::path& file);

} // namespace strata::detail
