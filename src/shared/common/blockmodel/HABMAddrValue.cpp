// HABMAddrValue.cpp: the text reader, the printers and the power-of-two queries of address values.
#include "blockmodel/HABMAddrValue.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <optional>
#include <ostream>
#include <string_view>

using habm_detail::UInt128;

namespace {

bool isSpace(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') {
    return c - '0';
  }
  if (c >= 'a' && c <= 'f') {
    return c - 'a' + 10;
  }
  if (c >= 'A' && c <= 'F') {
    return c - 'A' + 10;
  }
  return -1;
}

// The number reader: an optional leading "-" (negation modulo 2^128), then "0x"/"0X" for hex, a leading
// "0" for octal, otherwise decimal. Digits beyond 128 bits wrap away silently; any other character fails.
// Like a C string, the text ends at its first NUL.
std::optional<UInt128> readNumber(std::string_view text) {
  text = text.substr(0, std::min(text.size(), text.find('\0')));
  bool negate = false;
  if (!text.empty() && text.front() == '-') {
    negate = true;
    text.remove_prefix(1);
  }
  unsigned base = 10;
  if (!text.empty() && text.front() == '0') {
    if (text.size() > 1 && (text[1] == 'x' || text[1] == 'X')) {
      base = 16;
      text.remove_prefix(2);
    } else {
      base = 8;
    }
  }
  UInt128 value = 0;
  for (char const c : text) {
    int digit = hexDigit(c);
    if (digit < 0 || static_cast<unsigned>(digit) >= base) {
      return std::nullopt;
    }
    if (base == 16) {
      value = (value << 4) | static_cast<unsigned>(digit);
    } else if (base == 8) {
      value = (value << 3) | static_cast<unsigned>(digit);
    } else {
      value = value * 10 + static_cast<unsigned>(digit);
    }
  }
  return negate ? UInt128{0} - value : value;
}

// The size form "^([0-9]+)([KMGTPEZY])B?$", compared without regard to case. Returns the unit's power of
// two and the digits, or nothing when the text is not of that form.
std::optional<std::pair<unsigned, std::string_view>> matchSizeForm(std::string_view text) {
  std::size_t end = text.size();
  if (end >= 2 && (text[end - 1] == 'B' || text[end - 1] == 'b')) {
    --end;
  }
  if (end < 2) {
    return std::nullopt;
  }
  static constexpr std::string_view kUnits = "KMGTPEZY";
  auto const unit = kUnits.find(static_cast<char>(std::toupper(static_cast<unsigned char>(text[end - 1]))));
  if (unit == std::string_view::npos) {
    return std::nullopt;
  }
  std::string_view const digits = text.substr(0, end - 1);
  if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    return std::nullopt;
  }
  return std::make_pair(static_cast<unsigned>(10 * (unit + 1)), digits);
}

}  // namespace

HABMAddrValue::HABMAddrValue(std::string const& text) {
  if (text.empty()) {
    valid_ = false;
    return;
  }
  // Drop every "_" and trim white space; a short text stays on the stack.
  char stackBuf[128];
  std::string heapBuf;
  char* buf = stackBuf;
  if (text.size() > sizeof stackBuf) {
    heapBuf.resize(text.size());
    buf = heapBuf.data();
  }
  std::size_t len = 0;
  for (char const c : text) {
    if (c != '_') {
      buf[len++] = c;
    }
  }
  std::size_t first = 0;
  while (first < len && isSpace(buf[first])) {
    ++first;
  }
  while (len > first && isSpace(buf[len - 1])) {
    --len;
  }
  std::string_view work(buf + first, len - first);

  // "#" stands for "0x".
  std::string hashText;
  if (!work.empty() && work.front() == '#') {
    hashText = "0x";
    hashText.append(work.substr(1));
    work = hashText;
  }
  std::optional<UInt128> number;
  if (work.size() >= 2 && work[0] == '0' && (work[1] == 'x' || work[1] == 'X')) {
    number = readNumber(work);
  } else if (!work.empty() && (work.front() == 'b' || work.front() == 'B')) {
    // Binary: the rightmost character is bit 0; only "1" sets a bit, anything else is skipped.
    work.remove_prefix(1);
    unsigned bit = 0;
    for (auto it = work.rbegin(); it != work.rend() && bit < MAX_BITS(); ++it, ++bit) {
      if (*it == '1') {
        bit_set(bit);
      }
    }
    return;
  } else if (auto const size = matchSizeForm(work)) {
    number = readNumber(size->second);
    if (number) {
      *number <<= size->first;
    }
  } else {
    number = readNumber(work);
  }
  if (number) {
    set(*number);
  } else {
    valid_ = false;
  }
}

unsigned int const& HABMAddrValue::MAX_BITS() {
  static unsigned int const bits = 128;
  return bits;
}

#define HABM_ADDR_CONST(NAME, TEXT)                      \
  HABMAddrValue const& HABMAddrValue::NAME() {           \
    static HABMAddrValue const value{std::string(TEXT)}; \
    return value;                                        \
  }
HABM_ADDR_CONST(CONST_0, "0x0")
HABM_ADDR_CONST(CONST_1, "0x1")
HABM_ADDR_CONST(CONST_1K, "0x400")
HABM_ADDR_CONST(CONST_4K, "0x1000")
HABM_ADDR_CONST(CONST_64K, "0x1_0000")
HABM_ADDR_CONST(CONST_1M, "0x10_0000")
HABM_ADDR_CONST(CONST_1G, "0x4000_0000")
HABM_ADDR_CONST(CONST_4G, "0x1_0000_0000")
HABM_ADDR_CONST(CONST_1T, "0x100_0000_0000")
HABM_ADDR_CONST(CONST_16T, "0x1000_0000_0000")
HABM_ADDR_CONST(CONST_256T, "0x1_0000_0000_0000")
HABM_ADDR_CONST(CONST_1P, "0x4_0000_0000_0000")
HABM_ADDR_CONST(CONST_1E, "0x1000_0000_0000_0000")
HABM_ADDR_CONST(CONST_16E, "0x1_0000_0000_0000_0000")
HABM_ADDR_CONST(CONST_1Z, "0x400_000_0000_0000_0000")
HABM_ADDR_CONST(CONST_1Y, "0x1_0000_0000_0000_0000_0000")
HABM_ADDR_CONST(CONST_MAX, "0xFFFF_FFFF_FFFF_FFFF_FFFF_FFFF_FFFF_FFFF")
#undef HABM_ADDR_CONST

bool HABMAddrValue::isPow2() const {
  UInt128 const n = native();
  return n != 0 && ((n - 1) & n) == 0;
}

unsigned int HABMAddrValue::log2() const {
  if (hi_ != 0) {
    return 127U - static_cast<unsigned>(__builtin_clzll(hi_));
  }
  return lo_ != 0 ? 63U - static_cast<unsigned>(__builtin_clzll(lo_)) : 0U;
}

unsigned int HABMAddrValue::getRequiredBits() const {
  return log2() + 1;
}

unsigned int HABMAddrValue::getAddressableBits() const {
  if (lo_ != 0) {
    return static_cast<unsigned>(__builtin_ctzll(lo_));
  }
  return hi_ != 0 ? 64U + static_cast<unsigned>(__builtin_ctzll(hi_)) : 127U;
}

bool HABMAddrValue::bit_test(unsigned int const& bit) const {
  return bit < MAX_BITS() && ((native() >> bit) & 1U) != 0;
}

void HABMAddrValue::bit_set(unsigned int const& bit) {
  if (bit < MAX_BITS()) {
    set(native() | (UInt128{1} << bit));
  }
}

void HABMAddrValue::bit_unset(unsigned int const& bit) {
  if (bit < MAX_BITS()) {
    set(native() & ~(UInt128{1} << bit));
  }
}

namespace {
// 1 shifted left by `count`, valid; 0 once the bit leaves the word.
HABMAddrValue powerOfTwo(unsigned count) {
  return HABMAddrValue::CONST_1() << static_cast<int>(count);
}
}  // namespace

HABMAddrValue HABMAddrValue::nextPow2() const {
  return isPow2() ? *this << 1 : powerOfTwo(log2() + 1);
}

HABMAddrValue HABMAddrValue::prevPow2() const {
  return isPow2() ? *this >> 1 : powerOfTwo(log2());
}

HABMAddrValue HABMAddrValue::roundUpPow2() const {
  return isPow2() ? *this : powerOfTwo(log2() + 1);
}

HABMAddrValue HABMAddrValue::roundDownPow2() const {
  return isPow2() ? *this : powerOfTwo(log2());
}

std::string HABMAddrValue::getHexStringValue(unsigned int const& bits) const {
  try {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    char digits[32];
    std::size_t count = 0;
    UInt128 n = native();
    do {
      digits[count++] = kDigits[static_cast<unsigned>(n & 0xFU)];
      n >>= 4;
    } while (n != 0);
    std::size_t const width = bits / 4 + (bits % 4 != 0 ? 1 : 0);
    std::string out = "0x";
    out.reserve(2 + std::max(width, count));
    if (width > count) {
      out.append(width - count, '0');
    }
    while (count > 0) {
      out += digits[--count];
    }
    return out;
  } catch (...) {
    return {};
  }
}

std::string HABMAddrValue::getPrettyHexStringValue(unsigned int const& bits) const {
  std::string const hex = getHexStringValue(bits);
  if (hex.size() < 2) {
    return hex;
  }
  try {
    std::string_view const digits = std::string_view(hex).substr(2);
    std::string out = "0x";
    out.reserve(2 + digits.size() + digits.size() / 4);
    for (std::size_t i = 0; i < digits.size(); ++i) {
      if (i != 0 && (digits.size() - i) % 4 == 0) {
        out += '_';
      }
      out += digits[i];
    }
    return out;
  } catch (...) {
    return {};
  }
}

std::string HABMAddrValue::getBinStringValue(unsigned int const& bits) const {
  try {
    std::size_t const count = getRequiredBits();
    std::string out = "b";
    out.reserve(1 + std::max<std::size_t>(bits, count));
    if (bits > count) {
      out.append(bits - count, '0');
    }
    UInt128 const n = native();
    for (std::size_t i = count; i-- > 0;) {
      out += ((n >> i) & 1U) != 0 ? '1' : '0';
    }
    return out;
  } catch (...) {
    return {};
  }
}

std::string HABMAddrValue::getIntStringValue() const {
  try {
    return std::to_string(lo_);
  } catch (...) {
    return "0";
  }
}

std::string HABMAddrValue::getAbrvStringValue() const {
  static constexpr char kLetters[] = "KMGTPEZY";
  // Units are powers of 2^10 up to Y = 2^80; take the largest one not above the number that divides it.
  unsigned const maxUnit = std::min(log2() / 10, 8U);
  unsigned const unit = std::min(getAddressableBits() / 10, maxUnit);
  std::string out = (*this >> static_cast<int>(10 * unit)).getIntStringValue();
  if (unit > 0) {
    out += kLetters[unit - 1];
  }
  return out;
}

std::ostream& operator<<(std::ostream& out, HABMAddrValue const& value) {
  out << value.getPrettyHexStringValue();
  if (!value.isValid()) {
    out << " (invalid)";
  }
  return out;
}
