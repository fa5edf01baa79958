// HABMModularRoundTripTest.cpp: generated designs cloned, and every sub-block split out, through files,
// and merged back: the design comes back byte for byte, but for the differences the flow makes on purpose,
// which the test names; and the three operations on a hierarchy 10,000 blocks deep.
#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"
#include "blockmodel/detail/HABMKinds.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include "HABMNocTestUtil.h"
#include "HABMTestFiles.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using N = HABMNocInterface;
using HABMModularRoundTrip = habm_test::MemoryDirTest;

bool within(HABMBlock const* block, HABMBlock const& ancestor) {
  while (block != nullptr && block != &ancestor) {
    block = block->getParent();
  }
  return block != nullptr;
}

// Random but reproducible designs: a tree of blocks carrying every kind of child, and NoC links between
// the leaves, each drawn where a tool draws it: in the lowest block that holds both ends.
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
    std::vector<N*> ends[2];  // sources, targets
    for (HABMBlock* block : all) {
      fill(*block);
      for (int source = 0; source < 2 && !block->hasSubBlocks(); ++source) {
        N* iface = habm_test::makeNocInterface(*block, source == 0 ? "nmu" : "nsu",
                                               source == 0 ? N::MODE_NMU : N::MODE_NSU,
                                               static_cast<N::NocProtocol>(pick(2)));
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
  void link(N const& source, N const& target) {
    if (source.getNocProtocol() != target.getNocProtocol()) {
      return;
    }
    HABMBlock* holder = const_cast<HABMBlock*>(source.getParent());
    while (!within(target.getParent(), *holder)) {
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

// The links that cross the boundary of `cut` to or from a block below it, counted from first principles:
// one end strictly below the cut block and the other outside it.
std::size_t crossingLinks(HABMBlock const& top, HABMBlock const& cut) {
  std::size_t count = 0;
  habm_detail::forEachBlock(top, [&](HABMBlock const& holder) {
    for (HABMNocConnection const* link : holder.getNocConnections(false)) {
      HABMBlock const* source = link->getSourceNocInterface()->getParent();
      HABMBlock const* target = link->getTargetNocInterface()->getParent();
      bool const sourceBelow = source != &cut && within(source, cut);
      bool const targetBelow = target != &cut && within(target, cut);
      count += (sourceBelow && !within(target, cut)) || (targetBelow && !within(source, cut)) ? 1U : 0U;
    }
  });
  return count;
}

// Undoes what a split with virtual interfaces leaves behind on `block`: each interface past the first
// `kept` must be virtual and join exactly two halves of one link, the outer one drawn above the block and
// the inner one in it, which carries the link's editable flag and nothing else. The outer half takes its
// far end back, the inner half and the interface go. Returns how many were joined.
std::size_t joinVirtualHalves(HABMBlock& block, std::size_t kept) {
  std::vector<N*> const all = block.getNocInterfaces(false);
  for (std::size_t i = kept; i < all.size(); ++i) {
    N* const end = all[i];
    SCOPED_TRACE(end->getPath());
    EXPECT_TRUE(end->isVirtual());
    std::vector<HABMNocConnection*> into;
    std::vector<HABMNocConnection*> from;
    end->getConnections(into, from);
    if (into.size() != 1 || from.size() != 1) {
      ADD_FAILURE() << into.size() << " links in, " << from.size() << " out";
      return 0;
    }
    bool const entering = into[0]->getParent() != &block;
    HABMNocConnection* outer = entering ? into[0] : from[0];
    HABMNocConnection* inner = entering ? from[0] : into[0];
    EXPECT_EQ(inner->getParent(), &block);
    EXPECT_EQ(inner->getEditable(), outer->getEditable());
    EXPECT_FALSE(inner->hasParameters());
    EXPECT_TRUE(inner->getRemaps().empty());
    entering ? outer->setTargetPath(inner->getTargetPath(true))
             : outer->setSourcePath(inner->getSourcePath(true));
    block.removeNocConnection(inner->getName());
    block.removeNocInterface(end->getName());
  }
  return all.size() - kept;
}

// A clone of the design, and of each block in it, writes what the original writes. Then every sub-block is
// split out, with and without virtual interfaces, and merged back, the boundary taken back or not.
TEST_F(HABMModularRoundTrip, SplitThenMergeGivesTheDesignBackUpToTheNamedDifferences) {
  std::size_t splits = 0;
  std::size_t refusals = 0;
  std::size_t joined = 0;
  for (unsigned seed = 1; seed <= 12; ++seed) {
    auto const design = DesignGenerator(seed).make(8 + seed);
    ASSERT_EQ(design->check(), std::vector<std::string>());
    std::string const original = written(*design);
    EXPECT_EQ(written(*HABMBlock::cloneTopBlock(*design)), original);
    std::vector<std::string> paths;
    habm_detail::forEachBlock(*design, [&](HABMBlock const& b) {
      EXPECT_EQ(written(*HABMBlock::cloneTopBlock(b)), written(b)) << b.getInstancePath();
      if (b.getParent() != nullptr) {
        paths.push_back(b.getInstancePath());
      }
    });
    for (std::string const& path : paths) {
      for (bool const insertVirtual : {false, true}) {
        bool const mergeBoundary = (splits + refusals) % 2 == 0;
        SCOPED_TRACE("seed " + std::to_string(seed) + " " + path + (insertVirtual ? " virtual" : "") +
                     (mergeBoundary ? " boundary" : ""));
        auto const work = HABMBlock::cloneTopBlock(*design);
        HABMBlock* cut = work->findSubBlock(path, true);
        std::size_t const crossing = crossingLinks(*work, *cut);
        std::size_t const kept = cut->getNocInterfaces(false).size();
        ComMsgCapture capture;
        auto const part = HABMBlock::splitTopBlock(*work, path, insertVirtual);
        if (!insertVirtual && crossing > 0) {
          // Refused, with one reason per crossing link, and nothing changed.
          ASSERT_EQ(part, nullptr);
          ++refusals;
          std::vector<std::string> reasons;
          EXPECT_FALSE(HABMBlock::canSplitBlock(*cut, reasons));
          EXPECT_EQ(reasons.size(), crossing);
          EXPECT_EQ(capture.records().size(), 1U);
          EXPECT_EQ(written(*work), original);
          continue;
        }
        ASSERT_NE(part, nullptr);
        ++splits;
        EXPECT_EQ(capture.records().size(), 0U);
        EXPECT_EQ(part->check(), std::vector<std::string>());
        EXPECT_EQ(work->check(), std::vector<std::string>());
        EXPECT_TRUE(cut->isBlockStub());
        EXPECT_FALSE(cut->hasSubBlocks() || cut->hasNocConnections(false) || cut->hasPortConnections());

        // The two halves travel as files, as the tool hands them on.
        ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(this->path("part.bm")), *part, false));
        ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(this->path("rest.bm")), *work, false));
        auto const source = HABMBlock::readTopBlock(HUTFile(this->path("part.bm")));
        auto const rest = HABMBlock::readTopBlock(HUTFile(this->path("rest.bm")));
        ASSERT_TRUE(source && rest);
        ASSERT_TRUE(HABMBlock::mergeTopBlock(*rest, path, *source, mergeBoundary));
        EXPECT_EQ(rest->check(), std::vector<std::string>());
        HABMBlock* back = rest->findSubBlock(path, true);

        // Virtual interfaces stay in place: each crossing link comes back cut in two at one of them.
        std::size_t const halves = joinVirtualHalves(*back, kept);
        EXPECT_EQ(halves, insertVirtual ? crossing : 0U);
        joined += halves;

        // The rest is as the design was, but that the top is no longer validated, the block's lock defers
        // upwards again unless it is run-time swapped (then it is the module's, which was its own), and
        // the block carries no BLOCK_STUB attribute, whatever value it had.
        auto const expected = HABMBlock::cloneTopBlock(*design);
        HABMBlock* block = expected->findSubBlock(path, true);
        expected->setValidated(false);
        if (!block->isBlockRsw()) {
          block->setLocked(HABMBlock::UNKNOWN);
        }
        block->removeAttribute(HABMAttribute::BLOCK_STUB());
        EXPECT_EQ(written(*rest), written(*expected));
      }
    }
  }
  // The designs are rich enough for the property to say something.
  EXPECT_GT(splits, 200U);
  EXPECT_GT(refusals, 10U);
  EXPECT_GT(joined, 20U);
}

// A chain: top, then /u, /u/u, ... 10,000 blocks deep, with a NoC link from the deepest block to a block
// beside the chain, drawn in the top. Clone, split (cutting the link) and merge must not run out of stack.
TEST(HABMDeepHierarchy, CloneSplitAndMergeOfAChainTenThousandDeep) {
  constexpr std::size_t kDepth = 10'000;
  auto top = HABMBlock::createTopBlock("chain");
  HABMBlock* deepest = top.get();
  for (std::size_t i = 0; i < kDepth; ++i) {
    deepest = deepest->createSubBlock("u", "m", false);
    deepest->createPort("p", false);
  }
  habm_test::makeNocInterface(*deepest, "nmu", N::MODE_NMU);
  habm_test::makeNocInterface(*top->createSubBlock("x", "mx", false), "nsu", N::MODE_NSU);
  ASSERT_NE(top->createNocConnection(deepest->getInstancePath() + "/nmu", "/x/nsu", true), nullptr);
  auto const blocks = [](HABMBlock const& root) {
    std::size_t count = 0;
    habm_detail::forEachBlock(root, [&](HABMBlock const&) { ++count; });
    return count;
  };
  auto const copy = HABMBlock::cloneTopBlock(*top);
  EXPECT_EQ(blocks(*copy), kDepth + 2);
  auto const part = HABMBlock::splitTopBlock(*copy, "/u/u", true);
  ASSERT_NE(part, nullptr);
  EXPECT_EQ(blocks(*part), kDepth - 1);
  EXPECT_EQ(blocks(*copy), 4U);
  ASSERT_EQ(part->getNocConnections(false).size(), 1U);
  EXPECT_EQ(part->getNocConnections(false)[0]->getTargetPath(false), "noc_interface_0");
  ASSERT_TRUE(HABMBlock::mergeTopBlock(*copy, "/u/u", *part, true));
  EXPECT_EQ(blocks(*copy), kDepth + 2);
  HABMNocConnection const* outer = copy->getNocConnections(false).at(0);
  EXPECT_EQ(outer->getSourcePath(false), "u/u/noc_interface_0");
  EXPECT_NE(outer->getSourceNocInterface(), nullptr);
  // A block's destructor still goes down its subtree a frame per level; clearing goes leaves first.
  for (HABMBlock* tree : {top.get(), copy.get(), part.get()}) {
    tree->clearContents();
  }
}

}  // namespace
