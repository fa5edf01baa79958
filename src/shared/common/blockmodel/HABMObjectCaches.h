// HABMObjectCaches.h: the Tcl and Python object caches of the six model classes that the shells cache.
#pragma once

#include "pyinfra/py_native_cache.h"
#include "tcltasks/native_cache.h"

class HABMAddrAssign;
class HABMAddrBlock;
class HABMAddrSpace;
class HABMBlock;
class HABMNocConnection;
class HABMNocInterface;

// The library holds the only instantiations, so a shell that fills a cache and the destructor that
// empties it see the same maps.
#define HABM_OBJECT_CACHES_EXTERN(T)                           \
  extern template class hwk::tcltasks::native_cache<T*>;       \
  extern template class hwk::pyinfra::py_native_cache<T*>;     \
  extern template void hwk::tcltasks::invalidateTcl(T const*); \
  extern template void hwk::pyinfra::invalidatePython(T const*);

HABM_OBJECT_CACHES_EXTERN(HABMAddrAssign)
HABM_OBJECT_CACHES_EXTERN(HABMAddrBlock)
HABM_OBJECT_CACHES_EXTERN(HABMAddrSpace)
HABM_OBJECT_CACHES_EXTERN(HABMBlock)
HABM_OBJECT_CACHES_EXTERN(HABMNocConnection)
HABM_OBJECT_CACHES_EXTERN(HABMNocInterface)

#undef HABM_OBJECT_CACHES_EXTERN
