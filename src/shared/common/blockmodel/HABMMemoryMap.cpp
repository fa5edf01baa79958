// HABMMemoryMap.cpp: memory maps and the life of their address blocks.
#include "blockmodel/HABMMemoryMap.h"

#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/detail/HABMKinds.h"

using AddrBlockKind = habm_detail::Kind<habm_detail::ChildKind::ADDR_BLOCK>;

HABMMemoryMap::HABMMemoryMap(HABMBlock* parent, std::string const& name)
    : parent_(parent), name_(name), range_(HABMAddrValue::CONST_4G()) {}

HABMMemoryMap::~HABMMemoryMap() = default;

std::string HABMMemoryMap::getPath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

HABMAddrBlock* HABMMemoryMap::createAddrBlock(std::string const& name) {
  return habm_detail::createChild<AddrBlockKind>(*this, name, false).child;
}

HABMAddrBlock* HABMMemoryMap::getAddrBlock(std::string const& name) const {
  return addrBlocks_.get(name);
}

std::vector<HABMAddrBlock*> HABMMemoryMap::getAddrBlocks() const {
  return addrBlocks_.list();
}

bool HABMMemoryMap::removeAddrBlock(std::string const& name) {
  return habm_detail::removeChild<AddrBlockKind>(*this, name);
}

void HABMMemoryMap::clearAddrBlocks() {
  addrBlocks_.clear();
}

void HABMMemoryMap::clone(HABMMemoryMap const& source) {
  range_ = source.range_;
  clearAddrBlocks();
  for (HABMAddrBlock const* from : source.addrBlocks_) {
    if (HABMAddrBlock* to = createAddrBlock(from->getName())) {
      to->clone(*from);
    }
  }
}
