#include "acquisition/time_base/sampling.hpp"

#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/typed_access.hpp"

namespace mox::sampling {

namespace attribute = schema::attribute;

namespace {

double of_group(const strata::data_store& acquisition, const char* path,
                const char* attribute_name) {
    const auto group = retrieve_group(acquisition.root(), path);
    return read<double>(group.retrieve_attribute(attribute_name));
}

/// An attribute of the raw set at `set_path`, which only a file's acquisition has, else of the
/// device group at `group_path`.
double raw_or_group(const strata::data_store& acquisition, const char* set_path,
                    const char* group_path, const char* attribute_name) {
    const auto root = acquisition.root();
    if (root.exists_set(set_path))
        return read<double>(root.retrieve_set(set_path).retrieve_attribute(attribute_name));
    return of_group(acquisition, group_path, attribute_name);
}

float markers_attribute(const strata::data_group& markers, const char* attribute_name) {
    return read<float>(markers.retrieve_attribute(attribute_name));
}

} // namespace

double point_frequency(strata::data_store acquisition) {
    return raw_or_group(acquisition, schema::points, schema::angles, attribute::sample_rate);
}

double point_frame_number(strata::data_store acquisition) {
    return raw_or_group(acquisition, schema::points, schema::angles, attribute::num_samples);
}

double analog_frequency(strata::data_store acquisition) {
    return raw_or_group(acquisition, schema::analogs, schema::analogs_export,
                        attribute::sample_rate);
}

double analog_frame_number(strata::data_store acquisition) {
    return of_group(acquisition, schema::analogs_export, attribute::num_samples);
}

double analog_samples_per_frame(strata::data_store acquisition) {
    return of_group(acquisition, schema::header, attribute::analog_samples_per_frame);
}

double analog_resolution(strata::data_store acquisition) {
    const auto group = retrieve_group(acquisition.root(), schema::metadata_analog);
    return read<double>(group.retrieve_attribute(schema::parameter::bits),
                        schema::default_analog_resolution);
}

double interpolation_gap(strata::data_store acquisition) {
    return of_group(acquisition, schema::header, attribute::interpolation_gap);
}

// Kept: counts from 0; "firstFrame" of all points counts from 1.
double first_frame(strata::data_store acquisition) {
    const auto markers = retrieve_group(acquisition.root(), schema::markers);
    return static_cast<double>(markers_attribute(markers, attribute::sample_rate) *
                               markers_attribute(markers, attribute::start_time));
}

double last_frame(strata::data_store acquisition) {
    const auto markers = retrieve_group(acquisition.root(), schema::markers);
    return static_cast<double>(markers_attribute(markers, attribute::sample_rate) *
                                   markers_attribute(markers, attribute::start_time) +
                               markers_attribute(markers, attribute::num_samples) - 1.0F);
}

} // namespace mox::sampling
