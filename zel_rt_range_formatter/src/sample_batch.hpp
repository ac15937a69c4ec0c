// Batches of filtered samples.
#pragma once

#include <cstddef>

#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/src/low_pass_filter.hpp"

namespace zel::toolbox::rt_range {

/// Collects the samples of thirty NCOM packets, of all units together, in order of arrival.
class sample_batch {
public:
    /// Adds the samples of a decoded packet. True if they complete the batch; the next packet then
    /// starts a new one.
    bool add(const ncom_unit_record& record);

    /// The rows of the batch just completed, after the low-pass filter.
    sample_rows filtered() const;

private:
    sample_rows rows_{};
    std::size_t filled_ = 0;
};

/// Writes one row into the record's sample slots.
void write_samples(const sample_row& samples, ncom_unit_record& record);

} // namespace zel::toolbox::rt_range
