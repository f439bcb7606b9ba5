#pragma once

#include "layout/read_attribute.hpp"

namespace c3d {

using acquisition_layout::read_number;
using acquisition_layout::read_numbers;
using acquisition_layout::read_texts;

} // namespace c3d
