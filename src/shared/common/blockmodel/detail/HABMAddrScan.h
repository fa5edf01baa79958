// HABMAddrScan.h: the small text scanner behind the aperture and remap readers; internal to the library.
#pragma once

#include <cstddef>
#include <string_view>

namespace habm_detail {

/// White space as the classic locale has it: blank, tab, newline, vertical tab, form feed, return.
inline bool isAddrSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// A field character: an ASCII letter, digit or "_".
inline bool isAddrWord(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

/// The text without white space at either end.
inline std::string_view trimAddrText(std::string_view text) {
  std::size_t first = 0;
  std::size_t last = text.size();
  while (first < last && isAddrSpace(text[first])) {
    ++first;
  }
  while (last > first && isAddrSpace(text[last - 1])) {
    --last;
  }
  return text.substr(first, last - first);
}

/// A cursor that takes runs of white space, runs of field characters and single punctuation. The
/// grammars read with it never need to back up: a field is always followed by a non-field character.
class AddrScan {
 public:
  explicit AddrScan(std::string_view text) : text_(text) {}

  /// Skips white space; true when there was some.
  bool space() {
    std::size_t const start = pos_;
    while (pos_ < text_.size() && isAddrSpace(text_[pos_])) {
      ++pos_;
    }
    return pos_ != start;
  }
  /// The longest run of field characters here; empty when there is none.
  std::string_view word() {
    std::size_t const start = pos_;
    while (pos_ < text_.size() && isAddrWord(text_[pos_])) {
      ++pos_;
    }
    return text_.substr(start, pos_ - start);
  }
  /// Takes `c` if it stands here.
  bool eat(char c) {
    if (pos_ < text_.size() && text_[pos_] == c) {
      ++pos_;
      return true;
    }
    return false;
  }
  /// Skips white space and tells whether the text is used up.
  bool spaceToEnd() {
    space();
    return pos_ == text_.size();
  }

 private:
  std::string_view text_;
  std::size_t pos_ = 0;
};

}  // namespace habm_detail
