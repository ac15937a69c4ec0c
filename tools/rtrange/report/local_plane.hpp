// Positions in metres for the map.
#pragma once

#include <optional>

namespace rtrange {

/// A tangent plane of the earth at the first position that it converts.
class local_plane {
public:
    struct point {
        double east; ///< m from the first position; NaN where there is no valid position
        double north;
    };

    /// Converts a position in degrees. A pair of zeros is not a valid position.
    point at(double latitude, double longitude);

private:
    struct origin {
        double latitude; ///< deg
        double longitude;
        double metres_per_degree_north;
        double metres_per_degree_east;
    };

    static origin touching(double latitude, double longitude);

    std::optional<origin> origin_;
};

} // namespace rtrange
