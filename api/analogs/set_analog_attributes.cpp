#include "store/python.hpp"

#include "api/analogs/set_analog_attributes.hpp"

#include "api/analogs/gain_table.hpp"
#include "api/analogs/read_analogs.hpp"
#include "api/channels/channel_lookup.hpp"
#include "schema/names.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::analogs {

namespace attribute = schema::attribute;

namespace {

strata::data_set find(const strata::data_store& acquisition, int index) {
    return channel_by_index(analog_group(acquisition), index);
}

strata::data_set find(const strata::data_store& acquisition, const std::string& label) {
    return channel_by_label(analog_group(acquisition), label);
}

/// Overwrites an attribute of a channel, whose stored element type stays.
template <typename Key, typename Value>
outputs<2> overwrite(const strata::data_store& acquisition, const Key& key, const char* name,
                     const Value& value) {
    write_or_create(find(acquisition, key), name, value);
    return all(acquisition);
}

void require_gain(int code) {
    if (code < 0 || code > last_gain_code)
        throw_runtime_error(
            // Kept with "fuction": scripts compare this text.
            "Unknown gain. Read the documentation of this fuction to know the possible values");
}

} // namespace

outputs<2> set_label_by_index(strata::data_store acquisition, int index, const std::string& label) {
    return overwrite(acquisition, index, attribute::label, label);
}

outputs<2> set_label_by_label(strata::data_store acquisition, const std::string& channel,
                              const std::string& label) {
    return overwrite(acquisition, channel, attribute::label, label);
}

outputs<2> set_description_by_index(strata::data_store acquisition, int index,
                                    const std::string& text) {
    return overwrite(acquisition, index, attribute::description, text);
}

outputs<2> set_description_by_label(strata::data_store acquisition, const std::string& channel,
                                    const std::string& text) {
    return overwrite(acquisition, channel, attribute::description, text);
}

outputs<2> set_unit_by_index(strata::data_store acquisition, int index, const std::string& unit) {
    return overwrite(acquisition, index, attribute::unit, unit);
}

outputs<2> set_unit_by_label(strata::data_store acquisition, const std::string& channel,
                             const std::string& unit) {
    return overwrite(acquisition, channel, attribute::unit, unit);
}

outputs<2> set_gain_by_index(strata::data_store acquisition, int index, int code) {
    require_gain(code);
    return overwrite(acquisition, index, attribute::gain, std::int32_t{code});
}

outputs<2> set_gain_by_label(strata::data_store acquisition, const std::string& channel, int code) {
    require_gain(code);
    return overwrite(acquisition, channel, attribute::gain, std::int32_t{code});
}

outputs<2> set_offset_by_index(strata::data_store acquisition, int index, int offset) {
    return overwrite(acquisition, index, attribute::offset, std::int32_t{offset});
}

outputs<2> set_offset_by_label(strata::data_store acquisition, const std::string& channel,
                               int offset) {
    return overwrite(acquisition, channel, attribute::offset, std::int32_t{offset});
}

outputs<2> set_scale_by_index(strata::data_store acquisition, int index, float scale) {
    return overwrite(acquisition, index, attribute::scale, scale);
}

outputs<2> set_scale_by_label(strata::data_store acquisition, const std::string& channel,
                              float scale) {
    return overwrite(acquisition, channel, attribute::scale, scale);
}

} // namespace mox::analogs
