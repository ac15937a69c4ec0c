#include "simulation/track.hpp"

#include <cmath>
#include <numbers>

namespace zel::simulation {
namespace {

constexpr double full_turn = 2.0 * std::numbers::pi;

/// The Bessel function of the first kind, of an order that may be negative.
double bessel(int order, double x) {
    const double value = std::cyl_bessel_j(std::abs(order), x);
    return order < 0 && order % 2 != 0 ? -value : value;
}

} // namespace

// With a = 2 pi distance / length, the heading is a + swing sin(bends a). The position is the
// integral of the direction, a complex number with north as its real part:
//
//   exp(i (a + swing sin(bends a))) = sum over n of J_n(swing) exp(i (1 + n bends) a)
//
// which is integrated term by term. No term is constant, so that the track closes.
track::track(const track_shape& shape, const pose& start, double offset)
    : shape_(shape), offset_(offset) {
    for (std::size_t i = 0; i < coefficients_.size(); ++i) {
        const int n = static_cast<int>(i) - terms;
        coefficients_[i] =
            bessel(n, shape.swing) * shape.length / full_turn / (1 + n * shape.bends);
    }
    const double angle = full_turn * offset / shape.length;
    turn_ = start.heading - heading(angle);
    shift_ = std::complex(start.north, start.east) - position(angle);
}

double track::heading(double angle) const {
    return turn_ + angle + shape_.swing * std::sin(shape_.bends * angle);
}

std::complex<double> track::position(double angle) const {
    const std::complex<double> factor = std::polar(1.0, shape_.bends * angle);
    std::complex<double> term = std::polar(1.0, turn_ + (1 - terms * shape_.bends) * angle);
    std::complex<double> sum;
    for (const double coefficient : coefficients_) {
        sum += coefficient * term;
        term *= factor;
    }
    return shift_ + sum / std::complex(0.0, 1.0);
}

track_point track::at(double distance) const {
    const double per_metre = full_turn / shape_.length;
    // Within one lap, which keeps the multiples of the angle exact in runs of hours.
    const double angle = per_metre * std::fmod(offset_ + distance, shape_.length);
    const double swing_per_angle = shape_.swing * shape_.bends;
    const std::complex<double> place = position(angle);
    return {
        .north = place.real(),
        .east = place.imag(),
        .heading = heading(angle),
        .curvature = per_metre * (1.0 + swing_per_angle * std::cos(shape_.bends * angle)),
        .curvature_slope = -per_metre * per_metre * swing_per_angle * shape_.bends *
                           std::sin(shape_.bends * angle),
    };
}

} // namespace zel::simulation
