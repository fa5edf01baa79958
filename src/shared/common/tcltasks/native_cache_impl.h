// native_cache_impl.h: the bodies of the Tcl object caches, for the one library that instantiates them.
// Hosts include native_cache.h only, so every map and flag has exactly one definition in the process.
#pragma once

#include "tcltasks/native_cache.h"

namespace hwk::tcltasks {

template <class T>
typename native_cache<T*>::t2n_map& native_cache<T*>::get_t2n_cache() {
  static t2n_map cache;
  flag() = true;
  return cache;
}

template <class T>
typename native_cache<T*>::n2t_map& native_cache<T*>::get_n2t_cache() {
  static n2t_map cache;
  flag() = true;
  return cache;
}

template <class T>
bool& native_cache<T*>::observers() {
  bool& value = flag();
  if (value && tcl_exiting()) {
    value = false;
  }
  return value;
}

template <class T>
bool& native_cache<T*>::flag() {
  static bool value = false;
  return value;
}

// Everything after the first flag test, kept out of line so that the test alone inlines into the
// destructors: a tree destroyed with no shell loaded pays one bool test per object.
namespace detail {

template <class T>
[[gnu::noinline]] void invalidateTclEntries(T const* object) {
  using cache = native_cache<T*>;
  bool& observers = cache::observers();
  if (cache::tcl_exiting()) {
    observers = false;
    return;
  }
  if (!observers) {
    return;
  }
  auto& n2t = cache::get_n2t_cache();
  auto range = n2t.equal_range(object);
  if (range.first == range.second) {
    return;
  }
  auto& t2n = cache::get_t2n_cache();
  for (auto entry = range.first; entry != range.second; ++entry) {
    Tcl_Obj* script = entry->second;
    auto found = t2n.find(script);
    if (found == t2n.end()) {
      cache::error("native_cache<> corrupt");
    } else {
      t2n.erase(found);
    }
    cache::mark_invalid(script);
    cache::decr_refcount(script);
  }
  n2t.erase(range.first, range.second);
}

}  // namespace detail

template <class T>
void invalidateTcl(T const* object) {
  if (native_cache<T*>::observers()) {
    detail::invalidateTclEntries(object);
  }
}

}  // namespace hwk::tcltasks
