// HABMAddrSpace.cpp: address spaces and the life of their segments.
#include "blockmodel/HABMAddrSpace.h"

#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/detail/HABMKinds.h"

using SegmentKind = habm_detail::Kind<habm_detail::ChildKind::ADDR_SEGMENT>;

HABMAddrSpace::HABMAddrSpace(HABMBlock* parent, std::string const& name)
    : parent_(parent), name_(name), range_(HABMAddrValue::CONST_4G()) {}

HABMAddrSpace::~HABMAddrSpace() {
  leaveObjectCaches();
}

std::string HABMAddrSpace::getPath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

HABMAddrSegment* HABMAddrSpace::createAddrSegment(std::string const& name) {
  return habm_detail::createChild<SegmentKind>(*this, name, false).child;
}

HABMAddrSegment* HABMAddrSpace::getAddrSegment(std::string const& name) const {
  return addrSegments_.get(name);
}

std::vector<HABMAddrSegment*> HABMAddrSpace::getAddrSegments() const {
  return addrSegments_.list();
}

bool HABMAddrSpace::removeAddrSegment(std::string const& name) {
  return habm_detail::removeChild<SegmentKind>(*this, name);
}

void HABMAddrSpace::clearAddrSegments() {
  addrSegments_.clear();
}

void HABMAddrSpace::clone(HABMAddrSpace const& source) {
  range_ = source.range_;
  clearAddrSegments();
  for (HABMAddrSegment const* from : source.addrSegments_) {
    // A name the source holds twice (generated twice) is refused the second time and copied once.
    if (HABMAddrSegment* to = createAddrSegment(from->getName())) {
      to->clone(*from);
    }
  }
}
