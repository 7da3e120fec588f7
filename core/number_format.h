// Number pictures as users know them from spreadsheets: "0" a digit, "#" an optional digit,
// "," thousands, "." the decimal point, "%" per cent, literal text kept; plus the time
// pictures "hh:mm:ss" and "h:mm:ss" and the text pictures "@@@". The decimal point prints as
// the machine's separator. Whole numbers round half to even.
#pragma once

#include <string>
#include <string_view>

namespace galeris {

// The decimal separator of the machine ('.' unless set, for the locale tests).
char MachineDecimalSeparator();
void SetMachineDecimalSeparator(char separator);

std::string FormatNumber(double value, std::string_view picture);

// Rounds half to even, as every real-to-whole conversion of the system does.
long long RoundHalfEven(double value);

}  // namespace galeris
