// The shared text rules: number printing, both number readers, both splitters with their
// locale rules, and the line reader on every kind of line end and on hostile bytes.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/number_format.h"
#include "files/text_format.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

// Restores the machine's separator after a test that pretends to run in another locale.
struct SeparatorScope {
  explicit SeparatorScope(char s) : old(MachineDecimalSeparator()) {
    SetMachineDecimalSeparator(s);
  }
  ~SeparatorScope() { SetMachineDecimalSeparator(old); }
  char old;
};

TEST(PrintNumber, BlankBeforeNonNegativeAndAfterEvery) {
  const std::pair<float, const char*> singles[] = {
      {0.1f, " 0.1 "}, {-2.5f, "-2.5 "},          {1.2345678e-5f, " 1.234568E-05 "},
      {-0.0f, " 0 "},  {1234567.0f, " 1234567 "}, {12345678.0f, " 1.234568E+07 "}};
  for (auto [value, text] : singles) EXPECT_EQ(PrintSingle(value), text);
  const std::pair<double, const char*> doubles[] = {
      {123456789012345.0, " 123456789012345 "}, {1e15, " 1E+15 "}, {-1e-300, "-1E-300 "}};
  for (auto [value, text] : doubles) EXPECT_EQ(PrintNumber(value), text);
}

TEST(PrintNumber, FormattedFieldsHaveNoBlanksAndFollowTheLocale) {
  EXPECT_EQ(FormatGeneralSingle(0.05f), "0.05");
  EXPECT_EQ(FormatGeneralSingle(1000000000.0f), "1E+09");
  EXPECT_EQ(FormatGeneral(-3), "-3");
  SeparatorScope comma(',');
  EXPECT_EQ(FormatGeneralSingle(2.5f), "2,5");
  EXPECT_EQ(PrintSingle(-0.25f), "-0,25 ");
}

TEST(Val, TakesTheLongestLeadingNumber) {
  const std::pair<const char*, double> cases[] = {
      {"abc", 0},  {"  42", 42},   {"1 000", 1000},    {"-1.5e3xyz", -1500},
      {"12e", 12}, {"1.2.3", 1.2}, {"1e999", HUGE_VAL}};
  for (auto [text, value] : cases) EXPECT_EQ(Val(text), value) << text;
}

TEST(StrictNumber, WholeTextOrError) {
  double v = -1;
  EXPECT_TRUE(StrictNumber(" -1E-05 ", v));
  EXPECT_EQ(v, -1e-5);
  for (const char* bad : {"", "   ", "abc", "1x", "1.2.3", "--1", "1e999", "+", "."}) {
    v = 99;
    EXPECT_FALSE(StrictNumber(bad, v)) << bad;
    EXPECT_EQ(v, 99) << bad;
  }
  SeparatorScope comma(',');
  EXPECT_TRUE(StrictNumber("2,5", v));
  EXPECT_EQ(v, 2.5);
  EXPECT_FALSE(StrictNumber("2.5", v));
}

TEST(SplitLine, TabFormatKeepsEmptyFieldsClearsTheRestAndStopsAtOneHundred) {
  FieldTable f;
  f[7] = "stale";
  SplitLine(3.1f, "a\t\t 5 \t", f);
  EXPECT_EQ((std::vector<std::string>{f[1], f[2], f[3], f[4], f[7]}),
            (std::vector<std::string>{"a", "", " 5 ", "", ""}));
  std::string line;
  for (int i = 1; i <= 120; ++i) line += std::to_string(i) + "\t";
  SplitLine(3.1f, line, f);
  EXPECT_EQ(f[100], "100");
}

TEST(SplitLine, CommasBecomeTheMachineSeparator) {
  FieldTable f;
  SplitLine(3.1f, "1,5\tx,y", f);
  EXPECT_EQ(f[1], "1.5");
  EXPECT_EQ(f[2], "x.y");
  SeparatorScope comma(',');
  SplitLine(3.1f, "1.5\t2,5", f);
  EXPECT_EQ(f[1], "1,5");
  EXPECT_EQ(f[2], "2,5");
}

TEST(SplitLine, FileMarkFromTheHeaderIsReplaced) {
  const SplitLocale locale = LocaleOfHeader("3;1 GALERIS3");
  EXPECT_TRUE(locale.differs);
  EXPECT_EQ(locale.fileMark, ';');
  FieldTable f;
  SplitLine(3.1f, "2;5\t1", f, locale);
  EXPECT_EQ(f[1], "2.5");
  EXPECT_FALSE(LocaleOfHeader("3.1 GALERIS3").differs);
  EXPECT_FALSE(LocaleOfHeader("").differs);
}

TEST(SplitLine, LegacyCommaFormat) {
  FieldTable f;
  SplitLine(2.3f, "\"Main Shaft\",12.5,,-3", f);
  EXPECT_EQ((std::vector<std::string>{f[1], f[2], f[3], f[4]}),
            (std::vector<std::string>{"Main Shaft", "12.5", "", "-3"}));
  SplitLine(1.0f, "x,\"0123456789012345678901234567890123456789\"", f);
  EXPECT_EQ(f[2], "01234567890123456789012345678");  // thirty characters, quote included
  SeparatorScope comma(';');
  SplitLine(2.0f, "1.5,2", f);
  EXPECT_EQ(f[1], "1;5");
}

TEST(InputTokens, CommasSeparateQuotesProtect) {
  std::vector<std::string> tokens;
  AppendInputTokens("\"Main, upper\", 12.5 ,,-3", tokens);
  AppendInputTokens("", tokens);
  AppendInputTokens("x", tokens);
  EXPECT_EQ(tokens, (std::vector<std::string>{"Main, upper", "12.5", "", "-3", "x"}));
  EXPECT_EQ(TrimBlanks("  a b  "), "a b");
  EXPECT_EQ(TrimBlanks("   "), "");
}

TEST(VersionOf, FirstThreeCharactersAsASingle) {
  EXPECT_EQ(VersionOf("3.1 GALERIS3\tx"), 3.1f);
  EXPECT_FALSE(VersionOf("2.9") < 2.9f);
  EXPECT_EQ(VersionOf("GALERIS"), 0.0f);
  EXPECT_EQ(VersionOf(""), 0.0f);
  EXPECT_EQ(VersionOf("3,1 GALERIS3"), 3.1f);  // written where the decimal mark is a comma
}

// The last line needs no line end, and a trailing line end makes no extra line.
TEST(LineReader, EveryLineEnd) {
  for (const char* last : {"e", "e\r\n"}) {
    const std::string path = test::ScratchDir() + "ends.txt";
    test::WriteFile(path, std::string("a\r\nb\nc\rd\r\r\n") + last);
    LineReader in(path);
    ASSERT_TRUE(in.IsOpen());
    std::string line;
    std::vector<std::string> lines;
    EXPECT_FALSE(in.AtEnd());
    while (in.ReadLine(line)) lines.push_back(line);
    EXPECT_EQ(lines, (std::vector<std::string>{"a", "b", "c", "d", "", "e"})) << last;
    EXPECT_TRUE(in.AtEnd());
    EXPECT_EQ(in.LineNumber(), 6);
    EXPECT_FALSE(in.ReadLine(line));
  }
}

TEST(LineReader, BinaryBytesLongLinesAndMissingFiles) {
  const std::string dir = test::ScratchDir();
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes.push_back(static_cast<char>(i));
  test::WriteFile(dir + "b.bin", bytes + std::string(300000, 'z'));
  LineReader in(dir + "b.bin");
  std::string line;
  std::size_t total = 0;
  while (in.ReadLine(line)) total += line.size();
  EXPECT_EQ(total, 256 - 2 + 300000);  // bytes 10 and 13 end lines

  LineReader missing(dir + "none.txt");
  EXPECT_FALSE(missing.IsOpen());
  EXPECT_TRUE(missing.AtEnd());
  EXPECT_FALSE(missing.ReadLine(line));

  test::WriteFile(dir + "empty.txt", "");
  LineReader empty(dir + "empty.txt");
  EXPECT_TRUE(empty.IsOpen());
  EXPECT_FALSE(empty.ReadLine(line));
}

TEST(LineReader, CrLfSplitAcrossReadChunks) {
  const std::string path = test::ScratchDir() + "chunk.txt";
  std::string text(65535, 'q');
  text += "\r\nnext\r\n";  // the CR is the last byte of the first chunk
  test::WriteFile(path, text);
  LineReader in(path);
  std::string line;
  ASSERT_TRUE(in.ReadLine(line));
  EXPECT_EQ(line.size(), 65535u);
  ASSERT_TRUE(in.ReadLine(line));
  EXPECT_EQ(line, "next");
  EXPECT_FALSE(in.ReadLine(line));
}

}  // namespace
}  // namespace galeris
