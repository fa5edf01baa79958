// BmSynthetic.h: synthetic block designs of a chosen size, for benchmarks and for trying the tools.
#pragma once

#include <cstddef>
#include <memory>

class HABMBlock;

namespace bmtool {

/// The shape of a synthetic design: `depth` levels of sub-blocks below the top, `fanout` sub-blocks per
/// block, and per block `attributes` attributes plus one generic and one parameter.
struct SyntheticShape {
  unsigned depth = 3;
  unsigned fanout = 4;
  unsigned attributes = 2;
};

/// The number of blocks, the top included, that a shape gives; the largest size_t when it overflows.
std::size_t syntheticBlockCount(SyntheticShape const& shape);
/// Builds the design; deterministic, so two runs give the same file.
std::unique_ptr<HABMBlock> makeSyntheticDesign(SyntheticShape const& shape);

}  // namespace bmtool
