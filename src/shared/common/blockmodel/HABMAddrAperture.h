// HABMAddrAperture.h: a contiguous span of addresses (a base and a range), its order, relations and texts.
#pragma once

#include "blockmodel/HABMAddrValue.h"

#include <iosfwd>
#include <string>

/// A base address and a range in bytes. A range of 0 is an empty, unusable aperture, which the relations
/// treat as the single address of its base. Ordered by base, then by range.
class HABMAddrAperture {
 public:
  /// Base 0, range 0: equal to ILLEGAL().
  HABMAddrAperture() = default;
  /// Reads "0x1000[4K]", "0x1000 4K" (a single word splits before its last character: "4096" is base 409,
  /// range 6) or "0x1000:0x1FFF". Any other text, blank included, gives base 0 and range 0.
  explicit HABMAddrAperture(std::string const& text);
  /// The given base and range, stored as they are.
  HABMAddrAperture(HABMAddrValue const& base, HABMAddrValue const& range) : base_(base), range_(range) {}

  /// Base 0, range 64K.
  static HABMAddrAperture const& DEFAULT();
  /// Base 0, range 0; what failed combinations return.
  static HABMAddrAperture const& ILLEGAL();

  /// The first address.
  HABMAddrValue getBaseAddress() const { return base_; }
  /// The number of addresses; 0 for an empty aperture.
  HABMAddrValue getRange() const { return range_; }
  /// base + range - 1, modulo 2^128; the base itself for a range of 0.
  HABMAddrValue getHighAddress() const {
    return range_ > HABMAddrValue::CONST_0() ? base_ + range_ - HABMAddrValue::CONST_1() : base_;
  }
  /// base + range, modulo 2^128 (0 after an aperture that ends at the top).
  HABMAddrValue getNextAddress() const { return base_ + range_; }

  /// Moves the aperture: the range stays, the high address follows.
  void setBaseAddress(HABMAddrValue const& base) { base_ = base; }
  /// Replaces the range, unchecked.
  void setRange(HABMAddrValue const& range) { range_ = range; }
  /// Sets the range to reach `high`; false, and no change, when `high` is below the base.
  bool setHighAddress(HABMAddrValue const& high);
  /// Sets the range to end just before `next`; false, and no change, unless `next` is above the base.
  bool setNextAddress(HABMAddrValue const& next);

  /// Same base and same range (validity flags are not compared).
  bool operator==(HABMAddrAperture const& o) const { return base_ == o.base_ && range_ == o.range_; }
  /// Not operator==.
  bool operator!=(HABMAddrAperture const& o) const { return !(*this == o); }
  /// By base, then by range.
  bool operator<(HABMAddrAperture const& o) const {
    return base_ < o.base_ || (base_ == o.base_ && range_ < o.range_);
  }

  /// True when the two share at least one address (an empty aperture counts as its base address).
  bool overlaps(HABMAddrAperture const& o) const {
    return !(getHighAddress() < o.base_) && !(base_ > o.getHighAddress());
  }
  /// True when this aperture lies within `o`; an aperture is a subset of itself.
  bool subset(HABMAddrAperture const& o) const {
    return base_ >= o.base_ && getHighAddress() <= o.getHighAddress();
  }
  /// True when this aperture covers `o`; an aperture is a superset of itself.
  bool superset(HABMAddrAperture const& o) const {
    return base_ <= o.base_ && getHighAddress() >= o.getHighAddress();
  }
  /// True when one of the two begins right after the other ends, in either order.
  bool contigous(HABMAddrAperture const& o) const {
    return getHighAddress() + HABMAddrValue::CONST_1() == o.base_ ||
           o.getHighAddress() + HABMAddrValue::CONST_1() == base_;
  }
  /// True when the base is a multiple of the range rounded up to a power of two; always for base 0, and
  /// a range of 0 asks for an even base.
  bool aligned() const;
  /// True when the range is above 0; the flags inside base and range are not looked at.
  bool isValid() const { return range_ > HABMAddrValue::CONST_0(); }

  /// The common addresses; ILLEGAL() when the two do not overlap.
  HABMAddrAperture intersection(HABMAddrAperture const& o) const;
  /// The span of both; ILLEGAL() when they neither overlap nor touch. A span of all 2^128 addresses has
  /// range 0.
  HABMAddrAperture unification(HABMAddrAperture const& o) const;

  /// "0x1000[4K]": the base in pretty hex padded to `bits`, the range in size form. Reads back.
  std::string getBaseAbrvString(unsigned int const& bits = 0) const;
  /// "0x1000:0x1FFF": base and high address in pretty hex padded to `bits`. Reads back for a range above 0.
  std::string getBaseHighString(unsigned int const& bits = 0) const;
  /// "{0x1000 4K}", for scripts.
  std::string getTclListString(unsigned int const& bits = 0) const;
  /// "{base 0x1000 range 4K}", for scripts.
  std::string getTclDictString(unsigned int const& bits = 0) const;

 private:
  HABMAddrValue base_;
  HABMAddrValue range_;
};

/// Prints the "0x1000[4K]" form.
std::ostream& operator<<(std::ostream& out, HABMAddrAperture const& aperture);
