// HABMAddrSpaceTest.cpp: address spaces and segments, their block creators, finds, vocabulary and traces.
#include "blockmodel/HABMAddrSpace.h"

#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMBlock.h"
#include "msg/ComMsgMgr.h"

#include "HABMAddrTestUtil.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned int kBlockMask = 0x1000000U;
constexpr unsigned int kChildMask = 0x1000002U;

std::vector<std::string> namesOf(std::vector<HABMAddrSegment*> const& segments) {
  std::vector<std::string> out;
  for (HABMAddrSegment const* s : segments) {
    out.push_back(s->getName());
  }
  return out;
}

// Top with "/u1", "/u1/u2"; a space "s" on "/u1".
class HABMAddrSpaceTree : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("top");
    u1_ = top_->createSubBlock("u1", "m1", false);
    u2_ = u1_->createSubBlock("u2", "m2", false);
    space_ = u1_->createAddrSpace("s");
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }
  std::unique_ptr<HABMBlock> top_;
  HABMBlock* u1_ = nullptr;
  HABMBlock* u2_ = nullptr;
  HABMAddrSpace* space_ = nullptr;
};

TEST_F(HABMAddrSpaceTree, NewSpaceAndSegmentHaveTheDefaults) {
  EXPECT_EQ(space_->getRange(), HABMAddrValue::CONST_4G());
  EXPECT_TRUE(space_->getAddrSegments().empty());
  HABMAddrSegment* seg = space_->createAddrSegment("seg");
  EXPECT_EQ(seg->getMemoryType(), HABMAddrSegment::TYPE_BOTH);
  EXPECT_EQ(seg->getAperture(), HABMAddrAperture::DEFAULT());
}

TEST_F(HABMAddrSpaceTree, PathsPutTheSpaceUnderItsBlock) {
  EXPECT_EQ(space_->createAddrSegment("seg")->getPath(), "/u1/s/seg");
  EXPECT_EQ(top_->createAddrSpace("s")->createAddrSegment("seg")->getPath(), "/s/seg");
}

// An empty name takes the count as it stands; the generated name is not tested, so it may repeat.
TEST_F(HABMAddrSpaceTree, AnEmptyNameTakesTheCountUntestedSoItMayRepeat) {
  EXPECT_EQ(space_->createAddrSegment("")->getName(), "segment_0");
  space_->createAddrSegment("");
  space_->createAddrSegment("a");
  HABMAddrSegment* third = space_->createAddrSegment("");
  EXPECT_EQ(third->getName(), "segment_3");
  EXPECT_TRUE(space_->removeAddrSegment("segment_0"));
  ASSERT_NE(space_->createAddrSegment(""), nullptr);
  EXPECT_EQ(namesOf(space_->getAddrSegments()),
            (std::vector<std::string>{"segment_1", "a", "segment_3", "segment_3"}));
  EXPECT_EQ(space_->getAddrSegment("segment_3"), third);
}

TEST_F(HABMAddrSpaceTree, SegmentsRefuseSeparatedAndTakenNamesAndRemovalKeepsTheOrder) {
  EXPECT_EQ(space_->createAddrSegment("a/b"), nullptr);
  for (char const* name : {"a", "b", "c"}) {
    space_->createAddrSegment(name);
  }
  EXPECT_EQ(space_->createAddrSegment("b"), nullptr);
  EXPECT_FALSE(space_->removeAddrSegment("zz"));
  EXPECT_TRUE(space_->removeAddrSegment("b"));
  EXPECT_EQ(namesOf(space_->getAddrSegments()), (std::vector<std::string>{"a", "c"}));
  space_->clearAddrSegments();
  EXPECT_TRUE(space_->getAddrSegments().empty());
}

TEST_F(HABMAddrSpaceTree, OffsetAndRangeAreTheOneStoredAperture) {
  HABMAddrSegment* seg = space_->createAddrSegment("seg");
  seg->setAperture(HABMAddrAperture(HABMAddrValue(0x1000U), HABMAddrValue::CONST_4K()));
  seg->setOffset(HABMAddrValue(0x3000U));
  EXPECT_EQ(seg->getAperture(), HABMAddrAperture(HABMAddrValue(0x3000U), HABMAddrValue::CONST_4K()));
  seg->setRange(HABMAddrValue::CONST_1M());
  EXPECT_EQ(seg->getOffset(), HABMAddrValue(0x3000U));
  // Nothing ties a segment to its space: it may overflow it.
  space_->setRange(HABMAddrValue::CONST_4K());
  EXPECT_EQ(seg->getRange(), HABMAddrValue::CONST_1M());
}

TEST(HABMAddrSegmentText, MemoryTypesReadInAnyCaseAndOnlyTheSegmentWords) {
  struct Row {
    char const* text;
    HABMAddrSegment::MemoryType type;
  };
  for (Row const& row :
       {Row{"aperture", HABMAddrSegment::TYPE_APERTURE}, Row{"BOTH", HABMAddrSegment::TYPE_BOTH},
        Row{"Data", HABMAddrSegment::TYPE_DATA}, Row{"instruction", HABMAddrSegment::TYPE_INSTRUCTION},
        Row{"reserved", HABMAddrSegment::TYPE_RESERVED}, Row{"code", HABMAddrSegment::TYPE_UNKNOWN},
        Row{"register", HABMAddrSegment::TYPE_UNKNOWN}, Row{" both", HABMAddrSegment::TYPE_UNKNOWN},
        Row{"", HABMAddrSegment::TYPE_UNKNOWN}}) {
    EXPECT_EQ(HABMAddrSegment::encodeMemoryType(row.text), row.type) << row.text;
  }
  EXPECT_EQ(HABMAddrSegment::decodeMemoryType(HABMAddrSegment::TYPE_INSTRUCTION), "instruction");
  EXPECT_EQ(HABMAddrSegment::decodeMemoryType(HABMAddrSegment::TYPE_UNKNOWN), "");
}

TEST_F(HABMAddrSpaceTree, TheBlockRefusesEmptySeparatedAndTakenSpaceNames) {
  EXPECT_EQ(u1_->createAddrSpace(""), nullptr);
  EXPECT_EQ(u1_->createAddrSpace("a/b"), nullptr);
  EXPECT_EQ(u1_->createAddrSpace("s"), nullptr);
  HABMAddrSpace* t = u1_->createAddrSpace("t");
  EXPECT_EQ(u1_->getAddrSpaces(), (std::vector<HABMAddrSpace*>{space_, t}));
  EXPECT_TRUE(u1_->removeAddrSpace("s"));
  EXPECT_FALSE(u1_->removeAddrSpace("s"));
  EXPECT_EQ(u1_->getAddrSpace("t"), t);
  u1_->clearAddrSpaces();
  EXPECT_FALSE(u1_->hasAddrSpaces());
}

TEST_F(HABMAddrSpaceTree, FindsWalkAtMostOneLevelUnlessRecursive) {
  HABMAddrSegment* seg = space_->createAddrSegment("seg");
  HABMAddrSpace* deep = u2_->createAddrSpace("d");
  HABMAddrSegment* deepSeg = deep->createAddrSegment("x");
  EXPECT_EQ(top_->findAddrSpace("u1/s", false), space_);
  EXPECT_EQ(top_->findAddrSpace("/u1/s", false), space_);
  EXPECT_EQ(top_->findAddrSpace("u1/u2/d", false), nullptr);
  EXPECT_EQ(top_->findAddrSpace("u1/u2/d", true), deep);
  EXPECT_EQ(u1_->findAddrSpace("s", false), space_);
  EXPECT_EQ(top_->findAddrSegment("/u1/s/seg", false), seg);
  EXPECT_EQ(top_->findAddrSegment("u1/u2/d/x", true), deepSeg);
  EXPECT_EQ(top_->findAddrSegment("u1/u2/d/x", false), nullptr);
  EXPECT_EQ(top_->findAddrSegment("seg", true), nullptr);
  EXPECT_EQ(top_->findAddrSegment("", true), nullptr);
  EXPECT_EQ(u2_->findAddrSpace("/u1/s", true), nullptr);
}

TEST_F(HABMAddrSpaceTree, PluralFindsMatchTheWholePath) {
  HABMAddrSpace* onTop = top_->createAddrSpace("s");
  HABMAddrSpace* deep = u2_->createAddrSpace("s");
  EXPECT_EQ(top_->findAddrSpaces("", true), (std::vector<HABMAddrSpace*>{onTop, space_, deep}));
  EXPECT_EQ(top_->findAddrSpaces("", false), (std::vector<HABMAddrSpace*>{onTop}));
  EXPECT_TRUE(top_->findAddrSpaces("s", true).empty());
  EXPECT_EQ(top_->findAddrSpaces("/u1/*", true), (std::vector<HABMAddrSpace*>{space_, deep}));
}

TEST(HABMAddrSpaceTrace, SpacesAndSegmentsAreTracedWithTheirTexts) {
  auto top = HABMBlock::createTopBlock("top");
  HABMBlock* u1 = top->createSubBlock("u1", "m", false);
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  HABMAddrSpace* s = u1->createAddrSpace("s");
  u1->createAddrSpace("s");
  s->createAddrSegment("");
  s->createAddrSegment("segment_0");
  s->removeAddrSegment("segment_0");
  s->removeAddrSegment("segment_0");
  s->clearAddrSegments();
  u1->removeAddrSpace("s");
  u1->clearAddrSpaces();
  EXPECT_EQ(habm_test::tracesOf(capture),
            (habm_test::Traces{
                {"Created address space 's' on block '/u1'.\n", kChildMask},
                {"Failed to create address space 's' on block '/u1'.\n", kBlockMask},
                {"Created address segment 'segment_0' on address space '/u1/s'.\n", kChildMask},
                {"Removed address segment 'segment_0' from address space '/u1/s'.\n", kChildMask},
                {"Removed address space 's' from block '/u1'.\n", kChildMask},
            }));
}

}  // namespace
