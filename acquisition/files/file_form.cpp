#include "acquisition/files/file_form.hpp"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace attribute = schema::attribute;

namespace {

struct named_processor {
    std::string_view name;
    std::int32_t number;
};

constexpr std::array processors = {
    named_processor{"intel", 84},
    named_processor{"dec", 85},
    named_processor{"mips", 86},
};

constexpr std::string_view real = "real";
constexpr std::string_view integer = "integer";
constexpr std::string_view of_the_source = "source";

std::optional<std::string> wanted_storage(const strata::data_group& root, std::string_view asked) {
    if (asked.empty())
        return std::nullopt;
    if (asked == of_the_source)
        return source_form(root).storage;
    if (asked == real || asked == integer)
        return std::string(asked);
    throw swig_error(
        error_code::value,
        fmt::format("the storage of samples is 'real', 'integer' or 'source', not '{}'", asked));
}

std::optional<std::int32_t> wanted_processor(const strata::data_group& root,
                                             std::string_view asked) {
    if (asked.empty())
        return std::nullopt;
    if (asked == of_the_source)
        return source_form(root).processor;
    const auto* const found = std::ranges::find(processors, asked, &named_processor::name);
    if (found != processors.end())
        return found->number;
    throw swig_error(
        error_code::value,
        fmt::format("the processor is 'intel', 'dec', 'mips' or 'source', not '{}'", asked));
}

} // namespace

file_form source_form(const strata::data_group& root) {
    file_form form{std::string(real), processors.front().number};
    if (!root.exists_group(schema::header))
        return form;
    const auto header = root.retrieve_group(schema::header);
    if (read<std::string>(header.retrieve_attribute(attribute::storage)) == integer)
        form.storage = integer;
    const auto processor =
        read<std::int32_t>(header.retrieve_attribute(attribute::processor), form.processor);
    if (std::ranges::find(processors, processor, &named_processor::number) != processors.end())
        form.processor = processor;
    return form;
}

std::string_view processor_name(std::int32_t processor) noexcept {
    const auto* const found = std::ranges::find(processors, processor, &named_processor::number);
    return found == processors.end() ? processors.front().name : found->name;
}

wanted_form wanted_form_of(const strata::data_group& root, std::string_view storage,
                           std::string_view processor) {
    return {wanted_storage(root, storage), wanted_processor(root, processor)};
}

void ask_for_form(strata::data_group root, const wanted_form& form) {
    if (!form.storage && !form.processor)
        return;
    auto header = retrieve_or_create_group(root, schema::header);
    if (form.storage)
        write_or_create(header, attribute::wanted_storage, *form.storage);
    if (form.processor)
        write_or_create(header, attribute::wanted_processor, *form.processor);
}

} // namespace mox
