// HABMAddrSegment.cpp: address segments and their memory-type vocabulary.
#include "blockmodel/HABMAddrSegment.h"

#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/detail/HABMEnumTable.h"

#include <utility>

namespace {

constexpr habm_detail::EnumTable<HABMAddrSegment::MemoryType, HABMAddrSegment::TYPE_UNKNOWN> kMemoryTypes{
    habm_detail::Fold::LOWER,
    {{{HABMAddrSegment::TYPE_APERTURE, "aperture"},
      {HABMAddrSegment::TYPE_BOTH, "both"},
      {HABMAddrSegment::TYPE_DATA, "data"},
      {HABMAddrSegment::TYPE_INSTRUCTION, "instruction"},
      {HABMAddrSegment::TYPE_RESERVED, "reserved"}}}};
static_assert(kMemoryTypes.complete(), "one text per value");

}  // namespace

HABMAddrSegment::HABMAddrSegment(HABMAddrSpace* parent, std::string const& name)
    : parent_(parent), name_(name), aperture_(HABMAddrAperture::DEFAULT()) {}

std::string HABMAddrSegment::getPath() const {
  return HABMPath::terminate(parent_->getPath()) + name_;
}

void HABMAddrSegment::clone(HABMAddrSegment const& source) {
  memoryType_ = source.memoryType_;
  aperture_ = source.aperture_;
}

HABMAddrSegment::MemoryType HABMAddrSegment::encodeMemoryType(std::string text) {
  return kMemoryTypes.encode(text);
}

std::string HABMAddrSegment::decodeMemoryType(MemoryType const& memoryType) {
  return kMemoryTypes.decode(memoryType);
}
