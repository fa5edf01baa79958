// HABMJsonFileTest.cpp: block model files: round trips, the document frame and every failure path.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMJsonReader.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "isl/iostreams/filtering_stream.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"
#include "util/HUTEnv.h"
#include "util/HUTFile.h"

#include "HABMTestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

using habm_test::bytes;
using habm_test::put;

class HABMJsonFile : public habm_test::TempDirTest {
 protected:
  // A tree that uses every field the file keeps, with values away from their defaults.
  static std::unique_ptr<HABMBlock> richTree() {
    auto top = HABMBlock::createTopBlock("soc");
    top->setModuleVlnv("acme:blockdesign:soc:1.0");
    top->setEnablement("always");
    top->setBaseAddress(HABMAddrValue(std::string("0x8000_0000")));
    top->setValidated(true);
    top->setLocked(HABMBlock::LOCKED);
    top->createParameter("P", "1");
    top->createGeneric("WIDTH", "32");
    top->createAttribute("BLOCK_STUB", "true");
    top->createAttribute("EMPTY", "");
    HABMBlock* cpu = top->createSubBlock("cpu", "core", false);
    cpu->setTransparent(false);
    cpu->setLocked(HABMBlock::UNLOCKED);
    cpu->createAttribute("quote\"and\\slash", "line\nbreak");
    cpu->createSubBlock("alu", "alu_impl", false)->createGeneric("N", "4");
    top->createSubBlock("mem", "ram", false);
    HABMPort* clk = top->createPort("clk", false);
    clk->setPortType(HABMPort::TYPE_WIRE);
    clk->createAttribute("MARK_DEBUG", "true");
    HABMPort* data = cpu->createPort("data", false);
    data->setPortDirection(HABMPort::DIR_OUT);
    data->setPortLeft(31);
    HABMPort* wide = cpu->createPort("wide", false);
    wide->setPortDirection(HABMPort::DIR_PHANTOM);
    wide->setPortRight(4000000000U);
    cpu->createPort("clk", false)->setPortType(HABMPort::TYPE_WIRE);
    top->createPortConnection("clk", {"cpu/clk"}, false)->setConnectionType(HABMPortConnection::HARD);
    top->createPortConnection("cpu/data", {"cpu/wide", "clk"}, true);
    top->createPortConnection("dangling", false)->setSourcePath("gone/p");
    return top;
  }
};

TEST_F(HABMJsonFile, TreeRoundTripsAndASecondWriteGivesTheSameBytes) {
  auto const tree = richTree();
  EXPECT_NE(roundTrip(*tree, "soc.bm"), nullptr);
  EXPECT_NE(roundTrip(*tree, "soc.bm.gz"), nullptr);
  EXPECT_NE(bytes(path("soc.bm")), bytes(path("soc.bm.gz")));
}

TEST_F(HABMJsonFile, DocumentFrameAndMemberOrder) {
  auto top = HABMBlock::createTopBlock("m");
  top->createSubBlock("u0", "n", false);
  EXPECT_EQ(written(*top),
            R"({"schema":"tessel:schema:block_model:1.0","top_block":{"module_name":"m","contents":)"
            R"({"sub_blocks":{"u0":{"module_name":"n"}}}}})");
  auto bare = HABMBlock::createTopBlock("bare");
  bare->setTransparent(false);
  EXPECT_EQ(
      written(*bare),
      R"({"schema":"tessel:schema:block_model:1.0","top_block":{"module_name":"bare","transparent":false}})");
}

TEST_F(HABMJsonFile, PortsAndPortConnectionsKeepOnlyWhatDiffersFromTheirDefaults) {
  auto top = HABMBlock::createTopBlock("m");
  top->createPort("w", false)->setPortType(HABMPort::TYPE_WIRE);
  top->createPort("v", false)->setPortLeft(7);
  top->createSubBlock("u", "n", false)->createPort("i", false);
  top->createPortConnection("v", {"u/i"}, false);
  top->createPortConnection("empty", false);
  EXPECT_EQ(written(*top),
            R"({"schema":"tessel:schema:block_model:1.0","top_block":{"module_name":"m","boundary":{"ports":)"
            R"({"w":{"type":"wire","direction":"in"},"v":{"type":"vector","direction":"in","size_left":7,)"
            R"("size_right":0}}},"contents":{"sub_blocks":{"u":{"module_name":"n","boundary":{"ports":{"i":)"
            R"({"type":"vector","direction":"in","size_left":0,"size_right":0}}}}},"port_connections":)"
            R"({"port_connection_0":{"source":"v","targets":["u/i"]}}}}})");
}

TEST_F(HABMJsonFile, BadPortsAndTargetsFailTheReadButLoseNothingElse) {
  put(path("p.bm"), R"({"top_block":{"module_name":"m","boundary":{"ports":{"a":{"type":"wire"},)"
                    R"("b":{"type":"vector","direction":"OUT","size_left":3}}}}})");
  auto top = HABMBlock::createTopBlock("m");
  EXPECT_FALSE(HABMJsonReader::readBlock(HUTFile(path("p.bm")), *top, HABMJsonReader::MODE_REPLACE));
  ASSERT_NE(top->getPort("b"), nullptr);
  EXPECT_EQ(top->getPort("b")->getPortDirection(), HABMPort::DIR_OUT);
  EXPECT_EQ(top->getPort("b")->getPortWidth(), 4U);
  auto sub = HABMBlock::createTopBlock("m");
  HABMBlock* u = sub->createSubBlock("u", "n", false);
  put(path("c.bm"), R"({"top_block":{"module_name":"n","contents":{"port_connections":)"
                    R"({"n":{"source":"/elsewhere/p","targets":["a",1,"/u/b"]},"t":{"targets":"a"}}}}})");
  EXPECT_FALSE(HABMJsonReader::readBlock(HUTFile(path("c.bm")), *u, HABMJsonReader::MODE_REPLACE));
  ASSERT_EQ(u->getPortConnections().size(), 2U);
  EXPECT_EQ(u->getPortConnection("n")->getSourcePath(false), "");
  EXPECT_EQ(u->getPortConnection("n")->getTargetPaths(false), (std::set<std::string>{"a", "b"}));
}

TEST_F(HABMJsonFile, PrettyTextNeedsTheParameterAndTheHostQueryOnlyPicksTheStream) {
  auto top = HABMBlock::createTopBlock("m");
  std::string const pretty =
      "{\n  \"schema\": \"tessel:schema:block_model:1.0\",\n  \"top_block\": {\n"
      "    \"module_name\": \"m\"\n  }\n}";
  for (bool inside : {false, true}) {
    HUTEnv::setHostInsideOrvane(inside);
    {
      HPAParamOverride on("project.prettyBlockModelWriter", "true");
      ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("p.bm")), *top, true));
      EXPECT_EQ(bytes(path("p.bm")), pretty) << inside;
    }
    ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("p.bm")), *top, true));
    EXPECT_EQ(bytes(path("p.bm")).find('\n'), std::string::npos) << inside;
  }
  HUTEnv::setHostInsideOrvane(false);
}

struct BadFile {
  char const* name;
  std::string text;
  std::vector<std::string> formats;
};

TEST_F(HABMJsonFile, BadFilesGiveTheirMessagesAndNoBlock) {
  std::string deep(1000000, '[');
  deep += std::string(1000000, ']');
  std::string const ok = R"({"top_block":{"module_name":"m"}})";
  BadFile const cases[] = {
      {"empty", "", {"@90-2@%s", "@90-4@%s"}},
      {"two roots", ok + ok, {"@90-2@%s", "@90-4@%s"}},
      {"no top block", R"({"schema":"x"})", {"@90-9@%s", "@90-4@%s"}},
      {"top block not an object", R"({"top_block":[1]})", {"@90-9@%s", "@90-4@%s"}},
      {"root not an object", "[]", {"@90-9@%s", "@90-4@%s"}},
      {"deep nesting", deep, {"@90-2@%s", "@90-4@%s"}},
      {"no module name", R"({"top_block":{"vlnv":"a:b:c:d"}})", {"@90-9@%s", "@90-4@%s"}},
      {"bad value object",
       R"({"top_block":{"module_name":"m","configuration":{"attributes":{"A":{}}}}})",
       {"@90-9@%s", "@90-4@%s"}},
      {"twice the same instance",
       R"({"top_block":{"module_name":"m","contents":{"sub_blocks":)"
       R"({"u":{"module_name":"a"},"u":{"module_name":"b"}}}}})",
       {"@90-4@%s"}},
      {"number text",
       R"({"top_block":{"module_name":"m","contents":{"sub_blocks":{"u/v":{}}}}})",
       {"@90-4@%s"}},
  };
  for (auto const& c : cases) {
    put(path("bad.bm"), c.text);
    ComMsgCapture capture;
    EXPECT_EQ(HABMBlock::readTopBlock(HUTFile(path("bad.bm"))), nullptr) << c.name;
    EXPECT_EQ(capture.formats(), c.formats) << c.name;
    ASSERT_FALSE(capture.records().empty());
    EXPECT_EQ(capture.records().back().args, std::vector<std::string>{path("bad.bm")}) << c.name;
  }
  ComMsgCapture capture;
  EXPECT_EQ(HABMBlock::readTopBlock(HUTFile(path("missing.bm"))), nullptr);
  EXPECT_EQ(capture.formats(), std::vector<std::string>{"@90-4@%s"});
}

TEST_F(HABMJsonFile, SchemaIsNeverLookedAtAndUnknownMembersAreIgnored) {
  put(path("s.bm"), R"({"schema":"other:thing:9.9","top_block":{"module_name":"m","usage":1,"mask":[],)"
                    R"("instance_name":"x","valid":"true","lock":"LOCKED"}})");
  ComMsgCapture capture;
  auto const top = HABMBlock::readTopBlock(HUTFile(path("s.bm")));
  ASSERT_NE(top, nullptr);
  EXPECT_TRUE(capture.records().empty());
  EXPECT_EQ(top->getModuleName(), "m");
  EXPECT_EQ(top->getInstanceName(), "");
  EXPECT_FALSE(top->getValidated());  // a string never reads as true
  EXPECT_EQ(top->getLocked(), HABMBlock::LOCKED);
}

TEST_F(HABMJsonFile, ReplaceEmptiesPresentGroupsAndMergeOnlyAdds) {
  put(path("c.bm"),
      R"({"top_block":{"module_name":"m","configuration":{"generics":{"G":{"value":"new"}}}}})");
  auto target = HABMBlock::createTopBlock("t");
  target->createAttribute("A", "old");
  target->createGeneric("G", "old");
  target->createGeneric("H", "old");
  target->createSubBlock("u", "x", false);
  EXPECT_FALSE(HABMJsonReader::readBlock(HUTFile(path("c.bm")), *target, HABMJsonReader::MODE_MERGE));
  EXPECT_EQ(target->getGeneric("G")->getValue(), "old");  // merging never updates a child that is there
  ASSERT_TRUE(HABMJsonReader::readBlock(HUTFile(path("c.bm")), *target, HABMJsonReader::MODE_REPLACE));
  EXPECT_EQ(target->getAttributes().size(), 0U);  // the configuration group is there: all its kinds empty
  ASSERT_EQ(target->getGenerics().size(), 1U);
  EXPECT_EQ(target->getGeneric("G")->getValue(), "new");
  EXPECT_EQ(target->getSubBlocks().size(), 1U);  // no contents group: sub-blocks stay
}

TEST_F(HABMJsonFile, FailedWritesKeepTheFileThatWasThere) {
  auto top = HABMBlock::createTopBlock("m");
  put(path("keep.bm"), "precious");
  fs::create_directories(dir_ / "folder.bm");
  for (std::string const& target : {path("no/such/dir/x.bm"), path("folder.bm")}) {
    ComMsgCapture capture;
    EXPECT_FALSE(HABMBlock::writeTopBlock(HUTFile(target), *top, false)) << target;
    EXPECT_EQ(capture.formats(), std::vector<std::string>{"@90-7@%s"});
  }
  EXPECT_EQ(bytes(path("keep.bm")), "precious");
  std::size_t entries = 0;
  for ([[maybe_unused]] auto const& e : fs::directory_iterator(dir_)) {
    ++entries;
  }
  EXPECT_EQ(entries, 2U);  // no temporary file left behind
  ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("keep.bm")), *top, true));
  EXPECT_NE(bytes(path("keep.bm")), "precious");
}

}  // namespace
