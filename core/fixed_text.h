// Fixed-width text fields: always exactly N characters, blank padded on the right and cut on
// the right when a longer text is assigned.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace galeris {

template <std::size_t N>
class FixedText {
 public:
  FixedText() { chars_.fill(' '); }
  FixedText(std::string_view s) { Assign(s); }  // NOLINT: assignment from text is the point
  FixedText(const char* s) { Assign(s); }       // NOLINT
  FixedText(const std::string& s) { Assign(s); }  // NOLINT

  FixedText& operator=(std::string_view s) { Assign(s); return *this; }
  FixedText& operator=(const char* s) { Assign(s); return *this; }
  FixedText& operator=(const std::string& s) { Assign(s); return *this; }

  // All N characters, padding included.
  std::string Padded() const { return std::string(chars_.data(), N); }
  // Without the padding on the right.
  std::string Trimmed() const {
    std::size_t n = N;
    while (n > 0 && chars_[n - 1] == ' ') --n;
    return std::string(chars_.data(), n);
  }
  // All N characters, padding included, without a copy.
  std::string_view View() const { return std::string_view(chars_.data(), N); }
  bool IsBlank() const {
    return std::all_of(chars_.begin(), chars_.end(), [](char c) { return c == ' '; });
  }
  static constexpr std::size_t Width() { return N; }

  bool operator==(const FixedText&) const = default;

 private:
  void Assign(std::string_view s) {
    std::size_t n = std::min(s.size(), N);
    std::copy_n(s.data(), n, chars_.begin());
    std::fill(chars_.begin() + n, chars_.end(), ' ');
  }
  std::array<char, N> chars_;
};

using Text40 = FixedText<40>;
using Text12 = FixedText<12>;

}  // namespace galeris
