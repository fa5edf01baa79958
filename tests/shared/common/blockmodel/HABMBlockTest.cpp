// HABMBlockTest.cpp: the block tree, flags, kinds, lock state, the child discipline, finds and traces.
#include "blockmodel/HABMBlock.h"

#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/detail/HABMTrace.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned int kBlockMask = 0x1000000U;
constexpr unsigned int kChildMask = 0x1000002U;

std::vector<std::string> pathsOf(std::vector<HABMBlock*> const& blocks) {
  std::vector<std::string> out;
  for (HABMBlock const* b : blocks) {
    out.push_back(b->getInstancePath());
  }
  return out;
}

// top with "/a", "/a/x", "/a/x/deep", "/b", "/b/y".
class HABMBlockTree : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("top");
    a_ = top_->createSubBlock("a", "ma", false);
    x_ = a_->createSubBlock("x", "mx", false);
    deep_ = x_->createSubBlock("deep", "mdeep", false);
    b_ = top_->createSubBlock("b", "mb", false);
    y_ = b_->createSubBlock("y", "mx", false);
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }
  std::unique_ptr<HABMBlock> top_;
  HABMBlock* a_ = nullptr;
  HABMBlock* x_ = nullptr;
  HABMBlock* deep_ = nullptr;
  HABMBlock* b_ = nullptr;
  HABMBlock* y_ = nullptr;
};

// Identity, tree queries and flags.

TEST(HABMBlockTop, FreshTopBlockIsTheVisibleUnlockedRoot) {
  auto const top = HABMBlock::createTopBlock("m");
  EXPECT_EQ(top->getTop(), top.get());
  EXPECT_EQ(top->getInstancePath(), "/");
  EXPECT_EQ(top->getInstanceDepth(), 0);
  EXPECT_TRUE(top->isVisible());
  EXPECT_TRUE(top->getTransparent());
  EXPECT_FALSE(top->getValidated());
  EXPECT_EQ(top->getLocked(), HABMBlock::UNKNOWN);
  EXPECT_FALSE(top->isLocked());
}

TEST_F(HABMBlockTree, PathsAndDepthsFollowTheInstanceNames) {
  EXPECT_EQ(deep_->getInstancePath(), "/a/x/deep");
  EXPECT_EQ(deep_->getInstanceDepth(), 3);
  EXPECT_EQ(a_->getInstanceDepth(), 1);
  EXPECT_EQ(deep_->getTop(), top_.get());
}

TEST_F(HABMBlockTree, VisibilityNeedsEveryAncestorTransparentButNotTheBlockItself) {
  x_->setTransparent(false);
  EXPECT_TRUE(x_->isVisible());
  EXPECT_FALSE(deep_->isVisible());
  top_->setTransparent(false);
  EXPECT_FALSE(a_->isVisible());
  EXPECT_TRUE(top_->isVisible());
}

TEST_F(HABMBlockTree, RswAncestorSkipsTheBlockItself) {
  deep_->setBlockRsw(true);
  EXPECT_EQ(deep_->getRswAncestor(), nullptr);
  a_->setBlockRsw(true);
  EXPECT_EQ(deep_->getRswAncestor(), a_);
  x_->setAttribute(HABMAttribute::BLOCK_RSW(), "TRUE", true);
  EXPECT_EQ(deep_->getRswAncestor(), x_);
}

TEST_F(HABMBlockTree, NearestDefiniteLockStateDecides) {
  top_->setLocked(HABMBlock::LOCKED);
  a_->setLocked(HABMBlock::UNLOCKED);
  EXPECT_FALSE(deep_->isLocked());
  EXPECT_TRUE(b_->isLocked());
  EXPECT_TRUE(y_->isLocked());
}

TEST_F(HABMBlockTree, IgnoringModularNocLocksUnlocksButKeepsTheState) {
  a_->setLocked(HABMBlock::LOCKED);
  HPAParamOverride ignore("project.ignoreModularNocLocks", "true");
  EXPECT_FALSE(a_->isLocked());
  EXPECT_EQ(a_->getLocked(), HABMBlock::LOCKED);
}

TEST(HABMBlockLockState, TextsReadLowerCasedAndExactly) {
  EXPECT_EQ(HABMBlock::encodeLockState("LOCKED"), HABMBlock::LOCKED);
  EXPECT_EQ(HABMBlock::encodeLockState("unLocked"), HABMBlock::UNLOCKED);
  EXPECT_EQ(HABMBlock::encodeLockState("Locked "), HABMBlock::UNKNOWN);
  EXPECT_EQ(HABMBlock::decodeLockState(HABMBlock::LOCKED), "locked");
  EXPECT_EQ(HABMBlock::decodeLockState(HABMBlock::UNKNOWN), "");
}

// Kinds.

TEST(HABMBlockKind, VlnvLibraryDecidesIgnoringCaseAndNeedsFourParts) {
  auto const b = HABMBlock::createTopBlock("m");
  struct Case {
    char const* vlnv;
    bool ip, bd, bdRef, moduleRef;
  };
  for (auto const& c :
       {Case{"v:IP:n:1", true, false, false, false}, Case{"v:ip:n", false, false, false, false},
        Case{"v:BlockDiagram:n:1", false, true, false, false},
        Case{"v:blockdesign:n:1", false, true, false, false},
        Case{"v:blockdesign_ref:n:1", false, false, true, false},
        Case{"v:module_ref:n:1", false, false, false, true}}) {
    b->setModuleVlnv(c.vlnv);
    EXPECT_EQ(b->isIP(), c.ip) << c.vlnv;
    EXPECT_EQ(b->isBlockDesign(), c.bd) << c.vlnv;
    EXPECT_EQ(b->isBlockDesignRef(), c.bdRef) << c.vlnv;
    EXPECT_EQ(b->isModuleRef(), c.moduleRef) << c.vlnv;
  }
}

TEST(HABMBlockKind, ExistenceKindsIgnoreTheValueAndValueKindsWantTrue) {
  auto const b = HABMBlock::createTopBlock("m");
  b->createAttribute(HABMAttribute::PRIMITIVE(), "false");
  b->createAttribute(HABMAttribute::OPM_MODULE(), "");
  EXPECT_TRUE(b->isPrimitive());
  EXPECT_TRUE(b->isOpmModule());
  EXPECT_FALSE(b->isOpmNocModule());
  b->createAttribute(HABMAttribute::BLACK_BOX(), "TRUE");
  EXPECT_TRUE(b->isBlackBox());
  b->setAttribute(HABMAttribute::BLACK_BOX(), "1", false);
  EXPECT_FALSE(b->isBlackBox());
  b->createAttribute(HABMAttribute::BLOCK_STUB(), "false");
  EXPECT_FALSE(b->isBlockStub());
}

TEST(HABMBlockKind, FlagSettersWriteTrueOrRemove) {
  auto const b = HABMBlock::createTopBlock("m");
  b->setBlockStub(true);
  EXPECT_EQ(b->getAttribute("BLOCK_STUB")->getValue(), "true");
  b->setBlackBox(true);
  b->setBlackBox(false);
  EXPECT_EQ(b->getAttribute("BLACK_BOX"), nullptr);
  b->setBlockRsw(false);  // nothing to remove
  EXPECT_EQ(b->getAttributes().size(), 1U);
}

TEST_F(HABMBlockTree, OpmNocModuleIsFoundAnywhereBelow) {
  EXPECT_FALSE(top_->hasOpmNocModule());
  deep_->createAttribute(HABMAttribute::OPM_NOC(), "x");
  EXPECT_TRUE(top_->hasOpmNocModule());
  EXPECT_TRUE(deep_->hasOpmNocModule());
  EXPECT_FALSE(b_->hasOpmNocModule());
}

// The child discipline, shown on each kind that exists.

TEST(HABMBlockChildren, CreatorsRefuseEmptySeparatedAndDuplicateNames) {
  auto const b = HABMBlock::createTopBlock("m");
  EXPECT_NE(b->createAttribute("a", "1"), nullptr);
  EXPECT_EQ(b->createAttribute("a", "2"), nullptr);
  EXPECT_EQ(b->createAttribute("", "1"), nullptr);
  EXPECT_EQ(b->createGeneric("x/y", "1"), nullptr);
  EXPECT_NE(b->createGeneric("a", "1"), nullptr);  // kinds have separate name spaces
  EXPECT_NE(b->createParameter("a", "1"), nullptr);
  EXPECT_EQ(b->createParameter("a", "1"), nullptr);
  for (bool force : {false, true}) {
    EXPECT_EQ(b->createSubBlock("a/b", "m", force), nullptr);
    EXPECT_EQ(b->createSubBlock("", "m", force), nullptr);
  }
  EXPECT_EQ(b->getAttributes().size(), 1U);
  EXPECT_EQ(b->getAttribute("a")->getValue(), "1");
}

TEST(HABMBlockChildren, ForcedSubBlockDuplicateAppendsAndLookupKeepsTheFirst) {
  auto const top = HABMBlock::createTopBlock("m");
  HABMBlock* first = top->createSubBlock("u0", "m0", false);
  EXPECT_EQ(top->createSubBlock("u0", "m1", false), nullptr);
  HABMBlock* second = top->createSubBlock("u0", "m1", true);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(top->getSubBlocks(), (std::vector<HABMBlock*>{first, second}));
  EXPECT_EQ(top->getSubBlock("u0"), first);
  auto removed = top->removeSubBlock("u0");
  EXPECT_EQ(removed.get(), first);
  EXPECT_EQ(top->getSubBlock("u0"), second);
  EXPECT_EQ(top->check(), std::vector<std::string>());
}

TEST(HABMBlockChildren, RemoveKeepsTheOrderOfTheOthers) {
  auto const b = HABMBlock::createTopBlock("m");
  for (char const* n : {"p", "q", "r", "s"}) {
    b->createParameter(n, n);
  }
  EXPECT_TRUE(b->removeParameter("q"));
  EXPECT_FALSE(b->removeParameter("q"));
  std::vector<std::string> names;
  for (HABMParameter const* p : b->getParameters()) {
    names.push_back(p->getName());
  }
  EXPECT_EQ(names, (std::vector<std::string>{"p", "r", "s"}));
  EXPECT_EQ(b->getParameter("s")->getValue(), "s");
  EXPECT_TRUE(b->removeParameter(b->getParameter("r")->getName()));  // the child's own name as the key
  EXPECT_EQ(b->check(), std::vector<std::string>());
}

TEST(HABMBlockChildren, SetCreatesOnlyWhenAskedAndThenOnlyReplaces) {
  auto const b = HABMBlock::createTopBlock("m");
  EXPECT_EQ(b->setGeneric("g", "1", false), nullptr);
  EXPECT_FALSE(b->hasGenerics());
  HABMGeneric* g = b->setGeneric("g", "1", true);
  ASSERT_NE(g, nullptr);
  EXPECT_EQ(b->setGeneric("g", "2", true), g);
  EXPECT_EQ(g->getValue(), "2");
  EXPECT_EQ(b->getGenerics().size(), 1U);
  EXPECT_EQ(b->setParameter("", "1", true), nullptr);
  EXPECT_EQ(b->setAttribute("a/b", "1", true), nullptr);
  EXPECT_NE(b->setAttribute("a", "", true), nullptr);
}

// Moving blocks in and out.

TEST_F(HABMBlockTree, RemovedSubBlockBecomesATopBlock) {
  EXPECT_EQ(top_->removeSubBlock("nope"), nullptr);
  auto removed = top_->removeSubBlock("a");
  ASSERT_NE(removed, nullptr);
  EXPECT_EQ(removed.get(), a_);
  EXPECT_EQ(removed->getInstanceName(), "");
  EXPECT_EQ(removed->getParent(), nullptr);
  EXPECT_EQ(removed->getInstancePath(), "/");
  EXPECT_EQ(x_->getInstancePath(), "/x");
  EXPECT_EQ(pathsOf(top_->getSubBlocks()), (std::vector<std::string>{"/b"}));
}

TEST_F(HABMBlockTree, InsertAdoptsATreeUnderTheNewName) {
  auto other = HABMBlock::createTopBlock("mo");
  other->createSubBlock("in", "mi", false);
  std::unique_ptr<HABMBlock> empty;
  EXPECT_EQ(b_->insertSubBlock("z", empty, false), nullptr);
  EXPECT_EQ(b_->insertSubBlock("y", other, false), nullptr);
  EXPECT_NE(other, nullptr);
  HABMBlock* inserted = b_->insertSubBlock("y", other, true);
  ASSERT_NE(inserted, nullptr);
  EXPECT_EQ(other, nullptr);
  EXPECT_EQ(inserted->getInstancePath(), "/b/y");
  EXPECT_EQ(inserted->getModuleName(), "mo");
  EXPECT_EQ(b_->getSubBlock("y"), y_);
  EXPECT_EQ(top_->findSubBlock("/b/y/in", true), nullptr);  // the path goes through the first "y"
}

TEST_F(HABMBlockTree, InsertRefusesTheTreeThatHoldsTheTargetAndRenamesAMovedBlock) {
  EXPECT_EQ(deep_->insertSubBlock("loop", top_, false), nullptr);
  ASSERT_NE(top_, nullptr);
  auto moved = top_->removeSubBlock("b");
  moved->setInstanceName("old");
  EXPECT_EQ(a_->insertSubBlock("nb", moved, false)->getInstancePath(), "/a/nb");
}

TEST_F(HABMBlockTree, RenamingASubBlockMovesItsLookup) {
  y_->setInstanceName("x");
  EXPECT_EQ(b_->getSubBlock("y"), nullptr);
  EXPECT_EQ(b_->getSubBlock("x"), y_);
  a_->setInstanceName("b");  // now two sub-blocks "b"; the first in order wins
  EXPECT_EQ(top_->getSubBlock("b"), a_);
  EXPECT_EQ(top_->getSubBlock("a"), nullptr);
}

// Finds.

TEST_F(HABMBlockTree, FindSubBlockWalksOneLevelUnlessRecursive) {
  EXPECT_EQ(top_->findSubBlock("a", false), a_);
  EXPECT_EQ(top_->findSubBlock("/a/x", false), nullptr);
  EXPECT_EQ(top_->findSubBlock("/a/x", true), x_);
  EXPECT_EQ(top_->findSubBlock("a/x/deep", true), deep_);
  EXPECT_EQ(top_->findSubBlock("/", true), nullptr);
  EXPECT_EQ(top_->findSubBlock("", true), nullptr);
  EXPECT_EQ(top_->findSubBlock("/a/q", true), nullptr);
  EXPECT_EQ(a_->findSubBlock("/a/x", false), x_);
  EXPECT_EQ(a_->findSubBlock("/b", true), nullptr);
}

TEST_F(HABMBlockTree, FindChildTakesTheHolderFromTheHead) {
  HABMAttribute* attr = x_->createAttribute("k", "1");
  HABMGeneric* gen = x_->createGeneric("k", "1");
  HABMParameter* par = deep_->createParameter("k", "1");
  EXPECT_EQ(a_->findAttribute("x/k", false), attr);
  EXPECT_EQ(top_->findAttribute("/a/x/k", false), nullptr);
  EXPECT_EQ(top_->findAttribute("/a/x/k", true), attr);
  EXPECT_EQ(a_->findGeneric("/a/x/k", false), gen);
  EXPECT_EQ(x_->findParameter("deep/k", false), par);
  EXPECT_EQ(x_->findParameter("k", true), nullptr);  // never searched by name at another level
  EXPECT_EQ(top_->findAttribute("", true), nullptr);
}

TEST_F(HABMBlockTree, FindSubBlocksPutsDepthFirstAndDirectChildrenLast) {
  EXPECT_EQ(pathsOf(top_->findSubBlocks("", true)),
            (std::vector<std::string>{"/a/x/deep", "/a/x", "/b/y", "/a", "/b"}));
  EXPECT_EQ(pathsOf(top_->findSubBlocks("", false)), (std::vector<std::string>{"/a", "/b"}));
  EXPECT_EQ(pathsOf(top_->findSubBlocks("/?", true)), (std::vector<std::string>{"/a", "/b"}));
  EXPECT_EQ(pathsOf(top_->findSubBlocks("a", true)), (std::vector<std::string>{}));
  EXPECT_EQ(pathsOf(top_->findSubBlocks("*x*", true)), (std::vector<std::string>{"/a/x/deep", "/a/x"}));
}

TEST_F(HABMBlockTree, FindByModuleAndVlnvMatchTheirFieldAndRefuseTheEmptyPattern) {
  EXPECT_EQ(pathsOf(top_->findSubBlocksByModule("mx", true)), (std::vector<std::string>{"/a/x", "/b/y"}));
  EXPECT_EQ(pathsOf(top_->findSubBlocksByModule("mx", false)), (std::vector<std::string>{}));
  EXPECT_TRUE(top_->findSubBlocksByModule("", true).empty());
  y_->setModuleVlnv("acme:ip:fifo:1.0");
  EXPECT_EQ(pathsOf(top_->findSubBlocksByVlnv("*:ip:*", true)), (std::vector<std::string>{"/b/y"}));
  EXPECT_TRUE(top_->findSubBlocksByVlnv("", true).empty());
}

TEST_F(HABMBlockTree, HasSubBlockComparesPointers) {
  EXPECT_TRUE(top_->hasSubBlock(deep_, true));
  EXPECT_FALSE(top_->hasSubBlock(deep_, false));
  EXPECT_FALSE(top_->hasSubBlock(top_.get(), true));
  EXPECT_FALSE(top_->hasSubBlock(nullptr, true));
}

// Traces.

class HABMBlockTrace : public ::testing::Test {
 protected:
  std::vector<std::pair<std::string, unsigned int>> traces() const {
    std::vector<std::pair<std::string, unsigned int>> out;
    for (auto const& r : capture_.records()) {
      EXPECT_EQ(r.domain, "blockmodel");
      EXPECT_EQ(r.scope, "HABM");
      out.emplace_back(r.text, r.mask);
    }
    return out;
  }
  ComMsgCapture capture_;
};

TEST_F(HABMBlockTrace, BlockLifeTracesCarryTheBlockMask) {
  ComMsgScopeGuard on("HABM");
  auto top = HABMBlock::createTopBlock("top");
  HABMBlock* u0 = top->createSubBlock("u0", "m", false);
  top->createSubBlock("u0", "m", false);
  auto other = HABMBlock::createTopBlock("o");
  u0->insertSubBlock("in", other, false);
  u0->insertSubBlock("bad/name", other, false);
  top->removeSubBlock("u0");
  top->removeSubBlock("u0");
  using T = std::pair<std::string, unsigned int>;
  EXPECT_EQ(traces(), (std::vector<T>{
                          {"Created new top-block module 'top'.\n", kBlockMask},
                          {"Created sub-block 'u0' in block '/'.\n", kBlockMask},
                          {"Failed to create sub-block 'u0' in block '/'.\n", kBlockMask},
                          {"Created new top-block module 'o'.\n", kBlockMask},
                          {"Inserted sub-block '/u0/in' into block '/u0'.\n", kBlockMask},
                          {"Failed to insert sub-block 'bad/name' in block '/u0'.\n", kBlockMask},
                          {"Removed sub-block 'u0' from block '/'.\n", kBlockMask},
                      }));
}

TEST_F(HABMBlockTrace, ChildTracesCarryTheChildMaskAndFailuresTheBlockMask) {
  auto top = HABMBlock::createTopBlock("top");
  HABMBlock* u0 = top->createSubBlock("u0", "m", false);
  ComMsgScopeGuard on("HABM");
  u0->createAttribute("a", "1");
  u0->createAttribute("a", "1");
  u0->setGeneric("g", "1", true);
  u0->removeGeneric("g");
  u0->removeGeneric("g");
  u0->createParameter("", "1");
  u0->clearAttributes();
  using T = std::pair<std::string, unsigned int>;
  EXPECT_EQ(traces(), (std::vector<T>{
                          {"Created attribute 'a' on block '/u0'.\n", kChildMask},
                          {"Failed to create attribute 'a' on block '/u0'.\n", kBlockMask},
                          {"Created generic 'g' on block '/u0'.\n", kChildMask},
                          {"Removed generic 'g' from block '/u0'.\n", kChildMask},
                          {"Failed to create parameter '' on block '/u0'.\n", kBlockMask},
                      }));
  EXPECT_EQ(capture_.records()[0].format, "Created attribute '%s' on block '%s'.\n");
}

TEST_F(HABMBlockTrace, ArgumentsAreNotEvaluatedWithTheScopeOff) {
  int evaluated = 0;
  auto const argument = [&evaluated] {
    ++evaluated;
    return "x";
  };
  HABM_TRACE(kChildMask, "Created '%s'.\n", argument());
  EXPECT_EQ(evaluated, 0);
  ComMsgScopeGuard on("HABM");
  HABM_TRACE(kChildMask, "Created '%s'.\n", argument());
  EXPECT_EQ(evaluated, 1);
  ASSERT_EQ(capture_.records().size(), 1U);
  EXPECT_EQ(capture_.records()[0].text, "Created 'x'.\n");
}

}  // namespace
