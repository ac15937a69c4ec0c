#include "zel_rt_range_formatter/src/output_packages.hpp"
#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"

namespace zel::toolbox::rt_range {
namespace {

sample_row samples_of(const ncom_unit_record& record) {
    return {record.accel_x,
            record.accel_y,
            record.vehicle_velocity_x,
            record.vehicle_velocity_x_kmh,
            record.vehicle_velocity_y,
            record.vehicle_velocity_y_kmh,
            record.rate_z_copy};
}

void write_samples(const sample_row& samples, ncom_unit_record& record) {
    record.sample_accel_x = samples[0];
    record.sample_accel_y = samples[1];
    record.sample_vehicle_velocity_x = samples[2];
    record.sample_vehicle_velocity_x_kmh = samples[3];
    record.sample_vehicle_velocity_y = samples[4];
    record.sample_vehicle_velocity_y_kmh = samples[5];
    record.sample_rate_z = samples[6];
}

} // namespace

void rt_range_formatter_base::buffer_ncom_samples(const ncom_unit_record& record,
                                                  const pass_through& values) {
    ncom_output_map_first_[buffered_samples_] = samples_of(record);
    ++buffered_samples_;
    if (buffered_samples_ < batch_size)
        return;
    // Emptied first: when the host fails in the middle, the batch is lost and the next one starts
    // from nothing.
    buffered_samples_ = 0;
    emit_ncom_sample_batch(values);
}

/// One package per sample, all of them under the unit that completed the batch.
void rt_range_formatter_base::emit_ncom_sample_batch(const pass_through& values) {
    sample_batch filtered;
    low_pass_filter(ncom_output_map_first_, filtered);
    ncom_unit_record& record = unit_record(current_unit_index_);
    values.packages.reserve(values.packages.size() + batch_size + 1);
    for (const sample_row& samples : filtered) {
        write_samples(samples, record);
        create_ncom_package(record, current_unit_index_, values);
    }
}

} // namespace zel::toolbox::rt_range
