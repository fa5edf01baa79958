// BmSynthetic.cpp: builds synthetic designs level by level.
#include "BmSynthetic.h"

#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMPort.h"

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
  // A mix a real block has: a clock, buses with bounds, single wires, and the odd inout.
  for (unsigned p = 0; p < shape.ports; ++p) {
    HABMPort* port = block.createPort("port_" + std::to_string(p), false);
    port->setPortDirection(p % 8 == 7   ? HABMPort::DIR_INOUT
                           : p % 2 == 0 ? HABMPort::DIR_IN
                                        : HABMPort::DIR_OUT);
    if (p % 4 == 0) {
      port->setPortType(HABMPort::TYPE_WIRE);
    } else {
      port->setPortLeft((8U << (p % 3)) - 1);
    }
  }
}
using N = HABMNocInterface;

N* addNocInterface(HABMBlock& block, char const* name, N::NocMode mode, std::size_t serial) {
  N* iface = block.createNocInterface(name);
  iface->setNocMode(mode);
  iface->setNocProtocol(N::PROTOCOL_AXIMM);
  iface->setNocCategory(N::CATEGORY_PL);
  iface->setEditable(true);
  if (mode == N::MODE_NMU) {
    iface->setLocation("NOC_NMU512_X" + std::to_string(serial % 64) + "Y" + std::to_string(serial / 64));
    iface->createParameter(N::READ_TRAFFIC_CLASS(), "best_effort");
  } else if (mode == N::MODE_NSU) {
    iface->setApertures({HABMAddrAperture(HABMAddrValue(0x10000U) * static_cast<unsigned>(serial), 0x10000)});
  }
  return iface;
}

// The first block without sub-blocks at or below `block`.
HABMBlock* firstLeaf(HABMBlock* block) {
  while (block->hasSubBlocks()) {
    block = block->getSubBlocks().front();
  }
  return block;
}

// The links described at SyntheticShape, once every block stands.
void addNoc(HABMBlock& top, std::vector<std::vector<HABMBlock*>> const& levels) {
  std::size_t serial = 0;
  for (HABMBlock* leaf : levels.back()) {
    addNocInterface(*leaf, "nmu", N::MODE_NMU, serial);
    addNocInterface(*leaf, "nsu", N::MODE_NSU, serial++);
  }
  if (levels.size() < 2) {
    return;
  }
  for (HABMBlock* parent : levels[levels.size() - 2]) {
    std::vector<HABMBlock*> const subs = parent->getSubBlocks();
    for (std::size_t i = 0; i + 1 < subs.size(); ++i) {
      parent->createNocConnection(subs[i]->getInstanceName() + "/nmu",
                                  subs[i + 1]->getInstanceName() + "/nsu", true);
    }
  }
  if (levels.size() < 3) {
    return;
  }
  std::vector<HABMBlock*> const& first = levels[1];
  for (HABMBlock* sub : first) {
    addNocInterface(*sub, "vnmu", N::MODE_VNMU, 0);
    HABMBlock const* leaf = firstLeaf(sub);
    sub->createNocConnection(HABMPath::get_relative_path(*sub, leaf->getInstancePath() + "/nmu"), "vnmu",
                             true)
        ->setEditable(true);
  }
  for (std::size_t i = 0; i < first.size(); ++i) {
    HABMBlock const* next = firstLeaf(first[(i + 1) % first.size()]);
    HABMNocConnection* link =
        top.createNocConnection(first[i]->getInstanceName() + "/vnmu",
                                HABMPath::get_relative_path(top, next->getInstancePath() + "/nsu"), true);
    link->setEditable(true);
    HABMAddrAperture const& window = *next->getNocInterface("nsu")->getApertures().begin();
    link->setRemaps({HABMAddrRemap(HABMAddrValue(0x0U), window.getBaseAddress(), window.getRange())});
  }
}

}  // namespace

std::unique_ptr<HABMBlock> makeSyntheticDesign(SyntheticShape const& shape) {
  auto top = HABMBlock::createTopBlock("synthetic_top");
  top->setModuleVlnv("acme:blockdesign:synthetic_top:1.0");
  std::size_t serial = 0;
  decorate(*top, shape, serial++);
  // Breadth first, so that no recursion depends on the depth asked for.
  std::vector<std::vector<HABMBlock*>> levels = {{top.get()}};
  for (unsigned d = 0; d < shape.depth; ++d) {
    std::vector<HABMBlock*> next;
    next.reserve(levels.back().size() * shape.fanout);
    for (HABMBlock* parent : levels.back()) {
      for (unsigned f = 0; f < shape.fanout; ++f) {
        std::string const module = "cell_l" + std::to_string(d + 1) + "_" + std::to_string(f);
        HABMBlock* child = parent->createSubBlock("u" + std::to_string(f), module, false);
        child->setModuleVlnv("acme:ip:" + module + ":1.0");
        decorate(*child, shape, serial++);
        next.push_back(child);
      }
    }
    levels.push_back(std::move(next));
  }
  if (shape.noc) {
    addNoc(*top, levels);
  }
  return top;
}

}  // namespace bmtool
