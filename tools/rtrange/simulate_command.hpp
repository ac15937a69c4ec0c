// rtrange simulate: writes the capture of a simulated run.
#pragma once

#include <filesystem>

#include "simulation/simulated_traffic.hpp"

namespace rtrange {

/// Arguments of the command.
struct simulate_options {
    std::filesystem::path output;
    bool overwrite = false; ///< replace an earlier simulated capture
    zel::simulation::traffic_options traffic;
};

/// Writes the capture of a simulated run. Throws failure when it cannot be written or may not be
/// replaced.
void simulate(const simulate_options& options);

} // namespace rtrange
