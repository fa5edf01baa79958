// HABMLibrary.h: what the block model library sets up in its host when it is loaded.
#pragma once

#include <string>
#include <vector>

/// Load-time set-up of the library.
class HABMLibrary {
 public:
  /// Registers the library's own host parameters ("blockmodel.softenCanMergeChecks", hidden). Runs once
  /// when the shared library is loaded; later calls change nothing.
  static void registerParameters();
  /// Every host parameter the library reads, registered or not, in name order.
  static std::vector<std::string> const& readParameters();
};
