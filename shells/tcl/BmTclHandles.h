// BmTclHandles.h: Tcl handles for the cached model objects: a Tcl_ObjType whose values name a native
// object through a shared record, registered in the library's object caches.
#pragma once

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMObjectCaches.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <tcl.h>

namespace bmtcl {

/// A command's failure; its text becomes the Tcl error result.
class TclError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The six cached kinds, as a handle records them.
enum class Kind : std::uint8_t { BLOCK, ADDR_SPACE, ADDR_BLOCK, ADDR_ASSIGN, NOC_INTERFACE, NOC_CONNECTION };

template <class T>
struct KindOf;
template <>
struct KindOf<HABMBlock> {
  static constexpr Kind value = Kind::BLOCK;
};
template <>
struct KindOf<HABMAddrSpace> {
  static constexpr Kind value = Kind::ADDR_SPACE;
};
template <>
struct KindOf<HABMAddrBlock> {
  static constexpr Kind value = Kind::ADDR_BLOCK;
};
template <>
struct KindOf<HABMAddrAssign> {
  static constexpr Kind value = Kind::ADDR_ASSIGN;
};
template <>
struct KindOf<HABMNocInterface> {
  static constexpr Kind value = Kind::NOC_INTERFACE;
};
template <>
struct KindOf<HABMNocConnection> {
  static constexpr Kind value = Kind::NOC_CONNECTION;
};

/// "block", "address space", ...: the kind as a message names it.
char const* kindText(Kind kind);
/// "block", "addr_space", ...: the prefix of a handle's name.
char const* kindWord(Kind kind);

/// How a message ends that names a handle whose object died.
inline char const* destroyedText() {
  return "no longer exists: it was destroyed by an edit of its owner or with its tree";
}

/// What every Tcl value of one native object shares, duplicates and values re-read from the name
/// included: the object, or null once it died. Counted by the values and the name table that hold it.
struct HandleRecord {
  void const* native = nullptr;
  Kind kind = Kind::BLOCK;
  int refs = 0;
  std::string name;
};

/// The handle type of the package.
extern Tcl_ObjType const handleType;

/// The record of `value`, converting it from its string when needed; throws TclError when the string
/// names no live handle.
HandleRecord& recordOf(Tcl_Obj* value);

/// A new record for `native`, entered in the name table, and a new value for it.
Tcl_Obj* newHandle(void const* native, Kind kind);

/// The handle of `native` (an empty value for null): the one in the cache when there is one, else a new
/// value registered in both maps, the cache holding a reference to it.
template <class T>
Tcl_Obj* handleOf(T const* native) {
  if (native == nullptr) {
    return Tcl_NewObj();
  }
  using cache = hwk::tcltasks::native_cache<T*>;
  auto& n2t = cache::get_n2t_cache();
  auto found = n2t.find(native);
  if (found != n2t.end()) {
    return found->second;
  }
  Tcl_Obj* value = newHandle(native, KindOf<T>::value);
  Tcl_IncrRefCount(value);
  cache::get_t2n_cache()[value] = native;
  n2t.emplace(native, value);
  return value;
}

/// The live object of kind T that `value` names; throws TclError for another kind or a dead object.
template <class T>
T& nativeOf(Tcl_Obj* value) {
  HandleRecord& record = recordOf(value);
  if (record.kind != KindOf<T>::value) {
    throw TclError(std::string("expected a ") + kindText(KindOf<T>::value) + " handle, got the " +
                   kindText(record.kind) + " handle \"" + record.name + "\"");
  }
  if (record.native == nullptr) {
    throw TclError(std::string("the ") + kindText(record.kind) + " of handle \"" + record.name + "\" " +
                   destroyedText());
  }
  // The caches key on const pointers; the handle stands for an object the package may edit.
  return *const_cast<T*>(static_cast<T const*>(record.native));
}

/// Installs the cache hooks and the exit handler (once per process).
void installCacheHooks();
/// The texts the caches reported through their error hook.
Tcl_Obj* cacheErrors();
/// Drops `value` from the first map of its cache only, leaving a corrupt pair (for tests).
void unlinkHandle(Tcl_Obj* value);
/// Counts of the block and NoC interface caches, as a dict (for tests).
Tcl_Obj* cacheState();

/// The top blocks the package owns: read, made, cloned or detached ones, until delete_top_block.
void ownTree(std::unique_ptr<HABMBlock> top);
/// Destroys an owned tree; false when `top` is not one.
bool dropTree(HABMBlock const* top);
/// Prints the cache state after the exit handler destroyed the owned trees (for tests).
void reportAtExit();

}  // namespace bmtcl
