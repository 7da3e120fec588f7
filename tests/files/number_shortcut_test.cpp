// The quick ways of the number text against the general conversions they stand in for: the
// writer's 7-digit singles against the general formatter, and the readers' plain decimals
// and whole numbers against the general parser, on awkward values and a spread of random ones.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

#include "files/text_format.h"

namespace galeris {
namespace {

std::string GeneralSeven(float f) {
  if (!std::isfinite(f) || f == 0) return "0";
  char t[48];
  std::string s(t, std::to_chars(t, t + sizeof t, double{f}, std::chars_format::general, 7).ptr);
  for (char& c : s)
    if (c == 'e') c = 'E';
  return s;
}

TEST(NumberShortcut, SinglesPrintAsTheGeneralFormatter) {
  // Ties, carries into a new place, the ends of the fixed range and of the exact powers.
  std::vector<float> values = {16777215.0f, 9999999.5f,    9999999.0f, 0.00009999999f, 1e-5f,
                               1e7f,        8589934592.0f, 1e-16f,     1e29f,          3.4e38f,
                               1e-45f,      0.5f,          2.5e-7f};
  std::mt19937 random(7);
  for (int i = 0; i < 200000; ++i) {
    const std::uint32_t bits = random();
    float f;
    std::memcpy(&f, &bits, sizeof f);
    values.push_back(f);
    values.push_back(static_cast<float>(random() % 100000000) / 1000.0f);
  }
  for (float f : values) {
    ASSERT_EQ(FormatGeneralSingle(f), GeneralSeven(f)) << f;
    ASSERT_EQ(FormatGeneralSingle(-f), GeneralSeven(-f)) << f;
  }
}

TEST(NumberShortcut, PlainDecimalsReadAsTheGeneralParser) {
  std::vector<std::string> texts = {"0",
                                    "-0",
                                    "+7",
                                    ".5",
                                    "5.",
                                    "-.25",
                                    "123456789012345",
                                    "1234567890123456",
                                    "0.000000000000001",
                                    "9007199254740993",
                                    "0.1",
                                    "31.01875",
                                    "0.008715244"};
  std::mt19937 random(11);
  for (int i = 0; i < 100000; ++i) {
    std::string t = std::to_string(random() % 1000000000u);
    t.insert(random() % (t.size() + 1), ".");
    texts.push_back((random() % 2 ? "-" : "") + t);
  }
  for (const std::string& t : texts) {
    double expected = 0, strict = -1;
    std::from_chars(t.data() + (t[0] == '+'), t.data() + t.size(), expected);
    ASSERT_EQ(Val(t), expected) << t;
    ASSERT_TRUE(StrictNumber(t, strict)) << t;
    ASSERT_EQ(strict, expected) << t;
  }
}

TEST(NumberShortcut, PlainWholesReadAsTheGeneralParser) {
  std::vector<std::string> texts = {"0", "-0", "+7", "007", "32767", "-32768", "2147483648",
                                    "999999999999999999", "-123456789012345678"};
  std::mt19937_64 random(13);
  for (int i = 0; i < 20000; ++i)
    texts.push_back((random() % 2 ? "-" : "") + std::to_string((random() >> (random() % 64)) % 1000000000000000000));
  for (const std::string& t : texts) {
    long long whole = 0;
    double strict = 0;
    ASSERT_TRUE(PlainWhole(t, whole)) << t;
    ASSERT_TRUE(StrictNumber(t, strict)) << t;
    ASSERT_EQ(static_cast<double>(whole), strict) << t;
    ASSERT_EQ(static_cast<double>(whole), Val(t)) << t;
  }
  for (const char* t : {"", "-", "+", "1.0", "1 0", "1e3", "--1", "1234567890123456789", "x"}) {
    long long whole = 0;
    EXPECT_FALSE(PlainWhole(t, whole)) << t;
  }
}

}  // namespace
}  // namespace galeris
