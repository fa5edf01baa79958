// HABMJsonNocTest.cpp: NoC interfaces and connections in block model files: the example design round
// trips, copies whole, and the reader's NoC rules (older parameter names, links that take no parameter).
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMNocPath.h"
#include "blockmodel/HABMParameter.h"
#include "util/HUTFile.h"

#include "HABMTestFiles.h"

#include <gtest/gtest.h>

namespace {

using N = HABMNocInterface;

class HABMJsonNoc : public habm_test::TempDirTest {
 protected:
  std::unique_ptr<HABMBlock> example() const {
    return HABMBlock::readTopBlock(HUTFile(std::string(MZ_EXAMPLES_DIR) + "/noc.bm"));
  }
  // Reads `topBlock`, the text of a "top_block" object; null when the read fails.
  std::unique_ptr<HABMBlock> read(std::string const& topBlock) const {
    habm_test::put(path("in.bm"), R"({"top_block":)" + topBlock + "}");
    return HABMBlock::readTopBlock(HUTFile(path("in.bm")));
  }
  // A top block with an NMU and an NSU of `protocol` and the given link object.
  std::string design(char const* protocol, std::string const& link) const {
    std::string const nocs =
        std::string(R"({"n":{"mode":"nmu","protocol":")") + protocol +
        R"(","category":"pl"},"s":{"mode":"nsu","protocol":")" + protocol +
        R"(","category":"pl","parameters":{"DST_ID_WIDTH":{"value":"2"}},"tdest_id":"3"}})";
    return R"({"module_name":"t","boundary":{"noc_interfaces":)" + nocs +
           R"(},"contents":{"noc_connections":{"l":)" + link + "}}}";
  }
};

TEST_F(HABMJsonNoc, TheExampleRoundTripsAndCopiesWholeAndTheReaderRenamesTheOlderBootParameter) {
  auto const noc = example();
  ASSERT_NE(noc, nullptr);
  EXPECT_EQ(noc->check(), std::vector<std::string>());
  roundTrip(*noc, "noc.bm");
  auto const copy = HABMBlock::cloneTopBlock(*noc);
  EXPECT_EQ(written(*copy), written(*noc));
  EXPECT_TRUE(copy->hasEditableNocConnections() && copy->hasEditableNocInterfaces());
  // The copy's links resolve inside the copy: the same paths come out, and none leads into the source.
  std::set<HABMNocPath> const paths = HABMNocPath::createNocPaths(copy.get());
  EXPECT_EQ(paths.size(), HABMNocPath::createNocPaths(noc.get()).size());
  for (HABMNocPath const& path : paths) {
    for (HABMNocInterface const* iface : path.getNocInterfaces()) {
      EXPECT_EQ(iface->getParent()->getTop(), copy.get());
    }
  }
  // The reader renames the older boot parameter and fails on ones the link does not take.
  auto const mm =
      read(design("aximm", R"({"source":"n","target":"s","parameters":{"soc_boot":{"value":"true"}},
                                          "editable":true})"));
  ASSERT_NE(mm, nullptr);
  HABMNocConnection const* link = mm->getNocConnection("l");
  EXPECT_EQ(link->getParameter(HABMNocConnection::INITIAL_BOOT())->getValue(), "true");
  EXPECT_TRUE(link->getEditable());
  // The stream NSU's id is read after its width, and fits in it.
  EXPECT_EQ(read(design("axis", R"({"source":"n","target":"s"})"))->getNocInterface("s")->getTdestId(),
            "0x3");
  EXPECT_EQ(
      read(design("axis", R"({"source":"n","target":"s","parameters":{"READ_LATENCY":{"value":"1"}}})")),
      nullptr);
  EXPECT_EQ(
      read(R"({"module_name":"t","boundary":{"noc_interfaces":{"n":{"mode":"nmu","protocol":"aximm"}}}})"),
      nullptr);
}

}  // namespace
