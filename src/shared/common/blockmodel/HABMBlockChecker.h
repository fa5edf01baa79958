// HABMBlockChecker.h: the design-rule checks run over a finished block tree before implementation.
#pragma once

#include "msg/ComMsgMgrInstance.h"

#include <vector>

class HABMBlock;

/// Rule sets over a block and everything below it. Each set only reads the tree and adds its findings,
/// deferred messages in the domain "blockmodel", to a list; validate_all sends them once every set has
/// run. Stateless: all members are static.
class HABMBlockChecker {
 public:
  /// Runs every rule set on `block` in a fixed order, then sends all findings in the order they were
  /// made. False when any set found a violation; notices alone leave it true.
  static bool validate_all(HABMBlock const& block);

 protected:
  // Each rule set appends its findings to `messages` without sending them and says whether the block
  // passed: false exactly when it added a violation.

  /// Notices for every stub instance, the block itself included; always true.
  static bool validate_block_stubs(HABMBlock const& block, std::vector<ComMsgMgrInstance>& messages);
  /// False when run-time swapped regions below the block mix block design and RTL implementations.
  static bool validate_rsw_blocks(HABMBlock const& block, std::vector<ComMsgMgrInstance>& messages);
  /// False when a bus link to an OPM NoC module disagrees on the address or data width.
  static bool validate_opm_connections(HABMBlock const& block, std::vector<ComMsgMgrInstance>& messages);
  /// False when a NoC interface has a bad target aperture, a bad parameter value or an illegal fan-out.
  static bool validate_noc_interfaces(HABMBlock const& block, std::vector<ComMsgMgrInstance>& messages);
  /// Notices for remaps across OPM NoC modules and for unconnected NoC interfaces; always true.
  static bool validate_noc_connections(HABMBlock const& block, std::vector<ComMsgMgrInstance>& messages);
  /// False when NoC paths are duplicated, cross run-time swapped regions in a way the static part cannot
  /// own, or fan a stream out illegally. Later stages are skipped once one has failed.
  static bool validate_noc_paths(HABMBlock const& block, std::vector<ComMsgMgrInstance>& messages);
};
