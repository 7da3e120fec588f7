// The text rules of every file: reading lines whatever their ends, splitting them into the
// shared field table, and the number pictures of the writer and the readers.
#include "files/text_format.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "core/number_format.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace galeris {
namespace {

constexpr std::size_t kReadChunk = 1 << 16;
constexpr std::size_t kLegacyLastField = 30;  // comma lines keep at most this of their last field

void ReplaceAll(std::string& s, char from, char to) {
  if (from == to) return;
  std::replace(s.begin(), s.end(), from, to);
}

// The shortest general form with the given significant digits, as VB prints it: fixed notation
// while the exponent lies from -5 to digits-1, else "1.5E+10"; the machine's decimal separator.
// The general form of the value with the given significant digits, as printf's %g makes it
// ('.' and 'e'); returns the end of the text.
char* GeneralText(double value, int digits, char* text, char* last) {
  return std::to_chars(text, last, value, std::chars_format::general, digits).ptr;
}

// The same for a single to 7 digits, without the general formatter for nearly every value:
// the value scaled to seven whole digits with one rounding, which an exact power of ten keeps
// within far less than a millionth of a unit of the true product, then rounded half to even.
// A product within a millionth of a half unit, or a value beyond the exact powers, takes the
// general formatter.
char* SingleText(float single, char* text, char* last) {
  constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  constexpr int kLargestPower = 22;
  constexpr double kLow = 1e6, kHigh = 1e7;  // seven whole digits
  constexpr double kNearHalf = 1e-6;
  const double value = single;
  const double magnitude = std::fabs(value);
  // The decimal exponent from the binary one, at most one too small; the loop puts it right.
  std::uint32_t bits = 0;
  std::memcpy(&bits, &single, sizeof bits);
  const int binary = static_cast<int>((bits >> 23) & 0xFF) - 127;  // subnormals: far too small
  int exponent = binary >= 0 ? binary * 30103 / 100000 : -((-binary * 30103 + 99999) / 100000);
  double scaled = 0;
  for (int tries = 0; tries < 3; ++tries) {
    const int shift = 6 - exponent;
    if (shift > kLargestPower || -shift > kLargestPower) return GeneralText(value, 7, text, last);
    scaled = shift >= 0 ? magnitude * kPowers[shift] : magnitude / kPowers[-shift];
    if (scaled >= kHigh)
      ++exponent;
    else if (scaled < kLow)
      --exponent;
    else
      break;
  }
  if (scaled < kLow || scaled >= kHigh) return GeneralText(value, 7, text, last);
  auto n = static_cast<std::uint32_t>(scaled);  // positive: truncation is the floor
  const double rest = scaled - n;
  if (std::fabs(rest - 0.5) < kNearHalf) return GeneralText(value, 7, text, last);
  if (rest > 0.5) ++n;
  if (n >= 10000000) {  // 9999999.5 and up: one more place
    n /= 10;
    ++exponent;
  }
  char d[7];
  for (int i = 6; i >= 0; --i) {
    d[i] = static_cast<char>('0' + n % 10);
    n /= 10;
  }
  int count = 7;
  while (count > 1 && d[count - 1] == '0') --count;
  char* p = text;
  if (value < 0) *p++ = '-';
  if (exponent < -4 || exponent >= 7) {
    *p++ = d[0];
    if (count > 1) {
      *p++ = '.';
      for (int i = 1; i < count; ++i) *p++ = d[i];
    }
    *p++ = 'e';
    *p++ = exponent < 0 ? '-' : '+';
    const int e = std::abs(exponent);
    if (e >= 10)
      *p++ = static_cast<char>('0' + e / 10);
    else
      *p++ = '0';
    *p++ = static_cast<char>('0' + e % 10);
  } else if (exponent >= 0) {
    for (int i = 0; i <= exponent; ++i) *p++ = d[i];
    if (count > exponent + 1) {
      *p++ = '.';
      for (int i = exponent + 1; i < count; ++i) *p++ = d[i];
    }
  } else {
    *p++ = '0';
    *p++ = '.';
    for (int i = -1; i > exponent; --i) *p++ = '0';
    for (int i = 0; i < count; ++i) *p++ = d[i];
  }
  return p;
}

// The text as a formatted field: 'E' for the exponent, the machine's decimal separator.
void AppendFormatted(std::string& out, const char* text, const char* end) {
  const char separator = MachineDecimalSeparator();
  const std::size_t at = out.size();
  out.append(text, end);
  for (std::size_t i = at; i < out.size(); ++i) {
    if (out[i] == 'e')
      out[i] = 'E';
    else if (out[i] == '.')
      out[i] = separator;
  }
}

// The shortest general form with the given significant digits, as VB prints it: fixed notation
// while the exponent lies from -5 to digits-1, else "1.5E+10"; the machine's decimal separator.
std::string General(double value, int digits) {
  if (!std::isfinite(value)) return "0";  // never written: such a value could not be read back
  if (value == 0) return "0";             // no "-0"
  char text[48];
  std::string s;
  AppendFormatted(s, text, GeneralText(value, digits, text, text + sizeof text));
  return s;
}

std::string Printed(std::string general) {
  if (general.empty() || general[0] != '-') general.insert(general.begin(), ' ');
  general.push_back(' ');
  return general;
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n';
}

// The decimal rules of a tab-joined line as one mapping of single characters: first `point`
// becomes the separator, then (when the file's mark differs) the file's mark does.
struct DecimalMapping {
  char point, separator, fileMark;
  bool differs;
  bool Touches(std::string_view s) const {
    return s.find(point) != std::string_view::npos ||
           (differs && s.find(fileMark) != std::string_view::npos);
  }
  void Apply(std::string& s) const {
    for (char& c : s) {
      if (c == point) c = separator;
      if (differs && c == fileMark) c = separator;
    }
  }
};

void SplitCommas(std::string_view line, FieldTable& fields, char separator) {
  int field = 1;
  std::size_t start = 0;
  while (field <= kSplitFields) {
    const std::size_t comma = line.find(',', start);
    std::string_view part = comma == std::string_view::npos
                                ? line.substr(start).substr(0, kLegacyLastField)
                                : line.substr(start, comma - start);
    std::string& f = fields[field];
    f.clear();
    for (char c : part)
      if (c != '"') f.push_back(c);
    if (separator != '.') ReplaceAll(f, '.', separator);
    if (comma == std::string_view::npos) return;
    start = comma + 1;
    ++field;
  }
}

// Parses sign, digits, one decimal point and an exponent from a text already cleaned to use '.'.
bool ParseDouble(const std::string& s, double& value) {
  if (s.empty()) return false;
  const char* first = s.data();
  if (*first == '+') ++first;
  if (first == s.data() + s.size()) return false;
  auto [ptr, ec] = std::from_chars(first, s.data() + s.size(), value);
  return ec == std::errc() && ptr == s.data() + s.size();
}

// The common plain decimal, as "-12.5" or "3": an optional sign, digits and at most one point
// (the given character), nothing else. When its digits fit a double exactly the value is one
// correctly rounded division, the same double the full conversion gives. False for anything
// else, which then takes the full way.
bool PlainDecimal(std::string_view s, char point, double& value) {
  constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  // Up to 15 digits stay below 2^53 and add up exactly; longer texts take the full way.
  constexpr std::ptrdiff_t kMostDigits = 15;
  const char* p = s.data();
  const char* const end = p + s.size();
  const bool negative = p != end && *p == '-';
  if (p != end && (*p == '-' || *p == '+')) ++p;
  const char* const first = p;
  if (end - first > kMostDigits) return false;
  std::uint64_t digits = 0;
  const char* pointAt = nullptr;
  for (; p != end; ++p) {
    const auto d = static_cast<unsigned>(static_cast<unsigned char>(*p) - '0');
    if (d <= 9)
      digits = digits * 10 + d;
    else if (*p == point && !pointAt)
      pointAt = p;
    else
      return false;
  }
  if (end - first - (pointAt ? 1 : 0) == 0) return false;  // no digit
  const std::ptrdiff_t decimals = pointAt ? end - pointAt - 1 : 0;
  const double whole = static_cast<double>(digits);
  const double magnitude = decimals == 0 ? whole : whole / kPowers[decimals];
  value = negative ? -magnitude : magnitude;
  return true;
}

}  // namespace

bool PlainWhole(std::string_view s, long long& value) {
  // Eighteen digits stay below 2^63.
  constexpr std::ptrdiff_t kMostDigits = 18;
  const char* p = s.data();
  const char* const end = p + s.size();
  const bool negative = p != end && *p == '-';
  if (p != end && (*p == '-' || *p == '+')) ++p;
  if (p == end || end - p > kMostDigits) return false;
  long long digits = 0;
  for (; p != end; ++p) {
    const auto d = static_cast<unsigned>(static_cast<unsigned char>(*p) - '0');
    if (d > 9) return false;
    digits = digits * 10 + d;
  }
  value = negative ? -digits : digits;
  return true;
}

bool IsTabFormat(float version) {
  // A 2.4 file is already tab-joined: its writer introduced tabs together with the decimal rule.
  return version >= 2.4f;
}

void SplitLine(float version, std::string_view line, FieldTable& fields,
               const SplitLocale& locale) {
  const char separator = MachineDecimalSeparator();
  if (!IsTabFormat(version)) {
    for (int i = 1; i <= kSplitFields; ++i) fields[i].clear();
    SplitCommas(line, fields, separator);
    return;
  }

  std::string mapped;
  const std::string_view text =
      MapDecimalMarks(line, locale, mapped) ? std::string_view(mapped) : line;
  FieldViews views;
  const int count = SplitTabViews(text, views);
  for (int i = 1; i <= kSplitFields; ++i) {
    if (i <= count)
      fields[i].assign(views[i]);
    else
      fields[i].clear();
  }
}

bool MapDecimalMarks(std::string_view line, const SplitLocale& locale, std::string& mapped) {
  const char separator = MachineDecimalSeparator();
  const DecimalMapping mapping{separator != ',' ? ',' : '.', separator, locale.fileMark,
                               locale.differs};
  if (!mapping.Touches(line)) return false;
  mapped.assign(line);
  mapping.Apply(mapped);
  return true;
}

int SplitTabViews(std::string_view line, FieldViews& fields) {
  // Fields are short: sixteen bytes are looked at together and the tabs among them taken from
  // a bit mask, rather than a library search per field.
  int field = 1;
  const char* start = line.data();
  const char* const end = start + line.size();
  const char* p = start;
#if defined(__SSE2__)
  const __m128i tab = _mm_set1_epi8('\t');
  for (; end - p >= 16; p += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    auto tabs = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, tab)));
    for (; tabs != 0; tabs &= tabs - 1) {
      const char* const at = p + std::countr_zero(tabs);
      fields[field] = std::string_view(start, static_cast<std::size_t>(at - start));
      start = at + 1;
      if (++field > kSplitFields) return kSplitFields;
    }
  }
#endif
  for (; p != end; ++p) {
    if (*p != '\t') continue;
    fields[field] = std::string_view(start, static_cast<std::size_t>(p - start));
    start = p + 1;
    if (++field > kSplitFields) return kSplitFields;
  }
  fields[field] = std::string_view(start, static_cast<std::size_t>(end - start));
  return field;
}

std::string TrimBlanks(std::string_view text) {
  const std::size_t a = text.find_first_not_of(' ');
  if (a == std::string_view::npos) return "";
  return std::string(text.substr(a, text.find_last_not_of(' ') - a + 1));
}

void AppendInputTokens(std::string_view line, std::vector<std::string>& tokens) {
  if (line.empty()) return;
  std::string token;
  bool quoted = false;
  for (char c : line) {
    if (c == '"') {
      quoted = !quoted;
    } else if (c == ',' && !quoted) {
      tokens.push_back(TrimBlanks(token));
      token.clear();
    } else {
      token.push_back(c);
    }
  }
  tokens.push_back(TrimBlanks(token));
}

SplitLocale LocaleOfHeader(std::string_view headerLine) {
  SplitLocale locale;
  if (headerLine.size() < 2) return locale;
  const char mark = headerLine[1];
  if (mark != MachineDecimalSeparator()) {
    locale.differs = true;
    locale.fileMark = mark;
  }
  return locale;
}

float VersionOf(std::string_view firstLine) {
  // The version was printed with the writer's decimal mark, whichever it was.
  std::string head(firstLine.substr(0, std::min<std::size_t>(3, firstLine.size())));
  const auto digit = [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; };
  if (head.size() == 3 && digit(head[0]) && !digit(head[1]) && digit(head[2])) head[1] = '.';
  return static_cast<float>(Val(head));
}

std::string FormatGeneral(double value) {
  return General(value, 15);
}
std::string FormatGeneralSingle(float value) {
  std::string s;
  AppendGeneralSingle(s, value);
  return s;
}
void AppendGeneralSingle(std::string& out, float value) {
  char text[kSingleTextSize];
  out.append(text, WriteGeneralSingle(text, value));
}

char* WriteGeneralSingle(char* text, float value) {
  if (!std::isfinite(value) || value == 0) {
    *text = '0';  // as General: no "-0", and nothing that could not be read back
    return text + 1;
  }
  const float magnitude = std::fabs(value);
  if (magnitude < 1e7f && magnitude == std::floor(magnitude))  // whole: all its digits
    return std::to_chars(text, text + kSingleTextSize, static_cast<std::int32_t>(value)).ptr;
  char* const end = SingleText(value, text, text + kSingleTextSize);
  const char separator = MachineDecimalSeparator();
  for (char* p = text; p != end; ++p) {
    if (*p == 'e')
      *p = 'E';
    else if (*p == '.')
      *p = separator;
  }
  return end;
}
std::string PrintNumber(double value) {
  return Printed(FormatGeneral(value));
}
std::string PrintSingle(float value) {
  return Printed(FormatGeneralSingle(value));
}

double Val(std::string_view text) {
  // Blanks are skipped anywhere, as in "1 000"; the number ends at the first other character
  // that cannot continue it.
  const char separator = MachineDecimalSeparator();
  double plain = 0;
  if (separator == '.' && PlainDecimal(text, '.', plain)) return plain;
  std::string number;
  bool digits = false, point = false, exponent = false, exponentDigits = false;
  for (char c : text) {
    if (IsBlank(c)) continue;
    if (c >= '0' && c <= '9') {
      number.push_back(c);
      (exponent ? exponentDigits : digits) = true;
    } else if ((c == '-' || c == '+') && (number.empty() || number.back() == 'e')) {
      number.push_back(c);
    } else if ((c == '.' || c == separator) && !point && !exponent) {
      number.push_back('.');
      point = true;
    } else if ((c == 'e' || c == 'E' || c == 'd' || c == 'D') && digits && !exponent) {
      number.push_back('e');
      exponent = true;
    } else {
      break;
    }
  }
  if (!digits) return 0;
  if (exponent && !exponentDigits) {
    while (!number.empty() && number.back() != 'e') number.pop_back();
    number.pop_back();
  }
  double value = 0;
  if (!ParseDouble(number, value)) {
    // Only an out-of-range exponent gets here: clamp as the hardware would.
    value = number[0] == '-' ? -HUGE_VAL : HUGE_VAL;
    if (exponent && number.find("e-") != std::string::npos) value = 0;
  }
  return value;
}

bool StrictNumber(std::string_view text, double& value) {
  std::size_t a = 0, b = text.size();
  while (a < b && (text[a] == ' ' || text[a] == '\t')) ++a;
  while (b > a && (text[b - 1] == ' ' || text[b - 1] == '\t')) --b;
  if (a == b) return false;
  const char separator = MachineDecimalSeparator();
  if ((separator == '.' || separator == ',') &&
      PlainDecimal(text.substr(a, b - a), separator, value))
    return true;
  std::string number;
  number.reserve(b - a);
  bool digits = false;
  for (std::size_t i = a; i < b; ++i) {
    char c = text[i];
    if (c == separator)
      c = '.';
    else if (c == '.')
      return false;  // only the machine's separator counts as a decimal mark
    else if (c == 'd' || c == 'D')
      c = 'e';
    if (c >= '0' && c <= '9') digits = true;
    number.push_back(c);
  }
  if (!digits) return false;
  double parsed = 0;
  if (!ParseDouble(number, parsed) || !std::isfinite(parsed)) return false;
  value = parsed;
  return true;
}

LineReader::LineReader(const std::string& path) {
  // The whole file at once: every reader goes through it from start to end.
  std::ifstream in(path, std::ios::binary);
  open_ = in.is_open();
  std::error_code ec;
  const auto size = std::filesystem::file_size(path, ec);
  std::size_t chunk = !ec && size > 0 && size < (std::size_t{1} << 40) ? size + 1 : kReadChunk;
  while (open_ && in) {
    buffer_.resize(end_ + chunk);
    in.read(buffer_.data() + end_, static_cast<std::streamsize>(chunk));
    end_ += static_cast<std::size_t>(in.gcount());
    chunk = kReadChunk;
  }
  buffer_.resize(end_);
}

bool LineReader::Fill() {
  return start_ < end_;
}

int LineReader::Peek() {
  if (!Fill()) return -1;
  return static_cast<unsigned char>(buffer_[start_]);
}

bool LineReader::AtEnd() {
  return Peek() < 0;
}

bool LineReader::ReadLine(std::string& line) {
  std::string_view view;
  const bool read = ReadLineView(view);
  line.assign(view);
  return read;
}

bool LineReader::ReadLineView(std::string_view& line) {
  if (!Fill()) {
    line = {};
    return false;
  }
  ++lineNumber_;
  const char* begin = buffer_.data() + start_;
  const char* end = buffer_.data() + end_;
  // The line ends at the first CR or LF: the first LF bounds the search for a CR.
  const char* stop = static_cast<const char*>(std::memchr(begin, '\n', end - begin));
  if (!stop) stop = end;
  if (const void* cr = std::memchr(begin, '\r', stop - begin)) stop = static_cast<const char*>(cr);
  line = std::string_view(begin, static_cast<std::size_t>(stop - begin));
  start_ += static_cast<std::size_t>(stop - begin);
  if (stop == end) return true;
  const char ending = *stop;
  ++start_;
  if (ending == '\r' && Peek() == '\n') ++start_;
  return true;
}

}  // namespace galeris
