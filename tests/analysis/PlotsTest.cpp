// The layout: labels that can be read, and a curve where the numbers say.
#include "tests/support/Signals.h"

#include "analysis/Plots.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

namespace cabslot::testing {
namespace {

template<class Kind>
std::vector<Kind> each(const Picture& picture) {
    std::vector<Kind> found;
    for (const Shape& shape : picture.shapes)
        if (const auto* kind = std::get_if<Kind>(&shape))
            found.push_back(*kind);
    return found;
}

struct Box {
    double left, top, right, bottom;
};

// About as wide as common fonts make it.
Box boxOf(const Text& text) {
    double width = 0;
    for (const char letter : text.text)
        width += text.size * (std::isdigit(letter) ? 0.64 : std::isalpha(letter) ? 0.6 : 0.36);
    const double left = text.at.x - width / 2 * static_cast<double>(text.align);
    return {left, text.at.y - 0.9 * text.size, left + width, text.at.y + 0.3 * text.size};
}

void expectReadable(const Picture& picture) {
    const std::vector<Text> texts = each<Text>(picture);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const Box box = boxOf(texts[i]);
        EXPECT_TRUE(box.left >= 0 && box.right <= picture.width && box.top >= 0 &&
                    box.bottom <= picture.height)
            << texts[i].text;
        for (std::size_t k = 0; k < i; ++k) {
            const Box other = boxOf(texts[k]);
            EXPECT_TRUE(box.left >= other.right || other.left >= box.right ||
                        box.top >= other.bottom || other.top >= box.bottom)
                << texts[i].text << " over " << texts[k].text;
        }
    }
    for (const Area& area : each<Area>(picture))
        for (const Spot& corner : area.corners)
            EXPECT_TRUE(corner.x >= 0 && corner.x <= picture.width && corner.y >= 0 &&
                        corner.y <= picture.height);
}

TEST(Plots, LabelsNeitherOverlapNorLeaveThePicture) {
    for (const double level : {0.0, 1e-6, 0.0009, 0.03, 1.0}) {
        const Samples samples = sine(1000, level);
        const Response response(samples);
        for (const double text : {9.0, 12.0, 20.0})
            for (const double scale : {1.0, 3.0}) {
                const PlotSize size{narrowestPlot * text * scale, lowestPlot * text * scale, text};
                expectReadable(wavePlot(samples, size));
                expectReadable(responsePlot(samples, response, size));
            }
        expectReadable(thumbnail(samples, 100, 24));
    }
    Finding longOne{FindingKind::clipped, ""};
    for (int i = 0; i < 60; ++i)
        longOne.text += "word ";
    expectReadable(summaryPage({"Ten Letter", "WAV", "", sine(50, 1), {longOne, longOne}}));
}

TEST(Plots, TheCurveIsWhereItsValuesAre) {
    const PlotSize size{800, 300, 12};
    const Samples samples = impulse(512);
    const Picture wave = wavePlot(samples, size);
    const std::vector<Spot> corners = each<Area>(wave).front().corners;
    const auto top =
        *std::min_element(corners.begin(), corners.end(), [](Spot a, Spot b) { return a.y < b.y; });
    const auto labelAt = [](const Picture& picture, const std::string& text) {
        for (const Text& label : each<Text>(picture))
            if (label.text == text)
                return label.at;
        return Spot{-1, -1};
    };
    const double perMillisecond = (labelAt(wave, "20").x - labelAt(wave, "5").x) / 15;
    EXPECT_NEAR(top.x, labelAt(wave, "5").x + (512 / 44.1 - 5) * perMillisecond, 1.5);

    const Picture flat = responsePlot(samples, Response(samples), size);
    const std::vector<Area> line = each<Area>(flat);
    ASSERT_EQ(line.size(), 1U);
    for (const Spot& corner : line.front().corners)
        EXPECT_NEAR(corner.y, labelAt(flat, "0").y - 0.36 * size.text, 1);
    EXPECT_TRUE(each<Area>(responsePlot({}, Response(Samples{}), size)).empty());
}

// A curve that leaves the axis is in pieces, not drawn along its lower end.
TEST(Plots, WhatIsBelowTheAxisIsLeftOut) {
    const Samples samples = sine(pointsPerSecond / 16, 0.5); // whole periods: silent far off
    const Picture plot = responsePlot(samples, Response(samples), {800, 300, 12});
    double width = 0;
    for (const Area& area : each<Area>(plot))
        width += area.corners[area.corners.size() / 2 - 1].x - area.corners.front().x;
    EXPECT_LT(width, 0.9 * 700);
    EXPECT_GT(width, 50);
}

} // namespace
} // namespace cabslot::testing
