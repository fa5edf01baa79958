// HABMJniTypes.cpp: the set of NoC paths that Java walks.
#include "blockmodel/bindings/HABMJniTypes.h"

namespace habm_jni {

NocPathSet::NocPathSet(std::set<HABMNocPath> const& paths) : owned_(paths.begin(), paths.end()) {
  for (HABMNocPath& path : owned_) {
    insert(end(), &path);
  }
}

NocPathSet createNocPaths(HABMBlock const* block) {
  return NocPathSet(HABMNocPath::createNocPaths(block));
}

}  // namespace habm_jni
