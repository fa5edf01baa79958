// HABMXdcWriterTest.cpp: the NoC constraint script: the example's golden file (every kind of line), the
// properties of links, the skip paths, the lines' origins, and the file.
#include "blockmodel/HABMXdcWriter.h"

#include "blockmodel/HABMNocConnection.h"

#include "HABMHdlTestUtil.h"
#include "HABMNocTestUtil.h"

#include <gtest/gtest.h>

namespace {

using N = HABMNocInterface;
using habm_test::makeNocInterface;
using Lines = std::vector<std::string>;

class HABMXdcWriterTest : public habm_test::TempDirTest {
 protected:
  static Lines lines(HABMBlock const& block, Lines const& skipPaths = {}) {
    std::vector<std::pair<std::string, HATSrcInfo>> info;
    EXPECT_TRUE(HABMXdcWriter::getXdcInfo(block, info, skipPaths));
    Lines texts;
    for (auto const& entry : info) {
      texts.push_back(entry.first);
    }
    return texts;
  }

  void TearDown() override {
    EXPECT_EQ(top_->check(), std::vector<std::string>());
    TempDirTest::TearDown();
  }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("t");
};

// Written over an old file, deleted first as asked: the header and the lines of getXdcInfo. An unwritable
// file gives false (BmCliTest compares the message).
TEST_F(HABMXdcWriterTest, ExampleMatchesItsGoldenFile) {
  auto const noc = HABMBlock::readTopBlock(HUTFile(std::string(MZ_EXAMPLES_DIR) + "/noc.bm"));
  ASSERT_NE(noc, nullptr);
  habm_test::put(path("noc.tcl"), "old");
  ASSERT_TRUE(HABMXdcWriter::writeXdc(*noc, HUTFile(path("noc.tcl")), true, {}));
  habm_hdl_test::expectGolden("xdc/noc.tcl", habm_test::bytes(path("noc.tcl")));
  EXPECT_FALSE(HABMXdcWriter::writeXdc(*noc, HUTFile(path("no/such/dir/x.tcl")), false, {}));
}

// The first line has no number, the others count from 0; a fresh result replaces what was there.
TEST_F(HABMXdcWriterTest, BlockWithoutNocObjectsGivesTheSectionHeadsAsToolLinesOfNoFile) {
  top_->createSubBlock("u0", "m", false);
  std::vector<std::pair<std::string, HATSrcInfo>> info = {{"stale", HATSrcInfo()}};
  ASSERT_TRUE(HABMXdcWriter::getXdcInfo(*top_, info, {}));
  Lines const heads = {"# constrain noc interface(s)", "", "# constrain noc connection(s)"};
  ASSERT_EQ(info.size(), heads.size());
  for (std::size_t i = 0; i < info.size(); ++i) {
    EXPECT_EQ(info[i].first, heads[i]);
    EXPECT_EQ(info[i].second,
              HATSrcInfo(HATSrcInfo::NO_FILE, static_cast<std::int32_t>(i) - 1, HATSrcInfo::ORIGIN_TOOL, 0));
  }
}

// A primary link carries remaps and the parameters that differ from its defaults; a parameter the
// default map does not know by that spelling is written whatever its value. Secondary and fixed links
// are in the golden file, and BmTclReplayTest replays links of every kind.
TEST_F(HABMXdcWriterTest, PrimaryConnectionsGetTheirRemapsAndChangedParameters) {
  makeNocInterface(*top_, "nmu", N::MODE_NMU);
  makeNocInterface(*top_->createSubBlock("s", "m", false), "nsu", N::MODE_NSU);
  HABMNocConnection* primary = top_->createNocConnection("nmu", "s/nsu", false);
  ASSERT_NE(primary, nullptr);
  primary->setEditable(true);
  primary->setRemaps({HABMAddrRemap("0x0,0x8000[4K]")});
  ASSERT_NE(primary->setParameter(HABMNocConnection::READ_BANDWIDTH(), "1000", false), nullptr);
  ASSERT_NE(primary->setParameter(HABMNocConnection::EXCLUSIVE_ROUTING_GROUP(), "", false), nullptr);
  ASSERT_NE(primary->createParameter("read_latency", "300"), nullptr);

  Lines const all = lines(*top_);
  EXPECT_EQ(Lines(all.begin() + 3, all.end()),
            (Lines{
                "set noc_connection_0 [create_noc_connection -source [get_noc_interfaces nmu] -target "
                "[get_noc_interfaces s/nsu] noc_connection_0]",
                "set_property REMAPS [list {0x0 0x8000 4K}] ${noc_connection_0}",
                "set_property -dict [list READ_BANDWIDTH {1000} read_latency {300}] ${noc_connection_0}",
            }));
}

// Skip entries are byte prefixes of block paths relative to the written block: "s" covers "sub" too,
// only the empty entry reaches the block's own objects, and an absolute path matches nothing.
TEST_F(HABMXdcWriterTest, SkipPathsLeaveOutTheObjectsOfBlocksTheyArePrefixesOf) {
  HABMBlock* s0 = top_->createSubBlock("s0", "m", false);
  HABMBlock* deep = s0->createSubBlock("deep", "m", false);
  HABMBlock* sub = top_->createSubBlock("sub", "m", false);
  for (HABMBlock* block : {top_.get(), s0, deep, sub}) {
    makeNocInterface(*block, "i", block == deep ? N::MODE_NSU : N::MODE_NMU)->setEditable(true);
  }
  s0->createNocConnection("i", "deep/i", true)->setEditable(true);
  // The created paths, read from the ends of the create lines.
  auto const created = [](Lines const& script) {
    std::string names;
    for (std::string const& line : script) {
      if (line.find(" [create_") != std::string::npos) {
        names +=
            (names.empty() ? "" : " ") + line.substr(line.rfind(' ') + 1, line.size() - line.rfind(' ') - 2);
      }
    }
    return names;
  };
  struct {
    HABMBlock const* from;
    Lines skip;
    char const* kept;
  } const cases[] = {
      {top_.get(), {}, "i s0/i s0/deep/i sub/i s0/noc_connection_0"},
      {top_.get(), {"s0"}, "i sub/i"},
      {top_.get(), {"s"}, "i"},
      {top_.get(), {"s0/deep", "sub"}, "i s0/i s0/noc_connection_0"},
      {top_.get(), {""}, ""},
      {top_.get(), {"/s0"}, "i s0/i s0/deep/i sub/i s0/noc_connection_0"},
      {s0, {"deep"}, "i noc_connection_0"},
      {s0, {"s0"}, "i deep/i noc_connection_0"},
  };
  for (auto const& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.skip) + " from " + c.from->getInstancePath());
    EXPECT_EQ(created(lines(*c.from, c.skip)), c.kept);
  }
}

}  // namespace
