// BmPyHandles.h: Python objects for model objects: the cached kinds through the object caches, the other
// kinds by owner and name.
#pragma once

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMObjectCaches.h"

#include <memory>
#include <pybind11/pybind11.h>
#include <stdexcept>
#include <string>
#include <unordered_map>

namespace bmpy {

namespace py = pybind11;

/// Thrown when a Python object is used after its model object died; raised as ReferenceError.
class StaleObject : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The kind of a cached class as a user reads it in a message.
template <class T>
char const* kindName();
template <>
inline char const* kindName<HABMBlock>() {
  return "block";
}
template <>
inline char const* kindName<HABMAddrSpace>() {
  return "address space";
}
template <>
inline char const* kindName<HABMAddrBlock>() {
  return "address block";
}
template <>
inline char const* kindName<HABMAddrAssign>() {
  return "address assignment";
}
template <>
inline char const* kindName<HABMNocInterface>() {
  return "NoC interface";
}
template <>
inline char const* kindName<HABMNocConnection>() {
  return "NoC connection";
}

/// The top block of the tree that holds `object`.
inline HABMBlock const* topOf(HABMBlock const& object) {
  return object.getTop();
}
inline HABMBlock const* topOf(HABMAddrSpace const& object) {
  return object.getParent()->getTop();
}
inline HABMBlock const* topOf(HABMAddrBlock const& object) {
  return object.getParent()->getParent()->getTop();
}
inline HABMBlock const* topOf(HABMAddrAssign const& object) {
  return object.getParent()->getTop();
}
inline HABMBlock const* topOf(HABMNocInterface const& object) {
  return object.getParent()->getTop();
}
inline HABMBlock const* topOf(HABMNocConnection const& object) {
  return object.getParent()->getTop();
}

/// The Python objects that own a tree, by its top block (borrowed pointers).
std::unordered_map<HABMBlock const*, PyObject*>& treeOwners();

/// The state of a Python object of a cached class. It is registered in the object cache of T for as long
/// as both it and its model object live; the cache's invalidation nulls `native`. An object that owns a
/// tree (a top block read or made from Python) holds it in `owned`; every other one keeps the owner of
/// its tree alive through `keeper`.
template <class T>
struct Handle {
  using cache = hwk::pyinfra::py_native_cache<T*>;
  using element_type = T;

  T* native = nullptr;
  std::unique_ptr<HABMBlock> owned;
  py::object keeper;
  PyObject* self = nullptr;

  Handle() = default;
  Handle(Handle&&) noexcept = default;
  Handle& operator=(Handle&&) noexcept = default;
  Handle(Handle const&) = delete;
  Handle& operator=(Handle const&) = delete;

  ~Handle() {
    // Leave the cache before the tree goes, so that dropping the tree tells only the other objects.
    if (self != nullptr && native != nullptr && !cache::py_exiting()) {
      cache::get_py2n_cache().erase(self);
      auto& n2py = cache::get_n2py_cache();
      auto range = n2py.equal_range(native);
      for (auto entry = range.first; entry != range.second; ++entry) {
        if (entry->second == self) {
          n2py.erase(entry);
          break;
        }
      }
    }
    if (owned) {
      treeOwners().erase(owned.get());
      owned.reset();
    }
  }

  /// The model object; throws StaleObject once it died.
  T& get() const {
    if (native == nullptr) {
      throw StaleObject(std::string("This ") + kindName<T>() +
                        " no longer exists: it was destroyed by an edit of its owner or with its tree.");
    }
    return *native;
  }
};

/// A Python object for `native` (None for null): for the top block of an owned tree the owner itself,
/// else a new object registered in the cache of T that keeps the owner of the tree alive.
template <class T>
py::object wrap(T* native) {
  if (native == nullptr) {
    return py::none();
  }
  auto owner = treeOwners().find(topOf(*native));
  if (owner != treeOwners().end() &&
      static_cast<void const*>(owner->first) == static_cast<void const*>(native)) {
    return py::reinterpret_borrow<py::object>(owner->second);
  }
  Handle<T> handle;
  handle.native = native;
  if (owner != treeOwners().end()) {
    handle.keeper = py::reinterpret_borrow<py::object>(owner->second);
  }
  py::object object = py::cast(std::move(handle));
  object.cast<Handle<T>&>().self = object.ptr();
  using cache = hwk::pyinfra::py_native_cache<T*>;
  cache::get_py2n_cache()[object.ptr()] = native;
  cache::get_n2py_cache().emplace(native, object.ptr());
  return object;
}

/// A new Python object that owns the tree of the top block `top`.
py::object adoptTree(std::unique_ptr<HABMBlock> top);

/// A model object of a kind without a cache, named by its owner's Python object and its name and found
/// again on every use: after a removal, or after a rename by another route, using it raises
/// ReferenceError.
template <class C, class P>
struct Child {
  py::object owner;
  std::string name;

  P& parent() const { return owner.cast<Handle<P>&>().get(); }
};

}  // namespace bmpy
