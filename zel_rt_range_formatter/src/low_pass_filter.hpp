// Smoothing of the sample batches.
#pragma once

#include <array>
#include <cstddef>

namespace zel::toolbox::rt_range {

/// Values of one NCOM packet that go into a batch; their order is that of the record's sample
/// slots.
inline constexpr std::size_t sample_key_count = 7;
using sample_row = std::array<double, sample_key_count>;

/// NCOM packets in a batch.
inline constexpr std::size_t batch_size = 30;
using sample_batch = std::array<sample_row, batch_size>;

/// Runs each key's values through a twelfth-order low-pass filter that starts from rest.
void low_pass_filter(const sample_batch& input, sample_batch& output);

} // namespace zel::toolbox::rt_range
