// HABMFuzzCheck.h: what the text fuzz targets share: the input as text, and a check that stops the run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace habm_fuzz {

inline std::string text(std::uint8_t const* data, std::size_t size) {
  return std::string(reinterpret_cast<char const*>(data), size);
}

/// A broken promise of the library: the fuzzer records the input that led here.
inline void require(bool holds) {
  if (!holds) {
    __builtin_trap();
  }
}

}  // namespace habm_fuzz
