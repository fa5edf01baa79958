// HABMBlockClone.cpp: copies of whole blocks and of a block's groups of children, in the orders that let
// every reference be made after what it names.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/detail/HABMKinds.h"
#include "blockmodel/detail/HABMTrace.h"

using habm_detail::ChildKind;
using habm_detail::Kind;
using SubBlocks = HABMChildList<HABMBlock>;

namespace {

template <class Kinds>
void cloneKinds(HABMBlock& target, HABMBlock const& source, Kinds kinds) {
  habm_detail::forEachKind(kinds, [&](auto kind) {
    using K = decltype(kind);
    for (auto const* child : K::list(source)) {
      K::cloneInto(target, *child);
    }
  });
}

// True when one block lies in the other's subtree (or is the other): copying one onto the other would then
// destroy or grow what is being read.
bool nested(HABMBlock const& a, HABMBlock const& b) {
  auto const below = [](HABMBlock const& low, HABMBlock const& high) {
    for (HABMBlock const* block = &low; block != nullptr; block = block->getParent()) {
      if (block == &high) {
        return true;
      }
    }
    return false;
  };
  return below(a, b) || below(b, a);
}

}  // namespace

std::unique_ptr<HABMBlock> HABMBlock::cloneTopBlock(HABMBlock const& source) {
  std::unique_ptr<HABMBlock> top = createTopBlock(source.moduleName_);
  top->clone(source);
  top->moduleName_ = source.moduleName_;
  top->instanceName_.clear();
  HABM_TRACE(habm_detail::TRACE_BLOCK, "Cloned top-block module '%s' into new top-block module '%s'.\n",
             source.moduleName_.c_str(), source.moduleName_.c_str());
  return top;
}

void HABMBlock::assignTopBlock(HABMBlock const& source, HABMBlock& target) {
  target.clone(source);
}

void HABMBlock::cloneConfiguration(HABMBlock const& source) {
  if (&source != this) {
    clearConfiguration();
    cloneKinds(*this, source, habm_detail::CloneConfiguration{});
  }
}

void HABMBlock::cloneBoundary(HABMBlock const& source) {
  if (&source != this) {
    clearBoundary();
    cloneKinds(*this, source, habm_detail::CloneBoundary{});
  }
}

void HABMBlock::cloneContents(HABMBlock const& source) {
  if (&source == this) {
    return;
  }
  if (nested(source, *this)) {
    cloneContents(*cloneTopBlock(source));
    return;
  }
  clearContents();
  // Each sub-block is copied whole before the next one is made, as a recursion would, but on a stack of
  // our own: a deep hierarchy must not exhaust the thread's.
  struct Frame {
    HABMBlock* target;
    HABMBlock const* source;
    SubBlocks::Iterator next;
  };
  std::vector<Frame> stack = {{this, &source, source.subBlocks_.begin()}};
  while (!stack.empty()) {
    Frame& frame = stack.back();
    if (frame.next != frame.source->subBlocks_.end()) {
      HABMBlock const* sub = *frame.next;
      ++frame.next;
      HABMBlock* copy = frame.target->createSubBlock(sub->instanceName_, sub->moduleName_, true);
      copy->copyScalars(*sub);
      copy->cloneConfiguration(*sub);
      copy->cloneBoundary(*sub);
      stack.push_back({copy, sub, sub->subBlocks_.begin()});
    } else {
      cloneKinds(*frame.target, *frame.source, habm_detail::CloneContentsAfterSubBlocks{});
      stack.pop_back();
    }
  }
}

void HABMBlock::clone(HABMBlock const& source) {
  if (&source == this) {
    return;  // every field and child would be copied onto itself
  }
  if (nested(source, *this)) {
    std::unique_ptr<HABMBlock> const snapshot = cloneTopBlock(source);
    snapshot->instanceName_ = source.instanceName_;
    clone(*snapshot);
    return;
  }
  copyScalars(source);
  cloneConfiguration(source);
  cloneBoundary(source);
  cloneContents(source);
}

void HABMBlock::copyScalars(HABMBlock const& source) {
  validated_ = source.validated_;
  lockState_ = source.lockState_;
  transparent_ = source.transparent_;
  moduleName_ = source.moduleName_;
  moduleVlnv_ = source.moduleVlnv_;
  enablement_ = source.enablement_;
  baseAddress_ = source.baseAddress_;
  setInstanceName(source.instanceName_);
}
