// BmDot.h: Graphviz pictures of a block: its hierarchy, boundaries and connections.
#pragma once

#include <iosfwd>
#include <optional>

class HABMBlock;

namespace bmtool {

/// What a picture shows.
struct DotOptions {
  /// How many levels of sub-blocks below the block are drawn; none for all. The blocks of the last level
  /// drawn show their boundary but not their contents.
  std::optional<unsigned> depth;
  /// NoC interfaces and links too, each NoC path of the block in a colour of its own, with a legend that
  /// marks incomplete paths.
  bool noc = false;
};

/// Writes the Graphviz text of `block`: each block a cluster holding its ports and interfaces and its
/// sub-blocks, each connection an edge; an end that names nothing, or something not drawn, is a loose
/// node labelled with its path. Every node's and cluster's tooltip is the object's instance path.
void writeDot(std::ostream& out, HABMBlock const& block, DotOptions const& options);

}  // namespace bmtool
