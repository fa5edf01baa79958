// native_cache_base.cpp: the Tcl caches' interpreter side, reached through the hooks a package installs.
#include "tcltasks/native_cache_base.h"

#include <cstdio>

namespace hwk::tcltasks {
namespace {

native_cache_base::interpreter_hooks& hooks() {
  static native_cache_base::interpreter_hooks installed;
  return installed;
}

bool& exiting() {
  static bool flag = false;
  return flag;
}

}  // namespace

bool native_cache_base::tcl_exiting() {
  return exiting();
}

void native_cache_base::mark_invalid(Tcl_Obj* object) {
  if (hooks().mark_invalid != nullptr) {
    hooks().mark_invalid(object);
  }
}

void native_cache_base::decr_refcount(Tcl_Obj* object) {
  if (hooks().decr_refcount != nullptr) {
    hooks().decr_refcount(object);
  }
}

void native_cache_base::error(char const* text) {
  if (hooks().error != nullptr) {
    hooks().error(text);
  } else {
    std::fprintf(stderr, "%s\n", text);
  }
}

void native_cache_base::install_hooks(interpreter_hooks const& installed) {
  hooks() = installed;
  exiting() = false;
}

void native_cache_base::set_tcl_exiting(bool value) {
  exiting() = value;
}

}  // namespace hwk::tcltasks
