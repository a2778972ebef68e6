// The palette is regular but for its ends: from 10 on each ten indexes have one hue, 15 degrees from the hue
// before; of them each two have one brightness, and the odd one is the even one mixed with as much grey.

#include "dxf_colour.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host {
namespace {

constexpr std::array kFirst = {0x000000, 0xff0000, 0xffff00, 0x00ff00, 0x00ffff,
                               0x0000ff, 0xff00ff, 0xffffff, 0x808080, 0xc0c0c0};
constexpr std::array kGreys = {0x333333, 0x5b5b5b, 0x848484, 0xadadad, 0xd6d6d6, 0xffffff};
constexpr int kForeground = 7;
constexpr int kFirstHue = 10;
constexpr int kFirstGrey = 250;

// A channel of a full hue (degrees), 0 to 1, with its highest value where the hue is 0.
double Channel(double hue) {
    const double off = std::abs(std::remainder(hue, 360)); // from the channel's own hue
    return std::clamp(2 - off / 60, 0.0, 1.0);
}

int HueColour(int index) {
    constexpr std::array kBrightness = {1.0, 0.65, 0.5, 0.3, 0.15};
    const int hues = index / 10 - 1; // from red on
    const double hue = 15.0 * hues;
    const double brightness = 255 * kBrightness[index % 10 / 2];
    int colour = 0;
    for (const double own : {0, 120, 240}) {
        const double channel = Channel(hue - own);
        const double mixed = index % 2 == 0 ? channel : (1 + channel) / 2;
        colour = colour << 8 | static_cast<int>(brightness * mixed);
    }
    return colour;
}

} // namespace

std::string PaletteColour(int index) {
    if (index < 1 || index > 255 || index == kForeground) return {};
    if (index < kFirstHue) return TrueColour(kFirst[index]);
    return TrueColour(index < kFirstGrey ? HueColour(index) : kGreys[index - kFirstGrey]);
}

std::string TrueColour(int value) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text = "#";
    for (int shift = 20; shift >= 0; shift -= 4) text += kDigits[value >> shift & 15];
    return text;
}

} // namespace host
