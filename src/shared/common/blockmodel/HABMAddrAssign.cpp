// HABMAddrAssign.cpp: address assignments, the resolution of their ends and the two filters.
#include "blockmodel/HABMAddrAssign.h"

#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/detail/HABMEnumTable.h"

#include <utility>

namespace {

constexpr habm_detail::EnumTable<HABMAddrAssign::AssignType, HABMAddrAssign::TYPE_UNKNOWN> kAssignTypes{
    habm_detail::Fold::LOWER,
    {{{HABMAddrAssign::TYPE_ASSIGNMENT, "assignment"},
      {HABMAddrAssign::TYPE_EXCLUSION, "exclusion"},
      {HABMAddrAssign::TYPE_INTERNAL, "internal"}}}};
static_assert(kAssignTypes.complete(), "one text per value");

}  // namespace

HABMAddrAssign::HABMAddrAssign(HABMBlock* parent, std::string const& name)
    : parent_(parent), name_(name), aperture_(HABMAddrAperture::ILLEGAL()) {}

HABMAddrAssign::~HABMAddrAssign() {
  leaveObjectCaches();
}

std::string HABMAddrAssign::getPath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

HABMAddrAssign::AssignType HABMAddrAssign::encodeAssignType(std::string text) {
  return kAssignTypes.encode(text);
}

std::string HABMAddrAssign::decodeAssignType(AssignType const& assignType) {
  return kAssignTypes.decode(assignType);
}

// Paths are kept relative so that the assignment means the same thing wherever its block is moved or
// copied to.
bool HABMAddrAssign::setSourcePath(std::string const& path) {
  sourcePath_ = HABMPath::get_relative_path(*parent_, path);
  return HABMPath::is_valid(sourcePath_);
}

bool HABMAddrAssign::setTargetPath(std::string const& path) {
  targetPath_ = HABMPath::get_relative_path(*parent_, path);
  return HABMPath::is_valid(targetPath_);
}

std::string HABMAddrAssign::getSourcePath(bool const& absolute) const {
  return absolute ? HABMPath::get_absolute_path(*parent_, sourcePath_) : sourcePath_;
}

std::string HABMAddrAssign::getTargetPath(bool const& absolute) const {
  return absolute ? HABMPath::get_absolute_path(*parent_, targetPath_) : targetPath_;
}

// Each end is looked up afresh from the top of the tree the block is in now; nothing is cached.

HABMAddrBlock* HABMAddrAssign::getSourceAddrBlock() const {
  return parent_->getTop()->findAddrBlock(getSourcePath(true), true);
}

HABMAddrSegment* HABMAddrAssign::getSourceAddrSegment() const {
  return parent_->getTop()->findAddrSegment(getSourcePath(true), true);
}

HABMAddrBlock* HABMAddrAssign::getTargetAddrBlock() const {
  return parent_->getTop()->findAddrBlock(getTargetPath(true), true);
}

HABMAddrSegment* HABMAddrAssign::getTargetAddrSegment() const {
  return parent_->getTop()->findAddrSegment(getTargetPath(true), true);
}

HABMAddrSpace* HABMAddrAssign::getTargetAddrSpace() const {
  HABMBlock const* top = parent_->getTop();
  std::string const target = getTargetPath(true);
  if (HABMAddrSegment* segment = top->findAddrSegment(target, true)) {
    return segment->getParent();
  }
  return top->findAddrSpace(target, true);
}

HABMMemoryMap* HABMAddrAssign::getTargetMemoryMap() const {
  HABMBlock const* top = parent_->getTop();
  std::string const target = getTargetPath(true);
  if (HABMAddrBlock* block = top->findAddrBlock(target, true)) {
    return block->getParent();
  }
  return top->findMemoryMap(target, true);
}

std::vector<HABMAddrAssign*> HABMAddrAssign::filterByAddrBlock(std::vector<HABMAddrAssign*> const& assigns,
                                                               HABMAddrBlock const* block) {
  std::vector<HABMAddrAssign*> out;
  if (block == nullptr) {
    return out;
  }
  std::string const path = block->getPath();
  for (HABMAddrAssign* assign : assigns) {
    if (assign != nullptr && assign->getSourcePath(true) == path) {
      out.push_back(assign);
    }
  }
  return out;
}

// Unlike filterByAddrBlock this one reads the target end, and only a target that names the space itself.
std::vector<HABMAddrAssign*> HABMAddrAssign::filterByAddrSpace(std::vector<HABMAddrAssign*> const& assigns,
                                                               HABMAddrSpace const* space) {
  std::vector<HABMAddrAssign*> out;
  if (space == nullptr) {
    return out;
  }
  std::string const path = space->getPath();
  for (HABMAddrAssign* assign : assigns) {
    if (assign != nullptr && assign->getTargetPath(true) == path) {
      out.push_back(assign);
    }
  }
  return out;
}

void HABMAddrAssign::clone(HABMAddrAssign const& source) {
  assignType_ = source.assignType_;
  sourcePath_ = source.sourcePath_;
  targetPath_ = source.targetPath_;
  aperture_ = source.aperture_;
}
