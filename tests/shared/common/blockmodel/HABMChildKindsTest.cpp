// HABMChildKindsTest.cpp: every kind of child obeys the one child discipline through its named members:
// create, refusal, forced duplicate, automatic name, remove, clear, and the exact traces of each.
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMRegister.h"
#include "msg/ComMsgMgr.h"

#include "HABMNocTestUtil.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

constexpr unsigned int kBlock = 0x1000000U;
constexpr unsigned int kChild = 0x1000002U;

// One owner of each kind, under the sub-block "/u0".
struct Owners {
  std::unique_ptr<HABMBlock> top = HABMBlock::createTopBlock("top");
  HABMBlock* block = top->createSubBlock("u0", "m", false);
  HABMPort* port = block->createPort("p", false);
  HABMInterface* iface = block->createInterface("i", false);
  HABMAddrSpace* space = block->createAddrSpace("s");
  HABMMemoryMap* map = block->createMemoryMap("m");
  HABMAddrBlock* addrBlock = map->createAddrBlock("ab");
  HABMRegister* reg = addrBlock->createRegister("r");
  HABMNocInterface* nmu = habm_test::makeNocInterface(*block, "nmu", HABMNocInterface::MODE_NMU);
  HABMNocInterface* nsu = habm_test::makeNocInterface(*block, "nsu", HABMNocInterface::MODE_NSU);
  HABMNocConnection* link = primaryLink();

  // A primary link without its default parameters, so that one of them can be made.
  HABMNocConnection* primaryLink() {
    HABMNocConnection* made = block->createNocConnection("nmu", "nsu", false);
    made->clearParameters();
    return made;
  }
};

// What a forced creation of a taken name does.
enum class Force { NONE, APPENDS, ORPHAN };

using Trace = std::pair<std::string, unsigned int>;

struct Row {
  char const* kind;
  std::function<void const*(Owners&, std::string const&, bool)> create;
  std::function<void const*(Owners&, std::string const&)> get;
  std::function<std::size_t(Owners&)> count;
  std::function<bool(Owners&, std::string const&)> remove;
  std::function<void(Owners&)> clear;
  Force force;
  char const* automatic;  // the automatic name of the second child; null when an empty name is refused
  Trace created;          // of the child `name`
  Trace removed;
  char const* failed;  // null when a refusal is silent
  char const* name = "x";
};

std::vector<Row> const& rows() {
  static std::vector<Row> const table = {
      {"attribute",
       [](Owners& o, std::string const& n, bool) { return o.block->createAttribute(n, "v"); },
       [](Owners& o, std::string const& n) { return o.block->getAttribute(n); },
       [](Owners& o) { return o.block->getAttributes().size(); },
       [](Owners& o, std::string const& n) { return o.block->removeAttribute(n); },
       [](Owners& o) { o.block->clearAttributes(); },
       Force::NONE,
       nullptr,
       {"Created attribute 'x' on block '/u0'.\n", kChild},
       {"Removed attribute 'x' from block '/u0'.\n", kChild},
       "Failed to create attribute 'x' on block '/u0'.\n"},
      {"generic",
       [](Owners& o, std::string const& n, bool) { return o.block->createGeneric(n, "v"); },
       [](Owners& o, std::string const& n) { return o.block->getGeneric(n); },
       [](Owners& o) { return o.block->getGenerics().size(); },
       [](Owners& o, std::string const& n) { return o.block->removeGeneric(n); },
       [](Owners& o) { o.block->clearGenerics(); },
       Force::NONE,
       nullptr,
       {"Created generic 'x' on block '/u0'.\n", kChild},
       {"Removed generic 'x' from block '/u0'.\n", kChild},
       "Failed to create generic 'x' on block '/u0'.\n"},
      {"parameter",
       [](Owners& o, std::string const& n, bool) { return o.block->createParameter(n, "v"); },
       [](Owners& o, std::string const& n) { return o.block->getParameter(n); },
       [](Owners& o) { return o.block->getParameters().size(); },
       [](Owners& o, std::string const& n) { return o.block->removeParameter(n); },
       [](Owners& o) { o.block->clearParameters(); },
       Force::NONE,
       nullptr,
       {"Created parameter 'x' on block '/u0'.\n", kChild},
       {"Removed parameter 'x' from block '/u0'.\n", kChild},
       "Failed to create parameter 'x' on block '/u0'.\n"},
      {"port",
       [](Owners& o, std::string const& n, bool f) { return o.block->createPort(n, f); },
       [](Owners& o, std::string const& n) { return o.block->getPort(n); },
       [](Owners& o) { return o.block->getPorts().size(); },
       [](Owners& o, std::string const& n) { return o.block->removePort(n); },
       [](Owners& o) { o.block->clearPorts(); },
       Force::ORPHAN,
       nullptr,
       {"Created port 'x' on block '/u0'.\n", kChild},
       {"Removed port 'x' from block '/u0'.\n", kChild},
       "Failed to create port 'x' on block '/u0'.\n"},
      {"interface",
       [](Owners& o, std::string const& n, bool f) { return o.block->createInterface(n, f); },
       [](Owners& o, std::string const& n) { return o.block->getInterface(n); },
       [](Owners& o) { return o.block->getInterfaces().size(); },
       [](Owners& o, std::string const& n) { return o.block->removeInterface(n); },
       [](Owners& o) { o.block->clearInterfaces(); },
       Force::APPENDS,
       "interface_2",
       {"Created interface 'x' on block '/u0'.\n", kChild},
       {"Removed interface 'x' from block '/u0'.\n", kChild},
       "Failed to create interface 'x' on block '/u0'.\n"},
      {"address space",
       [](Owners& o, std::string const& n, bool) { return o.block->createAddrSpace(n); },
       [](Owners& o, std::string const& n) { return o.block->getAddrSpace(n); },
       [](Owners& o) { return o.block->getAddrSpaces().size(); },
       [](Owners& o, std::string const& n) { return o.block->removeAddrSpace(n); },
       [](Owners& o) { o.block->clearAddrSpaces(); },
       Force::NONE,
       nullptr,
       {"Created address space 'x' on block '/u0'.\n", kChild},
       {"Removed address space 'x' from block '/u0'.\n", kChild},
       "Failed to create address space 'x' on block '/u0'.\n"},
      {"memory map",
       [](Owners& o, std::string const& n, bool) { return o.block->createMemoryMap(n); },
       [](Owners& o, std::string const& n) { return o.block->getMemoryMap(n); },
       [](Owners& o) { return o.block->getMemoryMaps().size(); },
       [](Owners& o, std::string const& n) { return o.block->removeMemoryMap(n); },
       [](Owners& o) { o.block->clearMemoryMaps(); },
       Force::NONE,
       nullptr,
       {"Created memory map 'x' on block '/u0'.\n", kChild},
       {"Removed memory map 'x' from block '/u0'.\n", kChild},
       "Failed to create memory map 'x' on block '/u0'.\n"},
      {"bridge",
       [](Owners& o, std::string const& n, bool) { return o.block->createBridge(n); },
       [](Owners& o, std::string const& n) { return o.block->getBridge(n); },
       [](Owners& o) { return o.block->getBridges().size(); },
       [](Owners& o, std::string const& n) { return o.block->removeBridge(n); },
       [](Owners& o) { o.block->clearBridges(); },
       Force::NONE,
       "bridge_1",
       {"Created bridge 'x' on block '/u0'.\n", kChild},
       {"Removed bridge 'x' from block '/u0'.\n", kChild},
       "Failed to create bridge 'x' on block '/u0'.\n"},
      {"sub-block",
       [](Owners& o, std::string const& n, bool f) { return o.block->createSubBlock(n, "m", f); },
       [](Owners& o, std::string const& n) { return o.block->getSubBlock(n); },
       [](Owners& o) { return o.block->getSubBlocks().size(); },
       [](Owners& o, std::string const& n) { return o.block->removeSubBlock(n) != nullptr; },
       [](Owners& o) { o.block->clearSubBlocks(); },
       Force::APPENDS,
       nullptr,
       {"Created sub-block 'x' in block '/u0'.\n", kBlock},
       {"Removed sub-block 'x' from block '/u0'.\n", kBlock},
       "Failed to create sub-block 'x' in block '/u0'.\n"},
      {"port connection",
       [](Owners& o, std::string const& n, bool f) { return o.block->createPortConnection(n, f); },
       [](Owners& o, std::string const& n) { return o.block->getPortConnection(n); },
       [](Owners& o) { return o.block->getPortConnections().size(); },
       [](Owners& o, std::string const& n) { return o.block->removePortConnection(n); },
       [](Owners& o) { o.block->clearPortConnections(); },
       Force::APPENDS,
       "port_connection_1",
       {"Created port connection 'x' on block '/u0'.\n", kChild},
       {"Removed port connection 'x' from block '/u0'.\n", kChild},
       "Failed to create port connection 'x' on block '/u0'.\n"},
      {"interface connection",
       [](Owners& o, std::string const& n, bool f) { return o.block->createInterfaceConnection(n, f); },
       [](Owners& o, std::string const& n) { return o.block->getInterfaceConnection(n); },
       [](Owners& o) { return o.block->getInterfaceConnections().size(); },
       [](Owners& o, std::string const& n) { return o.block->removeInterfaceConnection(n); },
       [](Owners& o) { o.block->clearInterfaceConnections(); },
       Force::APPENDS,
       "interface_connection_1",
       {"Created interface connection 'x' on block '/u0'.\n", kChild},
       {"Removed interface connection 'x' from block '/u0'.\n", kChild},
       "Failed to create interface connection 'x' on block '/u0'.\n"},
      {"address assignment",
       [](Owners& o, std::string const& n, bool) { return o.block->createAddrAssign(n); },
       [](Owners& o, std::string const& n) { return o.block->getAddrAssign(n); },
       [](Owners& o) { return o.block->getAddrAssigns().size(); },
       [](Owners& o, std::string const& n) { return o.block->removeAddrAssign(n); },
       [](Owners& o) { o.block->clearAddrAssigns(); },
       Force::NONE,
       "assignment_1",
       {"Created address assignment 'x' on block '/u0'.\n", kChild},
       {"Removed address assignment 'x' from block '/u0'.\n", kChild},
       nullptr},
      {"port attribute",
       [](Owners& o, std::string const& n, bool) { return o.port->createAttribute(n, "v"); },
       [](Owners& o, std::string const& n) { return o.port->getAttribute(n); },
       [](Owners& o) { return o.port->getAttributes().size(); },
       [](Owners& o, std::string const& n) { return o.port->removeAttribute(n); },
       [](Owners& o) { o.port->clearAttributes(); },
       Force::NONE,
       nullptr,
       {"Created attribute 'x' on port '/u0/p'.\n", kChild},
       {"Removed attribute 'x' from port '/u0/p", kChild},  // the text's malformed conversion is kept
       "Failed to create attribute 'x' on port '/u0/p'.\n"},
      {"interface parameter",
       [](Owners& o, std::string const& n, bool) { return o.iface->createParameter(n, "v"); },
       [](Owners& o, std::string const& n) { return o.iface->getParameter(n); },
       [](Owners& o) { return o.iface->getParameters().size(); },
       [](Owners& o, std::string const& n) { return o.iface->removeParameter(n); },
       [](Owners& o) { o.iface->clearParameters(); },
       Force::NONE,
       nullptr,
       {"Created parameter 'x' on interface '/u0/i'.\n", kChild},
       {"Removed parameter 'x' from interface '/u0/i'.\n", kChild},
       "Failed to create parameter 'x' on interface '/u0/i'.\n"},
      {"port map",
       [](Owners& o, std::string const& n, bool) { return o.iface->createPortMap(n, ""); },
       [](Owners& o, std::string const& n) { return o.iface->getPortMap(n); },
       [](Owners& o) { return o.iface->getPortMaps().size(); },
       [](Owners& o, std::string const& n) { return o.iface->removePortMap(n); },
       [](Owners& o) { o.iface->clearPortMaps(); },
       Force::NONE,
       nullptr,
       {"Created port map 'x' on interface '/u0/i'.\n", kChild},
       {"Removed port map 'x' from interface '/u0/i", kChild},
       "Failed to create port map 'x' on interface '/u0/i'.\n"},
      {"address segment",
       [](Owners& o, std::string const& n, bool) { return o.space->createAddrSegment(n); },
       [](Owners& o, std::string const& n) { return o.space->getAddrSegment(n); },
       [](Owners& o) { return o.space->getAddrSegments().size(); },
       [](Owners& o, std::string const& n) { return o.space->removeAddrSegment(n); },
       [](Owners& o) { o.space->clearAddrSegments(); },
       Force::NONE,
       "segment_1",
       {"Created address segment 'x' on address space '/u0/s'.\n", kChild},
       {"Removed address segment 'x' from address space '/u0/s'.\n", kChild},
       nullptr},
      {"address block",
       [](Owners& o, std::string const& n, bool) { return o.map->createAddrBlock(n); },
       [](Owners& o, std::string const& n) { return o.map->getAddrBlock(n); },
       [](Owners& o) {
         return o.map->getAddrBlocks().size() - (o.map->getAddrBlock("ab") != nullptr ? 1 : 0);
       },
       [](Owners& o, std::string const& n) { return o.map->removeAddrBlock(n); },
       [](Owners& o) { o.map->clearAddrBlocks(); },
       Force::NONE,
       nullptr,
       {"Created address block '/u0/m/x'.\n", kChild},
       {"Removed address block '/u0/m/x'.\n", kChild},
       nullptr},
      {"register",
       [](Owners& o, std::string const& n, bool) { return o.addrBlock->createRegister(n); },
       [](Owners& o, std::string const& n) { return o.addrBlock->getRegister(n); },
       [](Owners& o) {
         return o.addrBlock->getRegisters().size() - (o.addrBlock->getRegister("r") != nullptr ? 1 : 0);
       },
       [](Owners& o, std::string const& n) { return o.addrBlock->removeRegister(n); },
       [](Owners& o) { o.addrBlock->clearRegisters(); },
       Force::NONE,
       nullptr,
       {"Created register '/u0/m/ab/x'.\n", kChild},
       {"Removed register '/u0/m/ab/x'.\n", kChild},
       nullptr},
      {"register field",
       [](Owners& o, std::string const& n, bool) { return o.reg->createField(n); },
       [](Owners& o, std::string const& n) { return o.reg->getField(n); },
       [](Owners& o) { return o.reg->getFields().size(); },
       [](Owners& o, std::string const& n) { return o.reg->removeField(n); },
       [](Owners& o) { o.reg->clearFields(); },
       Force::NONE,
       nullptr,
       {"Created register field '/u0/m/ab/r/x'.\n", kChild},
       {"Removed register field '/u0/m/ab/r/x'.\n", kChild},
       nullptr},
      {"register parameter",
       [](Owners& o, std::string const& n, bool) { return o.reg->createParameter(n, "v"); },
       [](Owners& o, std::string const& n) { return o.reg->getParameter(n); },
       [](Owners& o) { return o.reg->getParameters().size(); },
       [](Owners& o, std::string const& n) { return o.reg->removeParameter(n); },
       [](Owners& o) { o.reg->clearParameters(); },
       Force::NONE,
       nullptr,
       {"Created parameter 'x' on register '/u0/m/ab/r'.\n", kChild},
       {"Removed parameter 'x' from register '/u0/m/ab/r'.\n", kBlock},
       "Failed to create parameter 'x' on register '/u0/m/ab/r'.\n"},
      {"noc interface",
       [](Owners& o, std::string const& n, bool) { return o.block->createNocInterface(n); },
       [](Owners& o, std::string const& n) { return o.block->getNocInterface(n); },
       [](Owners& o) {
         return o.block->getNocInterfaces(false).size() -
                (o.block->getNocInterface("nmu") != nullptr ? 2 : 0);
       },
       [](Owners& o, std::string const& n) { return o.block->removeNocInterface(n); },
       [](Owners& o) { o.block->clearNocInterfaces(); },
       Force::NONE,
       nullptr,
       {"Created noc interface 'x' on block '/u0'.\n", kChild},
       {"Removed noc interface 'x' from block '/u0'.\n", kChild},
       "Failed to create noc interface 'x' on block '/u0'.\n"},
      {"noc connection",
       [](Owners& o, std::string const& n, bool f) { return o.block->createNocConnection(n, f); },
       [](Owners& o, std::string const& n) { return o.block->getNocConnection(n); },
       [](Owners& o) { return o.block->getNocConnections(false).size(); },
       [](Owners& o, std::string const& n) { return o.block->removeNocConnection(n); },
       [](Owners& o) { o.block->clearNocConnections(); },
       Force::APPENDS,
       "noc_connection_2",
       {"Created noc connection 'x' on block '/u0'.\n", kChild},
       {"Removed noc connection 'x' from block '/u0'.\n", kChild},
       "Failed to create noc connection 'x' on block '/u0'.\n"},
      {"noc interface parameter",
       [](Owners& o, std::string const& n, bool) { return o.nmu->createParameter(n, "v"); },
       [](Owners& o, std::string const& n) { return o.nmu->getParameter(n); },
       [](Owners& o) { return o.nmu->getParameters().size(); },
       [](Owners& o, std::string const& n) { return o.nmu->removeParameter(n); },
       [](Owners& o) { o.nmu->clearParameters(); },
       Force::NONE,
       nullptr,
       {"Created parameter 'x' on interface '/u0/nmu'.\n", kChild},
       {"Removed parameter 'x' from interface '/u0/nmu'.\n", kChild},
       "Failed to create parameter 'x' on interface '/u0/nmu'.\n"},
      {"noc connection parameter",
       [](Owners& o, std::string const& n, bool) { return o.link->createParameter(n, "v"); },
       [](Owners& o, std::string const& n) { return o.link->getParameter(n); },
       [](Owners& o) { return o.link->getParameters().size(); },
       [](Owners& o, std::string const& n) { return o.link->removeParameter(n); },
       [](Owners& o) { o.link->clearParameters(); },
       Force::NONE,
       nullptr,
       {"Created parameter 'READ_LATENCY' on noc connection '/u0/noc_connection_0'.\n", kChild},
       {"Removed parameter 'READ_LATENCY' from noc connection '/u0/noc_connection_0'.\n", kChild},
       "Failed to create parameter 'READ_LATENCY' on noc connection '/u0/noc_connection_0'.\n",
       "READ_LATENCY"},
  };
  return table;
}

std::vector<Trace> traces(ComMsgCapture& capture) {
  std::vector<Trace> out;
  for (auto const& r : capture.records()) {
    out.emplace_back(r.text, r.mask);
  }
  capture.clear();
  return out;
}

TEST(HABMChildKinds, EveryKindFollowsTheChildDiscipline) {
  ComMsgScopeGuard on("HABM");
  for (Row const& row : rows()) {
    SCOPED_TRACE(row.kind);
    Owners o;
    ComMsgCapture capture;
    void const* first = row.create(o, row.name, false);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(traces(capture), std::vector<Trace>{row.created});
    EXPECT_EQ(row.get(o, row.name), first);

    // Refusals change nothing; the failure trace names the requested name.
    EXPECT_EQ(row.create(o, row.name, false), nullptr);
    std::vector<Trace> const failed =
        row.failed == nullptr ? std::vector<Trace>{} : std::vector<Trace>{{row.failed, kBlock}};
    EXPECT_EQ(traces(capture), failed);
    EXPECT_EQ(row.create(o, "a/b", false), nullptr);
    void const* automatic = row.create(o, "", false);
    EXPECT_EQ(automatic != nullptr, row.automatic != nullptr);
    if (row.automatic != nullptr) {
      EXPECT_EQ(row.get(o, row.automatic), automatic);
    }
    capture.clear();
    std::size_t const before = row.count(o);

    // A forced duplicate joins the sequence behind the first, or, in the port table, stays unlisted.
    void const* second = row.force == Force::NONE ? nullptr : row.create(o, row.name, true);
    if (row.force != Force::NONE) {
      ASSERT_NE(second, nullptr);
      EXPECT_NE(second, first);
      EXPECT_EQ(row.count(o), before + (row.force == Force::APPENDS ? 1 : 0));
      EXPECT_EQ(row.get(o, row.name), first);
    }
    capture.clear();

    EXPECT_TRUE(row.remove(o, row.name));
    EXPECT_EQ(traces(capture), std::vector<Trace>{row.removed});
    EXPECT_EQ(row.get(o, row.name), row.force == Force::APPENDS ? second : nullptr);
    EXPECT_FALSE(row.remove(o, "nope"));
    EXPECT_TRUE(traces(capture).empty());
    EXPECT_EQ(o.top->check(), std::vector<std::string>());

    row.clear(o);
    EXPECT_EQ(row.count(o), 0U);
    EXPECT_TRUE(traces(capture).empty());
    EXPECT_EQ(o.top->check(), std::vector<std::string>());
  }
}

}  // namespace
