// HABMDeepTreeTest.cpp: a chain of sub-blocks as deep as a block model file holds: every walk of the tree
// (paths, finds, checks, copies, the writer, the reader, the destructor) goes through it without
// recursion, and the writer refuses exactly the depth the reader refuses.
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMJsonReader.h"

#include "HABMTestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class HABMDeepTree : public habm_test::TempDirTest {};

TEST_F(HABMDeepTree, EveryWalkCopesWithTheDeepestChainAFileHolds) {
  // The deepest block object of a file that still reads: the frame nests two, each level three.
  unsigned const depth = (HABMJsonReader::MAX_NESTING - 2) / 3;
  auto top = HABMBlock::createTopBlock("top");
  HABMBlock* deepest = top.get();
  for (unsigned d = 0; d < depth; ++d) {
    deepest = deepest->createSubBlock("u", "m", false);
  }
  EXPECT_EQ(deepest->getInstanceDepth(), static_cast<int>(depth));
  EXPECT_EQ(deepest->getInstancePath().size(), 2U * depth);
  EXPECT_EQ(top->findSubBlocks("", true).size(), depth);
  EXPECT_EQ(top->findSubBlocks("", true).front(), deepest);
  EXPECT_EQ(top->check(), std::vector<std::string>());

  std::string const file = written(*top);
  auto const back = HABMBlock::readTopBlock(HUTFile(path("out.bm")));
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(written(*back), file);
  EXPECT_EQ(written(*HABMBlock::cloneTopBlock(*top)), file);

  // One level more inside the deepest block: the writer refuses what the reader would, and writes nothing.
  deepest->createAttribute(HABMAttribute::DONT_TOUCH(), "true");
  EXPECT_FALSE(HABMBlock::writeTopBlock(HUTFile(path("too_deep.bm")), *top, false));
  EXPECT_FALSE(std::filesystem::exists(path("too_deep.bm")));
}

}  // namespace
