// Positions on a map of the run.
#pragma once

#include <optional>

namespace rtrange {

/// A plane that touches the earth at the first position it is given. Over a proving ground it is
/// true to the millimetre.
class local_plane {
public:
    struct point {
        double east; ///< m from the first position; NaN where there is no valid position
        double north;
    };

    /// Where a position in degrees is on the plane. A pair of zeros is no position.
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
