// Project files that were cut short or damaged at any place: reading never fails for good, and what is read is a road
// that can be used and saved.

#include <gtest/gtest.h>

#include <algorithm>

#include "alignment/inverse.hpp"
#include "io/code_pages.hpp"
#include "io/project_text.hpp"
#include "io/random_roads.hpp"
#include "section/road_side.hpp"

namespace kesto {
namespace {

const CodePage utf8(test::utf8Page);

/// Whether a saved text holds a number that fills more than its column: such a line cannot be read back.
bool HasWideNumbers(std::string_view text) {
    constexpr std::string_view signAndDigits = "-0123456789";
    constexpr std::size_t smallest = 4, decimals = 8;  // characters: an integer's column, a real's digits
    for (std::size_t at = 0; (at = text.find_first_of(signAndDigits, at)) != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_not_of(signAndDigits, at), text.size());
        const bool ofReal = (end < text.size() && text[end] == '.') || (at > 0 && text[at - 1] == '.');
        if (end - at > (ofReal ? decimals : smallest)) return true;
        at = end;
    }
    return false;
}

/// Reads a text, queries the road and saves it. What is saved is read whole. The road read from it is saved the same
/// from then on; the first one may differ, as grade points take their places by the chain of their time, and a damaged
/// file may bring broken chains behind them.
void ReadUseAndSave(std::string_view text) {
    RoadDesign road;
    static_cast<void>(ParseProject(text, road, utf8));
    const Result<std::string> saved = FormatProject(road, utf8);
    ASSERT_TRUE(saved);
    if (!HasWideNumbers(*saved)) {
        RoadDesign back;
        ASSERT_TRUE(ParseProject(*saved, back, utf8)) << text;
        const std::string again = *FormatProject(back, utf8);
        RoadDesign third;
        ASSERT_TRUE(ParseProject(again, third, utf8)) << text;
        ASSERT_EQ(*FormatProject(third, utf8), again) << text;
    }
    static_cast<void>(EnsureCurrent(road));
    for (const double mileage : {road.settings.startMileage + 30, 1e9}) {
        double height = 0;
        std::optional<Located> located;
        static_cast<void>(FindHeight(road, {mileage, 0}, 1, height));
        static_cast<void>(RoadSide(road, {mileage, 0}, 1, HeightBase::Profile));
        static_cast<void>(Locate(road, {100, 100}, located));
    }
}

std::string SampleText(unsigned seed) {
    const std::unique_ptr<RoadDesign> road = test::RoadMaker(seed).Make();
    return road ? *FormatProject(*road, utf8) : std::string();
}

TEST(HostileText, EveryPrefixOfAFile) {
    for (const unsigned seed : {2U, 34U}) {
        const std::string text = SampleText(seed);
        ASSERT_GT(text.size(), 2000U);
        for (std::size_t size = 0; size <= text.size(); ++size) {
            SCOPED_TRACE(size);
            ReadUseAndSave(std::string_view(text).substr(0, size));
            if (::testing::Test::HasFatalFailure()) return;
        }
    }
}

TEST(HostileText, BytesChangedAtRandom) {
    const unsigned seed = 20240713;
    test::RoadMaker draw(seed);
    static constexpr char characters[] = "\0\n\r \t-+.0987eE\x80\xC3\xE4\xFF";
    constexpr std::string_view favourites(characters, sizeof characters);  // the closing NUL counts too
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE(round);
        std::string text = SampleText(static_cast<unsigned>(round % 50) + 1);
        for (int i = 1 + draw.Draw(12); i > 0 && !text.empty(); --i) {
            const auto at = static_cast<std::size_t>(draw.Draw(static_cast<int>(text.size())));
            const char byte = favourites[static_cast<std::size_t>(draw.Draw(static_cast<int>(favourites.size())))];
            switch (draw.Draw(4)) {
                case 0: text[at] = byte; break;
                case 1: text.insert(at, 1, byte); break;
                case 2: text.erase(at, static_cast<std::size_t>(draw.Draw(30))); break;
                default:
                    text.insert(at,
                                text.substr(static_cast<std::size_t>(draw.Draw(static_cast<int>(text.size()))), 60));
            }
        }
        ReadUseAndSave(text);
        if (::testing::Test::HasFatalFailure()) return;
    }
}

// Lists in the worst order, of more records than any road has.
TEST(HostileText, LongListsBackwards) {
    constexpr int count = 30000;
    std::string points, chains;
    for (int i = count; i > 0; --i) {
        points += std::to_string(i).append(" 5 0 0\n");
        chains += std::to_string(i).append(" 0\n");
    }
    RoadDesign road;
    EXPECT_TRUE(ParseProject("0 20 0 K\n\nVerticalCurve\n" + points + "\nBrokenChain\n" + chains, road, utf8));
    EXPECT_EQ(road.verticalCurves.Count(), count);
    EXPECT_EQ(road.verticalCurves[0].mileage, 1);
    EXPECT_EQ(road.brokenChains.Count(), count);
}

}  // namespace
}  // namespace kesto
