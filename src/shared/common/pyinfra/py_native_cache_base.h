// py_native_cache_base.h: what the Python object caches need of the Python interpreter, without linking it.
#pragma once

// CPython's object struct (PyObject is a typedef of it), opaque here: the caches only store pointers.
struct _object;

namespace hwk::pyinfra {

/// The interpreter side of the Python object caches. It reaches Python only through the functions that an
/// extension module installs when it is imported, so a process that never imports one pulls no
/// interpreter in. The caches hold borrowed pointers: they own no reference to a Python object. All
/// members are static; the caches run with the interpreter's lock held.
class py_native_cache_base {
 public:
  /// The functions an extension module installs; any of them may be null.
  struct interpreter_hooks {
    void (*mark_invalid)(_object* object) = nullptr;
    void (*error)(char const* text) = nullptr;
  };

  /// True once the interpreter has started to finalise (set from the module's atexit function).
  static bool py_exiting();
  /// Turns `object` into one that raises when used, since its native object is gone; nothing without a
  /// module.
  static void mark_invalid(_object* object);
  /// Reports an internal fault of a cache: through the module when one is loaded, else on stderr.
  static void error(char const* text);

  /// Installs the module's functions (replacing earlier ones) and clears the exiting flag.
  static void install_hooks(interpreter_hooks const& hooks);
  /// Called with true when the interpreter finalises; the caches then leave their maps alone.
  static void set_py_exiting(bool exiting);
};

}  // namespace hwk::pyinfra
