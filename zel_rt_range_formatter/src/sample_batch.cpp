#include "zel_rt_range_formatter/src/sample_batch.hpp"

namespace zel::toolbox::rt_range {

bool sample_batch::add(const ncom_unit_record& record) {
    rows_[filled_] = {record.accel_x,
                      record.accel_y,
                      record.vehicle_velocity_x,
                      record.vehicle_velocity_x_kmh,
                      record.vehicle_velocity_y,
                      record.vehicle_velocity_y_kmh,
                      record.rate_z_copy};
    filled_ = (filled_ + 1) % rows_.size();
    return filled_ == 0;
}

sample_rows sample_batch::filtered() const {
    return low_pass_filter(rows_);
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

} // namespace zel::toolbox::rt_range
