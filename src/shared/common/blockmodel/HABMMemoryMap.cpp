// HABMMemoryMap.cpp: memory maps and the life of their address blocks.
#include "blockmodel/HABMMemoryMap.h"

#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNestedChild.h"
#include "blockmodel/HABMPath.h"

HABMMemoryMap::HABMMemoryMap(HABMBlock const* parent, std::string const& name)
    : parent_(parent), name_(name), range_(HABMAddrValue::CONST_4G()) {}

HABMMemoryMap::~HABMMemoryMap() = default;

std::string HABMMemoryMap::getPath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

HABMAddrBlock* HABMMemoryMap::createAddrBlock(std::string const& name) {
  return habm_detail::createNestedChild(addrBlocks_, name, "Created address block '%s'.\n",
                                        [&] { return new HABMAddrBlock(this, name); });
}

HABMAddrBlock* HABMMemoryMap::getAddrBlock(std::string const& name) const {
  return addrBlocks_.get(name);
}

std::vector<HABMAddrBlock*> HABMMemoryMap::getAddrBlocks() const {
  return addrBlocks_.list();
}

bool HABMMemoryMap::removeAddrBlock(std::string const& name) {
  return habm_detail::removeNestedChild(addrBlocks_, name, "Removed address block '%s'.\n");
}

void HABMMemoryMap::clearAddrBlocks() {
  addrBlocks_.clear();
}

void HABMMemoryMap::clone(HABMMemoryMap const& source) {
  range_ = source.range_;
  clearAddrBlocks();
  for (auto const& from : source.addrBlocks_.items()) {
    if (HABMAddrBlock* to = createAddrBlock(from->getName())) {
      to->clone(*from);
    }
  }
}

bool HABMMemoryMap::check() const {
  bool ok = habm_detail::checkNestedChildren(addrBlocks_, this);
  for (auto const& block : addrBlocks_.items()) {
    ok = ok && block->check();
  }
  return ok;
}
