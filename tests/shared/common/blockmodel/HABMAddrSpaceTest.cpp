// HABMAddrSpaceTest.cpp: address spaces and segments: the segment memory-type vocabulary and the segment
// finds, which take their space from the head of the path.
#include "blockmodel/HABMAddrSpace.h"

#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMBlock.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

TEST(HABMAddrSegmentText, MemoryTypesReadInAnyCaseAndOnlyTheSegmentWords) {
  using Row = std::pair<char const*, HABMAddrSegment::MemoryType>;
  for (auto const& [text, type] :
       {Row{"aperture", HABMAddrSegment::TYPE_APERTURE}, Row{"BOTH", HABMAddrSegment::TYPE_BOTH},
        Row{"Data", HABMAddrSegment::TYPE_DATA}, Row{"instruction", HABMAddrSegment::TYPE_INSTRUCTION},
        Row{"reserved", HABMAddrSegment::TYPE_RESERVED}, Row{"code", HABMAddrSegment::TYPE_UNKNOWN},
        Row{"register", HABMAddrSegment::TYPE_UNKNOWN}, Row{" both", HABMAddrSegment::TYPE_UNKNOWN},
        Row{"", HABMAddrSegment::TYPE_UNKNOWN}}) {
    EXPECT_EQ(HABMAddrSegment::encodeMemoryType(text), type) << text;
  }
  for (int t = HABMAddrSegment::TYPE_APERTURE; t <= HABMAddrSegment::TYPE_UNKNOWN; ++t) {
    auto const type = static_cast<HABMAddrSegment::MemoryType>(t);
    EXPECT_EQ(HABMAddrSegment::encodeMemoryType(HABMAddrSegment::decodeMemoryType(type)), type);
  }
}

TEST(HABMAddrSegmentFind, TheSpaceIsFoundAsByFindAddrSpaceThenTheSegmentByName) {
  auto top = HABMBlock::createTopBlock("top");
  HABMBlock* u1 = top->createSubBlock("u1", "m1", false);
  HABMAddrSpace* space = u1->createAddrSpace("s");
  HABMAddrSegment* seg = space->createAddrSegment("seg");
  HABMAddrSegment* deep = u1->createSubBlock("u2", "m2", false)->createAddrSpace("d")->createAddrSegment("x");
  EXPECT_EQ(top->findAddrSegment("/u1/s/seg", false), seg);
  EXPECT_EQ(u1->findAddrSegment("s/seg", false), seg);
  EXPECT_EQ(top->findAddrSegment("u1/u2/d/x", false), nullptr);
  EXPECT_EQ(top->findAddrSegment("u1/u2/d/x", true), deep);
  EXPECT_EQ(top->findAddrSegment("seg", true), nullptr);
  EXPECT_EQ(top->findAddrSegment("u1/s", true), nullptr);
  EXPECT_EQ(top->findAddrSegment("", true), nullptr);
  EXPECT_EQ(top->check(), std::vector<std::string>());
}

}  // namespace
