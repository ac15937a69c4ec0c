// Smoothing of the sample batches.
#pragma once

#include <array>
#include <cstddef>

namespace zel::toolbox::rt_range {

/// Values of one NCOM packet that go into a batch: seven, in the order of the record's sample
/// slots, and an unused one that lets the keys be filtered side by side in vector registers.
inline constexpr std::size_t sample_lanes = 8;
using sample_row = std::array<double, sample_lanes>;

/// NCOM packets in a batch.
inline constexpr std::size_t batch_size = 30;
using sample_batch = std::array<sample_row, batch_size>;

/// Runs each key's values through a twelfth-order low-pass filter that starts from rest.
void low_pass_filter(const sample_batch& input, sample_batch& output);

} // namespace zel::toolbox::rt_range
