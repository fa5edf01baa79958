// HABMAddrBlock.cpp: address blocks, the life of their registers, and their type and access vocabularies.
#include "blockmodel/HABMAddrBlock.h"

#include "blockmodel/HABMEnumText.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNestedChild.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMRegister.h"

#include <utility>

namespace {

// In value order; the last value of each enumeration has no text.
constexpr char const* kMemoryTypeTexts[] = {"aperture", "register", "memory", "flash", "reserved"};
static_assert(sizeof(kMemoryTypeTexts) / sizeof(kMemoryTypeTexts[0]) == HABMAddrBlock::TYPE_UNKNOWN,
              "one text per address block memory type");

constexpr char const* kMemoryAccessTexts[] = {"read_write", "read_only", "write_only", "writeonce",
                                              "read_writeonce"};
static_assert(sizeof(kMemoryAccessTexts) / sizeof(kMemoryAccessTexts[0]) == HABMAddrBlock::ACCESS_UNKNOWN,
              "one text per address block access");

}  // namespace

HABMAddrBlock::HABMAddrBlock(HABMMemoryMap const* parent, std::string const& name)
    : parent_(parent), name_(name), aperture_(HABMAddrAperture::DEFAULT()) {}

HABMAddrBlock::~HABMAddrBlock() = default;

std::string HABMAddrBlock::getPath() const {
  return HABMPath::terminate(parent_->getPath()) + name_;
}

HABMRegister* HABMAddrBlock::createRegister(std::string const& name) {
  return habm_detail::createNestedChild(registers_, name, "Created register '%s'.\n",
                                        [&] { return new HABMRegister(this, name); });
}

HABMRegister* HABMAddrBlock::getRegister(std::string const& name) const {
  return registers_.get(name);
}

std::vector<HABMRegister*> HABMAddrBlock::getRegisters() const {
  return registers_.list();
}

bool HABMAddrBlock::removeRegister(std::string const& name) {
  return habm_detail::removeNestedChild(registers_, name, "Removed register '%s'.\n");
}

void HABMAddrBlock::clearRegisters() {
  registers_.clear();
}

void HABMAddrBlock::clone(HABMAddrBlock const& source) {
  memoryType_ = source.memoryType_;
  memoryAccess_ = source.memoryAccess_;
  aperture_ = source.aperture_;
  clearRegisters();
  for (auto const& from : source.registers_.items()) {
    if (HABMRegister* to = createRegister(from->getName())) {
      to->clone(*from);
    }
  }
}

HABMAddrBlock::MemoryType HABMAddrBlock::encodeMemoryType(std::string text) {
  return habm_detail::encodeEnumText<MemoryType>(kMemoryTypeTexts,
                                                 habm_detail::normaliseTypeText(std::move(text)));
}

std::string HABMAddrBlock::decodeMemoryType(MemoryType const& memoryType) {
  return habm_detail::decodeEnumText(kMemoryTypeTexts, memoryType);
}

HABMAddrBlock::MemoryAccess HABMAddrBlock::encodeMemoryAccess(std::string text) {
  return habm_detail::encodeEnumText<MemoryAccess>(kMemoryAccessTexts,
                                                   habm_detail::normaliseAccessText(std::move(text)));
}

std::string HABMAddrBlock::decodeMemoryAccess(MemoryAccess const& memoryAccess) {
  return habm_detail::decodeEnumText(kMemoryAccessTexts, memoryAccess);
}

bool HABMAddrBlock::check() const {
  bool ok = habm_detail::checkNestedChildren(registers_, this);
  for (auto const& reg : registers_.items()) {
    ok = ok && reg->check();
  }
  return ok;
}
