#include "app/export/AciColor.h"

#include <array>
#include <cmath>

namespace kelaz {
namespace {

constexpr int kFirstWheelIndex = 10;
constexpr int kLastWheelIndex = 249;
constexpr int kFirstGrey = 250;
constexpr int kLastIndex = 255;
constexpr int kShadesPerHue = 10;
constexpr double kDegreesPerHue = 15.0;
// Brightness of the five steps within a hue, and the saturation of the paler odd indices.
constexpr std::array<double, 5> kShadeValue = {1.0, 0.8, 0.6, 0.5, 0.3};
constexpr double kPaleSaturation = 0.5;
// 250 to 255 run from dark grey to white.
constexpr double kDarkestGrey = 0.2;

// The first nine: red, yellow, green, cyan, blue, magenta, white, dark grey, light grey.
constexpr std::array<RgbColor, 10> kBasic = {{{1, 1, 1},
                                              {1, 0, 0},
                                              {1, 1, 0},
                                              {0, 1, 0},
                                              {0, 1, 1},
                                              {0, 0, 1},
                                              {1, 0, 1},
                                              {1, 1, 1},
                                              {0.5, 0.5, 0.5},
                                              {0.75, 0.75, 0.75}}};

RgbColor FromHsv(double hueDegrees, double saturation, double value) {
    const double h = std::fmod(hueDegrees, 360.0) / 60.0;
    const double c = value * saturation;
    const double x = c * (1.0 - std::abs(std::fmod(h, 2.0) - 1.0));
    const double m = value - c;
    double r = 0, g = 0, b = 0;
    switch (static_cast<int>(h)) {
        case 0:
            r = c, g = x;
            break;
        case 1:
            r = x, g = c;
            break;
        case 2:
            g = c, b = x;
            break;
        case 3:
            g = x, b = c;
            break;
        case 4:
            r = x, b = c;
            break;
        default:
            r = c, b = x;
            break;
    }
    return {r + m, g + m, b + m};
}

}  // namespace

RgbColor AciToRgb(int index) {
    if (index >= 1 && index < kFirstWheelIndex) return kBasic[index];
    if (index >= kFirstWheelIndex && index <= kLastWheelIndex) {
        const int hue = (index - kFirstWheelIndex) / kShadesPerHue;
        const int shade = (index - kFirstWheelIndex) % kShadesPerHue;
        return FromHsv(hue * kDegreesPerHue, shade % 2 == 0 ? 1.0 : kPaleSaturation,
                       kShadeValue[shade / 2]);
    }
    if (index >= kFirstGrey && index <= kLastIndex) {
        const double step = (1.0 - kDarkestGrey) / (kLastIndex - kFirstGrey);
        const double grey = kDarkestGrey + step * (index - kFirstGrey);
        return {grey, grey, grey};
    }
    return kBasic[7];
}

}  // namespace kelaz
