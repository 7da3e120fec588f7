#include "core/typed_number.h"

#include <charconv>
#include <cmath>
#include <string>

#include "core/number_format.h"

namespace galeris {

std::optional<double> ReadTypedNumber(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  std::string plain(text);
  for (char& c : plain) {
    if (c == MachineDecimalSeparator()) c = '.';
  }
  if (!plain.empty() && plain.front() == '+') plain.erase(0, 1);
  if (plain.empty()) return std::nullopt;
  double value = 0;
  const char* end = plain.data() + plain.size();
  const auto [stop, error] = std::from_chars(plain.data(), end, value);
  if (error != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace galeris
