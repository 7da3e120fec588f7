// Numbers as users type them into boxes and grid cells: blanks around, a sign, digits, the
// machine's decimal separator or ".", an exponent. Anything else is not a number.
#pragma once

#include <optional>
#include <string_view>

namespace galeris {

std::optional<double> ReadTypedNumber(std::string_view text);

}  // namespace galeris
