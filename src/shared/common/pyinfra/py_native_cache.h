// py_native_cache.h: the per-type cache that pairs native objects with the Python objects that stand for
// them.
#pragma once

#include "pyinfra/py_native_cache_base.h"

#include <boost/container_hash/hash.hpp>

#include <functional>
#include <unordered_map>

namespace hwk::pyinfra {

template <class Pointer>
class py_native_cache;

/// One cache per native type T for the whole process: the Python module fills both maps when it wraps an
/// object and empties them when a Python object dies first; `invalidatePython` empties them when the
/// native object dies. The maps hold borrowed pointers. Each map is made on first use; `observers()`
/// stays false until then, so a process without Python never looks at a map. The bodies are in
/// py_native_cache_impl.h.
template <class T>
class py_native_cache<T*> : public py_native_cache_base {
 public:
  using py2n_map = std::unordered_map<_object*, T const*, boost::hash<_object*>, std::equal_to<_object*>>;
  using n2py_map =
      std::unordered_multimap<T const*, _object*, boost::hash<T const*>, std::equal_to<T const*>>;

  /// Script object to the native object it stands for; sets the observers flag.
  static py2n_map& get_py2n_cache();
  /// Native object to every script object that stands for it; sets the observers flag.
  static n2py_map& get_n2py_cache();
  /// True when a map has been used, so there may be something to invalidate; falls to false for good
  /// once the interpreter is exiting.
  static bool& observers();

 private:
  static bool& flag();
};

/// Tells the Python side that `object` dies: each script object that stands for it is taken out of both
/// maps and marked invalid. Without observers this is one test of a flag; while the interpreter
/// finalises it leaves the maps alone. A script object missing from the first map is reported as
/// "py_native_cache<> corrupt" and handled all the same.
template <class T>
void invalidatePython(T const* object);

}  // namespace hwk::pyinfra
