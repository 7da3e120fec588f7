// Fixed-width text fields: always exactly N characters, blank padded on the right and cut on
// the right when a longer text is assigned. Each character is kept exclusive-ored with a blank,
// so that a blank field is all zero bytes: the store's arrays of names cost no memory until a
// name is written.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace galeris {

template <std::size_t N>
class FixedText {
 public:
  FixedText() = default;
  FixedText(std::string_view s) { Assign(s); }  // NOLINT: assignment from text is the point
  FixedText(const char* s) { Assign(s); }       // NOLINT
  FixedText(const std::string& s) { Assign(s); }  // NOLINT

  FixedText& operator=(std::string_view s) { Assign(s); return *this; }
  FixedText& operator=(const char* s) { Assign(s); return *this; }
  FixedText& operator=(const std::string& s) { Assign(s); return *this; }

  // All N characters, padding included.
  std::array<char, N> Chars() const {
    std::array<char, N> chars;
    for (std::size_t i = 0; i < N; ++i) chars[i] = static_cast<char>(chars_[i] ^ kBlank);
    return chars;
  }
  std::string Padded() const {
    const std::array<char, N> chars = Chars();
    return std::string(chars.data(), N);
  }
  // Without the padding on the right.
  std::string Trimmed() const {
    std::size_t n = N;
    while (n > 0 && chars_[n - 1] == 0) --n;
    std::string s(n, ' ');
    for (std::size_t i = 0; i < n; ++i) s[i] = static_cast<char>(chars_[i] ^ kBlank);
    return s;
  }
  bool IsBlank() const {
    return std::all_of(chars_.begin(), chars_.end(), [](char c) { return c == 0; });
  }
  static constexpr std::size_t Width() { return N; }

  bool operator==(const FixedText&) const = default;

 private:
  static constexpr char kBlank = ' ';
  void Assign(std::string_view s) {
    const std::size_t n = std::min(s.size(), N);
    for (std::size_t i = 0; i < n; ++i) chars_[i] = static_cast<char>(s[i] ^ kBlank);
    std::fill(chars_.begin() + n, chars_.end(), 0);
  }
  std::array<char, N> chars_{};
};

using Text40 = FixedText<40>;
using Text12 = FixedText<12>;

}  // namespace galeris
