// HABMEnumText.h: reading and writing the texts of the model's enumerations; internal to the model sources.
#pragma once

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/replace.hpp>

#include <cstddef>
#include <string>

namespace habm_detail {

/// The value whose text equals `text` exactly, or the value just past the table (each enumeration's
/// "unknown") when none does. A table lists the texts in value order, so a value is its text's index.
template <class E, std::size_t N>
E encodeEnumText(char const* const (&texts)[N], std::string const& text) {
  for (std::size_t i = 0; i < N; ++i) {
    if (text == texts[i]) {
      return static_cast<E>(i);
    }
  }
  return static_cast<E>(N);
}

/// The text of a value; the empty string for the "unknown" value and anything out of the table.
template <class E, std::size_t N>
std::string decodeEnumText(char const* const (&texts)[N], E value) {
  auto const index = static_cast<std::size_t>(value);
  return index < N ? std::string(texts[index]) : std::string();
}

/// Type and kind vocabularies are read without regard to case.
inline std::string normaliseTypeText(std::string text) {
  boost::algorithm::to_lower(text);
  return text;
}

/// Access vocabularies also read "-" as "_", so "Read-Only" is "read_only".
inline std::string normaliseAccessText(std::string text) {
  boost::algorithm::to_lower(text);
  boost::algorithm::replace_all(text, "-", "_");
  return text;
}

}  // namespace habm_detail
