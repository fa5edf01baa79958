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
#include <functional>
#include <optional>
#include <ostream>
#include <random>

namespace {

using N = HABMNocInterface;
using habm_test::makeNocInterface;

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

// One finding as a rule set made it: the rule's number and its own text.
struct Found {
  int rule;
  std::string text;
  bool operator==(Found const& o) const { return rule == o.rule && text == o.text; }
};
void PrintTo(Found const& f, std::ostream* out) {
  *out << f.rule << ":" << f.text;
}

struct Outcome {
  bool passed;
  std::vector<Found> found;
  std::vector<unsigned int> masks;

  std::vector<int> rules() const {
    std::vector<int> out;
    for (Found const& f : found) {
      out.push_back(f.rule);
    }
    return out;
  }
};

// Runs one rule set; nothing may reach the listeners before validate_all sends.
Outcome run(RuleSet set, HABMBlock const& block) {
  ComMsgCapture capture;
  std::vector<ComMsgMgrInstance> messages;
  Outcome out{set(block, messages), {}, {}};
  EXPECT_TRUE(capture.records().empty());
  for (ComMsgMgrInstance const& m : messages) {
    ComMsgRecord const& r = m.getRecord();
    EXPECT_EQ(r.args.size(), 2U);
    EXPECT_EQ(r.args.front(), block.getModuleName());
    out.found.push_back({r.line, r.args.back()});
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

  auto const& records = capture.records();
  ASSERT_EQ(records.size(), 9U);
  std::vector<std::string> progress;
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(records[i].shape, ComMsgShape::SCOPED_TRACE);
    EXPECT_EQ(records[i].mask, 0x1000000U);
    progress.push_back(records[i].text);
  }
  EXPECT_EQ(progress, (std::vector<std::string>{"Validating block stubs for block instance '/'...\n",
                                                "Validating RSW blocks for block instance '/'...\n",
                                                "Validating OPM connections for block instance '/'...\n",
                                                "Validating NOC interfaces for block instance '/'...\n",
                                                "Validating NOC connections for block instance '/'...\n",
                                                "Validating RSW rules for block instance '/'...\n"}));
  struct Expected {
    int rule;
    char const* format;
    unsigned int mask;
    char const* text;
  } const expected[] = {
      {101, "@90-10@%s%s", 0x10000000U,
       "Design rule notice on module 'top': Found instance '/u0' with unresolved module 'm_u0'."},
      {136, "@90-6@%s%s", 0x20000000U,
       "Design rule violation on module 'top': Found unsupported mix of BDI '/r0' and RTL '/r1' RSW "
       "implementations. Please refactor to use one RSW implementation only."},
      {491, "@90-10@%s%s", 0x10000000U,
       "Design rule notice on module 'top': NOC interface '/lonely' is currently unconnected. Please connect "
       "all NOC interfaces before implementing design."},
  };
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    ComMsgRecord const& r = records[6 + i];
    EXPECT_EQ(r.shape, ComMsgShape::DEFERRED);
    EXPECT_EQ(r.file, "HABMBlockChecker");
    EXPECT_EQ(r.domain, "blockmodel");
    EXPECT_EQ(r.line, expected[i].rule);
    EXPECT_EQ(r.format, expected[i].format);
    EXPECT_EQ(r.mask, expected[i].mask);
    EXPECT_EQ(r.text, expected[i].text);
  }
}

TEST_F(HABMChecker, BlockStubsAreReportedByKindThenByPathAndNeverFail) {
  EXPECT_EQ(run(Checker::validate_block_stubs, *top_).found, std::vector<Found>());
  top_->setBlockStub(true);
  HABMBlock* moduleRef = sub("b_mref");
  moduleRef->setModuleVlnv("acme:module_ref:mref:1.0");
  HABMBlock* rswRef = rsw("a_rsw");
  rswRef->setModuleVlnv("acme:blockdesign_ref:rswref:1.0");
  HABMBlock* designRef = sub("c_bdr");
  designRef->setModuleVlnv("acme:BlockDesign_Ref:bdr:1.0");
  HABMBlock* nested = sub("e", sub("d"));
  HABMBlock* plain = sub("z");
  for (HABMBlock* stub : {moduleRef, rswRef, designRef, nested, plain}) {
    stub->setBlockStub(true);
  }
  rsw("r");  // a region that is no stub: nothing

  Outcome const out = run(Checker::validate_block_stubs, *top_);
  EXPECT_TRUE(out.passed);
  EXPECT_EQ(out.found, (std::vector<Found>{
                           {72,
                            " Found instance '/b_mref' with unresolved module reference 'm_b_mref'. Modular "
                            "NOC flow does not support NOC OPMs inside module reference."},
                           {82,
                            " Found instance '/a_rsw' with unresolved RSW region 'm_a_rsw'. RSW region must "
                            "be provided at runtime."},
                           {92, " Found instance '/c_bdr' with unresolved block design reference 'm_c_bdr'."},
                           {101, " Found instance '/' with unresolved module 'top'."},
                           {101, " Found instance '/d/e' with unresolved module 'm_e'."},
                           {101, " Found instance '/z' with unresolved module 'm_z'."},
                       }));
  // The first two are lowered to information.
  EXPECT_EQ(out.masks, (std::vector<unsigned int>{0x8000000U, 0x8000000U, 0x10000000U, 0x10000000U,
                                                  0x10000000U, 0x10000000U}));
}

TEST_F(HABMChecker, RegionsMustShareOneImplementationKindAndTheTopBlockDoesNotCount) {
  auto const designReference = [](HABMBlock* b) { b->setModuleVlnv("acme:blockdesign_ref:x:1.0"); };
  top_->setBlockRsw(true);
  designReference(rsw("b0"));
  designReference(rsw("b1"));
  Outcome out = run(Checker::validate_rsw_blocks, *top_);
  EXPECT_TRUE(out.passed);
  EXPECT_TRUE(out.found.empty());

  HABMBlock* p = top_->getSubBlock("b0");
  rsw("q", p);
  rsw("s");
  out = run(Checker::validate_rsw_blocks, *top_);
  EXPECT_FALSE(out.passed);
  // Search order: a sub-block's own finds before the direct sub-blocks.
  EXPECT_EQ(out.found, (std::vector<Found>{{136,
                                            " Found unsupported mix of BDI '/b0, /b1' and RTL '/b0/q, /s' "
                                            "RSW implementations. Please refactor to use one RSW "
                                            "implementation only."}}));
}

// A logic block "logic" whose M_AXI feeds the bus interface S_AXI of "opm", an OPM NoC module.
TEST_F(HABMChecker, BusWidthsAcrossAnOpmModuleAreComparedAsText) {
  struct Case {
    char const* name;
    bool logicIsOpm;
    std::vector<std::pair<char const*, char const*>> logicValues;  // parameters, or generics on an OPM
    char const* target;
    std::vector<Found> found;
  };
  Case const cases[] = {
      {"equal", false, {{"ADDR_WIDTH", "64"}, {"DATA_WIDTH", "128"}}, "opm/S_AXI", {}},
      {"one end only", false, {{"DATA_WIDTH", ""}}, "opm/S_AXI", {}},
      {"dead end", false, {{"DATA_WIDTH", "32"}}, "opm/NOPE", {}},
      {"both differ, in name order",
       false,
       {{"DATA_WIDTH", "32"}, {"ADDR_WIDTH", "0x40"}},
       "opm/S_AXI",
       {{208,
         " Parameter 'ADDR_WIDTH' values differ from source interface '/logic/M_AXI' (value=0x40) to target "
         "interface '/opm/S_AXI' (value=64)."},
        {208,
         " Parameter 'DATA_WIDTH' values differ from source interface '/logic/M_AXI' (value=32) to target "
         "interface '/opm/S_AXI' (value=128)."}}},
      {"two OPM modules: generics on both ends",
       true,
       {{"DATA_WIDTH", "256"}},
       "opm/S_AXI",
       {{208,
         " Parameter 'DATA_WIDTH' values differ from source interface '/logic/M_AXI' (value=256) to target "
         "interface '/opm/S_AXI' (value=128)."}}},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.name);
    auto top = HABMBlock::createTopBlock("top");
    HABMBlock* opm = top->createSubBlock("opm", "opm", false);
    opm->createAttribute("OPM_NOC", "NSU_MM");
    opm->createGeneric("ADDR_WIDTH", "64");
    opm->createGeneric("DATA_WIDTH", "128");
    opm->createInterface("S_AXI", false)
        ->createParameter("DATA_WIDTH", "9");  // an OPM's own say is its generic
    HABMBlock* logic = top->createSubBlock("logic", "logic", false);
    HABMInterface* master = logic->createInterface("M_AXI", false);
    if (c.logicIsOpm) {
      logic->createAttribute("OPM_NOC", "NMU_MM");
    }
    for (auto const& [name, value] : c.logicValues) {
      if (c.logicIsOpm) {
        logic->createGeneric(name, value);
      } else {
        master->createParameter(name, value);
      }
    }
    HABMInterfaceConnection* connection = top->createInterfaceConnection("", true);
    connection->setSourcePath("logic/M_AXI");
    connection->setTargetPath(c.target);
    Outcome const out = run(Checker::validate_opm_connections, *top);
    EXPECT_EQ(out.found, c.found);
    EXPECT_EQ(out.passed, c.found.empty());
  }
  // Without an OPM module the same mismatch is not this rule's business.
  auto top = HABMBlock::createTopBlock("top");
  top->createSubBlock("a", "a", false)->createInterface("M", false)->createParameter("DATA_WIDTH", "32");
  top->createSubBlock("b", "b", false)->createInterface("S", false)->createParameter("DATA_WIDTH", "64");
  top->createInterfaceConnection("", true)->setSourcePath("a/M");
  top->getInterfaceConnections().front()->setTargetPath("b/S");
  EXPECT_TRUE(run(Checker::validate_opm_connections, *top).found.empty());
}

TEST_F(HABMChecker, LogicTargetAperturesMustBeLargeAlignedPowersOfTwo) {
  struct Case {
    N::NocMode mode;
    N::NocCategory category;
    unsigned int base;
    unsigned int range;
    std::vector<int> rules;
  } const cases[] = {
      {N::MODE_NSU, N::CATEGORY_PL, 0x1000, 0x3000, {237, 243, 249}},
      {N::MODE_NSU, N::CATEGORY_PL, 0x10000, 0x10000, {}},
      {N::MODE_NSU, N::CATEGORY_PL, 0x8000, 0x10000, {249}},
      {N::MODE_NSU, N::CATEGORY_PL, 0x0, 0x20000, {}},
      {N::MODE_NSU, N::CATEGORY_PL, 0x0, 0x8000, {243}},
      {N::MODE_NSU, N::CATEGORY_DDR, 0x1000, 0x100, {}},
      {N::MODE_NMU, N::CATEGORY_PL, 0x1000, 0x100, {}},
      {N::MODE_VNSU, N::CATEGORY_PL, 0x1000, 0x100, {}},
  };
  for (Case const& c : cases) {
    auto top = HABMBlock::createTopBlock("top");
    N* iface =
        makeNocInterface(*top->createSubBlock("u", "u", false), "t", c.mode, N::PROTOCOL_AXIMM, c.category);
    iface->setApertures({HABMAddrAperture(c.base, c.range)});
    Outcome const out = run(Checker::validate_noc_interfaces, *top);
    EXPECT_EQ(out.rules(), c.rules) << std::hex << c.base << " " << c.range;
    EXPECT_EQ(out.passed, c.rules.empty());
  }
  auto top = HABMBlock::createTopBlock("top");
  makeNocInterface(*top, "t", N::MODE_NSU)->setApertures({HABMAddrAperture(0x1000, 0x3000)});
  EXPECT_EQ(run(Checker::validate_noc_interfaces, *top).found,
            (std::vector<Found>{
                {237,
                 " NOC interface '/t' has invalid aperture '0x1000:0x3FFF'. Range '0x3000' must be a "
                 "power-of-two value."},
                {243,
                 " NOC interface '/t' has invalid aperture '0x1000:0x3FFF'. Range '0x3000' must be greater "
                 "than or equal to 64K."},
                {249,
                 " NOC interface '/t' has invalid aperture '0x1000:0x3FFF'. Base address '0x1000' must be a "
                 "multiple of the range '0x3000'."},
            }));
}

TEST_F(HABMChecker, ParameterValuesAreCheckedLowerCasedAndReportedInNameOrder) {
  struct Case {
    char const* name;
    char const* value;
    bool valid;
  } const cases[] = {
      {"DATA_WIDTH", "512", true},
      {"DATA_WIDTH", "1024", false},
      {"READ_TRAFFIC_CLASS", "LOW_LATENCY", true},
      {"WRITE_TRAFFIC_CLASS", "LOW_LATENCY", false},
      {"WRITE_TRAFFIC_CLASS", "Isochronous", true},
      {"SIDEBAND_PINS", "TRUE", true},
      {"SIDEBAND_PINS", "maybe", false},
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
  EXPECT_EQ(run(Checker::validate_noc_interfaces, *top_).found,
            (std::vector<Found>{
                {328,
                 " NOC interface '/n' parameter ' DATA_WIDTHs invalid value '1024'. Valid values are: '32', "
                 "'64', '128', '256', '512'."},
                {328,
                 " NOC interface '/n' parameter ' WRITE_TRAFFIC_CLASSs invalid value 'low_latency'. Valid "
                 "values are: 'best_effort', 'isochronous'."},
            }));
}

// One interface "x" of a mode, and the ends it fans in from or out to, all on sub-blocks of the top block.
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
    std::vector<int> rules;
    char const* list;  // a part of the first finding's text
  } const cases[] = {
      {N::MODE_NMU, false, {}, {{"v1", N::MODE_VNMU}, {"v2", N::MODE_VNMU}}, {415}, "'/e/v1, /e/v2'"},
      {N::MODE_NMU, false, {}, {{"v1", N::MODE_VNMU}, {"w1", N::MODE_VNSU}}, {422}, "'/e/v1, /e/w1'"},
      {N::MODE_NMU, false, {}, {{"v1", N::MODE_VNMU}, {"s1", N::MODE_NSU}}, {}, ""},
      {N::MODE_NMU, false, {}, {{"v1", N::MODE_VNMU}, {"i1", N::MODE_VNMU, N::CATEGORY_INI}}, {}, ""},
      {N::MODE_NSU, false, {{"w1", N::MODE_VNSU}, {"w2", N::MODE_VNSU}}, {}, {439}, "'/e/w1, /e/w2'"},
      {N::MODE_NSU, false, {{"w1", N::MODE_VNSU}, {"v1", N::MODE_VNMU}}, {}, {446}, "'/e/v1, /e/w1'"},
      {N::MODE_UNKNOWN, false, {{"w1", N::MODE_VNSU}, {"w2", N::MODE_VNSU}}, {}, {439}, "'/e/w1, /e/w2'"},
      {N::MODE_VNMU,
       false,
       {{"n1", N::MODE_NMU}, {"n2", N::MODE_NMU}},
       {},
       {344},
       "'/x' has too many source"},
      {N::MODE_VNMU, true, {}, {{"v1", N::MODE_VNMU}, {"v2", N::MODE_VNMU}}, {355}, "'/e/v1, /e/v2'"},
      {N::MODE_VNMU, false, {}, {{"w1", N::MODE_VNSU}, {"v1", N::MODE_VNMU}}, {362}, "'/e/v1, /e/w1'"},
      {N::MODE_VNSU, false, {{"w1", N::MODE_VNSU}, {"w2", N::MODE_VNSU}}, {}, {378}, "'/e/w1, /e/w2'"},
      {N::MODE_VNSU, false, {{"v1", N::MODE_VNMU}, {"w1", N::MODE_VNSU}}, {}, {385}, "'/e/v1, /e/w1'"},
      {N::MODE_VNSU, true, {}, {{"s1", N::MODE_NSU}, {"s2", N::MODE_NSU}}, {393}, "'/x' has too many target"},
      {N::MODE_VNSU, false, {}, {{"s1", N::MODE_NSU}, {"s2", N::MODE_NSU}}, {}, ""},
  };
  for (Case const& c : cases) {
    auto top = HABMBlock::createTopBlock("top");
    makeNocInterface(*top, "x", c.mode)->setEditable(c.editable);
    HABMBlock* ends = top->createSubBlock("e", "e", false);
    for (End const& e : c.sources) {
      makeNocInterface(*ends, e.name, e.mode, N::PROTOCOL_AXIMM, e.category);
      top->createNocConnection(std::string("e/") + e.name, "x", true);
    }
    for (End const& e : c.targets) {
      makeNocInterface(*ends, e.name, e.mode, N::PROTOCOL_AXIMM, e.category);
      top->createNocConnection("x", std::string("e/") + e.name, true);
    }
    Outcome const out = run(Checker::validate_noc_interfaces, *top);
    ASSERT_EQ(out.rules(), c.rules) << N::decodeNocMode(c.mode) << " " << c.list;
    EXPECT_EQ(out.passed, c.rules.empty());
    if (!out.found.empty()) {
      EXPECT_NE(out.found.front().text.find(c.list), std::string::npos) << out.found.front().text;
    }
  }
}

// Links drawn above the checked block still fan its interfaces out.
TEST_F(HABMChecker, FanRulesSeeLinksHeldAboveTheCheckedBlock) {
  HABMBlock* a = sub("a");
  makeNocInterface(*a, "n", N::MODE_NMU);
  makeNocInterface(*a, "v1", N::MODE_VNMU);
  makeNocInterface(*a, "v2", N::MODE_VNMU);
  link("a/n", "a/v1");
  link("a/n", "a/v2");
  EXPECT_EQ(run(Checker::validate_noc_interfaces, *a).found,
            (std::vector<Found>{{415,
                                 " NOC interface '/a/n' exports multiple VNMU interfaces '/a/v1, /a/v2'. "
                                 "Please export single VNMU interface only."}}));
}

TEST_F(HABMChecker, RemapsAcrossOpmModulesAndUnconnectedInterfacesAreNotices) {
  EXPECT_TRUE(run(Checker::validate_noc_connections, *top_).found.empty());
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
    if (c.sourceOnOpm) {
      s->createAttribute("OPM_NOC", "NMU_MM");
    }
    if (c.targetOnOpm) {
      t->createAttribute("OPM_NOC", "NSU_MM");
    }
    makeNocInterface(*s, "nmu", N::MODE_NMU, N::PROTOCOL_AXIMM, c.source);
    makeNocInterface(*t, "nsu", N::MODE_NSU, N::PROTOCOL_AXIMM, c.target);
    HABMNocConnection* connection = top->createNocConnection("s/nmu", "t/nsu", true);
    if (c.remaps) {
      connection->setRemaps({HABMAddrRemap(0x1000, 0x0, 0x1000)});
    }
    Outcome const out = run(Checker::validate_noc_connections, *top);
    EXPECT_TRUE(out.passed);
    std::vector<Found> const remapNotice = {{483,
                                             " NOC connection '/s/nmu'-->'/t/nsu' has non-PL remap(s) which "
                                             "is not fully supported.  Beware of remap issues in hardware."}};
    EXPECT_EQ(out.found, c.reported ? remapNotice : std::vector<Found>());
  }

  // Either end of a link connects an interface; a dead end of a remapped link is named by its path.
  HABMBlock* opm = sub("opm");
  opm->createAttribute("OPM_NOC", "NMU_MM");
  makeNocInterface(*opm, "nmu", N::MODE_NMU);
  makeNocInterface(*top_, "only_target", N::MODE_NSU);
  makeNocInterface(*top_, "idle1", N::MODE_NSU);
  makeNocInterface(*top_, "idle2", N::MODE_VNMU);
  top_->createNocConnection("opm/nmu", "only_target", true);
  top_->createNocConnection("opm/nmu", "gone", true)->setRemaps({HABMAddrRemap(0x0, 0x1000, 0x1000)});
  Outcome const out = run(Checker::validate_noc_connections, *top_);
  EXPECT_TRUE(out.passed);
  EXPECT_EQ(out.rules(), (std::vector<int>{483, 491, 491}));
  EXPECT_NE(out.found[0].text.find("'/opm/nmu'-->'/gone'"), std::string::npos);
  EXPECT_NE(out.found[1].text.find("'/idle1'"), std::string::npos);
  EXPECT_NE(out.found[2].text.find("'/idle2'"), std::string::npos);
}

TEST_F(HABMChecker, DuplicatePathsStopThePathRules) {
  makeNocInterface(*top_, "n", N::MODE_NMU);
  makeNocInterface(*top_, "v1", N::MODE_VNMU);
  makeNocInterface(*top_, "v2", N::MODE_VNMU);
  makeNocInterface(*top_, "s", N::MODE_NSU);
  for (char const* v : {"v1", "v2"}) {
    link("n", v);
    link(v, "s");
  }
  rsw("inner", rsw("outer"));  // a nested region, which the later stages would report
  Outcome const out = run(Checker::validate_noc_paths, *top_);
  EXPECT_FALSE(out.passed);
  EXPECT_EQ(out.found, (std::vector<Found>{{527,
                                            " Multiple NOC paths exist from NOC interface '/n' to NOC "
                                            "interface '/s'. Please ensure a single NOC path exists."}}));
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
  Outcome out = run(Checker::validate_noc_paths, *top_);
  EXPECT_FALSE(out.passed);
  EXPECT_EQ(
      out.found,
      (std::vector<Found>{
          {544,
           " RP instance '/rp' exports one or more configurable generics. RP instance configurations "
           "are static in RSW flows."},
          {553,
           " Addressable NOC interface 'vm' on RP instance '/rp' must specify one or more address "
           "apertures for RSW verification."},
          {631,
           " RSW path from static NOC interface '/n' to dynamic NOC interface '/rp/core/s' must be owned "
           "by the static region."},
      }));
  EXPECT_EQ(out.masks.front(), 0x10000000U);

  rsw("inner", rp);
  out = run(Checker::validate_noc_paths, *top_);
  EXPECT_EQ(out.rules(), (std::vector<int>{559, 544, 553}));
  EXPECT_EQ(out.found.front().text, " Nested RP instance '/rp/inner' is unsupported.");
}

TEST_F(HABMChecker, ARegionThatOnlyPassesTrafficThroughIsReportedUnlessNested) {
  HABMBlock* outer = rsw("outer");
  for (HABMBlock* region : {outer, rsw("inner", outer)}) {
    makeNocInterface(*region, "in", N::MODE_VNSU, N::PROTOCOL_AXIS);
    makeNocInterface(*region, "out", N::MODE_VNMU, N::PROTOCOL_AXIS);
    link("in", "out", region);
  }
  Outcome const out = run(Checker::validate_noc_paths, *top_);
  EXPECT_EQ(out.found, (std::vector<Found>{
                           {559, " Nested RP instance '/outer/inner' is unsupported."},
                           {575,
                            " NOC path through RP instance '/outer' has unsupported passthrough from NOC "
                            "interface '/outer/in' to NOC interface '/outer/out'. Each RP instance must "
                            "contain a valid NOC endpoint."},
                       }));
}

TEST_F(HABMChecker, OwnershipOfPathsBetweenRegionsAndTheStaticPart) {
  // Region i sends from core/nmu through its VNSU "out", the primary link held inside the region.
  auto const sender = [&](HABMBlock& top, std::string const& name) {
    HABMBlock* region = top.createSubBlock(name, name, false);
    region->setBlockRsw(true);
    makeNocInterface(*region->createSubBlock("core", "core", false), "nmu", N::MODE_NMU, N::PROTOCOL_AXIS);
    makeNocInterface(*region, "out", N::MODE_VNSU, N::PROTOCOL_AXIS);
    region->createNocConnection("core/nmu", "out", true);
    return region;
  };
  {  // two regions into one static NSU
    auto top = HABMBlock::createTopBlock("top");
    makeNocInterface(*top, "s", N::MODE_NSU, N::PROTOCOL_AXIS);
    for (char const* name : {"r1", "r2"}) {
      sender(*top, name);
      top->createNocConnection(std::string(name) + "/out", "s", true);
    }
    EXPECT_EQ(run(Checker::validate_noc_paths, *top).found,
              (std::vector<Found>{{651,
                                   " RSW paths to static NOC interface '/s' must be owned by static region, "
                                   "or must connect from single RP instance only."}}));
    top->removeSubBlock("r2");
    EXPECT_TRUE(run(Checker::validate_noc_paths, *top).passed);
  }
  {  // from one region into another
    auto top = HABMBlock::createTopBlock("top");
    sender(*top, "r1");
    HABMBlock* r2 = top->createSubBlock("r2", "r2", false);
    r2->setBlockRsw(true);
    makeNocInterface(*r2, "in", N::MODE_VNMU, N::PROTOCOL_AXIS);
    makeNocInterface(*r2->createSubBlock("core", "core", false), "nsu", N::MODE_NSU, N::PROTOCOL_AXIS);
    r2->createNocConnection("in", "core/nsu", true);
    top->createNocConnection("r1/out", "r2/in", true);
    EXPECT_EQ(run(Checker::validate_noc_paths, *top).found,
              (std::vector<Found>{{621,
                                   " RSW path from NOC interface '/r1/core/nmu' to NOC interface "
                                   "'/r2/core/nsu' is owned by a dynamic region. Please ensure RSW paths "
                                   "between RP instances are owned by the static region."}}));
  }
  {  // an incomplete path is excused when its region arrives at run time
    auto top = HABMBlock::createTopBlock("top");
    makeNocInterface(*top, "n", N::MODE_NMU, N::PROTOCOL_AXIS);
    HABMBlock* rp = top->createSubBlock("rp", "rp", false);
    rp->setBlockRsw(true);
    makeNocInterface(*rp, "v", N::MODE_VNSU, N::PROTOCOL_AXIS);
    top->createNocConnection("n", "rp/v", true);
    EXPECT_EQ(
        run(Checker::validate_noc_paths, *top).found,
        (std::vector<Found>{{611,
                             " RSW path from NOC interface '/n' to NOC interface '/rp/v' is incomplete. "
                             "A complete RSW path must specify valid begin (NMU) and end (NSU) NOC "
                             "interfaces."}}));
    rp->setBlockStub(true);
    EXPECT_TRUE(run(Checker::validate_noc_paths, *top).found.empty());
  }
}

// A stream NMU "n" of the block design (on block "bd") with direct links to NSUs "s<i>" on block "ep".
class HABMStreamFanout : public HABMChecker {
 protected:
  N* endpoint(std::string const& name, std::string const& tdest, HABMBlock* on = nullptr) {
    N* nsu = makeNocInterface(on != nullptr ? *on : *ep_, name, N::MODE_NSU, N::PROTOCOL_AXIS);
    nsu->setTdestWidth("5");
    EXPECT_TRUE(nsu->setTdestId(tdest)) << tdest;
    top_->createNocConnection("bd/n", relativeToTop(nsu), true);
    return nsu;
  }
  static std::string relativeToTop(N const* iface) { return iface->getPath().substr(1); }

  HABMBlock* bd_ = sub("bd");
  HABMBlock* ep_ = sub("ep");
  N* nmu_ = makeNocInterface(*bd_, "n", N::MODE_NMU, N::PROTOCOL_AXIS);
};

TEST_F(HABMStreamFanout, DestinationIdsMustBeSetAndDisjoint) {
  endpoint("s1", "1:3");
  endpoint("s2", "0x3:4");
  endpoint("s3", "");
  endpoint("s4", "0:1");
  Outcome const out = run(Checker::validate_noc_paths, *top_);
  EXPECT_FALSE(out.passed);
  EXPECT_EQ(out.found, (std::vector<Found>{
                           {738,
                            " NMU interface '/bd/n' connected to NSU interface '/ep/s2' has TDEST_ID overlap "
                            "'0x3'."},
                           {746, " NSU interface '/ep/s3' has invalid TDEST_ID ''."},
                           {738,
                            " NMU interface '/bd/n' connected to NSU interface '/ep/s4' has TDEST_ID overlap "
                            "'0x1'."},
                       }));
  // A range over several taken ones gives one finding per taken id, and takes the ids between them.
  endpoint("s5", "6:7");
  endpoint("s6", "0:9");
  endpoint("s7", "5");
  std::vector<std::string> overlaps;
  for (Found const& f : run(Checker::validate_noc_paths, *top_).found) {
    if (f.rule == 738) {
      overlaps.push_back(f.text.substr(f.text.find("/ep/s"), 6) + f.text.substr(f.text.rfind(" '")));
    }
  }
  EXPECT_EQ(overlaps,
            (std::vector<std::string>{"/ep/s2 '0x3'.", "/ep/s4 '0x1'.", "/ep/s6 '0x0'.", "/ep/s6 '0x1'.",
                                      "/ep/s6 '0x2'.", "/ep/s6 '0x3'.", "/ep/s6 '0x4'.", "/ep/s6 '0x6'.",
                                      "/ep/s6 '0x7'.", "/ep/s7 '0x5'."}));
}

TEST_F(HABMStreamFanout, OneEndpointIsNoFanoutAndSeventeenAreTooMany) {
  endpoint("s0", "");
  EXPECT_TRUE(run(Checker::validate_noc_paths, *top_).passed);
  for (int i = 1; i <= 15; ++i) {
    endpoint("s" + std::to_string(i), std::to_string(i));
  }
  endpoint("s16", "15");
  // The id checks go on after the count.
  EXPECT_EQ(run(Checker::validate_noc_paths, *top_).rules(), (std::vector<int>{696, 746, 738}));
}

TEST_F(HABMStreamFanout, EndpointsBehindAnInterNetworkLinkCountOnce) {
  N* ini = makeNocInterface(*ep_, "ini", N::MODE_VNSU, N::PROTOCOL_AXIS, N::CATEGORY_INI);
  ini->setTdestWidth("5");
  ini->setTdestId("1");
  top_->createNocConnection("bd/n", "ep/ini", true);
  for (char const* name : {"a", "b"}) {
    makeNocInterface(*ep_, name, N::MODE_NSU, N::PROTOCOL_AXIS)->setTdestWidth("5");
    ep_->getNocInterface(name)->setTdestId("1");
    top_->createNocConnection("ep/ini", std::string("ep/") + name, true);
  }
  EXPECT_TRUE(run(Checker::validate_noc_paths, *top_).passed);
  endpoint("z", "1");
  EXPECT_EQ(run(Checker::validate_noc_paths, *top_).found,
            (std::vector<Found>{{738,
                                 " NMU interface '/bd/n' connected to NSU interface '/ep/z' has TDEST_ID "
                                 "overlap '0x1'."}}));
}

TEST_F(HABMStreamFanout, TheStructuralFlowSwitchesABlockDesignNmuBetweenTwoRules) {
  HABMBlock* opm = sub("opm");
  opm->createAttribute("OPM_NOC", "NSU_STRM");
  endpoint("s1", "1");
  endpoint("o1", "2", opm);
  struct Case {
    char const* structural;
    char const* nxm;
    std::vector<int> rules;
  } const cases[] = {{"false", "true", {722}}, {"true", "false", {722}}, {"true", "true", {758}}};
  for (Case const& c : cases) {
    HPAParamOverride structural("bd.noc.nxm_streaming_structural_rtl_mux", c.structural);
    HPAParamOverride nxm("project.enableMNocNxMFlow", c.nxm);
    EXPECT_EQ(run(Checker::validate_noc_paths, *top_).rules(), c.rules) << c.structural << c.nxm;
  }
  EXPECT_NE(run(Checker::validate_noc_paths, *top_).found.front().text.find("'/opm/o1'"), std::string::npos);
  // With two endpoints of its own the block design may fan out to OPM modules as well.
  endpoint("s2", "3");
  HPAParamOverride structural("bd.noc.nxm_streaming_structural_rtl_mux", "true");
  HPAParamOverride nxm("project.enableMNocNxMFlow", "true");
  EXPECT_TRUE(run(Checker::validate_noc_paths, *top_).passed);
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
      HABMBlock* parent = blocks[pick(blocks.size())];
      blocks.push_back(parent->createSubBlock("b" + std::to_string(i), "m", false));
    }
    std::vector<N*> ifaces;
    for (int i = 0; i < 16; ++i) {
      auto const mode = static_cast<N::NocMode>(pick(4));
      ifaces.push_back(makeNocInterface(*blocks[pick(blocks.size())], "i" + std::to_string(i), mode));
    }
    for (int i = 0; i < 30; ++i) {
      N const* source = ifaces[pick(ifaces.size())];
      N const* target = ifaces[pick(ifaces.size())];
      // Held by a common ancestor of both ends (a link resolves only below its holder), or by a block that
      // sees only one end, so that the other end is dead.
      HABMBlock* holder = blocks[pick(blocks.size())];
      std::string const prefix = holder->getInstancePath() == "/" ? "/" : holder->getInstancePath() + "/";
      auto const relative = [&](N const* iface) {
        std::string const path = iface->getPath();
        return path.compare(0, prefix.size(), prefix) == 0 ? path.substr(prefix.size()) : "x/none";
      };
      holder->createNocConnection("", true)->setSourcePath(relative(source));
      holder->getNocConnections(false).back()->setTargetPath(relative(target));
    }
    for (HABMBlock const* checked : blocks) {
      habm_detail::NocLinks const links(*checked);
      for (N const* iface : checked->findNocInterfaces("", true, false)) {
        auto sources = links.driversOf(iface);
        auto expectedSources = iface->getSourceInterfaces();
        std::vector<N*> targets;
        for (auto const& link : links.drivenBy(iface)) {
          if (link.target != nullptr) {
            targets.push_back(link.target);
          }
        }
        auto expectedTargets = iface->getTargetInterfaces();
        for (auto* list : {&sources, &expectedSources, &targets, &expectedTargets}) {
          std::sort(list->begin(), list->end());
        }
        EXPECT_EQ(sources, expectedSources) << iface->getPath();
        EXPECT_EQ(targets, expectedTargets) << iface->getPath();
      }
      habm_detail::NocLinks const fromTop(*top);
      std::vector<std::string> shared;
      std::vector<std::string> own;
      for (HABMNocPath const& p : fromTop.paths(*checked)) {
        shared.push_back(p.getName());
      }
      for (HABMNocPath const& p : HABMNocPath::createNocPaths(checked)) {
        own.push_back(p.getName());
      }
      EXPECT_EQ(shared, own) << checked->getInstancePath();
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
