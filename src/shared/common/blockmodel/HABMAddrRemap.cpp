// HABMAddrRemap.cpp: the text reader, order and printers of address remaps.
#include "blockmodel/HABMAddrRemap.h"

#include "blockmodel/detail/HABMAddrScan.h"

#include <ostream>
#include <string_view>

namespace {

// Three fields, either blank-separated "source target range" or "source,target[range]", blanks allowed
// around the punctuation. False when the text has neither shape.
bool matchFields(std::string_view text, std::string_view (&fields)[3]) {
  {
    habm_detail::AddrScan scan(text);
    scan.space();
    fields[0] = scan.word();
    if (!fields[0].empty() && scan.space()) {
      fields[1] = scan.word();
      if (!fields[1].empty() && scan.space()) {
        fields[2] = scan.word();
        if (!fields[2].empty() && scan.spaceToEnd()) {
          return true;
        }
      }
    }
  }
  habm_detail::AddrScan scan(text);
  scan.space();
  fields[0] = scan.word();
  if (fields[0].empty()) {
    return false;
  }
  scan.space();
  if (!scan.eat(',')) {
    return false;
  }
  scan.space();
  fields[1] = scan.word();
  scan.space();
  if (fields[1].empty() || !scan.eat('[')) {
    return false;
  }
  scan.space();
  fields[2] = scan.word();
  scan.space();
  return !fields[2].empty() && scan.eat(']') && scan.spaceToEnd();
}

}  // namespace

HABMAddrRemap::HABMAddrRemap(std::string const& text) {
  std::string_view const trimmed = habm_detail::trimAddrText(text);
  if (trimmed.empty()) {
    return;
  }
  std::string_view fields[3];
  if (matchFields(trimmed, fields)) {
    HABMAddrValue const source{std::string(fields[0])};
    HABMAddrValue const target{std::string(fields[1])};
    HABMAddrValue const range{std::string(fields[2])};
    if (source.isValid() && target.isValid() && range.isValid()) {
      sourceBase_ = source;
      targetBase_ = target;
      range_ = range;
    }
    return;
  }
  // Two apertures around the one comma, each side non-empty: the second only names the target base.
  std::size_t const comma = trimmed.find(',');
  if (comma != std::string_view::npos) {
    if (comma == 0 || comma + 1 == trimmed.size() || trimmed.find(',', comma + 1) != std::string_view::npos) {
      return;  // Nothing else accepts a comma either.
    }
    HABMAddrAperture const source{std::string(trimmed.substr(0, comma))};
    HABMAddrAperture const target{std::string(trimmed.substr(comma + 1))};
    if (source.isValid() && target.isValid()) {
      sourceBase_ = source.getBaseAddress();
      targetBase_ = target.getBaseAddress();
      range_ = source.getRange();
    }
    return;
  }
  HABMAddrAperture const identity{std::string(trimmed)};
  if (identity.isValid()) {
    sourceBase_ = identity.getBaseAddress();
    targetBase_ = identity.getBaseAddress();
    range_ = identity.getRange();
  }
}

bool HABMAddrRemap::operator<(HABMAddrRemap const& o) const {
  if (sourceBase_ != o.sourceBase_) {
    return sourceBase_ < o.sourceBase_;
  }
  if (targetBase_ != o.targetBase_) {
    return targetBase_ < o.targetBase_;
  }
  return range_ < o.range_;
}

std::string HABMAddrRemap::getBaseAbrvString(unsigned int const& bits) const {
  return sourceBase_.getPrettyHexStringValue(bits) + ',' + targetBase_.getPrettyHexStringValue(bits) + '[' +
         range_.getAbrvStringValue() + ']';
}

std::string HABMAddrRemap::getTclListString(unsigned int const& bits) const {
  return '{' + sourceBase_.getPrettyHexStringValue(bits) + ' ' + targetBase_.getPrettyHexStringValue(bits) +
         ' ' + range_.getAbrvStringValue() + '}';
}

std::string HABMAddrRemap::getTclDictString(unsigned int const& bits) const {
  return "{source " + sourceBase_.getPrettyHexStringValue(bits) + " target " +
         targetBase_.getPrettyHexStringValue(bits) + " range " + range_.getAbrvStringValue() + '}';
}

std::ostream& operator<<(std::ostream& out, HABMAddrRemap const& remap) {
  return out << remap.getBaseAbrvString();
}
