#pragma once

#include "schema/read_attribute.hpp"

namespace c3d {

using schema::read_number;
using schema::read_numbers;
using schema::read_texts;

} // namespace c3d
