// HABMChildRules.h: the creation, removal and value rules that every kind of child shares, with their
// traces and the reasons of a refusal; internal to the model sources.
#pragma once

#include "blockmodel/HABMPath.h"
#include "blockmodel/detail/HABMTrace.h"

#include <memory>
#include <string>
#include <utility>

namespace habm_detail {

/// What the traces of one kind of child say. A kind's record holds one of these.
struct ChildTexts {
  /// "Created ..." with the name and the owner's path; null when the creator traces on its own.
  char const* created;
  unsigned int createdMask;
  /// "Failed to create ..." with the requested name and the owner's path; null for silent refusals.
  char const* failed;
  /// "Removed ..." with the name and the owner's path.
  char const* removed;
  unsigned int removedMask;
  /// The automatic name for an empty request ("interface_%d"), or null when an empty name is refused.
  char const* autoName = nullptr;
  /// The automatic name is the count as it stands, tested against nothing.
  bool autoNameUntested = false;
  /// The created and removed texts take the child's own path instead of its name and the owner's path.
  bool byChildPath = false;
};

/// Why a creator or a rename refused a name.
enum class Refusal {
  NONE,
  /// Empty, or holding the separator.
  BAD_NAME,
  /// The kind takes no child of this name on this owner.
  INVALID,
  /// Another child of the kind bears it.
  TAKEN,
  /// A rename found no child of the old name.
  NOT_FOUND
};

/// A creator's answer: the child, or null and the reason.
template <class T>
struct Created {
  T* child;
  Refusal why;
};

/// An empty name and a name with the separator are never accepted.
inline bool isRefusedName(std::string const& name) {
  return name.empty() || HABMPath::has_separator(name);
}

/// Whether the kind takes a child of that name on this owner: a kind may narrow the names it takes
/// (`Kind::accepts`); most take any name.
template <class Kind>
auto acceptsName(typename Kind::Owner const& owner, std::string const& name, int)
    -> decltype(Kind::accepts(owner, name)) {
  return Kind::accepts(owner, name);
}
template <class Kind>
bool acceptsName(typename Kind::Owner const&, std::string const&, long) {
  return true;
}

/// Sends a created or removed trace of a kind's texts, in whichever form the kind uses.
inline void traceChildLife(ChildTexts const& texts, char const* text, unsigned int mask,
                           std::string const& name, std::string const& ownerPath) {
  if (texts.byChildPath) {
    HABM_TRACE(mask, text, (HABMPath::terminate(ownerPath) + name).c_str());
  } else {
    HABM_TRACE(mask, text, name.c_str(), ownerPath.c_str());
  }
}

/// A requested name that the caller has already held against the kind's own rule (`Kind::accepts`): for
/// a caller that creates a whole collection under one answer of a rule that is costly to ask.
struct AcceptedName {
  std::string const& name;
};

template <class Kind, class... Args>
Created<typename Kind::Child> createChildWith(typename Kind::Owner& owner, std::string const& requested,
                                              bool ruleHeld, bool force, Args&&... args);

/// Creates a child of `Kind` on `owner` by the common rules: an automatic name for an empty request where
/// the kind has one, no separator, no duplicate unless `force`; appends `Kind::make(owner, name, args...)`
/// and traces. A refusal changes nothing and says why.
template <class Kind, class... Args>
Created<typename Kind::Child> createChild(typename Kind::Owner& owner, std::string const& requested,
                                          bool force, Args&&... args) {
  return createChildWith<Kind>(owner, requested, false, force, std::forward<Args>(args)...);
}

/// The same, without asking the kind's rule again of a name the caller has held against it.
template <class Kind, class... Args>
Created<typename Kind::Child> createChild(typename Kind::Owner& owner, AcceptedName requested, bool force,
                                          Args&&... args) {
  return createChildWith<Kind>(owner, requested.name, true, force, std::forward<Args>(args)...);
}

/// The kind's name rule as one test for many names: a kind whose rule is costly to ask (`Kind::nameRule`)
/// answers it once for the owner as it stands, any other asks `Kind::accepts` for each name.
template <class Kind>
auto nameRuleOf(typename Kind::Owner const& owner, int) -> decltype(Kind::nameRule(owner)) {
  return Kind::nameRule(owner);
}
template <class Kind>
auto nameRuleOf(typename Kind::Owner const& owner, long) {
  return [&owner](std::string const& name) { return acceptsName<Kind>(owner, name, 0); };
}

/// createChild for one of many names tested by one `nameRuleOf`: a refused name goes the common way, to be
/// refused and traced as always.
template <class Kind, class Rule, class... Args>
Created<typename Kind::Child> createChildUnder(Rule const& rule, typename Kind::Owner& owner,
                                               std::string const& requested, bool force, Args&&... args) {
  if (!requested.empty() && rule(requested)) {
    return createChild<Kind>(owner, AcceptedName{requested}, force, std::forward<Args>(args)...);
  }
  return createChild<Kind>(owner, requested, force, std::forward<Args>(args)...);
}

template <class Kind, class... Args>
Created<typename Kind::Child> createChildWith(typename Kind::Owner& owner, std::string const& requested,
                                              bool ruleHeld, bool force, Args&&... args) {
  ChildTexts const& texts = Kind::TEXTS;
  auto& list = Kind::list(owner);
  std::string name = requested;
  bool untested = force;
  if (name.empty() && texts.autoName != nullptr) {
    untested = force || texts.autoNameUntested;
    name = list.autoName(texts.autoName, untested);
    ruleHeld = false;  // held for the request, not for the name made for it
  }
  Refusal why = Refusal::NONE;
  if (isRefusedName(name)) {
    why = Refusal::BAD_NAME;
  } else if (!ruleHeld && !acceptsName<Kind>(owner, name, 0)) {
    why = Refusal::INVALID;
  } else if (!untested && list.has(name)) {
    why = Refusal::TAKEN;
  }
  if (why != Refusal::NONE) {
    if (texts.failed != nullptr) {
      HABM_TRACE(TRACE_BLOCK, texts.failed, requested.c_str(), Kind::ownerPath(owner).c_str());
    }
    return {nullptr, why};
  }
  auto* child = list.append(Kind::make(owner, name, std::forward<Args>(args)...));
  if (texts.created != nullptr && ComMsgMgr::hasScope("HABM") != 0) {
    traceChildLife(texts, texts.created, texts.createdMask, name, Kind::ownerPath(owner));
  }
  return {child, Refusal::NONE};
}

/// Destroys the first child of that name, keeping the order of the others, and traces; false, silently,
/// when there is none.
template <class Kind>
bool removeChild(typename Kind::Owner& owner, std::string const& requested) {
  std::string const name = requested;  // the request may be the child's own name, about to go
  if (Kind::list(owner).take(name) == nullptr) {
    return false;
  }
  if (ComMsgMgr::hasScope("HABM") != 0) {
    traceChildLife(Kind::TEXTS, Kind::TEXTS.removed, Kind::TEXTS.removedMask, name, Kind::ownerPath(owner));
  }
  return true;
}

/// Renames the first child of `oldName` to `newName` under the common rules (the old name is found, the new
/// one is valid and free; the same name is a rename that changes nothing) and traces the kind's rename
/// texts; what refused it otherwise.
template <class Kind>
Refusal renameChild(typename Kind::Owner& owner, std::string const& oldName, std::string const& newName) {
  auto& list = Kind::list(owner);
  auto* child = list.get(oldName);
  Refusal why = Refusal::NONE;
  if (child == nullptr) {
    why = Refusal::NOT_FOUND;
  } else if (newName == oldName) {
    return Refusal::NONE;
  } else if (isRefusedName(newName)) {
    why = Refusal::BAD_NAME;
  } else if (list.has(newName)) {
    why = Refusal::TAKEN;
  }
  if (why != Refusal::NONE) {
    HABM_TRACE(TRACE_CHILD, Kind::RENAME_FAILED, oldName.c_str(), newName.c_str(),
               Kind::ownerPath(owner).c_str());
    return why;
  }
  std::string const old = oldName;  // the request may be the child's own name, about to change
  Kind::rename(*child, newName);
  list.renamed(*child, old);
  HABM_TRACE(TRACE_CHILD, Kind::RENAMED, old.c_str(), newName.c_str(), Kind::ownerPath(owner).c_str());
  return Refusal::NONE;
}

/// Sets the value of the first child of that name, creating it first when `create` is set; null when it
/// is missing and not created, or when the creator refused.
template <class Kind>
typename Kind::Child* setChildValue(typename Kind::Owner& owner, std::string const& name,
                                    std::string const& value, bool create) {
  auto* child = Kind::list(owner).get(name);
  if (child == nullptr && create) {
    child = createChild<Kind>(owner, name, false, std::string()).child;
  }
  if (child != nullptr) {
    child->setValue(value);
  }
  return child;
}

}  // namespace habm_detail
