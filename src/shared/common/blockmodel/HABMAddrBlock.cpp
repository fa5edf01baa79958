// HABMAddrBlock.cpp: address blocks, the life of their registers, and their type and access vocabularies.
#include "blockmodel/HABMAddrBlock.h"

#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/detail/HABMEnumTable.h"
#include "blockmodel/detail/HABMKinds.h"

#include <utility>

using RegisterKind = habm_detail::Kind<habm_detail::ChildKind::REGISTER>;

namespace {

constexpr habm_detail::EnumTable<HABMAddrBlock::MemoryType, HABMAddrBlock::TYPE_UNKNOWN> kMemoryTypes{
    habm_detail::Fold::LOWER,
    {{{HABMAddrBlock::TYPE_APERTURE, "aperture"},
      {HABMAddrBlock::TYPE_REGISTER, "register"},
      {HABMAddrBlock::TYPE_MEMORY, "memory"},
      {HABMAddrBlock::TYPE_FLASH, "flash"},
      {HABMAddrBlock::TYPE_RESERVED, "reserved"}}}};
static_assert(kMemoryTypes.complete(), "one text per address block memory type");

constexpr auto kAccesses = habm_detail::accessTable<HABMAddrBlock, HABMAddrBlock::MemoryAccess>();
static_assert(kAccesses.complete(), "one text per address block access");

}  // namespace

HABMAddrBlock::HABMAddrBlock(HABMMemoryMap* parent, std::string const& name)
    : parent_(parent), name_(name), aperture_(HABMAddrAperture::DEFAULT()) {}

HABMAddrBlock::~HABMAddrBlock() {
  leaveObjectCaches();
}

std::string HABMAddrBlock::getPath() const {
  return HABMPath::terminate(parent_->getPath()) + name_;
}

HABMRegister* HABMAddrBlock::createRegister(std::string const& name) {
  return habm_detail::createChild<RegisterKind>(*this, name, false).child;
}

HABMRegister* HABMAddrBlock::getRegister(std::string const& name) const {
  return registers_.get(name);
}

std::vector<HABMRegister*> HABMAddrBlock::getRegisters() const {
  return registers_.list();
}

bool HABMAddrBlock::removeRegister(std::string const& name) {
  return habm_detail::removeChild<RegisterKind>(*this, name);
}

void HABMAddrBlock::clearRegisters() {
  registers_.clear();
}

void HABMAddrBlock::clone(HABMAddrBlock const& source) {
  memoryType_ = source.memoryType_;
  memoryAccess_ = source.memoryAccess_;
  aperture_ = source.aperture_;
  clearRegisters();
  for (HABMRegister const* from : source.registers_) {
    if (HABMRegister* to = createRegister(from->getName())) {
      to->clone(*from);
    }
  }
}

HABMAddrBlock::MemoryType HABMAddrBlock::encodeMemoryType(std::string text) {
  return kMemoryTypes.encode(text);
}

std::string HABMAddrBlock::decodeMemoryType(MemoryType const& memoryType) {
  return kMemoryTypes.decode(memoryType);
}

HABMAddrBlock::MemoryAccess HABMAddrBlock::encodeMemoryAccess(std::string text) {
  return kAccesses.encode(text);
}

std::string HABMAddrBlock::decodeMemoryAccess(MemoryAccess const& memoryAccess) {
  return kAccesses.decode(memoryAccess);
}
