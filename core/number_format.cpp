// Number pictures for every number the system shows: digit pictures with their literal text,
// time pictures over seconds and right-aligned text pictures. Rounding is done on the exact
// binary value, ties to even, so what is shown never depends on the platform's printf.
#include "core/number_format.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

namespace galeris {
namespace {

// The machine's decimal separator is a property of the whole process, like the locale it
// stands for; tests change it to see files written on other machines.
char& DecimalSeparatorSetting() {
  static char separator = '.';
  return separator;
}

char ThousandsSeparator() {
  return MachineDecimalSeparator() == ',' ? '.' : ',';
}

// A picture with placeholders would otherwise print a lone "nan" in the middle of its text.
std::string NotANumberText(double value) {
  if (std::isnan(value)) return "NaN";
  return value < 0 ? "-Inf" : "Inf";
}

// The general text of a number as the system prints it in text pictures: up to 15 significant
// digits, exponent form only for very large or small values.
std::string GeneralText(double value) {
  if (!std::isfinite(value)) return NotANumberText(value);
  if (value == 0) return "0";
  char text[48];
  std::snprintf(text, sizeof text, "%.15G", value);
  std::string s(text);
  for (char& c : s)
    if (c == '.') c = MachineDecimalSeparator();
  return s;
}

// "@@@": the text of the number right-aligned in as many places as there are "@"; a longer
// text is shown whole. Characters around the run of "@" are kept.
std::string FormatText(double value, std::string_view picture) {
  const std::size_t first = picture.find('@');
  const std::size_t last = picture.rfind('@');
  std::size_t places = 0;
  for (std::size_t i = first; i <= last; ++i)
    if (picture[i] == '@') ++places;
  std::string text = GeneralText(value);
  if (text.size() < places) text.insert(0, places - text.size(), ' ');
  return std::string(picture.substr(0, first)) + text + std::string(picture.substr(last + 1));
}

bool IsTimePicture(std::string_view picture) {
  return picture.find_first_of("hH") != std::string_view::npos &&
         picture.find(':') != std::string_view::npos &&
         picture.find_first_of("0#") == std::string_view::npos;
}

std::string Padded(long long number, std::size_t width) {
  std::string s = std::to_string(number);
  if (s.size() < width) s.insert(0, width - s.size(), '0');
  return s;
}

// "hh:mm:ss" and "h:mm:ss" over a number of seconds. Hours run on past 24: a spread time of
// 30 hours reads "30:00:00", not "06:00:00".
std::string FormatTime(double seconds, std::string_view picture) {
  if (!std::isfinite(seconds)) return NotANumberText(seconds);
  const long long total = RoundHalfEven(std::fabs(seconds));
  const long long parts[3] = {total / 3600, (total / 60) % 60, total % 60};
  std::string out = seconds < 0 && total != 0 ? "-" : "";
  for (std::size_t i = 0; i < picture.size();) {
    const char c = static_cast<char>(picture[i] | 0x20);
    std::size_t run = 1;
    while (i + run < picture.size() && static_cast<char>(picture[i + run] | 0x20) == c) ++run;
    const int part = c == 'h' ? 0 : c == 'm' || c == 'n' ? 1 : c == 's' ? 2 : -1;
    if (part < 0)
      out.append(picture.substr(i, run));
    else
      out += Padded(parts[part], run >= 2 ? 2 : 1);
    i += run;
  }
  return out;
}

// The pieces of a digit picture such as "$#,##0.00 %".
struct DigitPicture {
  std::string prefix, suffix;  // literal text around the digits
  int minIntegerDigits = 0;
  int minDecimals = 0;
  int maxDecimals = 0;
  bool hasPoint = false;
  bool grouped = false;
  bool percent = false;
};

// Literal text of a picture: quotes and backslashes only protect the characters they enclose.
std::string LiteralText(std::string_view text, bool& percent) {
  std::string out;
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') {
      quoted = !quoted;
    } else if (c == '\\' && !quoted && i + 1 < text.size()) {
      out.push_back(text[++i]);
    } else {
      if (c == '%' && !quoted) percent = true;
      out.push_back(c);
    }
  }
  return out;
}

// The first and last digit placeholders of a picture, passing over quoted and escaped text;
// false when there is none.
bool DigitSpan(std::string_view picture, std::size_t& first, std::size_t& last) {
  bool quoted = false, found = false;
  for (std::size_t i = 0; i < picture.size(); ++i) {
    const char c = picture[i];
    if (c == '"') {
      quoted = !quoted;
    } else if (c == '\\' && !quoted) {
      ++i;
    } else if (!quoted && (c == '0' || c == '#')) {
      if (!found) first = i;
      last = i;
      found = true;
    }
  }
  return found;
}

DigitPicture ParseDigitPicture(std::string_view picture, std::size_t first, std::size_t last) {
  DigitPicture p;
  p.prefix = LiteralText(picture.substr(0, first), p.percent);
  p.suffix = LiteralText(picture.substr(last + 1), p.percent);
  bool inFraction = false;
  for (std::size_t i = first; i <= last; ++i) {
    const char c = picture[i];
    if (c == '.' && !inFraction) {
      inFraction = p.hasPoint = true;
    } else if (c == ',' && !inFraction) {
      p.grouped = true;
    } else if (c == '0' || c == '#') {
      if (inFraction) {
        ++p.maxDecimals;
        if (c == '0') p.minDecimals = p.maxDecimals;
      } else if (c == '0') {
        ++p.minIntegerDigits;
      }
    }
  }
  return p;
}

void GroupThousands(std::string& digits) {
  const char mark = ThousandsSeparator();
  for (int at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3)
    digits.insert(static_cast<std::size_t>(at), 1, mark);
}

std::string FormatDigits(double value, std::string_view picture, std::size_t first,
                         std::size_t last) {
  const DigitPicture p = ParseDigitPicture(picture, first, last);
  if (p.percent) value *= 100;
  if (!std::isfinite(value)) return NotANumberText(value);

  // Fixed notation of the exact binary value, correctly rounded with ties to even.
  constexpr int kMaxDecimals = 60;
  const int decimals = p.maxDecimals < kMaxDecimals ? p.maxDecimals : kMaxDecimals;
  char buffer[std::numeric_limits<double>::max_exponent10 + kMaxDecimals + 8];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                    std::chars_format::fixed, decimals);
  const std::string_view text(buffer, static_cast<std::size_t>(result.ptr - buffer));

  const std::size_t point = text.find('.');
  std::string whole(text.substr(0, point));
  std::string fraction(point == std::string_view::npos ? "" : text.substr(point + 1));
  const bool nonZero = whole.find_first_not_of('0') != std::string::npos ||
                       fraction.find_first_not_of('0') != std::string::npos;
  while (static_cast<int>(fraction.size()) > p.minDecimals && fraction.back() == '0')
    fraction.pop_back();

  if (whole == "0" && p.minIntegerDigits == 0) whole.clear();
  if (static_cast<int>(whole.size()) < p.minIntegerDigits)
    whole.insert(0, static_cast<std::size_t>(p.minIntegerDigits) - whole.size(), '0');
  if (p.grouped) GroupThousands(whole);

  std::string out = value < 0 && nonZero ? "-" : "";
  out += p.prefix;
  out += whole;
  if (p.hasPoint) out.push_back(MachineDecimalSeparator());
  out += fraction;
  out += p.suffix;
  return out;
}

}  // namespace

char MachineDecimalSeparator() {
  return DecimalSeparatorSetting();
}

void SetMachineDecimalSeparator(char separator) {
  DecimalSeparatorSetting() = separator;
}

std::string FormatNumber(double value, std::string_view picture) {
  if (picture.find('@') != std::string_view::npos) return FormatText(value, picture);
  if (IsTimePicture(picture)) return FormatTime(value, picture);
  std::size_t first = 0, last = 0;
  if (!DigitSpan(picture, first, last)) {
    bool percent = false;
    return GeneralText(value) + LiteralText(picture, percent);
  }
  return FormatDigits(value, picture, first, last);
}

long long RoundHalfEven(double value) {
  if (std::isnan(value)) return 0;
  constexpr double kLimit = 9223372036854774784.0;  // the largest double below 2^63
  if (value >= kLimit) return std::numeric_limits<long long>::max();
  if (value <= -kLimit) return std::numeric_limits<long long>::min();
  const auto truncated = static_cast<long long>(value);
  if (static_cast<double>(truncated) == value) return truncated;  // whole already
  // A fraction: |value| is below 2^52, so the floor and the rest are exact.
  const long long whole = value < 0 ? truncated - 1 : truncated;
  const double rest = value - static_cast<double>(whole);
  if (rest > 0.5 || (rest == 0.5 && (whole & 1) != 0)) return whole + 1;
  return whole;
}

}  // namespace galeris
