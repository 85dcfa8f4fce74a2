#pragma once

// The host's colour indices as red, green and blue.

namespace kelaz {

struct RgbColor {
    double red = 0.0;  // each in [0, 1]
    double green = 0.0;
    double blue = 0.0;
};

// The colour of an index from 1 to 255 on the host's usual dark screen: 7 is white there. The
// wheel from 10 to 249 runs through 24 hues in steps of 15 degrees; within a hue, even indices
// are full colours and odd ones paler, in five steps from bright to dark. Out-of-range indices
// (by block, by layer, anything else) give white, as 7 does.
RgbColor AciToRgb(int index);

}  // namespace kelaz
