#include "schema/parameter_list.hpp"

#include <iterator>

#include "schema/read_attribute.hpp"

namespace schema {

std::optional<std::vector<std::string>> read_parameter_list(const strata::data_group& root,
                                                            std::string_view group_path,
                                                            const std::string& parameter) {
    if (!root.exists_group(group_path))
        return std::nullopt;
    const auto group = root.retrieve_group(group_path);
    auto attribute = group.retrieve_attribute(parameter);
    if (!attribute)
        return std::nullopt;
    std::vector<std::string> texts;
    for (int number = 2; attribute; ++number) {
        auto part = read_texts(attribute);
        texts.insert(texts.end(), std::make_move_iterator(part.begin()),
                     std::make_move_iterator(part.end()));
        attribute = group.retrieve_attribute(parameter + std::to_string(number));
    }
    return texts;
}

} // namespace schema
