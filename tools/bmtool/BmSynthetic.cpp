// BmSynthetic.cpp: builds synthetic designs level by level.
#include "BmSynthetic.h"

#include "blockmodel/HABMBlock.h"

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace bmtool {

std::size_t syntheticBlockCount(SyntheticShape const& shape) {
  constexpr std::size_t kMax = std::numeric_limits<std::size_t>::max();
  std::size_t total = 1;
  std::size_t level = 1;
  for (unsigned d = 0; d < shape.depth && level > 0; ++d) {
    if (level > kMax / std::max(shape.fanout, 1U) || total > kMax - level * shape.fanout) {
      return kMax;
    }
    level *= shape.fanout;
    total += level;
  }
  return total;
}

namespace {
void decorate(HABMBlock& block, SyntheticShape const& shape, std::size_t serial) {
  for (unsigned a = 0; a < shape.attributes; ++a) {
    block.createAttribute("ATTR_" + std::to_string(a), "value_" + std::to_string(serial + a));
  }
  block.createGeneric("WIDTH", std::to_string(8 << (serial % 4)));
  block.createParameter("CONFIG.ID", std::to_string(serial));
}
}  // namespace

std::unique_ptr<HABMBlock> makeSyntheticDesign(SyntheticShape const& shape) {
  auto top = HABMBlock::createTopBlock("synthetic_top");
  top->setModuleVlnv("acme:blockdesign:synthetic_top:1.0");
  std::size_t serial = 0;
  decorate(*top, shape, serial++);
  // Breadth first, so that no recursion depends on the depth asked for.
  std::vector<HABMBlock*> level = {top.get()};
  for (unsigned d = 0; d < shape.depth; ++d) {
    std::vector<HABMBlock*> next;
    next.reserve(level.size() * shape.fanout);
    for (HABMBlock* parent : level) {
      for (unsigned f = 0; f < shape.fanout; ++f) {
        std::string const module = "cell_l" + std::to_string(d + 1) + "_" + std::to_string(f);
        HABMBlock* child = parent->createSubBlock("u" + std::to_string(f), module, false);
        child->setModuleVlnv("acme:ip:" + module + ":1.0");
        decorate(*child, shape, serial++);
        next.push_back(child);
      }
    }
    level = std::move(next);
  }
  return top;
}

}  // namespace bmtool
