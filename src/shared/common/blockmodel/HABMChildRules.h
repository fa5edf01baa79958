// HABMChildRules.h: the creation and removal rules every kind of child shares, with their traces;
// internal to the model sources, not part of the public interface.
#pragma once

#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMTrace.h"

#include <memory>
#include <string>

class HABMBlock;
class HABMInterface;
class HABMPort;

namespace habm_detail {

/// The texts of one kind of child on one kind of owner. A new kind adds a row beside its owner and
/// forwards its create/remove members to the templates below.
struct ChildTexts {
  char const* created;
  unsigned int createdMask;
  /// Null for a kind whose refusals are silent.
  char const* failed;
  char const* removed;
  unsigned int removedMask;
  /// The automatic name for an empty request ("interface_%d"), or null when an empty name is refused.
  char const* autoName;
};

/// The owner's path as the traces print it; one overload per kind of owner.
std::string childOwnerPath(HABMBlock const& block);
/// The owner's path as the traces print it; one overload per kind of owner.
std::string childOwnerPath(HABMPort const& port);
/// The owner's path as the traces print it; one overload per kind of owner.
std::string childOwnerPath(HABMInterface const& iface);

/// An empty name and a name with the separator are never accepted.
inline bool isRefusedName(std::string const& name) {
  return name.empty() || HABMPath::has_separator(name);
}

/// Creates a child by the common rules: automatic name for an empty request where the kind has one, no
/// separator, no duplicate unless forced; appends; traces. `make(name)` builds the owned object.
template <class Owner, class List, class Make>
auto createChild(Owner const& owner, List& list, ChildTexts const& texts, std::string const& requested,
                 bool force, Make&& make) -> decltype(list.append(make(requested))) {
  std::string name = requested;
  if (name.empty() && texts.autoName != nullptr) {
    name = list.autoName(texts.autoName, force);
  }
  if (isRefusedName(name) || (!force && list.has(name))) {
    if (texts.failed != nullptr) {
      HABM_TRACE(TRACE_BLOCK, texts.failed, requested.c_str(), childOwnerPath(owner).c_str());
    }
    return nullptr;
  }
  auto* child = list.append(make(name));
  HABM_TRACE(texts.createdMask, texts.created, name.c_str(), childOwnerPath(owner).c_str());
  return child;
}

/// Destroys the first child of that name, keeping the order of the others; silent when there is none.
template <class Owner, class List>
bool removeChild(Owner const& owner, List& list, ChildTexts const& texts, std::string const& requested) {
  std::string const name = requested;  // the request may be the child's own name, about to go
  if (list.take(name) == nullptr) {
    return false;
  }
  HABM_TRACE(texts.removedMask, texts.removed, name.c_str(), childOwnerPath(owner).c_str());
  return true;
}

}  // namespace habm_detail
