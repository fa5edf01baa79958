// HABMAddrRemap.h: a span of addresses seen at a source and found at another base on a target.
#pragma once

#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrValue.h"

#include <iosfwd>
#include <string>

/// A source base, a target base and one range for both sides. Ordered by source base, target base, range.
class HABMAddrRemap {
 public:
  /// All three fields 0: not valid.
  HABMAddrRemap() = default;
  /// Reads "0x1000 0x8000 4K", "0x1000,0x8000[4K]", two apertures "0x1000[4K],0x8000[4K]" (source base and
  /// range from the first, target base from the second) or one aperture "0x1000[4K]" (an identity). Bad
  /// text, or a field that does not read, leaves all three fields 0.
  explicit HABMAddrRemap(std::string const& text);
  /// The given fields, stored as they are.
  HABMAddrRemap(HABMAddrValue const& source, HABMAddrValue const& target, HABMAddrValue const& range)
      : sourceBase_(source), targetBase_(target), range_(range) {}

  /// True when the range is above 0.
  bool isValid() const { return range_ > HABMAddrValue::CONST_0(); }

  /// The first address on the source side.
  HABMAddrValue getSourceBaseAddress() const { return sourceBase_; }
  /// The first address on the target side.
  HABMAddrValue getTargetBaseAddress() const { return targetBase_; }
  /// The size of the span on both sides.
  HABMAddrValue getRange() const { return range_; }
  /// The source base with the range.
  HABMAddrAperture getSourceAperture() const { return HABMAddrAperture(sourceBase_, range_); }
  /// The target base with the range.
  HABMAddrAperture getTargetAperture() const { return HABMAddrAperture(targetBase_, range_); }

  /// Replaces the source base, unchecked.
  void setSourceBaseAddress(HABMAddrValue const& value) { sourceBase_ = value; }
  /// Replaces the target base, unchecked.
  void setTargetBaseAddress(HABMAddrValue const& value) { targetBase_ = value; }
  /// Replaces the range, unchecked.
  void setRange(HABMAddrValue const& value) { range_ = value; }

  /// All three fields equal (validity flags are not compared).
  bool operator==(HABMAddrRemap const& o) const {
    return sourceBase_ == o.sourceBase_ && targetBase_ == o.targetBase_ && range_ == o.range_;
  }
  /// Not operator==.
  bool operator!=(HABMAddrRemap const& o) const { return !(*this == o); }
  /// By source base, then target base, then range.
  bool operator<(HABMAddrRemap const& o) const;

  /// "0x1000,0x8000[4K]": bases in pretty hex padded to `bits`, the range in size form. Reads back.
  std::string getBaseAbrvString(unsigned int const& bits = 0) const;
  /// "{0x1000 0x8000 4K}", for scripts.
  std::string getTclListString(unsigned int const& bits = 0) const;
  /// "{source 0x1000 target 0x8000 range 4K}", for scripts.
  std::string getTclDictString(unsigned int const& bits = 0) const;

 private:
  HABMAddrValue sourceBase_;
  HABMAddrValue targetBase_;
  HABMAddrValue range_;
};

/// Prints the "0x1000,0x8000[4K]" form.
std::ostream& operator<<(std::ostream& out, HABMAddrRemap const& remap);
