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
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace habm_test {

class DesignGenerator {
 public:
  explicit DesignGenerator(std::uint32_t seed) : rng_(seed) {}

  /// A design of `blocks` blocks, the top included.
  std::unique_ptr<HABMBlock> make(std::size_t blocks) {
    auto top = HABMBlock::createTopBlock("design");
    top->setModuleVlnv("acme:blockdesign:design:1.0");
    top->setValidated(chance(50));
    std::vector<HABMBlock*> all = {top.get()};
    for (std::size_t i = 1; i < blocks; ++i) {
      HABMBlock* parent = all[pick(all.size())];
      all.push_back(parent->createSubBlock("u" + std::to_string(i), "m" + std::to_string(i), false));
    }
    std::vector<HABMNocInterface*> sources;
    std::vector<HABMNocInterface*> targets;
    for (HABMBlock* block : all) {
      fill(*block);
      if (!block->hasSubBlocks()) {
        addNocInterfaces(*block, sources, targets);
      }
    }
    for (HABMBlock* block : all) {
      connect(*block);
    }
    for (std::size_t i = 0; !sources.empty() && !targets.empty() && i < blocks; ++i) {
      link(*sources[pick(sources.size())], *targets[pick(targets.size())]);
    }
    return top;
  }

 private:
  std::size_t pick(std::size_t n) { return rng_() % n; }
  bool chance(unsigned percent) { return pick(100) < percent; }
  std::string number() { return std::to_string(pick(1000)); }

  void fill(HABMBlock& b) {
    b.createAttribute("A", number());
    if (b.getParent() != nullptr && chance(15)) {
      b.setBlockRsw(true);
    }
    if (chance(10)) {
      b.createAttribute("BLOCK_STUB", "false");
    }
    b.createGeneric("G", number());
    b.createParameter("P", number());
    b.setLocked(static_cast<HABMBlock::LockState>(pick(3)));
    b.setTransparent(chance(80));
    b.setEnablement(chance(20) ? "en" + number() : "");
    b.setBaseAddress(HABMAddrValue(static_cast<unsigned>(pick(16)) * 0x1000U));
    for (char const* name : {"clk", "d", "q"}) {
      HABMPort* port = b.createPort(name, false);
      port->setPortDirection(name[0] == 'q' ? HABMPort::DIR_OUT : HABMPort::DIR_IN);
      port->setPortLeft(static_cast<std::uint32_t>(pick(32)));
      if (chance(30)) {
        port->createAttribute("IOSTANDARD", "LVCMOS18");
      }
    }
    if (chance(50)) {
      HABMMemoryMap* map = b.createMemoryMap("mm");
      map->setRange(HABMAddrValue(0x10000U));
      HABMAddrBlock* regs = map->createAddrBlock("regs");
      regs->setAperture(HABMAddrAperture("0x0[4K]"));
      HABMRegister* reg = regs->createRegister("ctrl");
      reg->setOffset(HABMAddrValue(static_cast<unsigned>(pick(64)) * 4U));
      reg->createField("en")->setWidth(1);
      reg->createParameter("VOLATILE", "true");
    }
    if (chance(40)) {
      HABMAddrSpace* space = b.createAddrSpace("as");
      space->setRange(HABMAddrValue(0x100000U));
      space->createAddrSegment("seg")->setAperture(HABMAddrAperture("0x0[64K]"));
    }
    HABMInterface* slave = b.createInterface("S_AXI", false);
    slave->setInterfaceVlnv("orvane:interface:aximm:1.0");
    slave->setInterfaceMode(HABMInterface::MODE_SLAVE);
    slave->setMemoryMapRef(b.getMemoryMap("mm") != nullptr ? "mm" : "");
    slave->setApertures({HABMAddrAperture("0x0[4K]")}, false);
    slave->createParameter("FREQ_HZ", number());
    slave->createPortMap("ACLK", "clk");
    HABMInterface* master = b.createInterface("M_AXI", false);
    master->setInterfaceVlnv("orvane:interface:aximm:1.0");
    master->setInterfaceMode(HABMInterface::MODE_MASTER);
    if (chance(30)) {
      HABMBridge* bridge = b.createBridge("");
      bridge->setSourceName("S_AXI");
      bridge->setTargetName("M_AXI");
    }
  }

  // The block's nets: its own ports and interfaces to those of its direct sub-blocks.
  void connect(HABMBlock& b) {
    for (HABMBlock const* sub : b.getSubBlocks()) {
      std::string const name = sub->getInstanceName();
      b.createPortConnection("clk", {name + "/clk"}, true);
      if (chance(50)) {
        b.createInterfaceConnection("M_AXI", name + "/S_AXI", true);
      }
      if (chance(30)) {
        HABMAddrAssign* assign = b.createAddrAssign("");
        assign->setSourcePath("M_AXI");
        assign->setTargetPath(name + "/S_AXI");
        assign->setAperture(HABMAddrAperture("0x0[4K]"));
      }
    }
  }

  void addNocInterfaces(HABMBlock& b, std::vector<HABMNocInterface*>& sources,
                        std::vector<HABMNocInterface*>& targets) {
    auto const protocol = chance(70) ? HABMNocInterface::PROTOCOL_AXIMM : HABMNocInterface::PROTOCOL_AXIS;
    for (bool const source : {true, false}) {
      if (!chance(70)) {
        continue;
      }
      HABMNocInterface* iface = b.createNocInterface(source ? "nmu" : "nsu");
      iface->setNocMode(source ? HABMNocInterface::MODE_NMU : HABMNocInterface::MODE_NSU);
      iface->setNocProtocol(protocol);
      iface->setNocCategory(HABMNocInterface::CATEGORY_PL);
      iface->setEditable(chance(20));
      iface->createParameter("DATA_WIDTH", chance(50) ? "128" : "256");
      if (!source && protocol == HABMNocInterface::PROTOCOL_AXIMM) {
        iface->setApertures({HABMAddrAperture("0x0[64K]")});
      }
      (source ? sources : targets).push_back(iface);
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
    if (chance(30)) {
      made->setRemaps({HABMAddrRemap(HABMAddrValue(0x4000U), HABMAddrValue(0U), HABMAddrValue(0x1000U))});
    }
    if (HABMParameter* bandwidth = made->getParameter(HABMNocConnection::WRITE_BANDWIDTH())) {
      bandwidth->setValue(number());
    }
  }

  std::mt19937 rng_;
};

}  // namespace habm_test
