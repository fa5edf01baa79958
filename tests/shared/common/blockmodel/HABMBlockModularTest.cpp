// HABMBlockModularTest.cpp: the boundary check before a merge, and cutting a sub-block out of its tree and
// putting it back: what moves, what is cut, what stays, and what the user is told.
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"

#include "HABMNocTestUtil.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace {

using N = HABMNocInterface;
using habm_test::makeNocInterface;
using Reasons = std::vector<std::string>;
using Apertures = std::set<HABMAddrAperture>;

Apertures apertures(std::initializer_list<char const*> texts) {
  Apertures out;
  for (char const* text : texts) {
    out.insert(HABMAddrAperture(std::string(text)));
  }
  return out;
}

// One object of every compared kind.
void fillBoundary(HABMBlock& b) {
  b.createGeneric("WIDTH", "8");
  HABMPort* clk = b.createPort("clk", false);
  clk->setPortDirection(HABMPort::DIR_IN);
  clk->setPortType(HABMPort::TYPE_WIRE);
  HABMPort* data = b.createPort("data", false);
  data->setPortDirection(HABMPort::DIR_OUT);
  data->setPortLeft(7);
  HABMMemoryMap* map = b.createMemoryMap("mm");
  map->setRange(HABMAddrValue(0x2000U));
  HABMAddrBlock* regs = map->createAddrBlock("regs");
  regs->setAperture(HABMAddrAperture("0x0[4K]"));
  regs->setMemoryType(HABMAddrBlock::TYPE_REGISTER);
  HABMAddrSpace* space = b.createAddrSpace("as");
  space->setRange(HABMAddrValue(0x10000U));
  space->createAddrSegment("seg")->setAperture(HABMAddrAperture("0x0[4K]"));
  HABMInterface* slave = b.createInterface("S_AXI", false);
  slave->setInterfaceVlnv("orvane:interface:aximm:1.0");
  slave->setInterfaceMode(HABMInterface::MODE_SLAVE);
  slave->setMemoryMapRef("mm");
  slave->setApertures(apertures({"0x0[4K]"}), false);
  slave->createParameter("FREQ", "100");
  HABMInterface* master = b.createInterface("M_AXI", false);
  master->setInterfaceVlnv("orvane:interface:aximm:1.0");
  master->setInterfaceMode(HABMInterface::MODE_MASTER);
  master->setAddrSpaceRef("as");
  N* nsu = makeNocInterface(b, "nsu", N::MODE_NSU);
  nsu->setApertures(apertures({"0x0[4K]"}));
  nsu->createParameter("DATA_WIDTH", "128");
}

// The source module "src", a top block, and the target instance "/u" of a design.
class HABMBoundaryCheck : public ::testing::Test {
 protected:
  void SetUp() override {
    fillBoundary(*source_);
    fillBoundary(*target_);
  }
  void TearDown() override {
    EXPECT_EQ(source_->check(), Reasons());
    EXPECT_EQ(design_->check(), Reasons());
  }
  Reasons reasons(bool mergeBoundary) const {
    Reasons out = {"stale"};
    bool const agree = HABMBlock::canMergeBlock(*source_, *target_, out, mergeBoundary);
    EXPECT_EQ(agree, out.empty());
    return out;
  }
  // Makes the named source interface take requests: a block inside the source drives it.
  void drive(std::string const& iface, bool noc) {
    HABMBlock* driver = source_->createSubBlock("drv", "drv", false);
    if (noc) {
      makeNocInterface(*driver, "nmu", N::MODE_NMU);
      source_->createNocConnection("drv/nmu", iface, true);
    } else {
      driver->createInterface("M", false)->setInterfaceMode(HABMInterface::MODE_MASTER);
      source_->createInterfaceConnection("drv/M", iface, true);
    }
  }

  std::unique_ptr<HABMBlock> source_ = HABMBlock::createTopBlock("src");
  std::unique_ptr<HABMBlock> design_ = HABMBlock::createTopBlock("design");
  HABMBlock* target_ = design_->createSubBlock("u", "dst", false);
};

constexpr char kBetween[] = " between source module 'src' and target instance '/u'";
std::string onlyTarget(std::string const& what) {
  return what + " missing from source module 'src' but exists on target instance '/u'.";
}
std::string onlySource(std::string const& what) {
  return what + " exists on source module 'src' but missing from target instance '/u'.";
}
std::string mismatch(std::string const& what, std::string const& field, std::string const& values = "") {
  return what + " has " + field + " mismatch" + kBetween + (values.empty() ? "." : ": " + values);
}

TEST_F(HABMBoundaryCheck, EqualBoundariesAgreeAndEachDifferenceIsOneSentence) {
  EXPECT_EQ(reasons(false), Reasons());
  using B = HABMBlock;
  struct Case {
    char const* what;
    std::function<void(B& source, B& target)> change;
    Reasons withoutBoundary;
    Reasons withBoundary;  // the source's boundary is to replace the target's
  };
  Reasons const genericOnSource = {onlySource("Generic 'EXTRA'")};
  Reasons const portOnSource = {onlySource("Port 'extra'")};
  Case const cases[] = {
      {"generic only on the source", [](B& s, B&) { s.createGeneric("EXTRA", "1"); }, genericOnSource, {}},
      {"generic only on the target",
       [](B&, B& t) { t.createGeneric("EXTRA", "1"); },
       {onlyTarget("Generic 'EXTRA'")},
       {onlyTarget("Generic 'EXTRA'")}},
      {"generic value",
       [](B& s, B&) { s.getGeneric("WIDTH")->setValue("16"); },
       {mismatch("Generic 'WIDTH'", "VALUE", "(source)'16' != '8'(target)")},
       {mismatch("Generic 'WIDTH'", "VALUE", "(source)'16' != '8'(target)")}},
      {"port direction and left bound: the direction only",
       [](B& s, B&) {
         s.getPort("data")->setPortDirection(HABMPort::DIR_IN);
         s.getPort("data")->setPortLeft(3);
       },
       {mismatch("Port 'data'", "DIRECTION", "(source)'in' != 'out'(target)")},
       {mismatch("Port 'data'", "DIRECTION", "(source)'in' != 'out'(target)")}},
      {"port left bound",
       [](B& s, B&) { s.getPort("data")->setPortLeft(3); },
       {mismatch("Port 'data'", "LEFT", "(source)'3' != '7'(target)")},
       {mismatch("Port 'data'", "LEFT", "(source)'3' != '7'(target)")}},
      {"port right bound, type not compared",
       [](B& s, B&) {
         s.getPort("clk")->setPortType(HABMPort::TYPE_VECTOR);
         s.getPort("data")->setPortRight(1);
       },
       {mismatch("Port 'data'", "RIGHT", "(source)'1' != '0'(target)")},
       {mismatch("Port 'data'", "RIGHT", "(source)'1' != '0'(target)")}},
      {"ports on one side only",
       [](B& s, B& t) {
         s.createPort("extra", false);
         t.removePort("clk");
         t.createPort("mine", false);
       },
       {onlyTarget("Port 'mine'"), onlySource("Port 'clk'"), onlySource("Port 'extra'")},
       {onlyTarget("Port 'mine'")}},
      {"interface VLNV ends the interface's comparison",
       [](B& s, B&) {
         s.getInterface("S_AXI")->setInterfaceVlnv("orvane:interface:axis:1.0");
         s.getInterface("S_AXI")->setInterfaceMode(HABMInterface::MODE_MASTER);
       },
       {mismatch("Interface 'S_AXI'", "VLNV",
                 "(source)'orvane:interface:axis:1.0' != 'orvane:interface:aximm:1.0'(target)")},
       {mismatch("Interface 'S_AXI'", "VLNV",
                 "(source)'orvane:interface:axis:1.0' != 'orvane:interface:aximm:1.0'(target)")}},
      {"interface mode ends it too",
       [](B& s, B&) {
         s.getInterface("S_AXI")->setInterfaceMode(HABMInterface::MODE_MASTER);
         s.getInterface("S_AXI")->setMemoryMapRef("other");
       },
       {mismatch("Interface 'S_AXI'", "MODE", "(source)'master' != 'slave'(target)")},
       {mismatch("Interface 'S_AXI'", "MODE", "(source)'master' != 'slave'(target)")}},
      {"memory map reference",
       [](B& s, B&) { s.getInterface("S_AXI")->setMemoryMapRef("other"); },
       {mismatch("Interface 'S_AXI'", "MEMORY MAP", "(source)'other' != 'mm'(target)")},
       {mismatch("Interface 'S_AXI'", "MEMORY MAP", "(source)'other' != 'mm'(target)")}},
      {"an empty reference on the target names nothing",
       [](B& s, B& t) {
         t.getInterface("S_AXI")->setMemoryMapRef("");
         s.getInterface("M_AXI")->setAddrSpaceRef("");
         s.getInterface("M_AXI")->setMemoryMapRef("mm");
         t.getInterface("M_AXI")->setAddrSpaceRef("");
       },
       {},
       {}},
      {"address space reference",
       [](B& s, B&) { s.getInterface("M_AXI")->setAddrSpaceRef("other"); },
       {mismatch("Interface 'M_AXI'", "ADDRESS SPACE", "(source)'other' != 'as'(target)")},
       {mismatch("Interface 'M_AXI'", "ADDRESS SPACE", "(source)'other' != 'as'(target)")}},
      {"interface parameters: the target's are looked for",
       [](B& s, B& t) {
         s.getInterface("S_AXI")->getParameter("FREQ")->setValue("200");
         s.getInterface("S_AXI")->createParameter("ONLY_SOURCE", "1");
         t.getInterface("S_AXI")->createParameter("ONLY_TARGET", "1");
       },
       {"Interface parameter 'S_AXI/FREQ' has VALUE mismatch" + std::string(kBetween) + ".",
        "Interface parameter 'S_AXI/ONLY_TARGET' missing from source module 'src' but exists on target "
        "instance '/u'."},
       {"Interface parameter 'S_AXI/FREQ' has VALUE mismatch" + std::string(kBetween) + ".",
        "Interface parameter 'S_AXI/ONLY_TARGET' missing from source module 'src' but exists on target "
        "instance '/u'."}},
      {"interfaces on one side only",
       [](B& s, B& t) {
         s.createInterface("EXTRA", false);
         t.createInterface("MINE", false);
       },
       {onlyTarget("Interface 'MINE'"), onlySource("Interface 'EXTRA'")},
       {onlyTarget("Interface 'MINE'")}},
      {"memory map range hides its address blocks",
       [](B& s, B&) {
         s.getMemoryMap("mm")->setRange(HABMAddrValue(0x1000U));
         s.getMemoryMap("mm")->getAddrBlock("regs")->setMemoryType(HABMAddrBlock::TYPE_MEMORY);
       },
       {mismatch("Memory map 'mm'", "RANGE")},
       {mismatch("Memory map 'mm'", "RANGE")}},
      {"address blocks: missing, aperture before memory type, the source's own not reported",
       [](B& s, B& t) {
         HABMMemoryMap* map = t.getMemoryMap("mm");
         map->createAddrBlock("mine");
         map->getAddrBlock("regs")->setAperture(HABMAddrAperture("0x0[8K]"));
         map->getAddrBlock("regs")->setMemoryType(HABMAddrBlock::TYPE_MEMORY);
         HABMAddrBlock* ram = map->createAddrBlock("ram");
         ram->setMemoryType(HABMAddrBlock::TYPE_MEMORY);
         s.getMemoryMap("mm")->createAddrBlock("ram");
         s.getMemoryMap("mm")->createAddrBlock("extra");
       },
       {mismatch("Address block 'mm/regs'", "APERTURE"),
        "Address block 'mm/mine' is missing from source module 'src' but exists on target instance '/u'.",
        mismatch("Address block 'mm/ram'", "MEMORYTYPE")},
       {mismatch("Address block 'mm/regs'", "APERTURE"),
        "Address block 'mm/mine' is missing from source module 'src' but exists on target instance '/u'.",
        mismatch("Address block 'mm/ram'", "MEMORYTYPE")}},
      {"memory maps on one side only",
       [](B& s, B& t) {
         s.createMemoryMap("extra");
         t.createMemoryMap("mine");
       },
       {"Memory map 'mine' is missing from source module 'src' but exists on target instance '/u'.",
        onlySource("Memory map 'extra'")},
       {"Memory map 'mine' is missing from source module 'src' but exists on target instance '/u'."}},
      {"address spaces: range, then segments",
       [](B& s, B& t) {
         s.getAddrSpace("as")->setRange(HABMAddrValue(0x1000U));
         s.createAddrSpace("extra");
         HABMAddrSpace* mine = t.createAddrSpace("mine");
         s.createAddrSpace("mine");
         mine->createAddrSegment("gone");
         mine->createAddrSegment("moved")->setAperture(HABMAddrAperture("0x0[1K]"));
         s.getAddrSpace("mine")->createAddrSegment("moved");
         s.getAddrSpace("mine")->createAddrSegment("own");
       },
       {mismatch("Address space 'as'", "RANGE"), onlyTarget("Address segment 'mine/gone'"),
        mismatch("Address segment 'mine/moved'", "APERTURE"), onlySource("Address space 'extra'")},
       {mismatch("Address space 'as'", "RANGE"), onlyTarget("Address segment 'mine/gone'"),
        mismatch("Address segment 'mine/moved'", "APERTURE")}},
      {"NoC protocol ends the interface's comparison",
       [](B& s, B&) {
         s.getNocInterface("nsu")->setNocProtocol(N::PROTOCOL_AXIS);
         s.getNocInterface("nsu")->setNocMode(N::MODE_NMU);
       },
       {mismatch("NOC interface 'nsu'", "TYPE", "(source)'axis' != 'aximm'(target)")},
       {mismatch("NOC interface 'nsu'", "TYPE", "(source)'axis' != 'aximm'(target)")}},
      {"NoC mode",
       [](B& s, B&) { s.getNocInterface("nsu")->setNocMode(N::MODE_VNSU); },
       {mismatch("NOC interface 'nsu'", "MODE", "(source)'vnsu' != 'nsu'(target)")},
       {mismatch("NOC interface 'nsu'", "MODE", "(source)'vnsu' != 'nsu'(target)")}},
      {"NoC category",
       [](B& s, B&) { s.getNocInterface("nsu")->setNocCategory(N::CATEGORY_INI); },
       {mismatch("NOC interface 'nsu'", "CATEGORY", "(source)'ini' != 'pl'(target)")},
       {mismatch("NOC interface 'nsu'", "CATEGORY", "(source)'ini' != 'pl'(target)")}},
      {"NoC parameters, with their values",
       [](B& s, B& t) {
         s.getNocInterface("nsu")->getParameter("DATA_WIDTH")->setValue("256");
         t.getNocInterface("nsu")->createParameter("ADDR_WIDTH", "64");
       },
       {mismatch("NOC interface parameter 'nsu/DATA_WIDTH'", "VALUE", "(source)'256' != '128'(target)"),
        onlyTarget("NOC interface parameter 'nsu/ADDR_WIDTH'")},
       {mismatch("NOC interface parameter 'nsu/DATA_WIDTH'", "VALUE", "(source)'256' != '128'(target)"),
        onlyTarget("NOC interface parameter 'nsu/ADDR_WIDTH'")}},
      {"NoC interfaces on one side only, INI ones included",
       [](B& s, B& t) {
         makeNocInterface(s, "extra", N::MODE_NMU, N::PROTOCOL_AXIMM, N::CATEGORY_INI);
         makeNocInterface(t, "mine", N::MODE_NMU);
       },
       {onlyTarget("NOC interface 'mine'"), onlySource("NOC interface 'extra'")},
       {onlyTarget("NOC interface 'mine'")}},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.what);
    source_ = HABMBlock::createTopBlock("src");
    design_->clearSubBlocks();
    target_ = design_->createSubBlock("u", "dst", false);
    fillBoundary(*source_);
    fillBoundary(*target_);
    c.change(*source_, *target_);
    EXPECT_EQ(reasons(false), c.withoutBoundary);
    EXPECT_EQ(reasons(true), c.withBoundary);
  }
}

// Kinds come in a fixed order; within a kind the target's objects in order, then the source's own.
TEST_F(HABMBoundaryCheck, ReasonsComeKindByKindTargetsFirst) {
  makeNocInterface(*target_, "z", N::MODE_NMU);
  makeNocInterface(*target_, "a", N::MODE_NMU);
  source_->createAddrSpace("extra");
  source_->createMemoryMap("extra");
  source_->createInterface("EXTRA", false);
  target_->createInterface("MINE", false);
  source_->createPort("extra", false);
  source_->createGeneric("EXTRA", "1");
  target_->createGeneric("MINE", "1");
  EXPECT_EQ(reasons(false),
            (Reasons{onlyTarget("Generic 'MINE'"), onlySource("Generic 'EXTRA'"), onlySource("Port 'extra'"),
                     onlyTarget("Interface 'MINE'"), onlySource("Interface 'EXTRA'"),
                     onlySource("Memory map 'extra'"), onlySource("Address space 'extra'"),
                     onlyTarget("NOC interface 'z'"), onlyTarget("NOC interface 'a'")}));
}

// Which side must serve the other's apertures depends on whether the source's interface takes requests.
TEST_F(HABMBoundaryCheck, AperturesFollowTheConeRuleFromTheSideThatTakesRequests) {
  for (bool const noc : {false, true}) {
    SCOPED_TRACE(noc ? "NoC interface" : "interface");
    std::string const name = noc ? "nsu" : "S_AXI";
    std::string const what = noc ? "NOC interface 'nsu'" : "Interface 'S_AXI'";
    auto const set = [&](HABMBlock& b, char const* text) {
      if (noc) {
        b.getNocInterface(name)->setApertures(apertures({text, "0x8000[4K]"}));
      } else {
        b.getInterface(name)->setApertures(apertures({text, "0x8000[4K]"}), false);
      }
    };
    source_ = HABMBlock::createTopBlock("src");
    design_->clearSubBlocks();
    target_ = design_->createSubBlock("u", "dst", false);
    fillBoundary(*source_);
    fillBoundary(*target_);
    set(*source_, "0x0[8K]");
    set(*target_, "0x0[4K]");
    // Unrequested, the target's fewer apertures are served by the source's.
    EXPECT_EQ(reasons(false), Reasons());
    set(*source_, "0x0[2K]");
    EXPECT_EQ(reasons(false), Reasons{mismatch(what, "APERTURES") +
                                      " Source module 'src' must service the following aperture requests: "
                                      "'0x0[4K]'."});
    set(*source_, "0x0[8K]");
    drive(name, noc);
    EXPECT_EQ(reasons(false), Reasons{mismatch(what, "APERTURES") +
                                      " Target instance '/u' must service the following aperture requests: "
                                      "'0x0[8K]'."});
  }
}

TEST_F(HABMBoundaryCheck, SkippingTheBoundaryCheckKeepsPortsModesAndNocInterfaces) {
  HPAParamOverride skip("project.skipBlockModelBoundaryCheck", "true");
  source_->getGeneric("WIDTH")->setValue("16");
  source_->getInterface("S_AXI")->setMemoryMapRef("other");
  source_->getInterface("S_AXI")->setApertures(apertures({"0x0[1K]"}), false);
  source_->getMemoryMap("mm")->setRange(HABMAddrValue(1U));
  source_->getAddrSpace("as")->setRange(HABMAddrValue(1U));
  source_->createMemoryMap("extra");
  EXPECT_EQ(reasons(false), Reasons());
  source_->getInterface("M_AXI")->setInterfaceMode(HABMInterface::MODE_SLAVE);
  source_->getPort("clk")->setPortLeft(1);
  source_->getNocInterface("nsu")->setNocMode(N::MODE_VNSU);
  EXPECT_EQ(reasons(false),
            (Reasons{mismatch("Port 'clk'", "LEFT", "(source)'1' != '0'(target)"),
                     mismatch("Interface 'M_AXI'", "MODE", "(source)'slave' != 'master'(target)"),
                     mismatch("NOC interface 'nsu'", "MODE", "(source)'vnsu' != 'nsu'(target)")}));
}

// The softening is on by default: the library registers it so.
TEST_F(HABMBoundaryCheck, KnownLibraryCoresSkipPortsAndInterfaces) {
  source_->getGeneric("WIDTH")->setValue("16");
  source_->createPort("extra", false);
  source_->createInterface("EXTRA", false);
  Reasons const generic = {mismatch("Generic 'WIDTH'", "VALUE", "(source)'16' != '8'(target)")};
  Reasons const full = {generic[0], onlySource("Port 'extra'"), onlySource("Interface 'EXTRA'")};
  struct Case {
    char const* vlnv;
    bool softened;
  };
  ComMsgScopeGuard on("HABM");
  for (Case const c :
       {Case{"ORVANE:ip:Link64_Core:1.0", true}, Case{"tessel:IP:pkt_proc_core:2.1", true},
        Case{"acme:ip:link64_core:1.0", false}, Case{"orvane:blockdesign:link64_core:1.0", false},
        Case{"orvane:ip:link64:1.0", false}, Case{"orvane:ip:link64_core", false}}) {
    SCOPED_TRACE(c.vlnv);
    source_->setModuleVlnv(c.vlnv);
    ComMsgCapture capture;
    EXPECT_EQ(reasons(false), c.softened ? generic : full);
    Reasons const skipped = {
        "Skipped PORT and INTERFACE checks from source module 'src' into target instance "
        "'/u'.\n"};
    EXPECT_EQ(capture.texts(), c.softened ? skipped : Reasons());
    if (c.softened) {
      EXPECT_EQ(capture.records()[0].mask, 0x1000001U);
    }
  }
  HPAParamOverride off("blockmodel.softenCanMergeChecks", "false");
  source_->setModuleVlnv("orvane:ip:link64_core:1.0");
  EXPECT_EQ(reasons(false), full);
}

// top holds "a" holding "b" holding "c"; "x" beside "a". NoC interfaces sit only on the leaves c and x, so
// that no block between "a" and "c" is a NoC scope of its own and the links can be cut at "a".
class HABMSplitMerge : public ::testing::Test {
 protected:
  void SetUp() override {
    makeNocInterface(*c_, "nmu", N::MODE_NMU);
    makeNocInterface(*c_, "nsu", N::MODE_NSU)->setApertures(apertures({"0x0[64K]"}));
    makeNocInterface(*x_, "nmu", N::MODE_NMU);
    makeNocInterface(*x_, "nsu", N::MODE_NSU);
    a_->createPort("clk", false);
    a_->createAttribute("KEEP", "yes");
    a_->createSubBlock("leaf", "leaf", false);
    a_->createPortConnection("clk", {"leaf/clk"}, true);
    top_->setValidated(true);
  }
  void TearDown() override { EXPECT_EQ(top_->check(), Reasons()); }

  HABMNocConnection* link(HABMBlock& holder, std::string const& source, std::string const& target) {
    HABMNocConnection* made = holder.createNocConnection(source, target, true);
    EXPECT_NE(made, nullptr) << source << " -> " << target;
    return made;
  }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
  HABMBlock* a_ = top_->createSubBlock("a", "ma", false);
  HABMBlock* b_ = a_->createSubBlock("b", "mb", false);
  HABMBlock* c_ = b_->createSubBlock("c", "mc", false);
  HABMBlock* x_ = top_->createSubBlock("x", "mx", false);
};

TEST_F(HABMSplitMerge, ASplitLeavesAStubWithBoundaryAndConfigurationAndReturnsTheContents) {
  a_->setModuleVlnv("acme:ip:ma:1.0");
  a_->setLocked(HABMBlock::LOCKED);
  ComMsgScopeGuard on("HABM");
  ComMsgCapture capture;
  auto const part = HABMBlock::splitTopBlock(*top_, "a", false);
  ASSERT_NE(part, nullptr);
  EXPECT_EQ(capture.texts().front(), "Splitting sub-block instance 'a' from top-block module 'top.\n");
  EXPECT_EQ(capture.texts().back(), "Split sub-block instance 'a' from top-block module 'top'.\n");
  EXPECT_EQ(part->getParent(), nullptr);
  EXPECT_EQ(part->getInstanceName(), "");
  EXPECT_EQ(part->getModuleName(), "ma");
  EXPECT_EQ(part->getModuleVlnv(), "acme:ip:ma:1.0");
  EXPECT_EQ(part->getLocked(), HABMBlock::LOCKED);
  EXPECT_FALSE(part->isBlockStub());
  EXPECT_NE(part->findSubBlock("b/c", true), nullptr);
  ASSERT_EQ(part->getPortConnections().size(), 1U);
  EXPECT_EQ(part->getPortConnections()[0]->getSourcePath(false), "clk");
  EXPECT_EQ(part->check(), Reasons());

  EXPECT_TRUE(a_->isBlockStub());
  EXPECT_FALSE(a_->hasSubBlocks());
  EXPECT_FALSE(a_->hasPortConnections());
  EXPECT_NE(a_->getPort("clk"), nullptr);
  EXPECT_EQ(a_->getAttribute("KEEP")->getValue(), "yes");
  EXPECT_FALSE(top_->getValidated());
}

TEST_F(HABMSplitMerge, AMissBlocksNothingAndChangesNothing) {
  for (char const* path : {"/nope", "/", "", "a/nope", "x/nmu"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(HABMBlock::splitTopBlock(*top_, path, true), nullptr);
    auto const source = HABMBlock::createTopBlock("src");
    EXPECT_FALSE(HABMBlock::mergeTopBlock(*top_, path, *source, true));
    EXPECT_TRUE(top_->getValidated());
    EXPECT_TRUE(a_->hasSubBlocks());
  }
}

// Links with an end on the cut block's own boundary stay with it; only links into or out of blocks below
// it cross.
TEST_F(HABMSplitMerge, OnlyLinksIntoOrOutOfBlocksBelowBarASplit) {
  makeNocInterface(*a_, "vnsu", N::MODE_VNSU);
  link(*top_, "x/nmu", "a/vnsu");
  link(*a_, "vnsu", "b/c/nsu");
  Reasons reasons = {"stale"};
  EXPECT_TRUE(HABMBlock::canSplitBlock(*a_, reasons));
  EXPECT_EQ(reasons, Reasons());

  link(*top_, "x/nmu", "a/b/c/nsu");
  link(*top_, "a/b/c/nmu", "x/nsu");
  EXPECT_FALSE(HABMBlock::canSplitBlock(*a_, reasons));
  EXPECT_EQ(
      reasons,
      (Reasons{"Sub-block instance '/a' has an exported NOC connection from source NOC interface "
               "'/a/b/c/nmu' to target NOC interface '/x/nsu'. A VNMU or VNSU interface is required to split "
               "this NOC connection.",
               "Sub-block instance '/a' has an imported NOC connection from source NOC interface "
               "'/x/nmu' to target NOC interface '/a/b/c/nsu'. A VNMU or VNSU interface is required to "
               "split this NOC connection."}));
}

TEST_F(HABMSplitMerge, ARefusedSplitSaysWhyInOneOrSeveralLines) {
  link(*top_, "x/nmu", "a/b/c/nsu");
  ComMsgCapture capture;
  EXPECT_EQ(HABMBlock::splitTopBlock(*top_, "/a", false), nullptr);
  ASSERT_EQ(capture.records().size(), 1U);
  ComMsgRecord const& one = capture.records()[0];
  EXPECT_EQ(one.format, "@90-5@%s%s%s");
  EXPECT_EQ(one.mask, 0x10000000U);
  EXPECT_EQ(one.domain, "blockmodel");
  ASSERT_EQ(one.args.size(), 3U);
  EXPECT_EQ(one.args[0], "/a");
  EXPECT_EQ(one.args[1], "ma");
  EXPECT_EQ(one.args[2].rfind(" Sub-block instance '/a' has an imported", 0), 0U) << one.args[2];

  link(*top_, "a/b/c/nmu", "x/nsu");
  capture.clear();
  EXPECT_EQ(HABMBlock::splitTopBlock(*top_, "/a", false), nullptr);
  std::string const& two = capture.records().at(0).args.at(2);
  EXPECT_EQ(two.rfind(" Reason(s):\n  * Sub-block instance '/a' has an exported", 0), 0U) << two;
  EXPECT_NE(two.find("\n  * Sub-block instance '/a' has an imported"), std::string::npos) << two;
  EXPECT_TRUE(a_->hasSubBlocks());
  EXPECT_TRUE(top_->getValidated());
}

// Entering and leaving links are cut at new virtual interfaces of the cut block; the outer half keeps the
// link's name, holder and properties, the inner half goes with the block.
TEST_F(HABMSplitMerge, VirtualInterfacesCutCrossingLinksInTwo) {
  makeNocInterface(*a_, "noc_interface_0", N::MODE_VNMU);  // the automatic names go around it
  HABMNocConnection* entering = link(*top_, "x/nmu", "a/b/c/nsu");
  entering->setEditable(true);
  entering->getParameter(HABMNocConnection::READ_BANDWIDTH())->setValue("900");
  HABMNocConnection* leaving = link(*top_, "a/b/c/nmu", "x/nsu");
  std::string const enteringName = entering->getName();
  auto const part = HABMBlock::splitTopBlock(*top_, "/a", true);
  ASSERT_NE(part, nullptr);

  N const* in = a_->getNocInterface("noc_interface_1");
  N const* out = a_->getNocInterface("noc_interface_2");
  ASSERT_NE(in, nullptr);
  ASSERT_NE(out, nullptr);
  EXPECT_EQ(in->getNocMode(), N::MODE_VNSU);
  EXPECT_EQ(in->getApertures(), apertures({"0x0[64K]"}));
  EXPECT_EQ(out->getNocMode(), N::MODE_VNMU);
  EXPECT_TRUE(out->getApertures().empty());
  EXPECT_EQ(top_->getNocConnection(enteringName), entering);
  EXPECT_EQ(entering->getTargetPath(false), "a/noc_interface_1");
  EXPECT_EQ(leaving->getSourcePath(false), "a/noc_interface_2");
  EXPECT_EQ(entering->getParameter(HABMNocConnection::READ_BANDWIDTH())->getValue(), "900");

  // The returned block holds the inner halves, drawn to and from its own new interfaces.
  ASSERT_EQ(part->getNocConnections(false).size(), 2U);
  HABMNocConnection const* innerIn = part->getNocConnections(false)[0];
  HABMNocConnection const* innerOut = part->getNocConnections(false)[1];
  EXPECT_EQ(innerIn->getSourcePath(false), "noc_interface_1");
  EXPECT_EQ(innerIn->getTargetPath(false), "b/c/nsu");
  EXPECT_TRUE(innerIn->getEditable());
  EXPECT_FALSE(innerIn->hasParameters());
  EXPECT_EQ(innerOut->getSourcePath(false), "b/c/nmu");
  EXPECT_EQ(innerOut->getTargetPath(false), "noc_interface_2");
  EXPECT_FALSE(innerOut->getEditable());
  EXPECT_NE(part->getNocInterface("noc_interface_1"), nullptr);
  EXPECT_EQ(part->check(), Reasons());
}

// The cut cannot draw an inner half that the link rules refuse: the link is left as it was, and it bars
// the split. Here "b" is a NoC scope of its own, which the new interface of "a" is not part of.
TEST_F(HABMSplitMerge, ALinkThatCannotBeCutStaysWholeAndBarsTheSplit) {
  makeNocInterface(*b_, "scope", N::MODE_NSU);
  HABMNocConnection* entering = link(*top_, "x/nmu", "a/b/c/nsu");
  EXPECT_EQ(HABMBlock::splitTopBlock(*top_, "/a", true), nullptr);
  EXPECT_EQ(entering->getTargetPath(false), "a/b/c/nsu");
  EXPECT_FALSE(a_->hasNocInterfaces(false));
  EXPECT_FALSE(a_->isBlockStub());
}

// A link drawn above the block between two of its insides moves into it under an automatic name, even
// when a forced link of the same name stands before it.
TEST_F(HABMSplitMerge, LinksDrawnAboveBetweenInsidesMoveIn) {
  top_->createNocConnection("noc_connection_0", false);
  HABMNocConnection* above = top_->createNocConnection("noc_connection_0", true);
  above->setSourcePath("a/b/c/nmu");
  above->setTargetPath("a/b/c/nsu");
  above->setEditable(true);
  above->setRemaps({HABMAddrRemap(HABMAddrValue(0U), HABMAddrValue(0x1000U), HABMAddrValue(0x1000U))});
  above->setParameter(HABMNocConnection::WRITE_BANDWIDTH(), "700", true);
  HABMNocConnection* boundary = top_->createNocConnection("a/b/c/nmu", "x/nsu", true);  // crosses: stays
  ASSERT_NE(boundary, nullptr);
  a_->createNocConnection("own", false);
  EXPECT_EQ(HABMBlock::splitTopBlock(*top_, "/a", false), nullptr);  // the second link bars it

  EXPECT_EQ(top_->getNocConnections(false).size(), 2U);
  EXPECT_EQ(top_->getNocConnection("noc_connection_0")->getSourcePath(false), "");
  ASSERT_EQ(a_->getNocConnections(false).size(), 2U);
  HABMNocConnection const* moved = a_->getNocConnections(false)[1];
  EXPECT_EQ(moved->getName(), "noc_connection_1");
  EXPECT_EQ(moved->getSourcePath(false), "b/c/nmu");
  EXPECT_EQ(moved->getTargetPath(false), "b/c/nsu");
  EXPECT_TRUE(moved->getEditable());
  EXPECT_EQ(moved->getRemaps().size(), 1U);
  EXPECT_EQ(moved->getParameter(HABMNocConnection::WRITE_BANDWIDTH())->getValue(), "700");
}

TEST_F(HABMSplitMerge, AMergeBringsContentsBackAndTheBoundaryOnlyWhenAsked) {
  auto const part = HABMBlock::splitTopBlock(*top_, "/a", false);
  ASSERT_NE(part, nullptr);
  top_->setValidated(true);
  a_->setLocked(HABMBlock::UNLOCKED);
  part->setModuleVlnv("acme:ip:ma:2.0");
  part->createAttribute("FROM_PART", "1");
  part->createPort("clk2", false);

  // The new port exists on the source only: without the boundary that is a difference.
  ComMsgCapture capture;
  EXPECT_FALSE(HABMBlock::mergeTopBlock(*top_, "/a", *part, false));
  ASSERT_EQ(capture.records().size(), 1U);
  EXPECT_EQ(capture.records()[0].format, "@90-3@%s%s%s");
  EXPECT_EQ(capture.records()[0].args,
            (Reasons{"ma", "/a",
                     " Port 'clk2' exists on source module 'ma' but missing from target instance '/a'."}));
  EXPECT_TRUE(a_->isBlockStub());
  EXPECT_TRUE(top_->getValidated());

  ComMsgScopeGuard on("HABM");
  capture.clear();
  EXPECT_TRUE(HABMBlock::mergeTopBlock(*top_, "/a", *part, true));
  EXPECT_FALSE(a_->isBlockStub());
  EXPECT_FALSE(top_->getValidated());
  EXPECT_EQ(a_->getModuleVlnv(), "acme:ip:ma:2.0");
  EXPECT_NE(a_->getPort("clk2"), nullptr);
  EXPECT_EQ(a_->getAttribute("FROM_PART"), nullptr);  // the configuration stays the instance's
  EXPECT_NE(a_->findSubBlock("b/c", true), nullptr);
  EXPECT_EQ(a_->getLocked(), HABMBlock::UNKNOWN);
  EXPECT_NE(std::find(capture.texts().begin(), capture.texts().end(),
                      "MNOC: Resetting lock state from 'unlocked' to 'unknown' for block 'ma'.\n"),
            capture.texts().end());
  EXPECT_EQ(capture.texts().back(), "Merged top-block module 'ma' into sub-block instance '/a'.\n");
}

// A run-time swapped block keeps its boundary, and takes the lock state of the module swapped in.
TEST_F(HABMSplitMerge, ARunTimeSwappedBlockKeepsItsBoundaryAndTakesTheLock) {
  a_->setBlockRsw(true);
  auto const part = HABMBlock::splitTopBlock(*top_, "/a", false);
  ASSERT_NE(part, nullptr);
  part->setLocked(HABMBlock::LOCKED);
  part->setModuleVlnv("acme:ip:ma:2.0");
  part->removePort("clk");
  a_->setLocked(HABMBlock::UNLOCKED);
  ComMsgScopeGuard on("HABM");
  ComMsgCapture capture;
  // The port only the stub has is a difference whatever the flag says.
  EXPECT_FALSE(HABMBlock::mergeTopBlock(*top_, "/a", *part, true));
  part->createPort("clk", false);
  part->createPort("extra", false);  // harmless only if the boundary were taken, which it is not
  EXPECT_FALSE(HABMBlock::mergeTopBlock(*top_, "/a", *part, true));
  part->removePort("extra");
  capture.clear();
  EXPECT_TRUE(HABMBlock::mergeTopBlock(*top_, "/a", *part, true));
  EXPECT_EQ(a_->getModuleVlnv(), "");
  EXPECT_EQ(a_->getLocked(), HABMBlock::LOCKED);
  EXPECT_TRUE(a_->isBlockRsw());
  std::vector<ComMsgRecord> const& records = capture.records();
  auto const copied = std::find_if(records.begin(), records.end(), [](ComMsgRecord const& r) {
    return r.text == "MNOC: Copied lock state 'locked' for block 'ma'.\n";
  });
  ASSERT_NE(copied, records.end());
  EXPECT_EQ(copied->mask, 0x1000001U);
}

}  // namespace
