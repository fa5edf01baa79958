// BmSynthetic.h: synthetic block designs of a chosen size, for benchmarks and for trying the tools.
#pragma once

#include <cstddef>
#include <memory>

class HABMBlock;

namespace bmtool {

/// The shape of a synthetic design: `depth` levels of sub-blocks below the top, `fanout` sub-blocks per
/// block, and per block `attributes` attributes plus one generic and one parameter, and `ports` ports.
/// With `noc`, every block without sub-blocks gets an NMU and an NSU and sends to the NSU of its next
/// sibling; every block at the first level gets a virtual NMU fed by the NMU of its first block without
/// sub-blocks, and sends on to that block of the next first-level block, with a remap: NoC paths through
/// the hierarchy, editable objects for the constraint script, something for every NoC rule.
struct SyntheticShape {
  unsigned depth = 3;
  unsigned fanout = 4;
  unsigned attributes = 2;
  unsigned ports = 0;
  bool noc = false;
};

/// The number of blocks, the top included, that a shape gives; the largest size_t when it overflows.
std::size_t syntheticBlockCount(SyntheticShape const& shape);
/// Builds the design; deterministic, so two runs give the same file.
std::unique_ptr<HABMBlock> makeSyntheticDesign(SyntheticShape const& shape);

}  // namespace bmtool
