// native_cache_base.h: what the Tcl object caches need of the Tcl interpreter, without linking it.
#pragma once

// Tcl's object type, opaque here: the caches only store and compare pointers to it.
struct Tcl_Obj;

namespace hwk::tcltasks {

/// The interpreter side of the Tcl object caches. It reaches Tcl only through the functions that a Tcl
/// package installs when it loads, so a process that never loads one pulls no interpreter in and every
/// operation here is a no-op for it. All members are static; the caches run on the interpreter's thread.
class native_cache_base {
 public:
  /// The functions a Tcl package installs; any of them may be null.
  struct interpreter_hooks {
    void (*mark_invalid)(Tcl_Obj* object) = nullptr;
    void (*decr_refcount)(Tcl_Obj* object) = nullptr;
    void (*error)(char const* text) = nullptr;
  };

  /// True once the interpreter has started to shut down (set by the package's exit handler).
  static bool tcl_exiting();
  /// Turns `object` into a handle that says its native object is gone; nothing without a package.
  static void mark_invalid(Tcl_Obj* object);
  /// Releases the cache's reference to `object`; nothing without a package.
  static void decr_refcount(Tcl_Obj* object);
  /// Reports an internal fault of a cache: through the package when one is loaded, else on stderr.
  static void error(char const* text);

  /// Installs the package's functions (replacing earlier ones) and clears the exiting flag.
  static void install_hooks(interpreter_hooks const& hooks);
  /// Called by the package's exit handler with true; the caches then leave their maps alone.
  static void set_tcl_exiting(bool exiting);
};

}  // namespace hwk::tcltasks
