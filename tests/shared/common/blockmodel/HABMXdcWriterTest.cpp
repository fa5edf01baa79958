// HABMXdcWriterTest.cpp: the NoC constraint script: the example's golden file (every kind of line), the
// properties of links, the skip paths, the lines' origins, and the file and its failure message.
#include "blockmodel/HABMXdcWriter.h"

#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMUtils.h"
#include "msg/ComMsgMgr.h"

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
    if (top_) {
      EXPECT_EQ(top_->check(), std::vector<std::string>());
    }
    TempDirTest::TearDown();
  }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("t");
};

Lines const kHeads = {"# constrain noc interface(s)", "", "# constrain noc connection(s)"};

TEST_F(HABMXdcWriterTest, ExampleMatchesItsGoldenFile) {
  auto const noc = HABMBlock::readTopBlock(HUTFile(std::string(MZ_EXAMPLES_DIR) + "/noc.bm"));
  ASSERT_NE(noc, nullptr);
  ASSERT_TRUE(HABMXdcWriter::writeXdc(*noc, HUTFile(path("noc.tcl")), false, {}));
  habm_hdl_test::expectGolden("xdc/noc.tcl", habm_test::bytes(path("noc.tcl")));
}

// The first line has no number, the others count from 0; a fresh result replaces what was there.
TEST_F(HABMXdcWriterTest, BlockWithoutNocObjectsGivesTheSectionHeadsAsToolLinesOfNoFile) {
  top_->createSubBlock("u0", "m", false);
  std::vector<std::pair<std::string, HATSrcInfo>> info = {{"stale", HATSrcInfo()}};
  ASSERT_TRUE(HABMXdcWriter::getXdcInfo(*top_, info, {}));
  ASSERT_EQ(info.size(), kHeads.size());
  for (std::size_t i = 0; i < info.size(); ++i) {
    EXPECT_EQ(info[i].first, kHeads[i]);
    EXPECT_EQ(info[i].second,
              HATSrcInfo(HATSrcInfo::NO_FILE, static_cast<std::int32_t>(i) - 1, HATSrcInfo::ORIGIN_TOOL, 0));
  }
}

// A primary link carries remaps and the parameters that differ from its defaults; a parameter the
// default map does not know by that spelling is written whatever its value.
TEST_F(HABMXdcWriterTest, ConnectionsAreCreatedAndOnlyPrimaryOnesGetTheirChangedProperties) {
  HABMBlock* s = top_->createSubBlock("s", "m", false);
  makeNocInterface(*top_, "nmu", N::MODE_NMU);
  makeNocInterface(*s, "nsu", N::MODE_NSU);
  makeNocInterface(*s, "vnsu", N::MODE_VNSU);
  HABMNocConnection* primary = top_->createNocConnection("nmu", "s/nsu", false);
  ASSERT_NE(primary, nullptr);
  primary->setEditable(true);
  primary->setRemaps({HABMAddrRemap("0x0,0x8000[4K]")});
  ASSERT_NE(primary->setParameter(HABMNocConnection::READ_BANDWIDTH(), "1000", false), nullptr);
  ASSERT_NE(primary->setParameter(HABMNocConnection::EXCLUSIVE_ROUTING_GROUP(), "", false), nullptr);
  ASSERT_NE(primary->createParameter("read_latency", "300"), nullptr);
  HABMNocConnection* secondary = s->createNocConnection("vnsu", "nsu", true);
  secondary->setEditable(true);
  secondary->setRemaps({HABMAddrRemap("0x0,0x8000[4K]")});
  // A fixed link writes nothing, whatever it holds.
  top_->createNocConnection("nmu", "s/vnsu", true)->setRemaps({HABMAddrRemap("0x0,0x1000[1K]")});

  Lines const all = lines(*top_);
  EXPECT_EQ(Lines(all.begin() + 3, all.end()),
            (Lines{
                "set noc_connection_0 [create_noc_connection -source [get_noc_interfaces nmu] -target "
                "[get_noc_interfaces s/nsu] noc_connection_0]",
                "set_property REMAPS [list {0x0 0x8000 4K}] ${noc_connection_0}",
                "set_property -dict [list READ_BANDWIDTH {1000} read_latency {300}] ${noc_connection_0}",
                "set s_noc_connection_0 [create_noc_connection -source [get_noc_interfaces s/vnsu] -target "
                "[get_noc_interfaces s/nsu] s/noc_connection_0]",
            }));
  // From the sub-block, the paths start there.
  EXPECT_EQ(lines(*s).back(),
            "set noc_connection_0 [create_noc_connection -source [get_noc_interfaces vnsu] -target "
            "[get_noc_interfaces nsu] noc_connection_0]");
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

TEST_F(HABMXdcWriterTest, FileHoldsTheHeaderAndTheLinesOrFailsSayingWhere) {
  makeNocInterface(*top_, "i", N::MODE_NMU)->setEditable(true);
  habm_test::put(path("x.tcl"), "old");
  ASSERT_TRUE(HABMXdcWriter::writeXdc(*top_, HUTFile(path("x.tcl")), true, {}));
  std::string expected = HABMUtils::get_copyright_header("#") + "\n";
  for (std::string const& line : lines(*top_)) {
    expected += line + "\n";
  }
  EXPECT_EQ(habm_test::bytes(path("x.tcl")), expected);

  std::string const where = path("no/such/dir/x.tcl");
  ComMsgCapture capture;
  EXPECT_FALSE(HABMXdcWriter::writeXdc(*top_, HUTFile(where), false, {}));
  EXPECT_EQ(capture.formats(), std::vector<std::string>{"@90-7@%s"});
  ASSERT_EQ(capture.texts().size(), 1U);
  EXPECT_NE(capture.texts()[0].find(where), std::string::npos);
}

}  // namespace
