// Values derived from a decoded NCOM record.
#pragma once

#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"

namespace zel::toolbox::rt_range {

/// Level-frame accelerations, vehicle-frame velocities, values in km/h and sign changes of a
/// record that holds a freshly decoded packet, then its relative values and its curvature. `hunter`
/// may be the same record.
void convert_frame(ncom_unit_record& record, const ncom_unit_record& hunter);

/// Ranges and differences to the hunter. `hunter` may be the same record.
void calculate_relative_values(ncom_unit_record& record, const ncom_unit_record& hunter);

} // namespace zel::toolbox::rt_range
