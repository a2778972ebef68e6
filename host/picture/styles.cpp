// The colours are those that M. Okabe and K. Ito chose so that people with any of the common colour
// blindnesses tell them apart ("Color Universal Design", 2008): orange, sky blue, bluish green, blue,
// vermillion and reddish purple. Orange and sky blue are too pale for lines on white, where they have 2.3:1
// in contrast; there a darker orange stands in and blue does the work of both blues. Blue in turn gives way
// to sky blue on a dark ground.

#include "styles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <string>

namespace host {
namespace {

constexpr const char* kInk = "#20262e";
constexpr const char* kChalk = "#e4e8ec";
constexpr const char* kGrey = "#767676";
constexpr const char* kPaleGrey = "#9aa2aa";
constexpr const char* kDeepOrange = "#b87f00";
constexpr const char* kOrange = "#e69f00";
constexpr const char* kGreen = "#009e73";
constexpr const char* kBlue = "#0072b2";
constexpr const char* kSkyBlue = "#56b4e9";
constexpr const char* kVermillion = "#d55e00";
constexpr const char* kPurple = "#cc79a7";

constexpr std::array kStyles = {
    Style{"outline", "contour", kInk, kChalk, 1.4, "", MarkForm::kLine},
    Style{"text", "text", kGrey, kPaleGrey, 0.4, "", MarkForm::kArea},
    Style{"free", "free stretch", kGreen, kGreen, 5, "", MarkForm::kLine},
    Style{"zone", "excluded zone", kVermillion, kVermillion, 5, "2 3", MarkForm::kLine},
    Style{"cut", "stretch cut out", kPurple, kPurple, 5, "14 3", MarkForm::kLine},
    Style{"group", "segments as one group", kBlue, kSkyBlue, 5, "20 4", MarkForm::kLine},
    Style{"converted", "lines and arcs instead", kDeepOrange, kOrange, 1.8, "8 5", MarkForm::kLine},
    Style{"joint", "joint of lines and arcs", kDeepOrange, kOrange, 1.2, "", MarkForm::kDisc},
    Style{"rapid", "rapid move", kGrey, kPaleGrey, 1, "2 5", MarkForm::kLine},
    Style{"path", "tool path", kBlue, kSkyBlue, 2.4, "", MarkForm::kLine},
    Style{"lead", "lead-in or lead-out", kGreen, kGreen, 2.4, "7 3", MarkForm::kLine},
    Style{"bridge", "bridge that holds the part", kVermillion, kVermillion, 8, "", MarkForm::kLine},
    Style{"start", "start", kGreen, kGreen, 1.6, "", MarkForm::kRing},
    Style{"way", "direction", kBlue, kSkyBlue, 1.2, "", MarkForm::kArrow},
    Style{"corner", "sharp corner", kVermillion, kVermillion, 1.2, "", MarkForm::kSquare},
    Style{"chosen", "chosen start", kGreen, kGreen, 1.6, "", MarkForm::kDiamond},
    Style{"pick", "picked point", kPurple, kPurple, 2.4, "", MarkForm::kCross},
};

using Channels = std::array<double, 3>; // red, green and blue, 0 to 255

Channels ChannelsOf(const std::string& colour) {
    Channels channels{};
    for (std::size_t i = 0; i < channels.size(); ++i)
        channels[i] = std::stoi(colour.substr(1 + 2 * i, 2), nullptr, 16);
    return channels;
}

// Relative luminance as WCAG 2.1 defines it.
double LuminanceOf(const Channels& channels) {
    constexpr Channels kParts{0.2126, 0.7152, 0.0722};
    double sum = 0;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const double value = channels[i] / 255;
        sum += kParts[i] * (value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
    }
    return sum;
}

double ContrastOf(const Channels& a, const Channels& b) {
    const auto [dark, light] = std::minmax({LuminanceOf(a), LuminanceOf(b)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

std::string SeenOn(const std::string& colour, const std::string& ground, const std::string& towards) {
    constexpr double kLeastContrast = 3; // that WCAG 2.1 asks of what is no text
    constexpr int kSteps = 10;
    const Channels own = ChannelsOf(colour), back = ChannelsOf(ground), seen = ChannelsOf(towards);
    Channels mixed = own;
    for (int step = 1; step <= kSteps && ContrastOf(mixed, back) < kLeastContrast; ++step)
        for (std::size_t i = 0; i < mixed.size(); ++i)
            mixed[i] = std::round(own[i] + (seen[i] - own[i]) * step / kSteps);
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", static_cast<unsigned>(mixed[0]),
                  static_cast<unsigned>(mixed[1]), static_cast<unsigned>(mixed[2]));
    return text.data();
}

std::span<const Style> Styles() {
    return kStyles;
}

int StyleIndex(std::string_view name) {
    const auto* const style =
        std::find_if(kStyles.begin(), kStyles.end(), [name](const Style& each) { return each.name == name; });
    if (style == kStyles.end()) throw std::out_of_range("no style " + std::string(name));
    return static_cast<int>(style - kStyles.begin());
}

} // namespace host
