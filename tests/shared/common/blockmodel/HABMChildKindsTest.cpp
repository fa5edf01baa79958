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
#include <regex>

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
  HABMNocConnection* link = block->createNocConnection("nmu", "nsu", false);

  // The primary link without its default parameters, so that one of them can be made.
  Owners() { link->clearParameters(); }
};

// What a forced creation of a taken name does.
enum Force { NO_FORCE, APPENDS, ORPHAN };

using Traces = std::vector<std::pair<std::string, unsigned int>>;

// The members of a kind on the owner `of`: create##One called with `args` (of the name `n` and the force
// `f`), get##One, the size of get##Many called with `countArgs`, remove##One and clear##Many.
#define KIND(of, One, Many, args, countArgs)                                                   \
  [](Owners& o, std::string const& n, [[maybe_unused]] bool f) -> void const* {                \
    return o.of->create##One args;                                                             \
  },                                                                                           \
      [](Owners& o, std::string const& n) -> void const* { return o.of->get##One(n); },        \
      [](Owners& o) { return o.of->get##Many countArgs.size(); },                              \
      [](Owners& o, std::string const& n) { return static_cast<bool>(o.of->remove##One(n)); }, \
      [](Owners& o) { o.of->clear##Many(); }

struct Row {
  std::function<void const*(Owners&, std::string const&, bool)> create;
  std::function<void const*(Owners&, std::string const&)> get;
  std::function<std::size_t(Owners&)> count;
  std::function<bool(Owners&, std::string const&)> remove;
  std::function<void(Owners&)> clear;
  Force force;
  char const* automatic;  // the automatic name of the second child; null when an empty name is refused
  // The child `name` and its owner as the traces say them: "Created <what>.\n", "Failed to create
  // <what>.\n", and "Removed <what>.\n" with "from" for "on" or "in" (cut before the last quote if `cut`).
  char const* what;
  bool failureTraced = true;
  unsigned int createdMask = kChild;
  unsigned int removedMask = kChild;
  bool cut = false;
  char const* name = "x";
};

std::vector<Row> const& rows() {
  static std::vector<Row> const table = {
      {KIND(block, Attribute, Attributes, (n, "v"), ()), NO_FORCE, nullptr, "attribute 'x' on block '/u0'"},
      {KIND(block, Generic, Generics, (n, "v"), ()), NO_FORCE, nullptr, "generic 'x' on block '/u0'"},
      {KIND(block, Parameter, Parameters, (n, "v"), ()), NO_FORCE, nullptr, "parameter 'x' on block '/u0'"},
      {KIND(block, Port, Ports, (n, f), ()), ORPHAN, nullptr, "port 'x' on block '/u0'"},
      {KIND(block, Interface, Interfaces, (n, f), ()), APPENDS, "interface_2",
       "interface 'x' on block '/u0'"},
      {KIND(block, AddrSpace, AddrSpaces, (n), ()), NO_FORCE, nullptr, "address space 'x' on block '/u0'"},
      {KIND(block, MemoryMap, MemoryMaps, (n), ()), NO_FORCE, nullptr, "memory map 'x' on block '/u0'"},
      {KIND(block, Bridge, Bridges, (n), ()), NO_FORCE, "bridge_1", "bridge 'x' on block '/u0'"},
      {KIND(block, SubBlock, SubBlocks, (n, "m", f), ()), APPENDS, nullptr, "sub-block 'x' in block '/u0'",
       true, kBlock, kBlock},
      {KIND(block, PortConnection, PortConnections, (n, f), ()), APPENDS, "port_connection_1",
       "port connection 'x' on block '/u0'"},
      {KIND(block, InterfaceConnection, InterfaceConnections, (n, f), ()), APPENDS, "interface_connection_1",
       "interface connection 'x' on block '/u0'"},
      {KIND(block, AddrAssign, AddrAssigns, (n), ()), NO_FORCE, "assignment_1",
       "address assignment 'x' on block '/u0'", false},
      // The removal texts of port attributes and port maps hold a malformed conversion, and stop there.
      {KIND(port, Attribute, Attributes, (n, "v"), ()), NO_FORCE, nullptr, "attribute 'x' on port '/u0/p'",
       true, kChild, kChild, true},
      {KIND(iface, Parameter, Parameters, (n, "v"), ()), NO_FORCE, nullptr,
       "parameter 'x' on interface '/u0/i'"},
      {KIND(iface, PortMap, PortMaps, (n, ""), ()), NO_FORCE, nullptr, "port map 'x' on interface '/u0/i'",
       true, kChild, kChild, true},
      {KIND(space, AddrSegment, AddrSegments, (n), ()), NO_FORCE, "segment_1",
       "address segment 'x' on address space '/u0/s'", false},
      {KIND(map, AddrBlock, AddrBlocks, (n), ()), NO_FORCE, nullptr, "address block '/u0/m/x'", false},
      {KIND(addrBlock, Register, Registers, (n), ()), NO_FORCE, nullptr, "register '/u0/m/ab/x'", false},
      {KIND(reg, Field, Fields, (n), ()), NO_FORCE, nullptr, "register field '/u0/m/ab/r/x'", false},
      {KIND(reg, Parameter, Parameters, (n, "v"), ()), NO_FORCE, nullptr,
       "parameter 'x' on register '/u0/m/ab/r'", true, kChild, kBlock},
      {KIND(block, NocInterface, NocInterfaces, (n), (false)), NO_FORCE, nullptr,
       "noc interface 'x' on block '/u0'"},
      {KIND(block, NocConnection, NocConnections, (n, f), (false)), APPENDS, "noc_connection_2",
       "noc connection 'x' on block '/u0'"},
      {KIND(nmu, Parameter, Parameters, (n, "v"), ()), NO_FORCE, nullptr,
       "parameter 'x' on interface '/u0/nmu'"},
      {KIND(link, Parameter, Parameters, (n, "v"), ()), NO_FORCE, nullptr,
       "parameter 'READ_LATENCY' on noc connection '/u0/noc_connection_0'", true, kChild, kChild, false,
       "READ_LATENCY"},
  };
  return table;
}
#undef KIND

Traces one(std::string const& text, unsigned int mask) {
  return {{text, mask}};
}

Traces traces(ComMsgCapture& capture) {
  Traces out;
  for (auto const& r : capture.records()) {
    out.emplace_back(r.text, r.mask);
  }
  capture.clear();
  return out;
}

TEST(HABMChildKinds, EveryKindFollowsTheChildDiscipline) {
  ComMsgScopeGuard on("HABM");
  for (Row const& row : rows()) {
    SCOPED_TRACE(row.what);
    std::string const what = row.what;
    Owners o;
    ComMsgCapture capture;
    void const* first = row.create(o, row.name, false);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(traces(capture), one("Created " + what + ".\n", row.createdMask));
    EXPECT_EQ(row.get(o, row.name), first);

    // Refusals change nothing; the failure trace names the requested name.
    EXPECT_EQ(row.create(o, row.name, false), nullptr);
    EXPECT_EQ(traces(capture),
              row.failureTraced ? one("Failed to create " + what + ".\n", kBlock) : Traces());
    EXPECT_EQ(row.create(o, "a/b", false), nullptr);
    void const* automatic = row.create(o, "", false);
    EXPECT_EQ(automatic != nullptr, row.automatic != nullptr);
    if (row.automatic != nullptr) {
      EXPECT_EQ(row.get(o, row.automatic), automatic);
    }
    capture.clear();
    std::size_t const before = row.count(o);

    // A forced duplicate joins the sequence behind the first, or, in the port table, stays unlisted.
    void const* second = row.force == NO_FORCE ? nullptr : row.create(o, row.name, true);
    if (row.force != NO_FORCE) {
      ASSERT_NE(second, nullptr);
      EXPECT_NE(second, first);
      EXPECT_EQ(row.count(o), before + (row.force == APPENDS ? 1 : 0));
      EXPECT_EQ(row.get(o, row.name), first);
    }
    capture.clear();

    EXPECT_TRUE(row.remove(o, row.name));
    std::string const from =
        std::regex_replace(what, std::regex(" (on|in) "), " from ", std::regex_constants::format_first_only);
    std::string const removed = "Removed " + from + ".\n";
    EXPECT_EQ(traces(capture), one(removed.substr(0, removed.size() - (row.cut ? 3 : 0)), row.removedMask));
    EXPECT_EQ(row.get(o, row.name), row.force == APPENDS ? second : nullptr);
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
