// The course of a road.
#pragma once

#include <array>
#include <complex>
#include <cstddef>

namespace zel::simulation {

/// A place and a direction.
struct pose {
    double north;   ///< m
    double east;    ///< m
    double heading; ///< rad, clockwise from north
};

/// Form of a track: a loop, driven clockwise, whose heading swings about that of a circle.
struct track_shape {
    double length; ///< m
    int bends;     ///< number of swings in one lap; not 1
    double swing;  ///< rad, amplitude of a swing, 0 to 0.5
};

/// A point of a track.
struct track_point {
    double north;           ///< m
    double east;            ///< m
    double heading;         ///< rad, starts again with each lap
    double curvature;       ///< rad/m, positive to the right
    double curvature_slope; ///< rad/m², the curvature's derivative along the track
};

/// A closed track, with the distance driven as its parameter. Every value is a closed-form function
/// of the distance, so that the derivatives are exact.
class track {
public:
    /// A track that has its distance 0 at `start`. There, it is `offset` metres into the form,
    /// which begins in the middle of a bend to the right.
    track(const track_shape& shape, const pose& start, double offset = 0.0);

    track_point at(double distance) const;

private:
    /// Terms on either side of the middle one; the first one left out is below 1e-15.
    static constexpr int terms = 12;

    std::complex<double> position(double angle) const;
    double heading(double angle) const;

    track_shape shape_;
    double offset_;
    double turn_ = 0.0; ///< rad, added to the form's heading
    std::complex<double> shift_;
    std::array<double, 2 * terms + 1> coefficients_{}; ///< m
};

} // namespace zel::simulation
