// HABMAddrValue.h: the unsigned 128-bit address value with a validity flag, its texts and arithmetic.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace habm_detail {
// The native 128-bit integer of GCC and Clang; __extension__ keeps -Wpedantic quiet about it.
__extension__ typedef unsigned __int128 UInt128;
}  // namespace habm_detail

/// An address, offset, range or size: an unsigned 128-bit number that wraps modulo 2^128, and a flag
/// that only the string constructor clears. Arithmetic never fails and never reports.
// Packed: 17 bytes instead of the 32 that a 16-byte-aligned integer and a flag would take. Values are
// copied by the million inside apertures and remaps, and loops over them are bound by memory, not by
// the (unaligned, but cheap on current cores) loads.
#pragma pack(push, 1)
class HABMAddrValue {
 public:
  /// Zero, valid.
  HABMAddrValue() = default;
  /// The given number, valid.
  HABMAddrValue(unsigned int const& value) : lo_(value) {}  // NOLINT(google-explicit-constructor)
  /// The number `high * 2^64 + low`, valid.
  HABMAddrValue(std::uint64_t high, std::uint64_t low) : lo_(low), hi_(high) {}
  /// Reads hex ("0x1_0000", "#FF"), binary ("b101"), octal ("010"), decimal, negated ("-1") and size
  /// ("64K", "1MB") texts. A text that does not read gives 0 and not valid; nothing is thrown.
  explicit HABMAddrValue(std::string const& text);

  /// The number of bits of the value: 128.
  static unsigned int const& MAX_BITS();
  static HABMAddrValue const& CONST_0();
  static HABMAddrValue const& CONST_1();
  static HABMAddrValue const& CONST_1K();
  static HABMAddrValue const& CONST_4K();
  static HABMAddrValue const& CONST_64K();
  static HABMAddrValue const& CONST_1M();
  static HABMAddrValue const& CONST_1G();
  static HABMAddrValue const& CONST_4G();
  static HABMAddrValue const& CONST_1T();
  static HABMAddrValue const& CONST_16T();
  static HABMAddrValue const& CONST_256T();
  static HABMAddrValue const& CONST_1P();
  static HABMAddrValue const& CONST_1E();
  static HABMAddrValue const& CONST_16E();
  static HABMAddrValue const& CONST_1Z();
  static HABMAddrValue const& CONST_1Y();
  static HABMAddrValue const& CONST_MAX();

  /// False only for a value whose text did not read (or a copy or left-hand result of one).
  bool isValid() const { return valid_; }
  /// The low 64 bits; higher bits are dropped.
  std::uint64_t getUInt64Value() const { return lo_; }
  /// The high 64 bits.
  std::uint64_t getHigh64Value() const { return hi_; }

  /// True for 1, 2, 4, ...; false for 0.
  bool isPow2() const;
  /// Index of the highest set bit; 0 for 0.
  unsigned int log2() const;
  /// log2() + 1: 1 for 0 and for 1.
  unsigned int getRequiredBits() const;
  /// Index of the lowest set bit; 127 for 0.
  unsigned int getAddressableBits() const;
  /// False for a bit index of 128 or more.
  bool bit_test(unsigned int const& bit) const;
  /// Sets a bit; an index of 128 or more does nothing.
  void bit_set(unsigned int const& bit);
  /// Clears a bit; an index of 128 or more does nothing.
  void bit_unset(unsigned int const& bit);

  /// A power of two doubles; anything else goes to the power above its highest bit (0 gives 2).
  HABMAddrValue nextPow2() const;
  /// A power of two halves (1 gives 0); anything else goes to its highest bit (0 gives 1).
  HABMAddrValue prevPow2() const;
  /// A power of two stays; anything else goes to the power above its highest bit (0 gives 2).
  HABMAddrValue roundUpPow2() const;
  /// A power of two stays; anything else goes to its highest bit (0 gives 1).
  HABMAddrValue roundDownPow2() const;

  /// "0x" and upper-case hex digits, padded with zeros to `bits` bits rounded up to whole digits; a
  /// wider number is never cut.
  std::string getHexStringValue(unsigned int const& bits = 0) const;
  /// The hex form with "_" between groups of four digits: "0x1_0000".
  std::string getPrettyHexStringValue(unsigned int const& bits = 0) const;
  /// "b" and binary digits, padded with zeros to `bits` digits.
  std::string getBinStringValue(unsigned int const& bits = 0) const;
  /// Decimal digits of the low 64 bits.
  std::string getIntStringValue() const;
  /// The largest binary unit that divides the number: "64K", "4G", "1000"; only the low 64 bits of the
  /// quotient are printed.
  std::string getAbrvStringValue() const;

  HABMAddrValue& operator+=(HABMAddrValue const& o) { return set(native() + o.native()); }
  HABMAddrValue& operator-=(HABMAddrValue const& o) { return set(native() - o.native()); }
  HABMAddrValue& operator*=(HABMAddrValue const& o) { return set(native() * o.native()); }
  /// Division by zero gives 0.
  HABMAddrValue& operator/=(HABMAddrValue const& o) {
    return set(o.isZero() ? habm_detail::UInt128{0} : native() / o.native());
  }
  /// Remainder by zero leaves the number as it is.
  HABMAddrValue& operator%=(HABMAddrValue const& o) {
    return o.isZero() ? *this : set(native() % o.native());
  }
  HABMAddrValue& operator&=(HABMAddrValue const& o) { return set(native() & o.native()); }
  HABMAddrValue& operator|=(HABMAddrValue const& o) { return set(native() | o.native()); }
  HABMAddrValue& operator^=(HABMAddrValue const& o) { return set(native() ^ o.native()); }
  /// Logical shifts: a count of 128 or more gives 0, a negative count leaves the number unchanged.
  HABMAddrValue& operator<<=(int count) {
    return count < 0 ? *this : set(count >= 128 ? habm_detail::UInt128{0} : native() << count);
  }
  HABMAddrValue& operator>>=(int count) {
    return count < 0 ? *this : set(count >= 128 ? habm_detail::UInt128{0} : native() >> count);
  }
  HABMAddrValue& operator++() { return set(native() + 1); }
  HABMAddrValue& operator--() { return set(native() - 1); }
  HABMAddrValue operator++(int) {
    HABMAddrValue old(*this);
    ++*this;
    return old;
  }
  HABMAddrValue operator--(int) {
    HABMAddrValue old(*this);
    --*this;
    return old;
  }
  /// Complements all 128 bits of this object in place and returns it.
  HABMAddrValue& operator~() { return set(~native()); }

  // Binary operators copy the left operand: the result carries its validity.
  HABMAddrValue operator+(HABMAddrValue const& o) const { return HABMAddrValue(*this) += o; }
  HABMAddrValue operator-(HABMAddrValue const& o) const { return HABMAddrValue(*this) -= o; }
  HABMAddrValue operator*(HABMAddrValue const& o) const { return HABMAddrValue(*this) *= o; }
  HABMAddrValue operator/(HABMAddrValue const& o) const { return HABMAddrValue(*this) /= o; }
  HABMAddrValue operator%(HABMAddrValue const& o) const { return HABMAddrValue(*this) %= o; }
  HABMAddrValue operator&(HABMAddrValue const& o) const { return HABMAddrValue(*this) &= o; }
  HABMAddrValue operator|(HABMAddrValue const& o) const { return HABMAddrValue(*this) |= o; }
  HABMAddrValue operator^(HABMAddrValue const& o) const { return HABMAddrValue(*this) ^= o; }
  HABMAddrValue operator<<(int count) const { return HABMAddrValue(*this) <<= count; }
  HABMAddrValue operator>>(int count) const { return HABMAddrValue(*this) >>= count; }

  // Comparisons look at the number only, never at validity.
  // Written without short-circuits: they compile to branch-free code, which matters when sorting.
  bool operator==(HABMAddrValue const& o) const { return ((lo_ ^ o.lo_) | (hi_ ^ o.hi_)) == 0; }
  bool operator!=(HABMAddrValue const& o) const { return !(*this == o); }
  bool operator<(HABMAddrValue const& o) const { return native() < o.native(); }
  bool operator>(HABMAddrValue const& o) const { return o < *this; }
  bool operator<=(HABMAddrValue const& o) const { return !(o < *this); }
  bool operator>=(HABMAddrValue const& o) const { return !(*this < o); }

 private:
  habm_detail::UInt128 native() const { return (habm_detail::UInt128{hi_} << 64) | lo_; }
  bool isZero() const { return (lo_ | hi_) == 0; }
  HABMAddrValue& set(habm_detail::UInt128 v) {
    lo_ = static_cast<std::uint64_t>(v);
    hi_ = static_cast<std::uint64_t>(v >> 64);
    return *this;
  }

  std::uint64_t lo_ = 0;
  std::uint64_t hi_ = 0;
  bool valid_ = true;
};
#pragma pack(pop)

/// Prints the pretty hex form, and " (invalid)" for a value that did not read.
std::ostream& operator<<(std::ostream& out, HABMAddrValue const& value);
