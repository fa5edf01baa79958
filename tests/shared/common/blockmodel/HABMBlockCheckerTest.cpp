// HABMBlockCheckerTest.cpp: the design-rule checks: the deferred frame, each rule set on small trees built
// for one rule at a time, the shared link index against the per-interface searches, and a deep tree.
#include "blockmodel/HABMBlockChecker.h"

#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocPath.h"
#include "blockmodel/detail/HABMNocLinks.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"

#include "HABMNocTestUtil.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using N = HABMNocInterface;
using habm_test::makeNocInterface;
using Briefs = std::vector<std::string>;

// The rule sets, reachable from the tests.
struct Checker : HABMBlockChecker {
  using HABMBlockChecker::validate_block_stubs;
  using HABMBlockChecker::validate_noc_connections;
  using HABMBlockChecker::validate_noc_interfaces;
  using HABMBlockChecker::validate_noc_paths;
  using HABMBlockChecker::validate_opm_connections;
  using HABMBlockChecker::validate_rsw_blocks;
};
using RuleSet = bool (*)(HABMBlock const&, std::vector<ComMsgMgrInstance>&);

// A finding in short: its rule number and the quoted parts of its text ("101 /u0 m_u0").
std::string brief(int rule, std::string const& text) {
  std::string out = std::to_string(rule);
  for (std::size_t open = text.find('\''); open != std::string::npos; open = text.find('\'', open)) {
    std::size_t const close = text.find('\'', open + 1);
    if (close == std::string::npos) {
      break;
    }
    out += " " + text.substr(open + 1, close - open - 1);
    open = close + 1;
  }
  return out;
}

struct Outcome {
  bool passed;
  Briefs briefs;
  std::vector<std::string> texts;  // the rule texts
  std::vector<unsigned int> masks;
};

// Runs one rule set; nothing may reach the listeners before validate_all sends.
Outcome run(RuleSet set, HABMBlock const& block) {
  ComMsgCapture capture;
  std::vector<ComMsgMgrInstance> messages;
  Outcome out{set(block, messages), {}, {}, {}};
  EXPECT_TRUE(capture.records().empty());
  for (ComMsgMgrInstance const& m : messages) {
    ComMsgRecord const& r = m.getRecord();
    EXPECT_EQ(r.args.front(), block.getModuleName());
    out.briefs.push_back(brief(r.line, r.args.back()));
    out.texts.push_back(r.args.back());
    out.masks.push_back(r.mask);
  }
  return out;
}

class HABMChecker : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  HABMBlock* sub(std::string const& name, HABMBlock* parent = nullptr) {
    return (parent != nullptr ? parent : top_.get())->createSubBlock(name, "m_" + name, false);
  }
  HABMBlock* rsw(std::string const& name, HABMBlock* parent = nullptr) {
    HABMBlock* block = sub(name, parent);
    block->setBlockRsw(true);
    return block;
  }
  void link(std::string const& source, std::string const& target, HABMBlock* holder = nullptr) {
    ASSERT_NE((holder != nullptr ? holder : top_.get())->createNocConnection(source, target, true), nullptr);
  }
  Briefs briefs(RuleSet set) const { return run(set, *top_).briefs; }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
};

TEST_F(HABMChecker, ValidateAllSendsEveryFindingAfterTheLastRuleSetInRuleSetOrder) {
  sub("u0")->setBlockStub(true);
  rsw("r0")->setModuleVlnv("acme:blockdesign_ref:r0:1.0");
  rsw("r1");
  makeNocInterface(*top_, "lonely", N::MODE_NMU);
  ComMsgScopeGuard traces("HABM");
  ComMsgCapture capture;
  EXPECT_FALSE(HABMBlockChecker::validate_all(*top_));

  std::vector<std::string> texts;
  for (ComMsgRecord const& r : capture.records()) {
    texts.push_back(r.shape == ComMsgShape::DEFERRED ? r.format + " " + brief(r.line, r.text) : r.text);
  }
  EXPECT_EQ(texts, (Briefs{"Validating block stubs for block instance '/'...\n",
                           "Validating RSW blocks for block instance '/'...\n",
                           "Validating OPM connections for block instance '/'...\n",
                           "Validating NOC interfaces for block instance '/'...\n",
                           "Validating NOC connections for block instance '/'...\n",
                           "Validating RSW rules for block instance '/'...\n", "@90-10@%s%s 101 top /u0 m_u0",
                           "@90-6@%s%s 136 top /r0 /r1", "@90-10@%s%s 491 top /lonely"}));
  ComMsgRecord const& violation = capture.records()[7];
  EXPECT_EQ(violation.file, "HABMBlockChecker");
  EXPECT_EQ(violation.domain, "blockmodel");
  EXPECT_EQ(violation.mask, 0x20000000U);
  EXPECT_EQ(violation.text,
            "Design rule violation on module 'top': Found unsupported mix of BDI '/r0' and RTL '/r1' RSW "
            "implementations. Please refactor to use one RSW implementation only.");
}

TEST_F(HABMChecker, BlockStubsAreReportedByKindThenByPathAndNeverFail) {
  EXPECT_TRUE(briefs(Checker::validate_block_stubs).empty());
  top_->setBlockStub(true);
  sub("b_mref")->setModuleVlnv("acme:module_ref:mref:1.0");
  rsw("a_rsw")->setModuleVlnv("acme:blockdesign_ref:rswref:1.0");  // filed as a region alone
  sub("c_bdr")->setModuleVlnv("acme:BlockDesign_Ref:bdr:1.0");
  sub("e", sub("d"));
  sub("z");
  for (char const* stub : {"b_mref", "a_rsw", "c_bdr", "d/e", "z"}) {
    top_->findSubBlock(stub, true)->setBlockStub(true);
  }
  rsw("r");  // a region that is no stub

  Outcome const out = run(Checker::validate_block_stubs, *top_);
  EXPECT_TRUE(out.passed);
  EXPECT_EQ(out.briefs, (Briefs{"72 /b_mref m_b_mref", "82 /a_rsw m_a_rsw", "92 /c_bdr m_c_bdr", "101 / top",
                                "101 /d/e m_e", "101 /z m_z"}));
  // Module references and regions are lowered to information.
  EXPECT_EQ(out.masks, (std::vector<unsigned int>{0x8000000U, 0x8000000U, 0x10000000U, 0x10000000U,
                                                  0x10000000U, 0x10000000U}));
}

TEST_F(HABMChecker, RegionsMustShareOneImplementationKindAndTheTopBlockDoesNotCount) {
  top_->setBlockRsw(true);
  rsw("b0")->setModuleVlnv("acme:blockdesign_ref:x:1.0");
  rsw("b1")->setModuleVlnv("acme:blockdesign_ref:x:1.0");
  EXPECT_TRUE(run(Checker::validate_rsw_blocks, *top_).passed);
  rsw("q", top_->getSubBlock("b0"));
  rsw("s");
  Outcome const out = run(Checker::validate_rsw_blocks, *top_);
  EXPECT_FALSE(out.passed);
  // Search order: a sub-block's own finds before the direct sub-blocks.
  EXPECT_EQ(out.briefs, (Briefs{"136 /b0, /b1 /b0/q, /s"}));
}

// A logic block "logic" whose M_AXI feeds the bus interface S_AXI of "opm", an OPM NoC module whose widths
// are its generics ADDR_WIDTH 64 and DATA_WIDTH 128.
TEST_F(HABMChecker, BusWidthsAcrossAnOpmModuleAreComparedAsText) {
  struct Case {
    bool logicIsOpm;
    std::vector<std::pair<char const*, char const*>> logicValues;  // parameters, or generics on an OPM
    char const* target;
    Briefs found;
  } const cases[] = {
      {false, {{"ADDR_WIDTH", "64"}, {"DATA_WIDTH", "128"}}, "opm/S_AXI", {}},
      {false, {{"DATA_WIDTH", ""}}, "opm/S_AXI", {}},
      {false, {{"DATA_WIDTH", "32"}}, "opm/NOPE", {}},
      {false,
       {{"DATA_WIDTH", "32"}, {"ADDR_WIDTH", "0x40"}},
       "opm/S_AXI",
       {"208 ADDR_WIDTH /logic/M_AXI /opm/S_AXI", "208 DATA_WIDTH /logic/M_AXI /opm/S_AXI"}},
      {true, {{"DATA_WIDTH", "256"}}, "opm/S_AXI", {"208 DATA_WIDTH /logic/M_AXI /opm/S_AXI"}},
  };
  for (Case const& c : cases) {
    auto top = HABMBlock::createTopBlock("top");
    HABMBlock* opm = top->createSubBlock("opm", "opm", false);
    opm->createAttribute("OPM_NOC", "NSU_MM");
    opm->createGeneric("ADDR_WIDTH", "64");
    opm->createGeneric("DATA_WIDTH", "128");
    opm->createInterface("S_AXI", false)->createParameter("DATA_WIDTH", "9");  // an OPM speaks by generics
    HABMBlock* logic = top->createSubBlock("logic", "logic", false);
    HABMInterface* master = logic->createInterface("M_AXI", false);
    if (c.logicIsOpm) {
      logic->createAttribute("OPM_NOC", "NMU_MM");
    }
    for (auto const& [name, value] : c.logicValues) {
      c.logicIsOpm ? (void)logic->createGeneric(name, value) : (void)master->createParameter(name, value);
    }
    HABMInterfaceConnection* connection = top->createInterfaceConnection("", true);
    connection->setSourcePath("logic/M_AXI");
    connection->setTargetPath(c.target);
    Outcome const out = run(Checker::validate_opm_connections, *top);
    EXPECT_EQ(out.briefs, c.found) << c.logicValues.size();
    EXPECT_EQ(out.passed, c.found.empty());
    if (c.found.size() == 2) {
      EXPECT_EQ(out.texts.front(),
                " Parameter 'ADDR_WIDTH' values differ from source interface '/logic/M_AXI' "
                "(value=0x40) to target interface '/opm/S_AXI' (value=64).");
    }
  }
}

TEST_F(HABMChecker, LogicTargetAperturesMustBeLargeAlignedPowersOfTwo) {
  struct Case {
    N::NocMode mode;
    N::NocCategory category;
    unsigned int base;
    unsigned int range;
    Briefs found;
  } const cases[] = {
      {N::MODE_NSU,
       N::CATEGORY_PL,
       0x1000,
       0x3000,
       {"237 /u/t 0x1000:0x3FFF 0x3000", "243 /u/t 0x1000:0x3FFF 0x3000",
        "249 /u/t 0x1000:0x3FFF 0x1000 0x3000"}},
      {N::MODE_NSU, N::CATEGORY_PL, 0x8000, 0x10000, {"249 /u/t 0x8000:0x1_7FFF 0x8000 0x1_0000"}},
      {N::MODE_NSU, N::CATEGORY_PL, 0x0, 0x8000, {"243 /u/t 0x0:0x7FFF 0x8000"}},
      {N::MODE_NSU, N::CATEGORY_DDR, 0x1000, 0x100, {}},
      {N::MODE_VNSU, N::CATEGORY_PL, 0x1000, 0x100, {}},
  };
  for (Case const& c : cases) {
    auto top = HABMBlock::createTopBlock("top");
    N* iface =
        makeNocInterface(*top->createSubBlock("u", "u", false), "t", c.mode, N::PROTOCOL_AXIMM, c.category);
    iface->setApertures({HABMAddrAperture(c.base, c.range)});
    Outcome const out = run(Checker::validate_noc_interfaces, *top);
    EXPECT_EQ(out.briefs, c.found);
    EXPECT_EQ(out.passed, c.found.empty());
  }
}

TEST_F(HABMChecker, ParameterValuesAreCheckedLowerCasedAndReportedInNameOrder) {
  struct Case {
    char const* name;
    char const* value;
    bool valid;
  } const cases[] = {
      {"DATA_WIDTH", "512", true},     {"READ_TRAFFIC_CLASS", "LOW_LATENCY", true},
      {"SIDEBAND_PINS", "TRUE", true}, {"SIDEBAND_PINS", "maybe", false},
      {"ADDR_WIDTH", "7", true},
  };
  for (Case const& c : cases) {
    auto top = HABMBlock::createTopBlock("top");
    makeNocInterface(*top, "n", N::MODE_NMU)->createParameter(c.name, c.value);
    EXPECT_EQ(run(Checker::validate_noc_interfaces, *top).passed, c.valid) << c.name << "=" << c.value;
  }
  N* n = makeNocInterface(*top_, "n", N::MODE_NMU);
  n->createParameter("WRITE_TRAFFIC_CLASS", "LOW_LATENCY");
  n->createParameter("DATA_WIDTH", "1024");
  // The name's placeholder is a bare "%": the formatter reads "%' ha" as one directive, as hosts always had
  // it.
  EXPECT_EQ(
      run(Checker::validate_noc_interfaces, *top_).texts,
      (Briefs{
          " NOC interface '/n' parameter ' DATA_WIDTHs invalid value '1024'. Valid values are: '32', '64', "
          "'128', '256', '512'.",
          " NOC interface '/n' parameter ' WRITE_TRAFFIC_CLASSs invalid value 'low_latency'. Valid values "
          "are: 'best_effort', 'isochronous'."}));
}

// Interface "x" of a mode on the top block, with the ends it fans in from or out to on block "e". The last
// case holds the links on the top block but checks "e" alone: links drawn above a block still count.
TEST_F(HABMChecker, FanRulesDependOnTheInterfaceKindAndCountVirtualEndsOnly) {
  struct End {
    char const* name;
    N::NocMode mode;
    N::NocCategory category = N::CATEGORY_PL;
  };
  struct Case {
    N::NocMode mode;
    bool editable;
    std::vector<End> sources;
    std::vector<End> targets;
    Briefs found;
  } const cases[] = {
      {N::MODE_NMU, false, {}, {{"v1", N::MODE_VNMU}, {"v2", N::MODE_VNMU}}, {"415 /x /e/v1, /e/v2"}},
      {N::MODE_NMU, false, {}, {{"v1", N::MODE_VNMU}, {"w1", N::MODE_VNSU}}, {"422 /x /e/v1, /e/w1"}},
      {N::MODE_NMU, false, {}, {{"v1", N::MODE_VNMU}, {"s1", N::MODE_NSU}}, {}},
      {N::MODE_NMU, false, {}, {{"v1", N::MODE_VNMU}, {"i1", N::MODE_VNMU, N::CATEGORY_INI}}, {}},
      {N::MODE_NSU, false, {{"w1", N::MODE_VNSU}, {"w2", N::MODE_VNSU}}, {}, {"439 /x /e/w1, /e/w2"}},
      {N::MODE_NSU, false, {{"w1", N::MODE_VNSU}, {"v1", N::MODE_VNMU}}, {}, {"446 /x /e/v1, /e/w1"}},
      {N::MODE_UNKNOWN, false, {{"w1", N::MODE_VNSU}, {"w2", N::MODE_VNSU}}, {}, {"439 /x /e/w1, /e/w2"}},
      {N::MODE_VNMU, false, {{"n1", N::MODE_NMU}, {"n2", N::MODE_NMU}}, {}, {"344 /x"}},
      {N::MODE_VNMU, true, {}, {{"v1", N::MODE_VNMU}, {"v2", N::MODE_VNMU}}, {"355 /x /e/v1, /e/v2"}},
      {N::MODE_VNMU, false, {}, {{"w1", N::MODE_VNSU}, {"v1", N::MODE_VNMU}}, {"362 /x /e/v1, /e/w1"}},
      {N::MODE_VNSU, false, {{"w1", N::MODE_VNSU}, {"w2", N::MODE_VNSU}}, {}, {"378 /x /e/w1, /e/w2"}},
      {N::MODE_VNSU, false, {{"v1", N::MODE_VNMU}, {"w1", N::MODE_VNSU}}, {}, {"385 /x /e/v1, /e/w1"}},
      {N::MODE_VNSU, true, {}, {{"s1", N::MODE_NSU}, {"s2", N::MODE_NSU}}, {"393 /x"}},
      {N::MODE_VNSU, false, {}, {{"s1", N::MODE_NSU}, {"s2", N::MODE_NSU}}, {}},
  };
  for (Case const& c : cases) {
    auto top = HABMBlock::createTopBlock("top");
    makeNocInterface(*top, "x", c.mode)->setEditable(c.editable);
    HABMBlock* ends = top->createSubBlock("e", "e", false);
    for (auto const& [list, in] : {std::pair{&c.sources, true}, std::pair{&c.targets, false}}) {
      for (End const& e : *list) {
        makeNocInterface(*ends, e.name, e.mode, N::PROTOCOL_AXIMM, e.category);
        std::string const end = std::string("e/") + e.name;
        top->createNocConnection(in ? end : "x", in ? "x" : end, true);
      }
    }
    EXPECT_EQ(run(Checker::validate_noc_interfaces, *top).briefs, c.found) << N::decodeNocMode(c.mode);
  }
  HABMBlock* a = sub("a");
  for (char const* v : {"v1", "v2"}) {
    makeNocInterface(*a, v, N::MODE_VNMU);
    link("a/n", std::string("a/") + v);
  }
  makeNocInterface(*a, "n", N::MODE_NMU);
  EXPECT_EQ(run(Checker::validate_noc_interfaces, *a).briefs, (Briefs{"415 /a/n /a/v1, /a/v2"}));
}

TEST_F(HABMChecker, RemapsAcrossOpmModulesAndUnconnectedInterfacesAreNotices) {
  EXPECT_TRUE(briefs(Checker::validate_noc_connections).empty());
  struct Case {
    N::NocCategory source;
    bool sourceOnOpm;
    N::NocCategory target;
    bool targetOnOpm;
    bool remaps;
    bool reported;
  } const cases[] = {
      {N::CATEGORY_PL, true, N::CATEGORY_DDR, false, true, false},
      {N::CATEGORY_PL, false, N::CATEGORY_PL, true, true, false},
      {N::CATEGORY_DDR, true, N::CATEGORY_PL, false, true, true},
      {N::CATEGORY_PL, false, N::CATEGORY_CPU_NCO, true, true, true},
      {N::CATEGORY_DDR, false, N::CATEGORY_DDR, false, true, false},
      {N::CATEGORY_DDR, true, N::CATEGORY_PL, false, false, false},
  };
  for (Case const& c : cases) {
    auto top = HABMBlock::createTopBlock("top");
    HABMBlock* s = top->createSubBlock("s", "s", false);
    HABMBlock* t = top->createSubBlock("t", "t", false);
    for (auto const& [block, opm] : {std::pair{s, c.sourceOnOpm}, std::pair{t, c.targetOnOpm}}) {
      if (opm) {
        block->createAttribute("OPM_NOC", "NMU_MM");
      }
    }
    makeNocInterface(*s, "nmu", N::MODE_NMU, N::PROTOCOL_AXIMM, c.source);
    makeNocInterface(*t, "nsu", N::MODE_NSU, N::PROTOCOL_AXIMM, c.target);
    HABMNocConnection* connection = top->createNocConnection("s/nmu", "t/nsu", true);
    if (c.remaps) {
      connection->setRemaps({HABMAddrRemap(0x1000, 0x0, 0x1000)});
    }
    Outcome const out = run(Checker::validate_noc_connections, *top);
    EXPECT_TRUE(out.passed);
    EXPECT_EQ(out.briefs, c.reported ? Briefs{"483 /s/nmu /t/nsu"} : Briefs{});
  }
  // Either end of a link connects an interface; a dead end of a remapped link is named by its path.
  HABMBlock* opm = sub("opm");
  opm->createAttribute("OPM_NOC", "NMU_MM");
  makeNocInterface(*opm, "nmu", N::MODE_NMU);
  makeNocInterface(*top_, "only_target", N::MODE_NSU);
  makeNocInterface(*top_, "idle1", N::MODE_NSU);
  makeNocInterface(*top_, "idle2", N::MODE_VNMU);
  link("opm/nmu", "only_target");
  top_->createNocConnection("opm/nmu", "gone", true)->setRemaps({HABMAddrRemap(0x0, 0x1000, 0x1000)});
  EXPECT_EQ(briefs(Checker::validate_noc_connections),
            (Briefs{"483 /opm/nmu /gone", "491 /idle1", "491 /idle2"}));
}

TEST_F(HABMChecker, DuplicatePathsStopThePathRules) {
  makeNocInterface(*top_, "n", N::MODE_NMU);
  makeNocInterface(*top_, "s", N::MODE_NSU);
  for (char const* v : {"v1", "v2"}) {
    makeNocInterface(*top_, v, N::MODE_VNMU);
    link("n", v);
    link(v, "s");
  }
  rsw("inner", rsw("outer"));  // a nested region, which a later stage would report
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"527 /n /s"}));
}

// A static NMU "n" reaches the NSU inside region "rp" through its VNMU "vm"; the primary link vm -> core/s
// lies inside the region, so the static part does not own the path.
TEST_F(HABMChecker, RegionNoticesLeaveTheOwnershipStageRunningAndANestedRegionStopsIt) {
  HABMBlock* rp = rsw("rp");
  rp->createGeneric("DEPTH", "4");
  makeNocInterface(*top_, "n", N::MODE_NMU);
  makeNocInterface(*rp, "vm", N::MODE_VNMU);
  makeNocInterface(*sub("core", rp), "s", N::MODE_NSU)->setApertures({HABMAddrAperture(0x0, 0x10000)});
  link("n", "rp/vm");
  link("vm", "core/s", rp);
  Outcome const out = run(Checker::validate_noc_paths, *top_);
  EXPECT_FALSE(out.passed);
  EXPECT_EQ(out.briefs, (Briefs{"544 /rp", "553 vm /rp", "631 /n /rp/core/s"}));
  EXPECT_EQ(out.masks, (std::vector<unsigned int>{0x10000000U, 0x10000000U, 0x20000000U}));

  rsw("inner", rp);
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"559 /rp/inner", "544 /rp", "553 vm /rp"}));
}

TEST_F(HABMChecker, ARegionThatOnlyPassesTrafficThroughIsReportedUnlessNested) {
  HABMBlock* outer = rsw("outer");
  for (HABMBlock* region : {outer, rsw("inner", outer)}) {
    makeNocInterface(*region, "in", N::MODE_VNSU, N::PROTOCOL_AXIS);
    makeNocInterface(*region, "out", N::MODE_VNMU, N::PROTOCOL_AXIS);
    link("in", "out", region);
  }
  EXPECT_EQ(briefs(Checker::validate_noc_paths),
            (Briefs{"559 /outer/inner", "575 /outer /outer/in /outer/out"}));
}

// A region that sends from core/nmu through its VNSU "out", the primary link held inside the region.
HABMBlock* sendingRegion(HABMBlock& top, std::string const& name) {
  HABMBlock* region = top.createSubBlock(name, name, false);
  region->setBlockRsw(true);
  makeNocInterface(*region->createSubBlock("core", "core", false), "nmu", N::MODE_NMU, N::PROTOCOL_AXIS);
  makeNocInterface(*region, "out", N::MODE_VNSU, N::PROTOCOL_AXIS);
  region->createNocConnection("core/nmu", "out", true);
  return region;
}

TEST_F(HABMChecker, OwnershipOfPathsBetweenRegionsAndTheStaticPart) {
  {  // regions into one static NSU
    auto top = HABMBlock::createTopBlock("top");
    makeNocInterface(*top, "s", N::MODE_NSU, N::PROTOCOL_AXIS);
    for (char const* name : {"r1", "r2"}) {
      sendingRegion(*top, name);
      top->createNocConnection(std::string(name) + "/out", "s", true);
    }
    EXPECT_EQ(run(Checker::validate_noc_paths, *top).briefs, (Briefs{"651 /s"}));
    top->removeSubBlock("r2");
    EXPECT_TRUE(run(Checker::validate_noc_paths, *top).passed);  // one region may own its way out
  }
  {  // from one region into another
    auto top = HABMBlock::createTopBlock("top");
    sendingRegion(*top, "r1");
    HABMBlock* r2 = top->createSubBlock("r2", "r2", false);
    r2->setBlockRsw(true);
    makeNocInterface(*r2, "in", N::MODE_VNMU, N::PROTOCOL_AXIS);
    makeNocInterface(*r2->createSubBlock("core", "core", false), "nsu", N::MODE_NSU, N::PROTOCOL_AXIS);
    r2->createNocConnection("in", "core/nsu", true);
    top->createNocConnection("r1/out", "r2/in", true);
    EXPECT_EQ(run(Checker::validate_noc_paths, *top).briefs, (Briefs{"621 /r1/core/nmu /r2/core/nsu"}));
  }
  // An incomplete path is excused when its region arrives at run time.
  makeNocInterface(*top_, "n", N::MODE_NMU, N::PROTOCOL_AXIS);
  makeNocInterface(*rsw("rp"), "v", N::MODE_VNSU, N::PROTOCOL_AXIS);
  link("n", "rp/v");
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"611 /n /rp/v"}));
  top_->getSubBlock("rp")->setBlockStub(true);
  EXPECT_TRUE(briefs(Checker::validate_noc_paths).empty());
}

// A stream NMU "n" of the block design (on block "bd") with direct links to NSUs on block "ep".
class HABMStreamFanout : public HABMChecker {
 protected:
  void endpoint(std::string const& name, std::string const& tdest, HABMBlock* on = nullptr) {
    N* nsu = makeNocInterface(on != nullptr ? *on : *ep_, name, N::MODE_NSU, N::PROTOCOL_AXIS);
    nsu->setTdestWidth("5");
    EXPECT_TRUE(nsu->setTdestId(tdest)) << tdest;
    link("bd/n", nsu->getPath().substr(1));
  }

  HABMBlock* bd_ = sub("bd");
  HABMBlock* ep_ = sub("ep");
  N* nmu_ = makeNocInterface(*bd_, "n", N::MODE_NMU, N::PROTOCOL_AXIS);
};

TEST_F(HABMStreamFanout, DestinationIdsMustBeSetAndDisjoint) {
  endpoint("s0", "");
  EXPECT_TRUE(run(Checker::validate_noc_paths, *top_).passed);  // no fan-out yet
  for (auto const& [name, tdest] : {std::pair{"s1", "1:3"}, {"s2", "0x3:4"}, {"s4", "0:1"}}) {
    endpoint(name, tdest);
  }
  EXPECT_EQ(briefs(Checker::validate_noc_paths),
            (Briefs{"746 /ep/s0 ", "738 /bd/n /ep/s2 0x3", "738 /bd/n /ep/s4 0x1"}));
  // A range over several taken ones gives one finding per taken id, and takes the ids between them.
  endpoint("s5", "6:7");
  endpoint("s6", "0:9");
  endpoint("s7", "5");
  Briefs const found = briefs(Checker::validate_noc_paths);
  EXPECT_EQ(Briefs(found.begin() + 3, found.end()),
            (Briefs{"738 /bd/n /ep/s6 0x0", "738 /bd/n /ep/s6 0x1", "738 /bd/n /ep/s6 0x2",
                    "738 /bd/n /ep/s6 0x3", "738 /bd/n /ep/s6 0x4", "738 /bd/n /ep/s6 0x6",
                    "738 /bd/n /ep/s6 0x7", "738 /bd/n /ep/s7 0x5"}));
}

// A file may claim ids of any width: two endpoints that share 2^80 ids are reported in bounded time.
TEST_F(HABMStreamFanout, HugeOverlapsAreReportedUpToALimit) {
  for (char const* name : {"s1", "s2"}) {
    N* nsu = makeNocInterface(*ep_, name, N::MODE_NSU, N::PROTOCOL_AXIS);
    nsu->setTdestWidth("96");
    EXPECT_TRUE(nsu->setTdestId("0:0xFFFF_FFFF_FFFF_FFFF_FFFF"));
    link("bd/n", std::string("ep/") + name);
  }
  EXPECT_EQ(briefs(Checker::validate_noc_paths).size(), 4096U);
}

TEST_F(HABMStreamFanout, SeventeenEndpointsAreTooManyAndTheIdChecksGoOn) {
  for (int i = 1; i <= 16; ++i) {
    endpoint("s" + std::to_string(i), std::to_string(i % 16));
  }
  EXPECT_TRUE(run(Checker::validate_noc_paths, *top_).passed);
  endpoint("s17", "0x1");
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"696 /bd/n 16", "738 /bd/n /ep/s17 0x1"}));
}

TEST_F(HABMStreamFanout, EndpointsBehindAnInterNetworkLinkCountOnce) {
  N* ini = makeNocInterface(*ep_, "ini", N::MODE_VNSU, N::PROTOCOL_AXIS, N::CATEGORY_INI);
  ini->setTdestWidth("5");
  ini->setTdestId("1");
  link("bd/n", "ep/ini");
  for (char const* name : {"a", "b"}) {
    makeNocInterface(*ep_, name, N::MODE_NSU, N::PROTOCOL_AXIS)->setTdestWidth("5");
    ep_->getNocInterface(name)->setTdestId("1");
    link("ep/ini", std::string("ep/") + name);
  }
  EXPECT_TRUE(run(Checker::validate_noc_paths, *top_).passed);
  endpoint("z", "1");
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"738 /bd/n /ep/z 0x1"}));
}

TEST_F(HABMStreamFanout, TheStructuralFlowSwitchesABlockDesignNmuBetweenTwoRules) {
  HABMBlock* opm = sub("opm");
  opm->createAttribute("OPM_NOC", "NSU_STRM");
  endpoint("s1", "1");
  endpoint("o1", "2", opm);
  struct Case {
    char const* structural;
    char const* nxm;
    Briefs found;
  } const cases[] = {{"false", "true", {"722 /bd/n /opm/o1"}},
                     {"true", "false", {"722 /bd/n /opm/o1"}},
                     {"true", "true", {"758 /bd/n"}}};
  for (Case const& c : cases) {
    HPAParamOverride structural("bd.noc.nxm_streaming_structural_rtl_mux", c.structural);
    HPAParamOverride nxm("project.enableMNocNxMFlow", c.nxm);
    EXPECT_EQ(briefs(Checker::validate_noc_paths), c.found) << c.structural << c.nxm;
  }
  // With two endpoints of its own the block design may fan out to OPM modules as well.
  endpoint("s2", "3");
  HPAParamOverride structural("bd.noc.nxm_streaming_structural_rtl_mux", "true");
  HPAParamOverride nxm("project.enableMNocNxMFlow", "true");
  EXPECT_TRUE(briefs(Checker::validate_noc_paths).empty());
}

// The checks take the far ends of interfaces and the paths of regions from one index of the links; it must
// agree with what each interface and each block finds for itself, whatever block holds a link.
TEST(HABMNocLinks, AgreeWithThePerInterfaceSearchesOnRandomTrees) {
  std::mt19937 random(7);
  auto const pick = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
  for (int round = 0; round < 40; ++round) {
    auto top = HABMBlock::createTopBlock("top");
    std::vector<HABMBlock*> blocks = {top.get()};
    for (int i = 0; i < 12; ++i) {
      blocks.push_back(blocks[pick(blocks.size())]->createSubBlock("b" + std::to_string(i), "m", false));
    }
    std::vector<N*> ifaces;
    for (int i = 0; i < 16; ++i) {
      auto const mode = static_cast<N::NocMode>(pick(4));
      ifaces.push_back(makeNocInterface(*blocks[pick(blocks.size())], "i" + std::to_string(i), mode));
    }
    // Links held by a random block: an end outside the holder's subtree is a dead end.
    for (int i = 0; i < 30; ++i) {
      HABMBlock* holder = blocks[pick(blocks.size())];
      std::string const prefix = holder == top.get() ? "/" : holder->getInstancePath() + "/";
      auto const relative = [&](N const* iface) {
        std::string const path = iface->getPath();
        return path.compare(0, prefix.size(), prefix) == 0 ? path.substr(prefix.size()) : "x/none";
      };
      HABMNocConnection* connection = holder->createNocConnection("", true);
      connection->setSourcePath(relative(ifaces[pick(ifaces.size())]));
      connection->setTargetPath(relative(ifaces[pick(ifaces.size())]));
    }
    habm_detail::NocLinks const fromTop(*top);
    for (HABMBlock const* checked : blocks) {
      habm_detail::NocLinks const links(*checked);
      for (N const* iface : checked->findNocInterfaces("", true, false)) {
        std::vector<N*> sources = links.driversOf(iface);
        std::vector<N*> targets;
        for (auto const& link : links.drivenBy(iface)) {
          if (link.target != nullptr) {
            targets.push_back(link.target);
          }
        }
        std::vector<N*> expectedSources = iface->getSourceInterfaces();
        std::vector<N*> expectedTargets = iface->getTargetInterfaces();
        for (auto* list : {&sources, &expectedSources, &targets, &expectedTargets}) {
          std::sort(list->begin(), list->end());
        }
        EXPECT_EQ(sources, expectedSources) << iface->getPath();
        EXPECT_EQ(targets, expectedTargets) << iface->getPath();
      }
      EXPECT_TRUE(fromTop.paths(*checked) == HABMNocPath::createNocPaths(checked))
          << checked->getInstancePath();
    }
  }
}

// No rule set walks the tree by recursion: a hierarchy 100,000 levels deep is checked whole.
TEST(HABMCheckerDepth, AHundredThousandLevelsAreCheckedWithoutRecursion) {
  auto top = HABMBlock::createTopBlock("top");
  std::vector<HABMBlock*> chain = {top.get()};
  for (int i = 0; i < 100000; ++i) {
    chain.push_back(chain.back()->createSubBlock("u", "m", false));
  }
  chain.back()->setBlockStub(true);
  makeNocInterface(*chain.back(), "n", N::MODE_NMU);
  ComMsgCapture capture;
  EXPECT_TRUE(HABMBlockChecker::validate_all(*top));
  ASSERT_EQ(capture.records().size(), 2U);
  EXPECT_EQ(capture.records()[0].line, 101);
  EXPECT_EQ(capture.records()[1].line, 491);
  // Destroyed from the bottom up: a block's destructor destroys its sub-blocks by recursion.
  for (std::size_t i = chain.size() - 1; i > 0; --i) {
    chain[i - 1]->removeSubBlock("u");
  }
}

}  // namespace
