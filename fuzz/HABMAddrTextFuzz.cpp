// HABMAddrTextFuzz.cpp: address values, apertures and remaps read from any text; whatever reads must print
// in the forms that read back as the same value.
#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMAddrValue.h"

#include "HABMFuzzCheck.h"

using habm_fuzz::require;

namespace {

// The size form prints only the low 64 bits of its quotient, so only smaller values read back from it.
bool fitsSizeForm(HABMAddrValue const& value) {
  return value.getHigh64Value() == 0;
}

void checkValue(std::string const& text) {
  HABMAddrValue const value(text);
  if (!value.isValid()) {
    return;
  }
  require(HABMAddrValue(value.getHexStringValue()) == value);
  require(HABMAddrValue(value.getPrettyHexStringValue()) == value);
  require(HABMAddrValue(value.getBinStringValue()) == value);
  if (fitsSizeForm(value)) {
    require(HABMAddrValue(value.getAbrvStringValue()) == value);
  }
}

void checkAperture(std::string const& text) {
  HABMAddrAperture const aperture(text);
  // An aperture whose end passes the top of the address space has no high address to print.
  if (!aperture.isValid() || aperture.getHighAddress() < aperture.getBaseAddress()) {
    return;
  }
  HABMAddrAperture const high(aperture.getBaseHighString());
  require(high.getBaseAddress() == aperture.getBaseAddress() && high.getRange() == aperture.getRange());
  if (fitsSizeForm(aperture.getRange())) {
    HABMAddrAperture const abrv(aperture.getBaseAbrvString());
    require(abrv.getBaseAddress() == aperture.getBaseAddress() && abrv.getRange() == aperture.getRange());
  }
}

void checkRemap(std::string const& text) {
  HABMAddrRemap const remap(text);
  HABMAddrAperture const target = remap.getTargetAperture();
  if (remap.getRange() == HABMAddrValue::CONST_0() || !fitsSizeForm(remap.getRange()) ||
      target.getHighAddress() < target.getBaseAddress()) {
    return;
  }
  HABMAddrRemap const back(remap.getBaseAbrvString());
  require(back.getSourceBaseAddress() == remap.getSourceBaseAddress() &&
          back.getTargetBaseAddress() == remap.getTargetBaseAddress() && back.getRange() == remap.getRange());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const input = habm_fuzz::text(data, size);
  checkValue(input);
  checkAperture(input);
  checkRemap(input);
  return 0;
}
