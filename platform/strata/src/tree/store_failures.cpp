#include "platform/strata/src/tree/store_failures.hpp"

#include <string>

#include <strata/store_error.hpp>

#include "platform/strata/src/tree/group_node.hpp"

namespace strata::detail {

namespace {

[[noreturn]] void throw_about(std::string_view before, std::string_view path,
                              std::string_view after) {
    std::string text{before};
    text += '\'';
    text += path;
    text += '\'';
    text += after;
    throw store_error{text};
}

} // namespace

void throw_no_such_group(std::string_view path) { throw_about("There is no group ", path, ""); }

void throw_no_group_for(std::string_view path) {
    throw_about("The group of ", path, " does not exist");
}

void throw_no_such_set(std::string_view path) { throw_about("There is no data set ", path, ""); }

void throw_no_such_attribute(std::string_view path) {
    throw_about("There is no attribute ", path, "");
}

void throw_group_exists(std::string_view path) {
    throw_about("The group ", path, " already exists");
}

void throw_set_exists(std::string_view path) {
    throw_about("The data set ", path, " already exists");
}

void throw_attribute_exists(std::string_view path) {
    throw_about("The attribute ", path, " already exists");
}

void throw_bad_path(std::string_view path) {
    throw_about("", path, " is no name: a component is empty or where none is allowed");
}

void throw_too_deep(std::string_view path) {
    throw_about("The group ", path,
                " would lie more than " + std::to_string(maximum_depth) + " levels deep");
}

void throw_deletes_itself() { throw store_error{"A group cannot delete itself"}; }

void throw_denotes_nothing(std::string_view kind) {
    throw store_error{"This handle denotes no " + std::string{kind}};
}

} // namespace strata::detail
