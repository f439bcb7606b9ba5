#pragma once

#include "layout/write_attribute.hpp"

namespace c3d {

using acquisition_layout::data_type_of;
using acquisition_layout::set_value;
using acquisition_layout::write_number;
using acquisition_layout::write_numbers;
using acquisition_layout::write_text;
using acquisition_layout::write_texts;

} // namespace c3d
