// Values derived from a decoded NCOM record.
#pragma once

#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"

namespace zel::toolbox::rt_range {

/// Computes the level-frame accelerations, vehicle-frame velocities, values in km/h and sign
/// changes of a record that has just been decoded, then its relative values and its curvature.
/// `hunter` may be the same record.
void convert_frame(ncom_unit_record& record, const ncom_unit_record& hunter);

/// Computes the ranges and the differences to the hunter. `hunter` may be the same record.
void calculate_relative_values(ncom_unit_record& record, const ncom_unit_record& hunter);

} // namespace zel::toolbox::rt_range
