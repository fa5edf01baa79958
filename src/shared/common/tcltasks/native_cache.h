// native_cache.h: the per-type cache that pairs native objects with the Tcl objects that stand for them.
#pragma once

#include "tcltasks/native_cache_base.h"

#include <boost/container_hash/hash.hpp>

#include <functional>
#include <unordered_map>

namespace hwk::tcltasks {

template <class Pointer>
class native_cache;

/// One cache per native type T for the whole process: the Tcl package fills both maps when it wraps an
/// object (taking a reference for the cache), `invalidateTcl` empties them when the object dies. Each map
/// is made on first use; `observers()` stays false until then, so a process without Tcl never looks at a
/// map. The bodies are in native_cache_impl.h.
template <class T>
class native_cache<T*> : public native_cache_base {
 public:
  using t2n_map = std::unordered_map<Tcl_Obj*, T const*, boost::hash<Tcl_Obj*>, std::equal_to<Tcl_Obj*>>;
  using n2t_map = std::unordered_multimap<T const*, Tcl_Obj*, boost::hash<T const*>, std::equal_to<T const*>>;

  /// Script object to the native object it stands for; sets the observers flag.
  static t2n_map& get_t2n_cache();
  /// Native object to every script object that stands for it; sets the observers flag.
  static n2t_map& get_n2t_cache();
  /// True when a map has been used, so there may be something to invalidate; falls to false for good
  /// once the interpreter is exiting.
  static bool& observers();

 private:
  static bool& flag();
};

/// Tells the Tcl side that `object` dies: each script object that stands for it is taken out of both
/// maps, marked invalid and released. Without observers this is one test of a flag; while the
/// interpreter exits it leaves the maps alone. A script object missing from the first map is reported as
/// "native_cache<> corrupt" and handled all the same.
template <class T>
void invalidateTcl(T const* object);

}  // namespace hwk::tcltasks
