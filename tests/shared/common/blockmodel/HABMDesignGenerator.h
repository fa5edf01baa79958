// HABMDesignGenerator.h: random but reproducible designs for property tests: a tree of blocks carrying every
// kind of child, and NoC links between the leaves, each drawn where a tool draws it: in the lowest block
// that holds both ends.
#pragma once

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace habm_test {

class DesignGenerator {
 public:
  explicit DesignGenerator(unsigned seed) : rng_(seed) {}

  /// A design of `blocks` blocks, the top included.
  std::unique_ptr<HABMBlock> make(std::size_t blocks) {
    auto top = HABMBlock::createTopBlock("design");
    top->setValidated(chance(50));
    std::vector<HABMBlock*> all = {top.get()};
    for (std::size_t i = 1; i < blocks; ++i) {
      all.push_back(
          all[pick(all.size())]->createSubBlock("u" + std::to_string(i), "m" + std::to_string(i), false));
    }
    std::vector<HABMNocInterface*> ends[2];  // sources, targets
    for (HABMBlock* block : all) {
      fill(*block);
      for (int source = 0; source < 2 && !block->hasSubBlocks(); ++source) {
        HABMNocInterface* iface = block->createNocInterface(source == 0 ? "nmu" : "nsu");
        iface->setNocMode(source == 0 ? HABMNocInterface::MODE_NMU : HABMNocInterface::MODE_NSU);
        iface->setNocProtocol(static_cast<HABMNocInterface::NocProtocol>(pick(2)));
        iface->setNocCategory(HABMNocInterface::CATEGORY_PL);
        iface->setEditable(chance(20));
        iface->setApertures({HABMAddrAperture("0x0[64K]")});
        iface->createParameter("DATA_WIDTH", number());
        ends[source].push_back(iface);
      }
    }
    for (std::size_t i = 0; !ends[0].empty() && !ends[1].empty() && i < blocks; ++i) {
      link(*ends[0][pick(ends[0].size())], *ends[1][pick(ends[1].size())]);
    }
    return top;
  }

 private:
  std::size_t pick(std::size_t n) { return rng_() % n; }
  bool chance(unsigned percent) { return pick(100) < percent; }
  std::string number() { return std::to_string(pick(1000)); }

  void fill(HABMBlock& b) {
    b.createAttribute("A", number());
    b.setBlockRsw(b.getParent() != nullptr && chance(15));
    if (chance(10)) {
      b.createAttribute("BLOCK_STUB", "false");
    }
    b.createGeneric("G", number());
    b.createParameter("P", number());
    b.setLocked(static_cast<HABMBlock::LockState>(pick(3)));
    b.setTransparent(chance(80));
    b.setEnablement(number());
    b.setBaseAddress(HABMAddrValue(static_cast<unsigned>(pick(16)) * 0x1000U));
    for (char const* name : {"clk", "q"}) {
      HABMPort* port = b.createPort(name, false);
      port->setPortDirection(static_cast<HABMPort::PortDirection>(pick(2)));
      port->setPortLeft(static_cast<std::uint32_t>(pick(32)));
      port->createAttribute("IOSTANDARD", number());
    }
    HABMMemoryMap* map = b.createMemoryMap("mm");
    map->setRange(HABMAddrValue(0x10000U));
    HABMAddrBlock* regs = map->createAddrBlock("regs");
    regs->setAperture(HABMAddrAperture("0x0[4K]"));
    HABMRegister* reg = regs->createRegister("ctrl");
    reg->createField("en")->setWidth(1);
    reg->createParameter("VOLATILE", "true");
    b.createAddrSpace("as")->createAddrSegment("seg")->setAperture(HABMAddrAperture("0x0[64K]"));
    HABMInterface* slave = b.createInterface("S_AXI", false);
    slave->setInterfaceMode(HABMInterface::MODE_SLAVE);
    slave->setMemoryMapRef("mm");
    slave->setApertures({HABMAddrAperture("0x0[4K]")}, false);
    slave->createParameter("FREQ_HZ", number());
    slave->createPortMap("ACLK", "clk");
    b.createInterface("M_AXI", false)->setAddrSpaceRef("as");
    HABMBridge* bridge = b.createBridge("");
    bridge->setSourceName("S_AXI");
    bridge->setTargetName("M_AXI");
    // The block's nets to its direct sub-blocks.
    for (HABMBlock const* sub : b.getSubBlocks()) {
      std::string const name = sub->getInstanceName();
      b.createPortConnection("clk", {name + "/clk"}, true);
      b.createInterfaceConnection("M_AXI", name + "/S_AXI", true);
      HABMAddrAssign* assign = b.createAddrAssign("");
      assign->setSourcePath("M_AXI");
      assign->setTargetPath(name + "/S_AXI");
    }
  }

  // A link of the same protocol, drawn in the lowest block that holds both ends.
  void link(HABMNocInterface const& source, HABMNocInterface const& target) {
    if (source.getNocProtocol() != target.getNocProtocol()) {
      return;
    }
    HABMBlock* holder = const_cast<HABMBlock*>(source.getParent());
    while (holder != target.getParent() && !holder->hasSubBlock(target.getParent(), true)) {
      holder = holder->getParent();
    }
    HABMNocConnection* made =
        holder->createNocConnection(HABMPath::get_relative_path(*holder, source.getPath()),
                                    HABMPath::get_relative_path(*holder, target.getPath()), true);
    made->setEditable(chance(30));
    made->setRemaps({HABMAddrRemap(HABMAddrValue(0x4000U), HABMAddrValue(0U), HABMAddrValue(0x1000U))});
    made->setParameter(HABMNocConnection::WRITE_BANDWIDTH(), number(), false);
  }

  std::mt19937 rng_;
};

}  // namespace habm_test
