#include "acquisition/files/source_record.hpp"

#include <anvil/path_text.hpp>
#include <strata/access/append_elements.hpp>

#include "schema/names.hpp"
#include "schema/write_attribute.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace attribute = schema::attribute;

void add_warning(strata::data_group root, std::string_view text) {
    const std::string copy{text};
    const auto warnings = root.retrieve_attribute(attribute::warnings);
    if (!warnings) {
        schema::write_texts(root, attribute::warnings, std::vector{copy});
        return;
    }
    const auto* pointer = copy.c_str();
    (void)strata::append_elements(warnings, static_cast<const void*>(&pointer), 1,
                                  strata::data_type::string);
}

std::vector<std::string> warnings_of(const strata::data_group& root) {
    return read_vector<std::string>(root.retrieve_attribute(attribute::warnings));
}

void keep_source_path(strata::data_group root, const std::filesystem::path& path) {
    std::error_code failure;
    const auto absolute = std::filesystem::absolute(path, failure);
    write_or_create(root, attribute::source_path, anvil::text_of_path(failure ? path : absolute));
}

std::optional<std::string> source_path_of(const strata::data_group& root) {
    const auto path = root.retrieve_attribute(attribute::source_path);
    if (!path)
        return std::nullopt;
    return read<std::string>(path);
}

} // namespace mox
