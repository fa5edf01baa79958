// HABMCachedObject.cpp: the destructor hook of the cached model classes and the caches it empties, both
// instantiated here for each of the six classes.
#include "blockmodel/HABMCachedObject.h"

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMObjectCaches.h"

#include "pyinfra/py_native_cache_impl.h"
#include "tcltasks/native_cache_impl.h"

template <class T>
void HABMCachedObject<T>::leaveObjectCaches() const noexcept {
  // A destructor must not throw: whatever a shell's hook throws is dropped, and the Python side is still
  // told when the Tcl side failed.
  // The base is private, so only a C-style cast may reach the derived object; it is the same conversion
  // that static_cast would make.
  T const* self =
      (T const*)this;  // NOLINT(cppcoreguidelines-pro-type-cstyle-cast,google-readability-casting)
  try {
    hwk::tcltasks::invalidateTcl(self);
  } catch (...) {  // NOLINT(bugprone-empty-catch)
  }
  try {
    hwk::pyinfra::invalidatePython(self);
  } catch (...) {  // NOLINT(bugprone-empty-catch)
  }
}

#define HABM_OBJECT_CACHES_INSTANTIATE(T)               \
  template class HABMCachedObject<T>;                   \
  template class hwk::tcltasks::native_cache<T*>;       \
  template class hwk::pyinfra::py_native_cache<T*>;     \
  template void hwk::tcltasks::invalidateTcl(T const*); \
  template void hwk::pyinfra::invalidatePython(T const*);

HABM_OBJECT_CACHES_INSTANTIATE(HABMAddrAssign)
HABM_OBJECT_CACHES_INSTANTIATE(HABMAddrBlock)
HABM_OBJECT_CACHES_INSTANTIATE(HABMAddrSpace)
HABM_OBJECT_CACHES_INSTANTIATE(HABMBlock)
HABM_OBJECT_CACHES_INSTANTIATE(HABMNocConnection)
HABM_OBJECT_CACHES_INSTANTIATE(HABMNocInterface)
