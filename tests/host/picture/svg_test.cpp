#include "host/dxf/dxf_colour.h"
#include "host/fixture.h"
#include "host/picture/styles.h"

using namespace test;

TEST_F(HostRun, PictureOfEachOutline) {
    ExpectRuns({
        {"", 0, {"d='M0 0A2.5 2.5 0 0 1 4 0'/>"}, "0 LWPOLYLINE 70 0 10 0 20 0 42 0.5 10 4 20 0"},
        {"", 0, {"d='M0 0A2.5 2.5 0 1 0 4 0'/>"}, "0 LWPOLYLINE 70 0 10 0 20 0 42 -2 10 4 20 0"},
        {"",
         0,
         {"d='M0 0C1 2 2 4 3 6'/>"},
         "0 SPLINE 71 3 40 0 40 0 40 0 40 0 40 1 40 1 40 1 40 1 10 0 20 0 10 1 20 2 10 2 20 4 10 3 20 6"},
        {"", 0, {"d='M6 2A5 5 0 0 1 -4 2A5 5 0 0 1 6 2'/>"}, "0 CIRCLE 10 1 20 2 40 5"},
        {"", 0, {"A4 2 90 0 1 "}, "0 ELLIPSE 10 0 20 0 11 0 21 4 40 0.5"},
        {"", 0, {"<circle class='outline' cx='3' cy='4' r='1'/>"}, "0 POINT 10 3 20 4"},
        {"", 0, {"class='way' d='M0 4.95L"}, "0 LINE 10 0 20 0 11 0 21 9"},
        {"", 0, {"viewBox='-10 -410 320 420'"}, "0 LINE 10 0 20 0 11 300 21 400"},
    });
}

TEST_F(HostRun, APictureSaysWhatItShows) {
    ExpectRuns({
        {"",
         0,
         {"<title>layer a&amp;&lt;b</title>\n<path class='outline'"},
         "0 LINE 8 a&<b 10 0 20 0 11 9 21 9"},
        {"", 0, {">contour</text>", ">direction</text>", "50 mm</text>"}, "0 LINE 10 0 20 0 11 300 21 400"},
        {"",
         0,
         {"<path class='outline cffff00' d='M0 0L9 9'/>", "@media", ".cffff00{stroke:#ffff00}"},
         "0 LINE 62 2 10 0 20 0 11 9 21 9"},
        {"--start-zones 2", 0, {">excluded zone</text>", ">chosen start</text>"}, kSquareWords},
    });
}

// A letter is written once; where it stands it is referred to, in heights of letters from the first one.
TEST_F(HostRun, LettersOfAPicture) {
    Write(DxfFile("0 TEXT 8 a 62 1 10 10 20 20 40 3 1 oHo 0 TEXT 8 a 10 10 20 40 40 3 50 90 1 H"));
    RunHost(drawing + " --svg " + picture);
    const std::string svg = BytesOf(picture);
    ExpectContains(svg, {"<g class='text cff0000' transform='matrix(3 0 0 3 10 20)'>",
                         "<use xlink:href='#g0'/><use xlink:href='#g1' x='", "<use xlink:href='#g0' x='",
                         "<use xlink:href='#g1'/>", ".text.cff0000{stroke:none;fill:#ff0000}"});
    EXPECT_EQ(svg.find("id='g2'"), std::string::npos);
}

// Contrast as WCAG 2.1 defines it.
double LuminanceOf(const std::string& colour) {
    const double parts[] = {0.2126, 0.7152, 0.0722};
    double sum = 0;
    for (int i = 0; i < 3; ++i) {
        const double value = std::stoi(colour.substr(1 + 2 * i, 2), nullptr, 16) / 255.0;
        sum += parts[i] * (value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
    }
    return sum;
}

// Lines by their dashes or a width that is seen to be another one, marks by their form.
bool AreToldApart(const host::Style& a, const host::Style& b) {
    if (a.form != b.form) return true;
    if (a.form != host::MarkForm::kLine) return false;
    return std::string(a.dash) != b.dash || std::max(a.width / b.width, b.width / a.width) > 1.3;
}

TEST(Styles, AreSeenOnTheirGroundAndToldApartWithoutColour) {
    for (const host::Style& style : host::Styles()) {
        SCOPED_TRACE(style.name);
        EXPECT_GE(1.05 / (LuminanceOf(style.light) + 0.05), 3);
        EXPECT_GE((LuminanceOf(style.dark) + 0.05) / (LuminanceOf(host::kDarkGround) + 0.05), 3);
        for (const host::Style* other = &host::Styles()[0]; other != &style; ++other)
            EXPECT_TRUE(AreToldApart(style, *other)) << other->name;
    }
    for (Random random; random.Rounds(200);) {
        const std::string own = host::PaletteColour(random.Int(1, 255)),
                          colour = own.empty() ? "#000000" : own;
        const auto seen = [&](const char* ground, const char* towards) {
            return host::SeenOn(colour, ground, towards);
        };
        const double light = LuminanceOf(seen(host::kLightGround, host::Styles()[0].light));
        const double dark = LuminanceOf(seen(host::kDarkGround, host::Styles()[0].dark));
        EXPECT_GE(1.05 / (light + 0.05), 3) << colour;
        EXPECT_GE((dark + 0.05) / (LuminanceOf(host::kDarkGround) + 0.05), 3) << colour;
    }
    EXPECT_EQ(host::SeenOn("#0000ff", host::kLightGround, "#000000"), "#0000ff") << "it is seen as it is";
    EXPECT_THROW(host::StyleIndex("no such style"), std::out_of_range);
}
