// py_native_cache_impl.h: the bodies of the Python object caches, for the one library that instantiates
// them. Hosts include py_native_cache.h only, so every map and flag has exactly one definition in the
// process (an extension module loaded with local symbols would otherwise get copies of its own).
#pragma once

#include "pyinfra/py_native_cache.h"

namespace hwk::pyinfra {

template <class T>
typename py_native_cache<T*>::py2n_map& py_native_cache<T*>::get_py2n_cache() {
  static py2n_map cache;
  flag() = true;
  return cache;
}

template <class T>
typename py_native_cache<T*>::n2py_map& py_native_cache<T*>::get_n2py_cache() {
  static n2py_map cache;
  flag() = true;
  return cache;
}

template <class T>
bool& py_native_cache<T*>::observers() {
  bool& value = flag();
  if (value && py_exiting()) {
    value = false;
  }
  return value;
}

template <class T>
bool& py_native_cache<T*>::flag() {
  static bool value = false;
  return value;
}

// Everything after the first flag test, kept out of line so that the test alone inlines into the
// destructors: a tree destroyed with no shell loaded pays one bool test per object.
namespace detail {

template <class T>
[[gnu::noinline]] void invalidatePythonEntries(T const* object) {
  using cache = py_native_cache<T*>;
  bool& observers = cache::observers();
  if (cache::py_exiting()) {
    observers = false;
    return;
  }
  if (!observers) {
    return;
  }
  auto& n2py = cache::get_n2py_cache();
  auto range = n2py.equal_range(object);
  if (range.first == range.second) {
    return;
  }
  auto& py2n = cache::get_py2n_cache();
  for (auto entry = range.first; entry != range.second; ++entry) {
    _object* script = entry->second;
    auto found = py2n.find(script);
    if (found == py2n.end()) {
      cache::error("py_native_cache<> corrupt");
    } else {
      py2n.erase(found);
    }
    cache::mark_invalid(script);
  }
  n2py.erase(range.first, range.second);
}

}  // namespace detail

template <class T>
void invalidatePython(T const* object) {
  if (py_native_cache<T*>::observers()) {
    detail::invalidatePythonEntries(object);
  }
}

}  // namespace hwk::pyinfra
