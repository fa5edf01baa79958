// BmAxiDefinitions.h: the AXI4 and AXI4-Stream abstraction definitions that bmtool hands to the model.
#pragma once

class HABMBlock;

namespace bmtool {

/// Fills the empty abstraction definition of every AXI memory-mapped and AXI stream interface of `block`
/// with the logical ports of AXI4 or AXI4-Stream: block model files don't carry them, and the wrapper
/// needs them for its tie-offs and widths. Each interface gets its own copy; a definition that already
/// has ports is left alone.
void fillAxiAbstractionDefinitions(HABMBlock const& block);

}  // namespace bmtool
