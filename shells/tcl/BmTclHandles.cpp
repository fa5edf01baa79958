// BmTclHandles.cpp: the handle type, the name table, the owned trees and the hooks of the Tcl caches.
#include "BmTclHandles.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace bmtcl {

namespace {

// Live handles by name; each entry holds a reference to its record. Names are never reused.
std::unordered_map<std::string, HandleRecord*>& names() {
  static std::unordered_map<std::string, HandleRecord*> table;
  return table;
}

std::unordered_map<HABMBlock const*, std::unique_ptr<HABMBlock>>& ownedTrees() {
  static std::unordered_map<HABMBlock const*, std::unique_ptr<HABMBlock>> trees;
  return trees;
}

std::vector<std::string>& errors() {
  static std::vector<std::string> texts;
  return texts;
}

bool& reportWanted() {
  static bool wanted = false;
  return wanted;
}

// The number of the last name given out.
std::uint64_t& lastNumber() {
  static std::uint64_t number = 0;
  return number;
}

void release(HandleRecord* record) {
  if (--record->refs == 0) {
    delete record;
  }
}

HandleRecord*& recordSlot(Tcl_Obj* value) {
  return reinterpret_cast<HandleRecord*&>(value->internalRep.twoPtrValue.ptr1);
}

void freeHandle(Tcl_Obj* value) {
  release(recordSlot(value));
}

void dupHandle(Tcl_Obj* source, Tcl_Obj* copy) {
  HandleRecord* record = recordSlot(source);
  ++record->refs;
  recordSlot(copy) = record;
  copy->typePtr = &handleType;
}

void updateHandleString(Tcl_Obj* value) {
  std::string const& name = recordSlot(value)->name;
  value->bytes = Tcl_Alloc(static_cast<unsigned int>(name.size() + 1));
  std::memcpy(value->bytes, name.c_str(), name.size() + 1);
  value->length = static_cast<int>(name.size());
}

int handleFromString(Tcl_Interp* interp, Tcl_Obj* value) {
  auto found = names().find(Tcl_GetString(value));
  if (found == names().end()) {
    if (interp != nullptr) {
      Tcl_SetObjResult(interp, Tcl_ObjPrintf("\"%s\" is not a live blockmodel handle", Tcl_GetString(value)));
    }
    return TCL_ERROR;
  }
  if (value->typePtr != nullptr && value->typePtr->freeIntRepProc != nullptr) {
    value->typePtr->freeIntRepProc(value);
  }
  ++found->second->refs;
  recordSlot(value) = found->second;
  value->typePtr = &handleType;
  return TCL_OK;
}

// The hooks of the caches. A handle may have been converted to another type since it was made, so its
// record is found by name when it is no longer a handle.
void markInvalid(Tcl_Obj* value) {
  HandleRecord* record = nullptr;
  if (value->typePtr == &handleType) {
    record = recordSlot(value);
  } else {
    auto found = names().find(Tcl_GetString(value));
    record = found == names().end() ? nullptr : found->second;
  }
  if (record == nullptr) {
    return;
  }
  record->native = nullptr;
  auto named = names().find(record->name);
  if (named != names().end() && named->second == record) {
    names().erase(named);
    release(record);
  }
}

void decrRefCount(Tcl_Obj* value) {
  Tcl_DecrRefCount(value);
}

void reportError(char const* text) {
  errors().emplace_back(text);
  std::fprintf(stderr, "blockmodel: %s\n", text);
}

template <class T>
Tcl_Obj* stateOf() {
  using cache = hwk::tcltasks::native_cache<T*>;
  bool const observed = cache::observers();
  Tcl_Obj* dict = Tcl_NewDictObj();
  Tcl_DictObjPut(nullptr, dict, Tcl_NewStringObj("observers", -1), Tcl_NewBooleanObj(observed ? 1 : 0));
  Tcl_DictObjPut(nullptr, dict, Tcl_NewStringObj("t2n", -1),
                 Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(cache::get_t2n_cache().size())));
  Tcl_DictObjPut(nullptr, dict, Tcl_NewStringObj("n2t", -1),
                 Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(cache::get_n2t_cache().size())));
  cache::observers() = observed;  // looking must not raise the flag
  return dict;
}

// At exit the interpreter is going away: the caches are told first, so the trees destroyed here leave
// them alone and no handle is touched.
void onExit(ClientData /*unused*/) {
  hwk::tcltasks::native_cache_base::set_tcl_exiting(true);
  ownedTrees().clear();
  if (reportWanted()) {
    Tcl_Obj* state = cacheState();
    Tcl_IncrRefCount(state);
    std::printf("cache state at exit: %s\n", Tcl_GetString(state));
    std::fflush(stdout);
    Tcl_DecrRefCount(state);
  }
}

}  // namespace

Tcl_ObjType const handleType = {"blockmodel-handle", freeHandle, dupHandle, updateHandleString,
                                handleFromString};

char const* kindText(Kind kind) {
  switch (kind) {
    case Kind::BLOCK:
      return "block";
    case Kind::ADDR_SPACE:
      return "address space";
    case Kind::ADDR_BLOCK:
      return "address block";
    case Kind::ADDR_ASSIGN:
      return "address assignment";
    case Kind::NOC_INTERFACE:
      return "NoC interface";
    case Kind::NOC_CONNECTION:
      return "NoC connection";
  }
  return "object";
}

char const* kindWord(Kind kind) {
  switch (kind) {
    case Kind::BLOCK:
      return "block";
    case Kind::ADDR_SPACE:
      return "addr_space";
    case Kind::ADDR_BLOCK:
      return "addr_block";
    case Kind::ADDR_ASSIGN:
      return "addr_assign";
    case Kind::NOC_INTERFACE:
      return "noc_interface";
    case Kind::NOC_CONNECTION:
      return "noc_connection";
  }
  return "object";
}

HandleRecord& recordOf(Tcl_Obj* value) {
  if (value->typePtr == &handleType || handleFromString(nullptr, value) == TCL_OK) {
    return *recordSlot(value);
  }
  // Names are never reused, so a well-formed name that was given out and is no longer live names an
  // object that was destroyed.
  std::string const name = Tcl_GetString(value);
  std::size_t const at = name.find('@');
  for (Kind kind : {Kind::BLOCK, Kind::ADDR_SPACE, Kind::ADDR_BLOCK, Kind::ADDR_ASSIGN, Kind::NOC_INTERFACE,
                    Kind::NOC_CONNECTION}) {
    if (at != std::string::npos && name.compare(0, at, kindWord(kind)) == 0 && at + 1 < name.size() &&
        name.size() - at <= 19 && name.find_first_not_of("0123456789", at + 1) == std::string::npos &&
        std::stoull(name.substr(at + 1)) <= lastNumber()) {
      throw TclError(std::string("the ") + kindText(kind) + " of handle \"" + name + "\" " + destroyedText());
    }
  }
  throw TclError("\"" + name + "\" is not a blockmodel handle");
}

Tcl_Obj* newHandle(void const* native, Kind kind) {
  std::uint64_t& counter = lastNumber();
  auto* record = new HandleRecord;
  record->native = native;
  record->kind = kind;
  record->name = std::string(kindWord(kind)) + "@" + std::to_string(++counter);
  record->refs = 2;  // the name table and the new value
  names()[record->name] = record;
  Tcl_Obj* value = Tcl_NewObj();
  Tcl_InvalidateStringRep(value);
  recordSlot(value) = record;
  value->typePtr = &handleType;
  return value;
}

void installCacheHooks() {
  static bool installed = false;
  if (installed) {
    return;
  }
  installed = true;
  hwk::tcltasks::native_cache_base::interpreter_hooks hooks;
  hooks.mark_invalid = &markInvalid;
  hooks.decr_refcount = &decrRefCount;
  hooks.error = &reportError;
  hwk::tcltasks::native_cache_base::install_hooks(hooks);
  Tcl_CreateExitHandler(&onExit, nullptr);
}

Tcl_Obj* cacheErrors() {
  Tcl_Obj* list = Tcl_NewListObj(0, nullptr);
  for (std::string const& text : errors()) {
    Tcl_ListObjAppendElement(nullptr, list, Tcl_NewStringObj(text.c_str(), -1));
  }
  return list;
}

void unlinkHandle(Tcl_Obj* value) {
  HandleRecord& record = recordOf(value);
  // The cache's own value for the object, whatever value the script passed.
  auto drop = [&record](auto* typed) {
    using T = std::remove_const_t<std::remove_pointer_t<decltype(typed)>>;
    using cache = hwk::tcltasks::native_cache<T*>;
    auto found = cache::get_n2t_cache().find(static_cast<T const*>(record.native));
    if (found != cache::get_n2t_cache().end()) {
      cache::get_t2n_cache().erase(found->second);
    }
  };
  if (record.kind == Kind::BLOCK) {
    drop(static_cast<HABMBlock const*>(nullptr));
  } else if (record.kind == Kind::NOC_INTERFACE) {
    drop(static_cast<HABMNocInterface const*>(nullptr));
  }
}

Tcl_Obj* cacheState() {
  Tcl_Obj* dict = Tcl_NewDictObj();
  Tcl_DictObjPut(nullptr, dict, Tcl_NewStringObj("block", -1), stateOf<HABMBlock>());
  Tcl_DictObjPut(nullptr, dict, Tcl_NewStringObj("noc_interface", -1), stateOf<HABMNocInterface>());
  Tcl_DictObjPut(nullptr, dict, Tcl_NewStringObj("exiting", -1),
                 Tcl_NewBooleanObj(hwk::tcltasks::native_cache_base::tcl_exiting() ? 1 : 0));
  return dict;
}

void ownTree(std::unique_ptr<HABMBlock> top) {
  HABMBlock const* key = top.get();
  ownedTrees()[key] = std::move(top);
}

bool dropTree(HABMBlock const* top) {
  auto found = ownedTrees().find(top);
  if (found == ownedTrees().end()) {
    return false;
  }
  // Out of the table first: the tree's destructors may run script-visible hooks.
  std::unique_ptr<HABMBlock> tree = std::move(found->second);
  ownedTrees().erase(found);
  tree.reset();
  return true;
}

void reportAtExit() {
  reportWanted() = true;
}

}  // namespace bmtcl
