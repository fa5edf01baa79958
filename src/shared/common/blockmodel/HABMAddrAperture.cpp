// HABMAddrAperture.cpp: the text reader, alignment, combinations and printers of apertures.
#include "blockmodel/HABMAddrAperture.h"

#include "blockmodel/detail/HABMAddrScan.h"

#include <ostream>
#include <string_view>

namespace {

enum class Form { NONE, BASE_RANGE, BASE_HIGH };

// The three text forms, each a whole-text match with blanks allowed around every part:
//   base[range]        a field, "[", a field, "]"
//   base range         two fields; a lone field of two or more characters splits before its last one
//   base:high          a field, ":", a field
// A field is a run of letters, digits and "_", so "#1000[4K]" and "-1[4K]" match nothing.
Form matchForm(std::string_view text, std::string_view& first, std::string_view& second) {
  habm_detail::AddrScan scan(text);
  scan.space();
  first = scan.word();
  if (first.empty()) {
    return Form::NONE;
  }
  if (scan.spaceToEnd()) {
    if (first.size() < 2) {
      return Form::NONE;
    }
    second = first.substr(first.size() - 1);
    first.remove_suffix(1);
    return Form::BASE_RANGE;
  }
  if (scan.eat('[')) {
    scan.space();
    second = scan.word();
    scan.space();
    return !second.empty() && scan.eat(']') && scan.spaceToEnd() ? Form::BASE_RANGE : Form::NONE;
  }
  bool const colon = scan.eat(':');
  if (colon) {
    scan.space();
  }
  second = scan.word();
  if (second.empty() || !scan.spaceToEnd()) {
    return Form::NONE;
  }
  return colon ? Form::BASE_HIGH : Form::BASE_RANGE;
}

HABMAddrValue readValue(std::string_view field) {
  return HABMAddrValue(std::string(field));
}

}  // namespace

HABMAddrAperture::HABMAddrAperture(std::string const& text) {
  std::string_view const trimmed = habm_detail::trimAddrText(text);
  if (trimmed.empty()) {
    return;
  }
  std::string_view first;
  std::string_view second;
  switch (matchForm(trimmed, first, second)) {
    case Form::NONE:
      return;
    case Form::BASE_RANGE:
      base_ = readValue(first);
      range_ = readValue(second);
      return;
    case Form::BASE_HIGH:
      base_ = readValue(first);
      setHighAddress(readValue(second));
      return;
  }
}

HABMAddrAperture const& HABMAddrAperture::DEFAULT() {
  static HABMAddrAperture const aperture(HABMAddrValue::CONST_0(), HABMAddrValue::CONST_64K());
  return aperture;
}

HABMAddrAperture const& HABMAddrAperture::ILLEGAL() {
  static HABMAddrAperture const aperture(HABMAddrValue::CONST_0(), HABMAddrValue::CONST_0());
  return aperture;
}

bool HABMAddrAperture::setHighAddress(HABMAddrValue const& high) {
  if (high < base_) {
    return false;
  }
  range_ = high - base_ + HABMAddrValue::CONST_1();
  return true;
}

bool HABMAddrAperture::setNextAddress(HABMAddrValue const& next) {
  if (!(next > base_)) {
    return false;
  }
  range_ = next - base_;
  return true;
}

bool HABMAddrAperture::aligned() const {
  if (!(base_ > HABMAddrValue::CONST_0())) {
    return true;
  }
  return base_.getAddressableBits() >= range_.roundUpPow2().log2();
}

HABMAddrAperture HABMAddrAperture::intersection(HABMAddrAperture const& o) const {
  if (!overlaps(o)) {
    return ILLEGAL();
  }
  HABMAddrAperture out(base_ < o.base_ ? o.base_ : base_, HABMAddrValue::CONST_0());
  HABMAddrValue const high = getHighAddress();
  HABMAddrValue const otherHigh = o.getHighAddress();
  out.setHighAddress(high < otherHigh ? high : otherHigh);
  return out;
}

HABMAddrAperture HABMAddrAperture::unification(HABMAddrAperture const& o) const {
  if (!overlaps(o) && !contigous(o)) {
    return ILLEGAL();
  }
  HABMAddrAperture out(o.base_ < base_ ? o.base_ : base_, HABMAddrValue::CONST_0());
  HABMAddrValue const high = getHighAddress();
  HABMAddrValue const otherHigh = o.getHighAddress();
  out.setHighAddress(high < otherHigh ? otherHigh : high);
  return out;
}

std::string HABMAddrAperture::getBaseAbrvString(unsigned int const& bits) const {
  return base_.getPrettyHexStringValue(bits) + '[' + range_.getAbrvStringValue() + ']';
}

std::string HABMAddrAperture::getBaseHighString(unsigned int const& bits) const {
  return base_.getPrettyHexStringValue(bits) + ':' + getHighAddress().getPrettyHexStringValue(bits);
}

std::string HABMAddrAperture::getTclListString(unsigned int const& bits) const {
  return '{' + base_.getPrettyHexStringValue(bits) + ' ' + range_.getAbrvStringValue() + '}';
}

std::string HABMAddrAperture::getTclDictString(unsigned int const& bits) const {
  return "{base " + base_.getPrettyHexStringValue(bits) + " range " + range_.getAbrvStringValue() + '}';
}

std::ostream& operator<<(std::ostream& out, HABMAddrAperture const& aperture) {
  return out << aperture.getBaseAbrvString();
}
