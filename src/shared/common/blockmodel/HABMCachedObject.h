// HABMCachedObject.h: the destructor hook of the model classes that the host's script shells cache.
#pragma once

/// Base of the model classes whose objects the Tcl and Python shells hand out as script objects. The
/// derived destructor calls `leaveObjectCaches()` before anything else, so that every script object that
/// stands for the dying native object is told at once and turns invalid instead of dangling. The hook is
/// the one place where the caches are reached from the model.
template <class T>
class HABMCachedObject {
 protected:
  HABMCachedObject() = default;
  ~HABMCachedObject() = default;

  /// Takes this object out of the shells' caches; never throws.
  void leaveObjectCaches() const noexcept;
};
