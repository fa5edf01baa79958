// HUTEnv.cpp: host environment facts.
#include "util/HUTEnv.h"

namespace {
bool& insideOrvane() {
  static bool inside = false;
  return inside;
}
}  // namespace

bool HUTEnv::isHostInsideOrvane() {
  return insideOrvane();
}

void HUTEnv::setHostInsideOrvane(bool inside) {
  insideOrvane() = inside;
}
