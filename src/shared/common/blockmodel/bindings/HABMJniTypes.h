// HABMJniTypes.h: the native types behind the Java containers and iterators of the block model, and the
// small operations the Java side calls on them.
#pragma once

#include "blockmodel/HABMNocPath.h"
#include "blockmodel/bindings/HSTFwdIter.h"
#include "blockmodel/bindings/HSTFwdSTLIter.h"

#include <cstddef>
#include <set>
#include <vector>

class HABMBlock;
class HABMNocConnection;
class HABMNocInterface;

namespace habm_jni {

using DesignBlockVector = std::vector<HABMBlock*>;
using NocInterfaceVector = std::vector<HABMNocInterface*>;
using NocConnectionVector = std::vector<HABMNocConnection*>;
using NocPathVector = std::vector<HABMNocPath*>;
using DesignBlockIter = HSTFwdIter<HABMBlock*>;
using NocInterfaceIter = HSTFwdIter<HABMNocInterface*>;
using NocConnectionIter = HSTFwdIter<HABMNocConnection*>;
using NocPathIter = HSTFwdIter<HABMNocPath*>;

/// The Java NocPathSet: a set of path pointers, like every container Java sees. Paths are values, so a
/// set made by createNocPaths also owns the paths it points to; a set Java makes itself owns none.
/// The owned paths lie in one array in name order, so the set (ordered by address) walks them by name.
class NocPathSet : public std::set<HABMNocPath*> {
 public:
  NocPathSet() = default;
  /// A set pointing at its own copies of `paths`.
  explicit NocPathSet(std::set<HABMNocPath> const& paths);
  // A copy would point at the other set's paths; a move keeps them, since a moved vector keeps its
  // elements in place.
  NocPathSet(NocPathSet const&) = delete;
  NocPathSet& operator=(NocPathSet const&) = delete;
  NocPathSet(NocPathSet&&) = default;
  NocPathSet& operator=(NocPathSet&&) = default;
  ~NocPathSet() = default;

 private:
  std::vector<HABMNocPath> owned_;
};

/// HABMNocPath::createNocPaths as a set Java can walk.
NocPathSet createNocPaths(HABMBlock const* block);

// Container and iterator operations, one template each for every Java container type.

template <class C>
C* make() {
  return new C();
}
/// Frees a container or an iterator; null is ignored. The elements are not the container's to free.
template <class C>
void destroy(C* object) {
  delete object;
}
template <class C>
void clear(C& container) {
  container.clear();
}
template <class C>
std::size_t size(C const& container) {
  return container.size();
}
template <class C>
void pushBack(C& container, typename C::value_type element) {
  container.push_back(element);
}
/// True when the element was not in the set yet.
inline bool insert(NocPathSet& set, HABMNocPath* path) {
  return set.insert(path).second;
}
/// True when the element was in the set.
inline bool erase(NocPathSet& set, HABMNocPath* path) {
  return set.erase(path) > 0;
}
/// An iterator over the container as it is now; the caller frees it with destroy.
template <class C>
HSTFwdIter<typename C::value_type>* createIter(C const& container) {
  return new HSTFwdSTLIter<typename C::const_iterator, typename C::value_type>(container.begin(),
                                                                               container.end());
}
template <class T>
bool hasNext(HSTFwdIter<T> const& iter) {
  return iter.hasNext;
}
template <class T>
T next(HSTFwdIter<T>& iter) {
  return iter.next();
}
/// A constant as a function, for the entry points that hand out enumeration values.
template <auto V>
decltype(V) constant() {
  return V;
}

}  // namespace habm_jni
