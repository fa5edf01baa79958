// py_native_cache_base.cpp: the Python caches' interpreter side, reached through the module's hooks.
#include "pyinfra/py_native_cache_base.h"

#include <cstdio>

namespace hwk::pyinfra {
namespace {

py_native_cache_base::interpreter_hooks& hooks() {
  static py_native_cache_base::interpreter_hooks installed;
  return installed;
}

bool& exiting() {
  static bool flag = false;
  return flag;
}

}  // namespace

bool py_native_cache_base::py_exiting() {
  return exiting();
}

void py_native_cache_base::mark_invalid(_object* object) {
  if (hooks().mark_invalid != nullptr) {
    hooks().mark_invalid(object);
  }
}

void py_native_cache_base::error(char const* text) {
  if (hooks().error != nullptr) {
    hooks().error(text);
  } else {
    std::fprintf(stderr, "%s\n", text);
  }
}

void py_native_cache_base::install_hooks(interpreter_hooks const& installed) {
  hooks() = installed;
  exiting() = false;
}

void py_native_cache_base::set_py_exiting(bool value) {
  exiting() = value;
}

}  // namespace hwk::pyinfra
