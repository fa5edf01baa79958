// HABMBlockCheck.cpp: the invariant walk over a block tree, for tests and the fuzzer.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/detail/HABMKinds.h"

#include <functional>
#include <type_traits>

namespace {

using Findings = std::vector<std::string>;

// Where a finding is, built only when there is one: paths cost as much as the tree is deep.
using Where = std::function<std::string()>;

// A stored path is relative to its holder: the setters cut absolute paths down, so an absolute one means
// that something wrote behind their back.
void checkRelative(std::string const& path, Where const& where, Findings& findings) {
  if (HABMPath::is_absolute(path)) {
    findings.push_back(where() + ": the stored path '" + path + "' is absolute");
  }
}

template <class T>
void checkStored(T const&, Where const&, Findings&) {}

void checkStored(HABMPortConnection const& connection, Where const& where, Findings& findings) {
  checkRelative(connection.getSourcePath(false), where, findings);
  for (std::string const& target : connection.getTargetPaths(false)) {
    if (!HABMPath::is_valid(target)) {
      findings.push_back(where() + ": an empty target path is stored");
    }
    checkRelative(target, where, findings);
  }
}

void checkStored(HABMInterfaceConnection const& connection, Where const& where, Findings& findings) {
  checkRelative(connection.getSourcePath(false), where, findings);
  checkRelative(connection.getTargetPath(false), where, findings);
}

void checkStored(HABMAddrAssign const& assign, Where const& where, Findings& findings) {
  checkRelative(assign.getSourcePath(false), where, findings);
  checkRelative(assign.getTargetPath(false), where, findings);
}

void checkStored(HABMInterface const& iface, Where const& where, Findings& findings) {
  if (!iface.getAddrSpaceRef().empty() && !iface.getMemoryMapRef().empty()) {
    findings.push_back(where() + ": both an address space and a memory map are referenced");
  }
}

// Every container of `owner`, every child in it, and what lies below each child but sub-blocks.
template <class Owner>
void checkOwner(Owner const& owner, Findings& findings) {
  habm_detail::forEachKind(typename habm_detail::KindsOf<Owner>::type{}, [&](auto kind) {
    using K = decltype(kind);
    using Child = typename K::Child;
    auto const& list = K::list(owner);
    Where const where = [&] { return K::ownerPath(owner) + " (" + K::key() + ")"; };
    std::string const index = list.checkIndex();
    if (!index.empty()) {
      findings.push_back(where() + ": " + index);
    }
    for (Child const* child : list) {
      std::string const& name = HABMChildName<Child>::of(*child);
      Where const self = [&] { return where() + " '" + name + "'"; };
      if (habm_detail::isRefusedName(name)) {
        findings.push_back(self() + ": the name is refused by the creators");
      }
      void const* parent = K::parentOf(*child);
      if (parent != nullptr && parent != static_cast<void const*>(&owner)) {
        findings.push_back(self() + ": the parent does not point back to the owner");
      }
      checkStored(*child, self, findings);
      if constexpr (!std::is_same_v<Child, HABMBlock>) {
        checkOwner(*child, findings);
      }
    }
  });
}

}  // namespace

std::vector<std::string> HABMBlock::check() const {
  Findings findings;
  habm_detail::forEachBlock(*this, [&](HABMBlock const& block) { checkOwner(block, findings); });
  return findings;
}
