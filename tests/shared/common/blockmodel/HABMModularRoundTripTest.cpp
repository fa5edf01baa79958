// HABMModularRoundTripTest.cpp: generated designs cloned, and every sub-block split out, through files,
// and merged back: the design comes back byte for byte, but for the differences the flow makes on purpose,
// which the test names; and the three operations on a hierarchy 10,000 blocks deep.
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/detail/HABMKinds.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include "HABMDesignGenerator.h"
#include "HABMNocTestUtil.h"
#include "HABMTestFiles.h"

#include <gtest/gtest.h>

namespace {

using N = HABMNocInterface;
using HABMModularRoundTrip = habm_test::MemoryDirTest;

bool within(HABMBlock const* block, HABMBlock const& ancestor) {
  for (; block != nullptr; block = block->getParent()) {
    if (block == &ancestor) {
      return true;
    }
  }
  return false;
}

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
    EXPECT_EQ(into.size(), 1U);
    EXPECT_EQ(from.size(), 1U);
    if (into.size() != 1 || from.size() != 1) {
      return 0;
    }
    bool const entering = into[0]->getParent() != &block;
    HABMNocConnection* outer = entering ? into[0] : from[0];
    HABMNocConnection* inner = entering ? from[0] : into[0];
    EXPECT_EQ(inner->getParent(), &block);
    EXPECT_EQ(inner->getEditable(), outer->getEditable());
    EXPECT_FALSE(inner->hasParameters());
    EXPECT_TRUE(inner->getRemaps().empty());
    if (entering) {
      outer->setTargetPath(inner->getTargetPath(true));
    } else {
      outer->setSourcePath(inner->getSourcePath(true));
    }
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
    auto const design = habm_test::DesignGenerator(seed).make(8 + seed);
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
  HABMBlock* beside = top->createSubBlock("x", "mx", false);
  habm_test::makeNocInterface(*beside, "nsu", N::MODE_NSU);
  ASSERT_NE(top->createNocConnection(deepest->getInstancePath() + "/nmu", "/x/nsu", true), nullptr);
  auto const depthOf = [](HABMBlock const& root) {
    std::size_t blocks = 0;
    habm_detail::forEachBlock(root, [&](HABMBlock const&) { ++blocks; });
    return blocks;
  };

  auto const copy = HABMBlock::cloneTopBlock(*top);
  EXPECT_EQ(depthOf(*copy), kDepth + 2);

  std::string const cutPath = "/u/u";
  auto const part = HABMBlock::splitTopBlock(*copy, cutPath, true);
  ASSERT_NE(part, nullptr);
  EXPECT_EQ(depthOf(*part), kDepth - 1);
  EXPECT_EQ(depthOf(*copy), 4U);
  ASSERT_EQ(part->getNocConnections(false).size(), 1U);
  EXPECT_EQ(part->getNocConnections(false)[0]->getTargetPath(false), "noc_interface_0");

  ASSERT_TRUE(HABMBlock::mergeTopBlock(*copy, cutPath, *part, true));
  EXPECT_EQ(depthOf(*copy), kDepth + 2);
  HABMNocConnection const* outer = copy->getNocConnections(false).at(0);
  EXPECT_EQ(outer->getSourcePath(false), "u/u/noc_interface_0");
  EXPECT_NE(outer->getSourceNocInterface(), nullptr);
  // A block's destructor still goes down its subtree a frame per level; clearing goes leaves first.
  for (HABMBlock* tree : {top.get(), copy.get(), part.get()}) {
    tree->clearContents();
  }
}

}  // namespace
