#include <orbel/orbel.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::string encoded(unsigned long long value) {
    return korDataHandler::PtrToBase64(value);
}

unsigned long long decoded(const std::string& text) {
    return korDataHandler::Base64ToPtr(text);
}

} // namespace

TEST(PointerText, UsesTheAlphabetOfBase64) {
    EXPECT_STREQ(korDataHandler::pchzBase64AlphaBet,
                 "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
}

TEST(PointerText, HasTheLowestByteFirst) {
    EXPECT_EQ(encoded(0), "AAAAAAAAAAA=");
    EXPECT_EQ(encoded(1), "AQAAAAAAAAA=");
    EXPECT_EQ(encoded(0x3F), "PwAAAAAAAAA=");
    EXPECT_EQ(encoded(0xFF), "/wAAAAAAAAA=");
    EXPECT_EQ(encoded(0x100), "AAEAAAAAAAA=");
    EXPECT_EQ(encoded(0x10000), "AAABAAAAAAA=");
    EXPECT_EQ(encoded(0x7FFFFFFF), "////fwAAAAA=");
    EXPECT_EQ(encoded(0x80000000), "AAAAgAAAAAA=");
    EXPECT_EQ(encoded(0xFFFFFFFF), "/////wAAAAA=");
    EXPECT_EQ(encoded(0x100000000), "AAAAAAEAAAA=");
    EXPECT_EQ(encoded(0x8000000000000000), "AAAAAAAAAIA=");
    EXPECT_EQ(encoded(0xFFFFFFFFFFFFFFFF), "//////////8=");
    EXPECT_EQ(encoded(0x0807060504030201), "AQIDBAUGBwg=");
    EXPECT_EQ(encoded(0xEFCDAB8967452301), "ASNFZ4mrze8=");
    // Bytes fb ef be: only "+" and "/" and what lies between letters and them.
    EXPECT_EQ(encoded(0xBEEFFB), "++++AAAAAAA=");
}

TEST(PointerText, NumbersOf31BitsComeBack) {
    for (unsigned long long bit = 1; bit < 0x80000000; bit <<= 1)
        for (const unsigned long long value : {bit, bit - 1, bit | 1, bit ^ 0x7FFFFFFF, bit ^ 0x5A5A5A5A})
            EXPECT_EQ(decoded(encoded(value)), value);
    EXPECT_EQ(decoded(encoded(0)), 0U);
    EXPECT_EQ(decoded(encoded(0x7FFFFFFF)), 0x7FFFFFFFU);
}

TEST(PointerText, TheHighestOf32BitsFillsAllAboveIt) {
    EXPECT_EQ(decoded(encoded(0x80000000)), 0xFFFFFFFF80000000);
    EXPECT_EQ(decoded(encoded(0xFFFFFFFF)), 0xFFFFFFFFFFFFFFFF);
    EXPECT_EQ(decoded(encoded(0x80000001)), 0xFFFFFFFF80000001);
    EXPECT_EQ(decoded(encoded(0xC0FFEE00)), 0xFFFFFFFFC0FFEE00);
}

TEST(PointerText, HigherBytesFallOntoTheLowerOnes) {
    EXPECT_EQ(decoded(encoded(0x100000000)), 1U);
    EXPECT_EQ(decoded(encoded(0x0000000200000001)), 3U);
    EXPECT_EQ(decoded(encoded(0x7F00000000000000)), 0x7F000000U);
    EXPECT_EQ(decoded(encoded(0x8000000000000000)), 0xFFFFFFFF80000000);
    EXPECT_EQ(decoded(encoded(0xFFFFFFFFFFFFFFFF)), 0xFFFFFFFFFFFFFFFF);
    EXPECT_EQ(decoded(encoded(0x00007F1234560010)), 0x34567F12U | 0x34560010U);
    EXPECT_EQ(decoded(encoded(0x0807060504030201)), 0x08070605U | 0x04030201U);
}

TEST(PointerText, MayBeShorter) {
    EXPECT_EQ(decoded(""), 0U);
    EXPECT_EQ(decoded("B"), 0U);
    EXPECT_EQ(decoded("/"), 0U);
    EXPECT_EQ(decoded("AQ"), 1U);
    EXPECT_EQ(decoded("//"), 0xFFU);
    EXPECT_EQ(decoded("AQI"), 0x201U);
    EXPECT_EQ(decoded("///"), 0xFFFFU);
    EXPECT_EQ(decoded("AQID"), 0x30201U);
    EXPECT_EQ(decoded("AQIDB"), 0x30201U);
    EXPECT_EQ(decoded("AQIDBA"), 0x4030201U);
    EXPECT_EQ(decoded("AQIDBAU"), 0x4030201U | 5U);
    EXPECT_EQ(decoded("AQIDBAUG"), 0x4030201U | 0x605U);
    EXPECT_EQ(decoded("AQIDBAUGBwg"), 0x4030201U | 0x8070605U);
}

TEST(PointerText, EndsAtAnythingOutsideTheAlphabet) {
    EXPECT_EQ(decoded("="), 0U);
    EXPECT_EQ(decoded("=AQID"), 0U);
    EXPECT_EQ(decoded("AQ=="), 1U);
    EXPECT_EQ(decoded("AQI="), 0x201U);
    EXPECT_EQ(decoded("AQI=AQID"), 0x201U);
    for (const char* end : {" ", "-", "_", ".", "\n", "\t", ",", "\x80", "\xC3\xA4", "@", "[", "`", "{", ":"})
        EXPECT_EQ(decoded("AQID" + std::string(end) + "BAU"), 0x30201U) << end;
    EXPECT_EQ(decoded(std::string("AQID\0BAU", 8)), 0x30201U);
    EXPECT_EQ(decoded(" AQID"), 0U);
}

TEST(PointerText, HasTwelveCharactersAtMost) {
    EXPECT_EQ(decoded("AQIDAAAAAAA="), 0x30201U);
    EXPECT_EQ(decoded("AQIDAAAAAAA=="), 0U);
    EXPECT_EQ(decoded("AQIDAAAAAAAAA"), 0U);
    EXPECT_EQ(decoded("AQ==         "), 0U);
    EXPECT_EQ(decoded("AQ==        "), 1U);
    EXPECT_EQ(decoded(std::string(100'000, 'A')), 0U);
}

TEST(PointerText, ANinthByteIsIgnored) {
    EXPECT_EQ(decoded("AQAAAAAAAAD/"), 1U);
    EXPECT_EQ(decoded("////////////"), 0xFFFFFFFFFFFFFFFF);
}
