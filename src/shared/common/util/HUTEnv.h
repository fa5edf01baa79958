// HUTEnv.h: facts about the host environment that a library may ask.
#pragma once

/// Host environment facts. Each is false until the host states it.
class HUTEnv {
 public:
  /// Whether the process runs on one of the tool authors' in-house hosts; false unless set.
  static bool isHostInsideOrvane();
  /// Set by a host that knows where it runs.
  static void setHostInsideOrvane(bool inside);
};
