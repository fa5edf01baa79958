// HABMNestedChild.h: the create and remove rules of the children of address objects (address blocks,
// registers, fields), which are traced by their own path; internal to the model sources.
#pragma once

#include "blockmodel/HABMChildList.h"
#include "blockmodel/HABMChildRules.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMTrace.h"

#include <memory>
#include <string>

namespace habm_detail {

/// Appends `make()` when `name` is not empty, holds no separator and is not taken, and traces `created`
/// with the new child's path; null, silently, otherwise.
template <class T, class Make>
T* createNestedChild(HABMChildList<T>& list, std::string const& name, char const* created, Make&& make) {
  if (isRefusedName(name) || list.has(name)) {
    return nullptr;
  }
  T* child = list.append(std::unique_ptr<T>(make()));
  HABM_TRACE(TRACE_CHILD, created, child->getPath().c_str());
  return child;
}

/// Destroys the first child of that name, tracing `removed` with its path; false, silently, when unknown.
template <class T>
bool removeNestedChild(HABMChildList<T>& list, std::string const& name, char const* removed) {
  std::unique_ptr<T> const child = list.take(name);
  if (child == nullptr) {
    return false;
  }
  HABM_TRACE(TRACE_CHILD, removed, child->getPath().c_str());
  return true;
}

/// Whether each child of `list` points back at `parent`, bears a name without "/" that is not empty, and
/// is found by the index; for the invariant walks of tests.
template <class T, class Parent>
bool checkNestedChildren(HABMChildList<T> const& list, Parent const* parent) {
  for (auto const& child : list.items()) {
    std::string const& name = child->getName();
    if (child->getParent() != parent || isRefusedName(name)) {
      return false;
    }
  }
  return list.checkIndex();
}

}  // namespace habm_detail
