#pragma once

// Constants shared by the geometry types.

#include <cmath>
#include <numbers>

namespace kelaz {

inline constexpr double kPi = std::numbers::pi;
inline constexpr double kTwoPi = 2.0 * std::numbers::pi;

// The arbitrary axis rule: a direction whose X and Y parts are both below this fraction of its
// length is "near the Z axis" and gets its perpendicular from the world Y axis instead of Z.
inline constexpr double kArbitraryAxisLimit = 1.0 / 64.0;

// Folds an angle into [0, 2π).
inline double NormalizeAngle(double angle) {
    double folded = std::fmod(angle, kTwoPi);
    if (folded < 0.0) folded += kTwoPi;
    // A tiny negative angle folds to 2π after rounding; that is the same direction as 0.
    return folded >= kTwoPi ? 0.0 : folded;
}

}  // namespace kelaz
