// Smoothing of sample batches.
#pragma once

#include <array>
#include <cstddef>

namespace zel::toolbox::rt_range {

/// Samples of one NCOM packet, in the order of the record's sample slots.
using sample_row = std::array<double, 7>;

/// Rows of one batch.
using sample_rows = std::array<sample_row, 30>;

/// Runs each column through a twelfth-order low-pass filter that starts from rest.
sample_rows low_pass_filter(const sample_rows& input);

} // namespace zel::toolbox::rt_range
