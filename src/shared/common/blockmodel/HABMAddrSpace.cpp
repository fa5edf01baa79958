// HABMAddrSpace.cpp: address spaces and the life of their segments.
#include "blockmodel/HABMAddrSpace.h"

#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNestedChild.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMTrace.h"

#include <memory>

using habm_detail::TRACE_CHILD;

HABMAddrSpace::HABMAddrSpace(HABMBlock const* parent, std::string const& name)
    : parent_(parent), name_(name), range_(HABMAddrValue::CONST_4G()) {}

HABMAddrSpace::~HABMAddrSpace() = default;

std::string HABMAddrSpace::getPath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

HABMAddrSegment* HABMAddrSpace::createAddrSegment(std::string const& name) {
  // A generated name is the count as it stands and is not tested against the siblings: only the caller's
  // text is, so a removal can lead to a second segment of a generated name.
  std::string const working = name.empty() ? addrSegments_.autoName("segment_%d", true) : name;
  if (HABMPath::has_separator(working) || addrSegments_.has(name)) {
    return nullptr;
  }
  HABMAddrSegment* segment =
      addrSegments_.append(std::unique_ptr<HABMAddrSegment>(new HABMAddrSegment(this, working)));
  HABM_TRACE(TRACE_CHILD, "Created address segment '%s' on address space '%s'.\n", working.c_str(),
             getPath().c_str());
  return segment;
}

HABMAddrSegment* HABMAddrSpace::getAddrSegment(std::string const& name) const {
  return addrSegments_.get(name);
}

std::vector<HABMAddrSegment*> HABMAddrSpace::getAddrSegments() const {
  return addrSegments_.list();
}

bool HABMAddrSpace::removeAddrSegment(std::string const& name) {
  std::string const removed = name;  // the request may be the segment's own name, about to go
  if (addrSegments_.take(removed) == nullptr) {
    return false;
  }
  HABM_TRACE(TRACE_CHILD, "Removed address segment '%s' from address space '%s'.\n", removed.c_str(),
             getPath().c_str());
  return true;
}

void HABMAddrSpace::clearAddrSegments() {
  addrSegments_.clear();
}

void HABMAddrSpace::clone(HABMAddrSpace const& source) {
  range_ = source.range_;
  clearAddrSegments();
  for (auto const& from : source.addrSegments_.items()) {
    // A name the source holds twice (generated twice) is refused the second time and copied once.
    if (HABMAddrSegment* to = createAddrSegment(from->getName())) {
      to->clone(*from);
    }
  }
}

bool HABMAddrSpace::check() const {
  return habm_detail::checkNestedChildren(addrSegments_, this);
}
