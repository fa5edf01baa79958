// HABMAddrSegment.cpp: address segments and their memory-type vocabulary.
#include "blockmodel/HABMAddrSegment.h"

#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMEnumText.h"
#include "blockmodel/HABMPath.h"

#include <utility>

namespace {

// In value order; TYPE_UNKNOWN has no text.
constexpr char const* kMemoryTypeTexts[] = {"aperture", "both", "data", "instruction", "reserved"};
static_assert(sizeof(kMemoryTypeTexts) / sizeof(kMemoryTypeTexts[0]) == HABMAddrSegment::TYPE_UNKNOWN,
              "one text per segment memory type");

}  // namespace

HABMAddrSegment::HABMAddrSegment(HABMAddrSpace const* parent, std::string const& name)
    : parent_(parent), name_(name), aperture_(HABMAddrAperture::DEFAULT()) {}

std::string HABMAddrSegment::getPath() const {
  return HABMPath::terminate(parent_->getPath()) + name_;
}

void HABMAddrSegment::clone(HABMAddrSegment const& source) {
  memoryType_ = source.memoryType_;
  aperture_ = source.aperture_;
}

HABMAddrSegment::MemoryType HABMAddrSegment::encodeMemoryType(std::string text) {
  return habm_detail::encodeEnumText<MemoryType>(kMemoryTypeTexts,
                                                 habm_detail::normaliseTypeText(std::move(text)));
}

std::string HABMAddrSegment::decodeMemoryType(MemoryType const& memoryType) {
  return habm_detail::decodeEnumText(kMemoryTypeTexts, memoryType);
}
