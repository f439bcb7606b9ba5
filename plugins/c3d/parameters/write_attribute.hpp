#pragma once

#include "schema/write_attribute.hpp"

namespace c3d {

using schema::data_type_of;
using schema::set_value;
using schema::write_number;
using schema::write_numbers;
using schema::write_text;
using schema::write_texts;

} // namespace c3d
