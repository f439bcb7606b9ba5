// The data store: a tree of groups, sets and attributes, and the plugins that fill it.
//
// | file             |                                               |
// |------------------|-----------------------------------------------|
// | data_store       | one tree                                      |
// | data_group       | a node that holds groups, sets and attributes |
// | data_set         | an array of elements with attributes          |
// | data_selection   | all or part of it                             |
// | data_attribute   | a value of a group or a set                   |
// | data_shape       | extents of all these                          |
// | data_type        | types of their elements                       |
// | data_converter   | giving back texts that were read              |
// | store_error      | what the data store cannot do                 |
// | strata_logger    | its lines in the log                          |
// | access/          | faster ways in, for the module                |
// | plugin/          | what plugins derive from and use              |
// | plugin_manager   | plugins that are loaded                       |
// | data_importer    | an importer of theirs                         |
// | data_exporter    | an exporter                                   |
// | callable_builder | a callable unit                               |
// | detail/          | what these headers are made of                |

#pragma once

#include <strata/data_group.hpp>
#include <strata/export.hpp>

namespace strata {

/// One tree. Copies share it.
class STRATA_EXPORT data_store {
  public:
    /// An empty tree.
    data_store();
    data_store(const data_store&) noexcept;
    data_store& operator=(const data_store&) noexcept;
    /// A moved-from store may only be assigned to or destroyed.
    data_store(data_store&&) noexcept;
    data_store& operator=(data_store&&) noexcept;
    ~data_store();

    [[nodiscard]] data_group root() const;

  private:
    data_group root_;
};

} // namespace strata
