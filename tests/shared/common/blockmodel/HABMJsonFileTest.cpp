// HABMJsonFileTest.cpp: block model files: round trips of a rich design and of the example, the text the
// writer gives, the odd input the reader takes and the input it refuses, replacing against merging, and
// writes that fail without harming what was there.
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMJsonReader.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortMap.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"
#include "util/HUTEnv.h"

#include "HABMAddrTestUtil.h"
#include "HABMTestFiles.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <filesystem>
#include <regex>

namespace {

using namespace habm_test;
using namespace std::string_literals;
using HABMJsonFile = TempDirTest;

constexpr char kFrame[] = R"({"schema":"tessel:schema:block_model:1.0","top_block":)";

// The address design plus the fields that neither it nor the example set away from their defaults (the
// schema test requires these files to use every key).
std::unique_ptr<HABMBlock> makeRichDesign() {
  auto top = makeAddrDesign();
  top->setEnablement("always");
  top->setValidated(true);
  top->setLocked(HABMBlock::UNLOCKED);
  top->createAttribute("quote\"and\\slash", "line\nbreak");
  top->createGeneric("EMPTY", "");
  HABMBlock* u0 = top->getSubBlock("u0");
  HABMPort* wide = u0->createPort("wide", false);
  wide->setPortDirection(HABMPort::DIR_PHANTOM);
  wide->setPortRight(4000000000U);
  top->createPortConnection("", false)->setSourcePath("gone/p");
  HABMInterface* s = u0->createInterface("S", false);
  s->setInterfaceMode(HABMInterface::MODE_SLAVE);
  s->setEnablement("always");
  s->setBaseAddress(0x4000'0000U);
  s->setApertures({HABMAddrAperture(std::string("0x0[64K]")), HABMAddrAperture(std::string("0x10_0000[1M]"))},
                  false);
  HABMPortMap* map = s->createPortMap("WDATA", "wide");
  map->setLogLeft(31);
  map->setLogRight(0);
  map->setPhyLeft(63);
  map->setPhyRight(32);
  u0->createBridge("")->setRemaps({HABMAddrRemap(0U, 0x8000'0000U, HABMAddrValue::CONST_64K())});
  top->createInterfaceConnection("", false)->setConnectionType(HABMPortConnection::HARD);
  return top;
}

TEST_F(HABMJsonFile, RichDesignRoundTripsPlainAndCompressedAndACompressedFileCutShortSaysSo) {
  auto const tree = makeRichDesign();
  roundTrip(*tree, "a.bm");
  roundTrip(*tree, "a.bm.gz");
  put(path("cut.bm.gz"), bytes(path("a.bm.gz")).substr(0, 200));
  ComMsgCapture capture;
  EXPECT_EQ(HABMBlock::readTopBlock(HUTFile(path("cut.bm.gz"))), nullptr);
  ASSERT_FALSE(capture.records().empty());
  EXPECT_EQ(capture.records().front().args,
            std::vector<std::string>{"The file's compressed stream is damaged or cut short."});
}

// The pretty text of the example is the example's own, inside the host or not.
TEST_F(HABMJsonFile, ExampleRoundTripsAndItsPrettyTextIsItsOwn) {
  std::string const example = std::string(MZ_EXAMPLES_DIR) + "/soc.bm";
  auto const soc = HABMBlock::readTopBlock(HUTFile(example));
  ASSERT_NE(soc, nullptr);
  roundTrip(*soc, "soc.bm");
  // The example writes some sizes with a unit, the writer in hex.
  std::string text = bytes(example);
  for (auto const& [unit, hex] :
       {std::pair{"\"4K\"", "\"0x1000\""}, {"\"64K\"", "\"0x1_0000\""}, {"\"1G\"", "\"0x4000_0000\""}}) {
    text = std::regex_replace(text, std::regex(unit), hex);
  }
  HPAParamOverride pretty("project.prettyBlockModelWriter", "true");
  for (bool inside : {false, true}) {
    HUTEnv::setHostInsideOrvane(inside);
    ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("pretty.bm")), *soc, true));
    EXPECT_EQ(bytes(path("pretty.bm")) + "\n", text) << inside;
  }
  HUTEnv::setHostInsideOrvane(false);
}

// Texts go out with RapidJSON's escapes, whether the writer copies them whole or lets RapidJSON escape them:
// names and values holding every ASCII character and a longer UTF-8 one, compact and pretty, give what
// RapidJSON writes for the same document.
TEST_F(HABMJsonFile, EveryCharacterIsWrittenAsRapidJsonWritesIt) {
  auto top = HABMBlock::createTopBlock("top");
  for (int byte = 1; byte < 128; ++byte) {
    std::string const text = "a" + std::string(1, static_cast<char>(byte)) + "z";
    top->createAttribute("name" + std::to_string(byte) + text, text + "\u00e9");
  }
  top->createAttribute(std::string(70000, 'x'), std::string(70000, '"'));  // beyond the writer's buffer
  for (bool const pretty : {false, true}) {
    HPAParamOverride param("project.prettyBlockModelWriter", pretty ? "true" : "false");
    std::string const text = written(*top);
    rapidjson::Document document;
    ASSERT_FALSE(document.Parse(text.data(), text.size()).HasParseError()) << pretty;
    rapidjson::StringBuffer buffer;
    if (pretty) {
      rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
      writer.SetIndent(' ', 2);
      document.Accept(writer);
    } else {
      rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
      document.Accept(writer);
    }
    EXPECT_EQ(text, buffer.GetString()) << pretty;
  }
}

// Each odd input, in a file whose schema is not this library's, reads as the tree that the text the
// writer then gives describes.
TEST_F(HABMJsonFile, OddInputReadsAsItsCanonicalForm) {
  // What each case shows, the members of top block "t" after its module name, and their canonical form.
  char const* const cases[][3] = {
      {"counts and sizes as text, names in any case",
       R"("boundary":{"memory_maps":{"m":{"range":"4K","address_blocks":{"b":{"type":"Flash",)"
       R"("access":"read-only","offset":"0x10","range":"1K","registers":{"r":{"offset":"4",)"
       R"("width":"16"}}}}}}})",
       R"("boundary":{"memory_maps":{"m":{"range":"0x1000","address_blocks":{"b":{"type":"flash",)"
       R"("access":"read_only","offset":"0x10","range":"0x400","registers":{"r":{"offset":"0x4",)"
       R"("width":16}}}}}}})"},
      {"unknown members are not looked at, and a string is never true",
       R"("usage":1,"mask":[],"instance_name":"x","valid":"true","lock":"LOCKED")", R"("lock":"locked")"},
      {"of two references, the memory map's wins",
       R"("boundary":{"interfaces":{"S":{"vlnv":"v","mode":"MirroredMaster","address_space_ref":"a",)"
       R"("memory_map_ref":"m"}}})",
       R"("boundary":{"interfaces":{"S":{"vlnv":"v","mode":"slave","memory_map_ref":"m"}}})"},
      {"what serves nothing is not written: a reference the mode has no use for, an empty connection",
       R"("boundary":{"interfaces":{"S":{"vlnv":"","mode":"slave","address_space_ref":"a"},"M":{"vlnv":"",)"
       R"("mode":"master","memory_map_ref":"m"}}},"contents":{"port_connections":{"e":{}}})",
       R"("boundary":{"interfaces":{"S":{"vlnv":"","mode":"slave"},"M":{"vlnv":"","mode":"master"}}})"},
      {"apertures and targets that are no array are none",
       R"("boundary":{"interfaces":{"S":{"vlnv":"","mode":"slave","address_apertures":{"offset":"0x0",)"
       R"("range":"4K"}}}},"contents":{"port_connections":{"n":{"source":"p","targets":{"a":1}}}})",
       R"("boundary":{"interfaces":{"S":{"vlnv":"","mode":"slave"}}},)"
       R"("contents":{"port_connections":{"n":{"source":"p"}}})"},
      {"a remap takes its range from the source",
       R"("boundary":{"bridges":{"b":{"source":"S","target":"M","address_remaps":[{)"
       R"("source":"0x1000:0x1FFF","target":"0x9000:0xFFFF"}]}}})",
       R"("boundary":{"bridges":{"b":{"source":"S","target":"M","address_remaps":[{)"
       R"("source":"0x1000:0x1FFF","target":"0x9000:0x9FFF"}]}}})"},
      {"connection paths may be absolute",
       R"("contents":{"interface_connections":{"c":{"type":"HARD","source":"a/S","target":"/b/M"}},)"
       R"("port_connections":{"n":{"source":"/p","targets":["/u/q"]}}})",
       R"("contents":{"port_connections":{"n":{"source":"p","targets":["u/q"]}},)"
       R"("interface_connections":{"c":{"type":"hard","source":"a/S","target":"b/M"}}})"},
  };
  for (auto const& [what, input, canonical] : cases) {
    put(path("odd.bm"),
        std::string(R"({"schema":"other:thing:9.9","top_block":{"module_name":"t",)") + input + "}}");
    auto const top = HABMBlock::readTopBlock(HUTFile(path("odd.bm")));
    ASSERT_NE(top, nullptr) << what;
    EXPECT_EQ(written(*top), kFrame + std::string(R"({"module_name":"t",)") + canonical + "}}") << what;
  }
}

// Each refused input gives its first message, if any, then the catalogue message naming the file.
TEST_F(HABMJsonFile, RefusedInputGivesItsMessagesAndNoBlock) {
  auto const top = [](std::string const& members) {
    return R"({"top_block":{"module_name":"t",)" + members + "}}";
  };
  std::string const map = R"("boundary":{"memory_maps":{"m":{"range":"4K","address_blocks":{"b":)";
  std::string const iface = R"("boundary":{"interfaces":{"S":{"vlnv":"")";
  std::size_t const deep = HABMJsonReader::MAX_NESTING + 1;
  std::string const parse = "@90-2@%s", missing = "@90-9@%s", read = "@90-4@%s";
  // What each case shows, the text of the file, and the first message of two; none for one.
  std::string const cases[][3] = {
      {"empty", "", parse},
      {"two roots", R"({"top_block":{"module_name":"m"}} {})", parse},
      {"nesting too deep", std::string(deep, '[') + std::string(deep, ']'), parse},
      {"no top block", R"({"schema":"x"})", missing},
      {"top block not an object", R"({"top_block":[1]})", missing},
      {"no module name", R"({"top_block":{"vlnv":"a:b:c:d"}})", missing},
      {"module name of a wrong type", R"({"top_block":{"module_name":null}})", "@90-8@%s%s"},
      {"value object without value", top(R"("configuration":{"attributes":{"A":{}}})"), missing},
      {"instance twice",
       top(R"("contents":{"sub_blocks":{"u":{"module_name":"a"},"u":{"module_name":"b"}}})"), ""},
      {"instance name not a name", top(R"("contents":{"sub_blocks":{"u/v":{}}})"), ""},
      {"port direction", top(R"("boundary":{"ports":{"a":{"type":"wire"}}})"), missing},
      {"a target that is no text", top(R"("contents":{"port_connections":{"n":{"targets":["a",1]}}})"), ""},
      {"segment range",
       top(R"("boundary":{"address_spaces":{"s":{"range":"4K","address_segments":{"g":{"offset":"0"}}}}})"),
       missing},
      {"address block type", top(map + R"({"offset":"0","range":"1K"}}}}})"), missing},
      {"register width",
       top(map + R"({"type":"memory","offset":"0","range":"1K","registers":{"r":{"offset":"0"}}}}}}})"),
       missing},
      {"assignment target",
       top(R"("contents":{"address_assignments":{"a":{"type":"internal","source":"m/b","offset":"0",)"
           R"("range":"1K"}}})"),
       missing},
      {"interface mode", top(iface + "}}}"), missing},
      {"port map physical port", top(iface + R"(,"mode":"slave","port_maps":{"CLK":{"logical_left":3}}}}})"),
       missing},
      {"bridge target", top(R"("boundary":{"bridges":{"b":{"source":"S"}}})"), missing},
      {"interface connection source", top(R"("contents":{"interface_connections":{"c":{"target":"x"}}})"),
       missing},
  };
  for (auto const& [what, text, first] : cases) {
    put(path("bad.bm"), text);
    ComMsgCapture capture;
    EXPECT_EQ(HABMBlock::readTopBlock(HUTFile(path("bad.bm"))), nullptr) << what;
    ASSERT_EQ(capture.formats(),
              (first.empty() ? std::vector<std::string>{read} : std::vector<std::string>{first, read}))
        << what;
    EXPECT_EQ(capture.records().back().args, std::vector<std::string>{path("bad.bm")}) << what;
  }
  ComMsgCapture capture;
  EXPECT_EQ(HABMBlock::readTopBlock(HUTFile(path("missing.bm"))), nullptr);
  EXPECT_EQ(capture.formats(), std::vector<std::string>{read});
}

// A top block is read as the file streams in, and read again as a whole document when the file's order
// does not allow that; either way the result, the messages and the tree are those of the whole-document
// read.
TEST_F(HABMJsonFile, StreamedReadGivesWhatTheWholeDocumentReadGives) {
  std::string const sub = R"("u":{"module_name":"a","configuration":{"attributes":{"X":{}}}})";
  std::string const link = R"("port_connections":{"n":{"source":"p","targets":["u/q"]}})";
  std::string const cases[] = {
      // streamed, sub-blocks first in the contents as the writer puts them
      R"({"top_block":{"module_name":"t","boundary":{"ports":{"p":{"type":"wire","direction":"in"}}},)"
      R"("contents":{"sub_blocks":{"u":{"module_name":"a","contents":{"sub_blocks":{"v":{"module_name":"b"}}}},)"
      R"("w":{"module_name":"c"}},)" +
          link + "}}}",
      // a failing sub-block between good ones; a sub-block that is no object; a name taken twice
      R"({"top_block":{"module_name":"t","contents":{"sub_blocks":{)" + sub +
          R"(,"v":[1],"w":{"module_name":"c"},"w":{"module_name":"d"}},)" + link + "}}}",
      // a head that fails with sub-blocks after it, and members after the contents
      R"({"top_block":{"module_name":"t","contents":{"sub_blocks":{"u":{"vlnv":"x","contents":{)"
      R"("sub_blocks":{"v":{"module_name":"b"}}}}}},"lock":"locked","zzz":1}})",
      // read again as a whole: a member of the head after the sub-blocks; contents before them
      R"({"top_block":{"contents":{"sub_blocks":{"u":{"module_name":"a"}}},"module_name":"t"}})",
      R"({"top_block":{"module_name":"t","contents":{)" + link + R"(,"sub_blocks":{)" + sub + "}}}}",
      // the first of two keys counts
      R"({"top_block":{"module_name":"t","contents":{"sub_blocks":1,"sub_blocks":{"u":{}}}}})",
      R"({"top_block":{"module_name":"t","contents":1,"contents":{"sub_blocks":{"u":{}}}}})",
      R"({"top_block":{"module_name":"t"},"top_block":{"vlnv":"x"}})",
      R"({"schema":"s","top_block":7})",
      R"([{"top_block":{"module_name":"t"}}])",
      // the messages of blocks read before a parse error are not said
      R"({"top_block":{"module_name":"t","contents":{"sub_blocks":{)" + sub + R"(,"v":{"module_name":}}}}})",
  };
  auto const outcome = [&](std::unique_ptr<HABMBlock> const& block, ComMsgCapture const& capture) {
    return std::pair{capture.texts(), block ? written(*block) : "no block"};
  };
  for (std::string const& text : cases) {
    put(path("in.bm"), text);
    ComMsgCapture streamed;
    auto const first = HABMBlock::readTopBlock(HUTFile(path("in.bm")));
    auto const viaStream = outcome(first, streamed);
    ComMsgCapture whole;
    auto second = HABMBlock::createTopBlock("in");
    if (!HABMJsonReader::readBlock(HUTFile(path("in.bm")), *second, HABMJsonReader::MODE_REPLACE)) {
      second.reset();
    }
    EXPECT_EQ(viaStream, outcome(second, whole)) << text;
  }
}

TEST_F(HABMJsonFile, ReadsIntoABlockKeepWhatCameBeforeAFailureAndReplaceEmptiesWhatMergeKeeps) {
  // A read that stops at a missing field keeps the fields before it.
  put(path("p.bm"), R"({"top_block":{"module_name":"m","boundary":{"ports":{"a":{"type":"wire"}}}}})");
  auto target = HABMBlock::createTopBlock("t");
  EXPECT_FALSE(HABMJsonReader::readBlock(HUTFile(path("p.bm")), *target, HABMJsonReader::MODE_REPLACE));
  ASSERT_NE(target->getPort("a"), nullptr);
  EXPECT_TRUE(target->getPort("a")->isWirePort());
  put(path("c.bm"), R"({"top_block":{"module_name":"m","configuration":{"generics":{"G":{"value":"new"},)"
                    R"("N":{"value":"new"}}},"boundary":{"address_spaces":{"s":{"range":"1K"}}}}})");
  target->createAttribute("A", "old");
  target->createGeneric("G", "old");
  target->createMemoryMap("old")->setRange(HABMAddrValue::CONST_1K());
  target->createSubBlock("u", "x", false);
  // Merging adds "N" but never updates "G", which fails the read after the configuration group.
  EXPECT_FALSE(HABMJsonReader::readBlock(HUTFile(path("c.bm")), *target, HABMJsonReader::MODE_MERGE));
  EXPECT_EQ(target->getGeneric("G")->getValue(), "old");
  EXPECT_EQ(target->getGeneric("N")->getValue(), "new");
  EXPECT_FALSE(target->hasAddrSpaces());
  // Replacing empties the port, attributes and memory maps too; the contents group is absent: the sub-block
  // stays.
  ASSERT_TRUE(HABMJsonReader::readBlock(HUTFile(path("c.bm")), *target, HABMJsonReader::MODE_REPLACE));
  EXPECT_EQ(written(*target), kFrame +
                                  R"({"module_name":"m","configuration":{"generics":{"G":{"value":"new"},)"
                                  R"("N":{"value":"new"}}},"boundary":{"address_spaces":{"s":{"range":)"
                                  R"("0x400"}}},"contents":{"sub_blocks":{"u":{"module_name":"x"}}}}})"s);
}

// A remap past the top of the address space would wrap and read back as another remap: rather no file than
// a changed design.
TEST_F(HABMJsonFile, FailedWritesAndWrappingRemapsLeaveWhatWasThereAndNoFile) {
  auto const top = HABMBlock::createTopBlock("m");
  std::filesystem::create_directories(dir_ / "folder.bm");
  put(path("folder.bm/precious"), "precious");
  for (std::string const& target : {path("no/such/dir/x.bm"), path("folder.bm")}) {
    ComMsgCapture capture;
    EXPECT_FALSE(HABMBlock::writeTopBlock(HUTFile(target), *top, false)) << target;
    EXPECT_EQ(capture.formats(), std::vector<std::string>{"@90-7@%s"});
  }
  EXPECT_EQ(bytes(path("folder.bm/precious")), "precious");
  top->createBridge("b")->setRemaps(
      {HABMAddrRemap(std::string("0xFFFF_FFFF_FFFF_FFFF_FFFF_FFFF_FFFF_FFF0[0x20],0x0[0x20]"))});
  EXPECT_FALSE(HABMBlock::writeTopBlock(HUTFile(path("wrap.bm")), *top, false));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir_), std::filesystem::directory_iterator()),
            1);  // only the folder
}

}  // namespace
