// Decoded records on their way to the host.
#pragma once

#include <cstdint>

#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/src/pass_through.hpp"
#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"

namespace zel::toolbox::rt_range {

/// Appends an 873-byte "zel.rtrange" package: the unit's tag, then its record. `unit` is 0 to 4.
/// Throws what the host's functions report.
void create_ncom_package(const ncom_unit_record& record, std::uint32_t unit,
                         const pass_through& values);

/// Appends a 1191-byte "zel.rtrange" package: the RCOM tag, then the record. Throws what the host's
/// functions report.
void create_rcom_package(const rcom_unit_record& record, const pass_through& values);

} // namespace zel::toolbox::rt_range
