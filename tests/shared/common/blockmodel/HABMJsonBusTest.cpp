// HABMJsonBusTest.cpp: interfaces, port maps, apertures, bridges with remaps and interface connections in
// block model files: round trip, members and their order, and what the reader does with odd fields.
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMJsonReader.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPortMap.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include "HABMTestFiles.h"

#include <gtest/gtest.h>

namespace {

using I = HABMInterface;
using HABMJsonBus = habm_test::TempDirTest;

HABMAddrAperture aperture(char const* text) {
  return HABMAddrAperture(std::string(text));
}

HABMAddrRemap remap(char const* source, char const* target, char const* range) {
  return HABMAddrRemap(HABMAddrValue(std::string(source)), HABMAddrValue(std::string(target)),
                       HABMAddrValue(std::string(range)));
}

// A top with a master "/cpu" and an interconnect "/xbar" that bridges its slave to its master with remaps;
// every bus field differs from its default somewhere.
std::unique_ptr<HABMBlock> makeBusDesign() {
  auto top = HABMBlock::createTopBlock("soc");
  HABMBlock* cpu = top->createSubBlock("cpu", "cpu", false);
  cpu->createPort("m_wdata", false)->setPortDirection(HABMPort::DIR_OUT);
  HABMInterface* m = cpu->createInterface("M_AXI", false);
  m->setInterfaceVlnv(I::decodeInterfaceVlnv(I::TYPE_AXIMM));
  m->setInterfaceMode(I::MODE_MASTER);
  m->setAddrSpaceRef("data");
  m->setEnablement("always");
  HABMPortMap* wdata = m->createPortMap("WDATA", "m_wdata");
  wdata->setLogLeft(31);
  wdata->setLogRight(0);
  wdata->setPhyLeft(63);
  wdata->setPhyRight(32);
  m->createParameter("FREQ_HZ", "100000000");
  HABMBlock* xbar = top->createSubBlock("xbar", "xbar", false);
  HABMInterface* s = xbar->createInterface("S_AXI", false);
  s->setInterfaceVlnv(I::decodeInterfaceVlnv(I::TYPE_AXIMM));
  s->setInterfaceMode(I::MODE_SLAVE);
  s->setMemoryMapRef("regs");
  s->setBaseAddress(HABMAddrValue(std::string("0x4000_0000")));
  s->setApertures({aperture("0x0[64K]"), aperture("0x10_0000[1M]")}, false);
  HABMInterface* xm = xbar->createInterface("M_AXI", false);
  xm->setInterfaceVlnv(I::decodeInterfaceVlnv(I::TYPE_AXIMM));
  xm->setInterfaceMode(I::MODE_MASTER);
  xbar->createInterface("MON", false)->setInterfaceMode(I::MODE_MONITOR_SYSTEM);
  HABMBridge* bridge = xbar->createBridge("S_AXI", "M_AXI");
  bridge->setRemaps({remap("0x0", "0x8000_0000", "64K"), remap("0x1_0000", "0x0", "4K")});
  xbar->createBridge("");
  top->createInterfaceConnection("cpu/M_AXI", "xbar/S_AXI", false);
  top->createInterfaceConnection("", false)->setConnectionType(HABMPortConnection::HARD);
  return top;
}

TEST_F(HABMJsonBus, EveryBusFieldRoundTrips) {
  auto const back = roundTrip(*makeBusDesign(), "a.bm");
  ASSERT_NE(back, nullptr);
  HABMInterface const* s = back->findInterface("xbar/S_AXI", true);
  EXPECT_EQ(back->getInterfaceConnections()[0]->getTargetInterface(), s);
  EXPECT_EQ(s->getApertures(true),
            (std::set<HABMAddrAperture>{aperture("0x4000_0000[64K]"), aperture("0x4010_0000[1M]")}));
}

TEST_F(HABMJsonBus, MembersStandInTheirOrderAndDefaultsAreLeftOut) {
  auto top = HABMBlock::createTopBlock("t");
  HABMInterface* i = top->createInterface("S", false);
  i->setInterfaceMode(I::MODE_SLAVE);
  i->setAddrSpaceRef("ignored_on_a_slave");
  i->createPortMap("CLK", "clk")->setPhyRight(0);
  i->setApertures({aperture("0x1000[4K]")}, false);
  top->createBridge("")->setRemaps({remap("0x0", "0x8000", "4K")});
  top->createInterfaceConnection("", false);
  EXPECT_EQ(written(*top),
            R"({"schema":"tessel:schema:block_model:1.0","top_block":{"module_name":"t","boundary":{)"
            R"("interfaces":{"S":{"vlnv":"","mode":"slave","address_apertures":[{"offset":"0x1000",)"
            R"("range":"0x1000"}],"port_maps":{"CLK":{"physical_port":"clk","physical_right":0}}}},)"
            R"("bridges":{"bridge_0":{"source":"","target":"","address_remaps":[{"source":"0x0:0xFFF",)"
            R"("target":"0x8000:0x8FFF"}]}}},)"
            R"("contents":{"interface_connections":{"interface_connection_0":{"source":"","target":""}}}}})");
}

TEST_F(HABMJsonBus, MemoryMapReferenceWinsWhenBothAreGiven) {
  auto const top =
      read(R"({"module_name":"t","boundary":{"interfaces":{"S":{"vlnv":"v","mode":"MirroredMaster",)"
           R"("address_space_ref":"a","memory_map_ref":"m"}}}})");
  ASSERT_NE(top, nullptr);
  HABMInterface const* s = top->getInterface("S");
  EXPECT_EQ(s->getInterfaceMode(), I::MODE_SLAVE);
  EXPECT_EQ(s->getAddrSpaceRef(), "");
  EXPECT_EQ(s->getMemoryMapRef(), "m");
  EXPECT_EQ(s->getBaseAddress(), HABMAddrValue::CONST_0());
}

TEST_F(HABMJsonBus, AperturesThatAreNoArrayAreIgnored) {
  auto const top = read(R"({"module_name":"t","boundary":{"interfaces":{"S":{"vlnv":"","mode":"slave",)"
                        R"("address_apertures":{"offset":"0x0","range":"4K"}}}}})");
  ASSERT_NE(top, nullptr);
  EXPECT_TRUE(top->getInterface("S")->getApertures(false).empty());
}

TEST_F(HABMJsonBus, FailedApertureKeepsTheOnesBeforeItAndFailsTheRead) {
  ComMsgCapture capture;
  auto const top = HABMBlock::createTopBlock("t");
  habm_test::put(path("in.bm"),
                 R"({"top_block":{"module_name":"t","boundary":{"interfaces":{"S":{"vlnv":"","mode":"slave",)"
                 R"("address_apertures":[{"offset":"0x0","range":"4K"},{"offset":"0x8000"},)"
                 R"({"offset":"0x1_0000","range":"4K"}],"parameters":{"P":{"value":"1"}}}}}}})");
  EXPECT_FALSE(HABMJsonReader::readBlock(HUTFile(path("in.bm")), *top, HABMJsonReader::MODE_REPLACE));
  HABMInterface const* s = top->getInterface("S");
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(s->getApertures(false), (std::set<HABMAddrAperture>{aperture("0x0[4K]")}));
  EXPECT_TRUE(s->getParameters().empty());  // the read stopped at the apertures
}

TEST_F(HABMJsonBus, RemapTakesItsRangeFromTheSource) {
  auto const top = read(R"({"module_name":"t","boundary":{"bridges":{"b":{"source":"S","target":"M",)"
                        R"("address_remaps":[{"source":"0x1000:0x1FFF","target":"0x9000:0xFFFF"}]}}}})");
  ASSERT_NE(top, nullptr);
  HABMBridge const* b = top->getBridge("b");
  EXPECT_EQ(b->getSourceName(), "S");
  EXPECT_EQ(b->getRemaps(), (std::set<HABMAddrRemap>{remap("0x1000", "0x9000", "4K")}));
}

TEST_F(HABMJsonBus, BridgeAndConnectionNeedBothEnds) {
  ComMsgCapture capture;
  EXPECT_EQ(read(R"({"module_name":"t","boundary":{"bridges":{"b":{"source":"S"}}}})"), nullptr);
  EXPECT_EQ(read(R"({"module_name":"t","contents":{"interface_connections":{"c":{"target":"x"}}}})"),
            nullptr);
  auto const top =
      read(R"({"module_name":"t","contents":{"interface_connections":{"c":{"type":"HARD","source":"a/S",)"
           R"("target":"/b/M"}}}})");
  ASSERT_NE(top, nullptr);
  HABMInterfaceConnection const* c = top->getInterfaceConnection("c");
  EXPECT_EQ(c->getConnectionType(), HABMPortConnection::HARD);
  EXPECT_EQ(c->getTargetPath(false), "b/M");
}

TEST_F(HABMJsonBus, PortMapNeedsItsPhysicalPort) {
  ComMsgCapture capture;
  EXPECT_EQ(read(R"({"module_name":"t","boundary":{"interfaces":{"S":{"vlnv":"","mode":"slave",)"
                 R"("port_maps":{"CLK":{"logical_left":3}}}}}})"),
            nullptr);
  EXPECT_EQ(read(R"({"module_name":"t","boundary":{"interfaces":{"S":{"vlnv":""}}}})"), nullptr);
}

TEST(HABMJsonBusExample, TheExampleDesignsLinksResolveAndInferenceReproducesThem) {
  auto const soc = HABMBlock::readTopBlock(HUTFile(std::string(MZ_EXAMPLES_DIR) + "/soc.bm"));
  ASSERT_NE(soc, nullptr);
  EXPECT_EQ(soc->check(), std::vector<std::string>());
  std::vector<std::pair<std::string, std::string>> stored;
  for (HABMInterfaceConnection const* c : soc->getInterfaceConnections()) {
    EXPECT_TRUE(c->isValid()) << c->getName();
    stored.emplace_back(c->getSourcePath(false), c->getTargetPath(false));
  }
  for (HABMBridge const* b : soc->getSubBlock("xbar")->getBridges()) {
    EXPECT_TRUE(HABMBridge::canBridge(*b->getParent(), b->getSourceName(), b->getTargetName()))
        << b->getName();
    EXPECT_TRUE(b->hasRemaps());
  }
  HABMBlock* dma = soc->findSubBlock("/periph/dma0", true);
  ASSERT_NE(dma, nullptr);
  EXPECT_FALSE(dma->hasInterfaces());
  dma->inferAbstractions();
  EXPECT_EQ(dma->getInterfaces().size(), 6U);
  soc->inferAbstractions();
  std::vector<std::pair<std::string, std::string>> inferred;
  for (HABMInterfaceConnection const* c : soc->getInterfaceConnections()) {
    inferred.emplace_back(c->getSourcePath(false), c->getTargetPath(false));
  }
  EXPECT_EQ(inferred, stored);
}

}  // namespace
