#include <orbel/orbel.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

class Axes : public testing::Test {
protected:
    class Plugin : public korDataHandler {
    public:
        int getPluginType() override { return 0; }
        char* getPluginFolder() override { return nullptr; }
    };

    /// x, y and z after a text: "1 2 3"; "-" where nothing was written.
    std::string update(const char* text, int mode, bool sameRange = false) {
        constexpr float untouched = -12345;
        float values[] = {untouched, untouched, untouched};
        plugin.updateAxes(text, values[0], values[1], values[2], mode, sameRange);
        std::string all;
        for (const float value : values) {
            char written[64];
            std::snprintf(written, sizeof written, "%g", static_cast<double>(value));
            all += (all.empty() ? "" : " ") + std::string(value == untouched ? "-" : written);
        }
        return all;
    }

    /// Each axis has its own range from now on: numbers times 10, 100 and 1000.
    void separateAxes() {
        plugin.setSeparate(1);
        plugin.setRanges(0, 1, 0, 10, 0, 0);
        plugin.setRanges(0, 1, 0, 100, 0, 1);
        plugin.setRanges(0, 1, 0, 1000, 0, 2);
    }

    Plugin plugin;
};

} // namespace

TEST_F(Axes, LeaveNumbersAsTheyAreAtFirst) {
    for (const int axis : {-1, 0, 1, 2}) {
        EXPECT_EQ(plugin.normalizeData(7.5F, axis), 7.5F);
        EXPECT_EQ(plugin.normalizeData_Int(-7, axis), -7);
        EXPECT_EQ(plugin.normalizeData_dbl(0.1, axis), 0.1);
    }
    EXPECT_EQ(plugin.normalizeData_Int(highest, 0), highest);
    EXPECT_EQ(plugin.normalizeData_Int(lowest, 0), lowest);
}

TEST_F(Axes, AreClampedToZeroBeforeAnyRangeIsSet) {
    plugin.setClamp(1);
    plugin.setSeparate(1);
    for (const int axis : {-1, 0, 1, 2}) {
        EXPECT_EQ(plugin.normalizeData(7, axis), 0.0F);
        EXPECT_EQ(plugin.normalizeData_Int(-7, axis), 0);
        EXPECT_EQ(plugin.normalizeData_dbl(7, axis), 0.0);
    }
}

TEST_F(Axes, MapOneRangeOntoAnother) {
    plugin.setRanges(0, 10, 0, 1, 0, -1);
    EXPECT_EQ(plugin.normalizeData(5, 0), 0.5F);
    EXPECT_EQ(plugin.normalizeData(20, 0), 2.0F);
    EXPECT_EQ(plugin.normalizeData(-10, 0), -1.0F);
    plugin.setClamp(1);
    EXPECT_EQ(plugin.normalizeData(20, 0), 1.0F);
    EXPECT_EQ(plugin.normalizeData(-10, 0), 0.0F);
    EXPECT_EQ(plugin.normalizeData(5, 0), 0.5F);
    plugin.setClamp(-1);
    EXPECT_EQ(plugin.normalizeData(20, 0), 1.0F);
    plugin.setClamp(0);
    EXPECT_EQ(plugin.normalizeData(20, 0), 2.0F);
}

TEST_F(Axes, MapWithAnOffset) {
    plugin.setRanges(-10, 10, 100, 200, 0, 0);
    EXPECT_EQ(plugin.normalizeData(-10, 0), 100.0F);
    EXPECT_EQ(plugin.normalizeData(0, 0), 150.0F);
    EXPECT_EQ(plugin.normalizeData(10, 0), 200.0F);
    EXPECT_EQ(plugin.normalizeData_Int(5, 0), 175);
    EXPECT_EQ(plugin.normalizeData_dbl(2.5, 0), 162.5);
}

TEST_F(Axes, MapOntoAReversedRange) {
    plugin.setRanges(0, 10, 1, 0, 1, 0);
    EXPECT_EQ(plugin.normalizeData(0, 0), 1.0F);
    EXPECT_EQ(plugin.normalizeData(2.5F, 0), 0.75F);
    EXPECT_EQ(plugin.normalizeData(10, 0), 0.0F);
    EXPECT_EQ(plugin.normalizeData(11, 0), 0.0F);
}

TEST_F(Axes, MapOntoASingleNumber) {
    plugin.setRanges(0, 10, 5, 5, 0, 0);
    EXPECT_EQ(plugin.normalizeData(3, 0), 5.0F);
    EXPECT_EQ(plugin.normalizeData_Int(30, 0), 5);
}

TEST_F(Axes, MapFromAReversedRange) {
    plugin.setRanges(10, 0, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData(10, 0), 0.0F);
    EXPECT_EQ(plugin.normalizeData(2.5F, 0), 0.75F);
    EXPECT_EQ(plugin.normalizeData(0, 0), 1.0F);
}

TEST_F(Axes, ClampToTheUpperBoundLast) {
    // Bounds in the wrong order: whatever is below the lower becomes it, and that is above the upper one.
    plugin.setRanges(8, 0, 0, 1, 1, 0);
    EXPECT_EQ(plugin.normalizeData(5, 0), 1.0F);
    EXPECT_EQ(plugin.normalizeData(-5, 0), 1.0F);
    EXPECT_EQ(plugin.normalizeData(20, 0), 1.0F);
    EXPECT_EQ(plugin.normalizeData_dbl(5, 0), 1.0);
}

TEST_F(Axes, ClampWholeNumbersToOneBoundOnly) {
    plugin.setRanges(10, 0, 0, 100, 1, 0);
    EXPECT_EQ(plugin.normalizeData_Int(5, 0), 0);
    EXPECT_EQ(plugin.normalizeData_Int(20, 0), 100);
}

TEST_F(Axes, EqualRangesAreIdentities) {
    plugin.setRanges(2, 4, 2, 4, 0, 0);
    EXPECT_EQ(plugin.normalizeData(0.1F, 0), 0.1F);
    EXPECT_EQ(plugin.normalizeData(9, 0), 9.0F);
    plugin.setClamp(1);
    EXPECT_EQ(plugin.normalizeData(9, 0), 4.0F);
    EXPECT_EQ(plugin.normalizeData(1, 0), 2.0F);
    EXPECT_EQ(plugin.normalizeData_Int(9, 0), 4);
    EXPECT_EQ(plugin.normalizeData_dbl(1, 0), 2.0);
}

TEST_F(Axes, NarrowRangesAreIdentities) {
    plugin.setRanges(3, 3, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData(7, 0), 7.0F);
    EXPECT_EQ(plugin.normalizeData_Int(7, 0), 7);
    EXPECT_EQ(plugin.normalizeData_dbl(7.25, 0), 7.25);
    plugin.setClamp(1);
    EXPECT_EQ(plugin.normalizeData(7, 0), 3.0F);
    EXPECT_EQ(plugin.normalizeData_Int(7, 0), 3);
    EXPECT_EQ(plugin.normalizeData_dbl(7.25, 0), 3.0);
}

TEST_F(Axes, AreNarrowBelowATenMillionth) {
    const float limit = 1e-7F;
    const float below = std::nextafter(limit, 0.0F);
    plugin.setRanges(0, below, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData(0.5F, 0), 0.5F);
    plugin.setRanges(below, 0, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData(0.5F, 0), 0.5F);
    plugin.setRanges(0, limit, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData(limit, 0), 1.0F);
    plugin.setRanges(limit, 0, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData(0, 0), 1.0F);
    plugin.setRanges(0, 2e-7F, 0, 2, 0, 0);
    EXPECT_EQ(plugin.normalizeData(2e-7F, 0), 2.0F);
}

TEST_F(Axes, AreAsNarrowAsSinglePrecisionSays) {
    // The next single precision number behind a thousand is 0.00006 away.
    plugin.setRanges(1000.0F, 1000.00001F, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData(1001, 0), 1001.0F);
    plugin.setRanges(1000.0F, std::nextafter(1000.0F, 2000.0F), 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData(std::nextafter(1000.0F, 2000.0F), 0), 1.0F);
}

TEST_F(Axes, WidthsAreRoundedToSinglePrecision) {
    const float limit = 1e-7F;
    // Exactly, the width is a little less.
    plugin.setRanges(std::ldexp(1.0F, -50), limit, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData(limit, 0), 1.0F);
}

TEST_F(Axes, RangesThatShareOneBoundAreNoIdentities) {
    plugin.setRanges(0, 8, 4, 8, 0, 0);
    EXPECT_EQ(plugin.normalizeData(0, 0), 4.0F);
    plugin.setRanges(0, 8, 0, 4, 0, 0);
    EXPECT_EQ(plugin.normalizeData(8, 0), 4.0F);
}

TEST_F(Axes, KeepTheOldMappingBehindAnIdentity) {
    plugin.setRanges(0, 10, 0, 1, 0, 0);
    plugin.setRanges(5, 5, 7, 8, 1, 0);
    EXPECT_EQ(plugin.normalizeData(6, 0), 5.0F);
    plugin.setRanges(0, 10, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData(6, 0), 0.6F);
}

TEST_F(Axes, RangesOfInfiniteWidthDoNotCrash) {
    plugin.setRanges(-infinity, infinity, 0, 1, 1, 0);
    plugin.normalizeData(5, 0);
    plugin.normalizeData_Int(5, 0);
    plugin.setRanges(notANumber, notANumber, notANumber, notANumber, 1, -1);
    EXPECT_TRUE(std::isnan(plugin.normalizeData(5, 0)));
    EXPECT_TRUE(std::isnan(plugin.normalizeData_dbl(5, 0)));
    EXPECT_EQ(plugin.normalizeData_Int(5, 0), 0);
}

TEST_F(Axes, NumbersThatAreNonePassThrough) {
    plugin.setRanges(0, 10, 0, 1, 1, 0);
    EXPECT_TRUE(std::isnan(plugin.normalizeData(notANumber, 0)));
    EXPECT_EQ(plugin.normalizeData(infinity, 0), 1.0F);
    EXPECT_EQ(plugin.normalizeData(-infinity, 0), 0.0F);
    plugin.setClamp(0);
    EXPECT_EQ(plugin.normalizeData(infinity, 0), infinity);
    EXPECT_EQ(plugin.normalizeData_dbl(-std::numeric_limits<double>::infinity(), 0),
              -std::numeric_limits<double>::infinity());
}

TEST_F(Axes, WholeNumbersAreCutTowardsZero) {
    plugin.setRanges(0, 10, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData_Int(5, 0), 0);
    EXPECT_EQ(plugin.normalizeData_Int(19, 0), 1);
    EXPECT_EQ(plugin.normalizeData_Int(-19, 0), -1);
    EXPECT_EQ(plugin.normalizeData_Int(-9, 0), 0);
}

TEST_F(Axes, BoundsOfWholeNumbersAreCutTowardsZero) {
    plugin.setRanges(-2.9F, 3.9F, -2.9F, 3.9F, 1, 0);
    EXPECT_EQ(plugin.normalizeData_Int(-3, 0), -2);
    EXPECT_EQ(plugin.normalizeData_Int(-2, 0), -2);
    EXPECT_EQ(plugin.normalizeData_Int(4, 0), 3);
    EXPECT_EQ(plugin.normalizeData_Int(1, 0), 1);
    EXPECT_EQ(plugin.normalizeData(-3, 0), -2.9F);
    EXPECT_EQ(plugin.normalizeData(4, 0), 3.9F);
}

TEST_F(Axes, WholeNumbersAreMappedInSinglePrecision) {
    plugin.setRanges(0, 1, 0, 2, 0, 0);
    // 16777217 is no number of single precision.
    EXPECT_EQ(plugin.normalizeData_Int(16'777'217, 0), 33'554'432);
    EXPECT_EQ(plugin.normalizeData_dbl(16'777'217, 0), 33'554'434.0);
    plugin.setRanges(1, 2, 0, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData_Int(16'777'217, 0), 16'777'215);
    EXPECT_EQ(plugin.normalizeData_dbl(16'777'217, 0), 16'777'216.0);
}

TEST_F(Axes, WholeNumbersStayWithinTheirRange) {
    plugin.setRanges(0, 1, 0, 1e30F, 0, 0);
    EXPECT_EQ(plugin.normalizeData_Int(1, 0), highest);
    EXPECT_EQ(plugin.normalizeData_Int(-1, 0), lowest);
    plugin.setRanges(0, 1, 0, 2, 0, 0);
    EXPECT_EQ(plugin.normalizeData_Int(highest, 0), highest);
    EXPECT_EQ(plugin.normalizeData_Int(lowest, 0), lowest);
    EXPECT_EQ(plugin.normalizeData_Int(-1'073'741'824, 0), lowest);
    EXPECT_EQ(plugin.normalizeData_Int(1'073'741'824, 0), highest);
    EXPECT_EQ(plugin.normalizeData_Int(1'073'741'760, 0), 2'147'483'520);
    plugin.setRanges(0, 1, infinity, 1, 0, 0);
    EXPECT_EQ(plugin.normalizeData_Int(0, 0), 0) << "infinity times zero is no number";
}

TEST_F(Axes, BoundsBeyondWholeNumbersDoNotMatter) {
    plugin.setRanges(-1e30F, 1e30F, -1e30F, 1e30F, 1, 0);
    EXPECT_EQ(plugin.normalizeData_Int(highest, 0), highest);
    EXPECT_EQ(plugin.normalizeData_Int(lowest, 0), lowest);
    plugin.setRanges(-infinity, infinity, -infinity, infinity, 1, 0);
    EXPECT_EQ(plugin.normalizeData_Int(-42, 0), -42);
}

TEST_F(Axes, DoublesAreMappedInDoublePrecision) {
    plugin.setRanges(0, 10, 0, 1, 0, 0);
    // The stored factor is the single precision number next to a tenth.
    EXPECT_EQ(plugin.normalizeData_dbl(5, 0), 5 * static_cast<double>(0.1F));
    EXPECT_EQ(plugin.normalizeData_dbl(1e300, 0), 1e300 * static_cast<double>(0.1F));
    plugin.setRanges(0.1F, 0.9F, 0.1F, 0.9F, 1, 0);
    EXPECT_EQ(plugin.normalizeData_dbl(0.05, 0), static_cast<double>(0.1F));
    EXPECT_EQ(plugin.normalizeData_dbl(0.1, 0), static_cast<double>(0.1F));
    EXPECT_EQ(plugin.normalizeData_dbl(1, 0), static_cast<double>(0.9F));
    EXPECT_EQ(plugin.normalizeData_dbl(0.3, 0), 0.3);
}

TEST_F(Axes, ShareTheFirstRangeUnlessSeparate) {
    plugin.setRanges(0, 1, 0, 10, 0, 0);
    plugin.setRanges(0, 1, 0, 1000, 0, 2);
    for (const int axis : {-1, 0, 1, 2})
        EXPECT_EQ(plugin.normalizeData(1, axis), 10.0F) << axis;
    plugin.setSeparate(1);
    EXPECT_EQ(plugin.normalizeData(1, -1), 10.0F);
    EXPECT_EQ(plugin.normalizeData(1, 0), 10.0F);
    EXPECT_EQ(plugin.normalizeData(1, 1), 1.0F) << "no range yet";
    EXPECT_EQ(plugin.normalizeData(1, 2), 1000.0F);
    EXPECT_EQ(plugin.normalizeData_Int(1, 2), 1000);
    EXPECT_EQ(plugin.normalizeData_dbl(1, 2), 1000.0);
    plugin.setSeparate(-5);
    EXPECT_EQ(plugin.normalizeData(1, 2), 1000.0F);
    plugin.setSeparate(0);
    EXPECT_EQ(plugin.normalizeData_Int(1, 2), 10);
    EXPECT_EQ(plugin.normalizeData_dbl(1, 2), 10.0);
}

TEST_F(Axes, RangesOfAllAxesAreSetAtOnce) {
    separateAxes();
    plugin.setRanges(0, 1, 0, 7, 0, -1);
    for (const int axis : {-1, 0, 1, 2})
        EXPECT_EQ(plugin.normalizeData(1, axis), 7.0F) << axis;
    plugin.setRanges(0, 0, 0, 7, 0, -1);
    for (const int axis : {-1, 0, 1, 2})
        EXPECT_EQ(plugin.normalizeData(1, axis), 1.0F) << axis;
}

TEST_F(Axes, RangesOfOtherAxesOnlySetTheClamp) {
    plugin.setSeparate(1);
    plugin.setRanges(0, 1, 0, 10, 0, -1);
    for (const int axis : {3, -2, 4, 1'000'000, lowest, highest}) {
        plugin.setRanges(0, 1, 0, 77, 0, axis);
        for (const int known : {0, 1, 2})
            EXPECT_EQ(plugin.normalizeData(2, known), 20.0F) << axis;
        plugin.setRanges(0, 1, 0, 77, 1, axis);
        EXPECT_EQ(plugin.normalizeData(2, 0), 10.0F) << axis;
    }
}

TEST_F(Axes, OtherAxesHaveTheFirstRange) {
    separateAxes();
    for (const int axis : {3, -2, 1'000'000, lowest, highest}) {
        EXPECT_EQ(plugin.normalizeData(1, axis), 10.0F) << axis;
        EXPECT_EQ(plugin.normalizeData_Int(1, axis), 10) << axis;
        EXPECT_EQ(plugin.normalizeData_dbl(1, axis), 10.0) << axis;
    }
}

TEST_F(Axes, OneNumberIsForOneAxis) {
    EXPECT_EQ(update("1.5", 0), "1.5 - -");
    EXPECT_EQ(update("1.5", 1), "- 1.5 -");
    EXPECT_EQ(update("1.5", 2), "- - 1.5");
    separateAxes();
    EXPECT_EQ(update("1.5", 0), "15 - -");
    EXPECT_EQ(update("1.5", 1), "- 150 -");
    EXPECT_EQ(update("1.5", 2), "- - 1500");
    EXPECT_EQ(update("1.5", 1, true), "- 15 -");
    EXPECT_EQ(update("1.5", 2, true), "- - 15");
}

TEST_F(Axes, OneNumberIsTheWholeText) {
    for (const int mode : {0, 1, 2})
        for (const char* text : {"",    " ", "x", "1 ", "1\t", "1\n", "1x",  "1 2",  "1,5",     "--1",  "1e",
                                 "1e+", ".", "-", "+",  "e5",  "0x",  "0xg", "nano", "infinit", "1.2.3"})
            EXPECT_EQ(update(text, mode), "- - -") << text;
    EXPECT_EQ(update(nullptr, 0), "- - -");
}

TEST_F(Axes, OneNumberIsWrittenInAnyWay) {
    EXPECT_EQ(update("0", 0), "0 - -");
    EXPECT_EQ(update("-0.25", 0), "-0.25 - -");
    EXPECT_EQ(update("+3", 0), "3 - -");
    EXPECT_EQ(update(".5", 0), "0.5 - -");
    EXPECT_EQ(update("5.", 0), "5 - -");
    EXPECT_EQ(update("  7", 0), "7 - -");
    EXPECT_EQ(update("\t\n7", 0), "7 - -");
    EXPECT_EQ(update("2e3", 0), "2000 - -");
    EXPECT_EQ(update("25E-1", 0), "2.5 - -");
    EXPECT_EQ(update("1e+2", 0), "100 - -");
    EXPECT_EQ(update("0x10", 0), "16 - -");
    EXPECT_EQ(update("-0x1.8p1", 0), "-3 - -");
    EXPECT_EQ(update("inf", 0), "inf - -");
    EXPECT_EQ(update("-INFINITY", 0), "-inf - -");
    EXPECT_EQ(update("1e40", 0), "inf - -");
    EXPECT_EQ(update("-1e400", 0), "-inf - -");
    EXPECT_EQ(update("1e-400", 0), "0 - -");
}

TEST_F(Axes, ANumberThatIsNoneIsStored) {
    for (const char* text : {"nan", "NaN", "-nan"})
        for (const int mode : {0, 3, 6}) {
            float x = 1;
            float y = 1;
            float z = 1;
            plugin.updateAxes(text, x, y, z, mode, true);
            EXPECT_TRUE(std::isnan(x)) << text;
            EXPECT_EQ(std::isnan(y), mode != 0) << text;
            EXPECT_EQ(std::isnan(z), mode == 6) << text;
        }
}

TEST_F(Axes, TwoNumbersAreForTwoAxes) {
    EXPECT_EQ(update("1 2", 3), "1 2 -");
    EXPECT_EQ(update("1 2", 4), "1 - 2");
    EXPECT_EQ(update("1 2", 5), "- 1 2");
    separateAxes();
    EXPECT_EQ(update("1 2", 3), "10 200 -");
    EXPECT_EQ(update("1 2", 4), "10 - 2000");
    EXPECT_EQ(update("1 2", 5), "- 100 2000");
    EXPECT_EQ(update("1 2", 3, true), "10 20 -");
    EXPECT_EQ(update("1 2", 4, true), "10 - 20");
    EXPECT_EQ(update("1 2", 5, true), "- 10 20");
}

TEST_F(Axes, ASecondNumberThatIsMissingIsTheFirstMapped) {
    separateAxes();
    EXPECT_EQ(update("1", 3), "10 10 -");
    EXPECT_EQ(update("1", 4), "10 - 10");
    EXPECT_EQ(update("1", 5), "- 100 100");
    EXPECT_EQ(update("1", 5, true), "- 10 10");
}

TEST_F(Axes, ThreeNumbersAreForAllAxes) {
    EXPECT_EQ(update("1 2 3", 6), "1 2 3");
    separateAxes();
    EXPECT_EQ(update("1 2 3", 6), "10 200 3000");
    EXPECT_EQ(update("1 2 3", 6, true), "10 20 30");
    EXPECT_EQ(update("1 2", 6), "10 200 200");
    EXPECT_EQ(update("1 2", 6, true), "10 20 20");
    EXPECT_EQ(update("1", 6), "10 10 10");
    EXPECT_EQ(update("1", 6, true), "10 10 10");
}

TEST_F(Axes, SeveralNumbersAreReadUpToTheFirstOtherCharacter) {
    EXPECT_EQ(update("1,2,3", 6), "1 1 1");
    EXPECT_EQ(update("1 2;3", 6), "1 2 2");
    EXPECT_EQ(update("1 x 3", 6), "1 1 1");
    EXPECT_EQ(update("1 2 x", 6), "1 2 2");
    EXPECT_EQ(update("1 2 3 4", 6), "1 2 3");
    EXPECT_EQ(update("1 2 3x", 6), "1 2 3");
    EXPECT_EQ(update("1 2 3", 3), "1 2 -");
    EXPECT_EQ(update("1 2 rest", 4), "1 - 2");
    EXPECT_EQ(update("1-2+3", 6), "1 -2 3");
    EXPECT_EQ(update("1.5.5", 3), "1.5 0.5 -");
    EXPECT_EQ(update("100kg 5", 6), "100 100 100");
    EXPECT_EQ(update("2e x", 3), "2 2 -");
}

TEST_F(Axes, SeveralNumbersMayHaveBlanksAround) {
    EXPECT_EQ(update("  1\t2\n3  ", 6), "1 2 3");
    EXPECT_EQ(update("1 ", 6), "1 1 1");
    EXPECT_EQ(update("\r\n 1 \r\n 2 \r\n", 3), "1 2 -");
}

TEST_F(Axes, SeveralNumbersAreWrittenInAnyWay) {
    EXPECT_EQ(update("2e3 -25E-1 .5", 6), "2000 -2.5 0.5");
    EXPECT_EQ(update("0x10 0x1p3 5.", 6), "16 8 5");
    EXPECT_EQ(update("inf -inf 1e40", 6), "inf -inf inf");
}

TEST_F(Axes, TextsWithoutANumberChangeNothing) {
    for (const int mode : {3, 4, 5, 6}) {
        for (const char* text : {"", "   ", "\n", "x", "x 1 2 3", ",1,2", "-", "+", "."})
            EXPECT_EQ(update(text, mode), "- - -") << text;
        EXPECT_EQ(update(nullptr, mode), "- - -");
    }
}

TEST_F(Axes, OtherModesChangeNothing) {
    for (const int mode : {-1, -2, 7, 8, 100, lowest, highest}) {
        EXPECT_EQ(update("1 2 3", mode), "- - -") << mode;
        EXPECT_EQ(update("1", mode), "- - -") << mode;
    }
}

TEST_F(Axes, TextsAreClamped) {
    plugin.setRanges(0, 10, 0, 1, 1, -1);
    EXPECT_EQ(update("25", 0), "1 - -");
    EXPECT_EQ(update("-25 5 inf", 6), "0 0.5 1");
    EXPECT_EQ(update("1e40", 1), "- 1 -");
}

TEST_F(Axes, TextsShareTheFirstRangeUnlessSeparate) {
    separateAxes();
    plugin.setSeparate(0);
    EXPECT_EQ(update("1 2 3", 6), "10 20 30");
    EXPECT_EQ(update("1", 2), "- - 10");
}

TEST_F(Axes, LongTextsAreRead) {
    EXPECT_EQ(update((std::string(100'000, ' ') + "5").c_str(), 0), "5 - -");
    EXPECT_EQ(update((std::string(100'000, '0') + "5 6").c_str(), 3), "5 6 -");
}

TEST_F(Axes, OneVariableMayStandForAllAxes) {
    separateAxes();
    float value = 0;
    plugin.updateAxes("1 2 3", value, value, value, 6, false);
    EXPECT_EQ(value, 3000.0F);
}
