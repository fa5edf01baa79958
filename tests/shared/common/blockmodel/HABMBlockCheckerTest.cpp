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
#include <map>
#include <random>
#include <regex>
#include <sstream>
#include <tuple>

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

// A finding in short: E, W or I for a violation, a notice or a lowered notice, its rule number, and the
// quoted parts of its text ("W101 /u0 m_u0").
std::string brief(ComMsgRecord const& r, std::string const& text) {
  std::map<unsigned int, char const*> const severity = {
      {0x20000000U, "E"}, {0x10000000U, "W"}, {0x8000000U, "I"}};
  std::string out = severity.at(r.mask) + std::to_string(r.line);
  std::regex const quoted("'([^']*)'");
  for (std::sregex_iterator it(text.begin(), text.end(), quoted), end; it != end; ++it) {
    out += " " + (*it)[1].str();
  }
  return out;
}

// Runs one rule set, giving the findings in short and (into `texts`) the rule texts. Nothing may reach the
// listeners before validate_all sends, and a set fails exactly when it finds a violation.
Briefs run(RuleSet set, HABMBlock const& block, Briefs* texts = nullptr) {
  ComMsgCapture capture;
  std::vector<ComMsgMgrInstance> messages;
  bool const passed = set(block, messages);
  EXPECT_TRUE(capture.records().empty());
  Briefs out;
  for (ComMsgMgrInstance const& m : messages) {
    ComMsgRecord const& r = m.getRecord();
    EXPECT_EQ(r.args.front(), block.getModuleName());
    out.push_back(brief(r, r.args.back()));
    if (texts != nullptr) {
      texts->push_back(r.args.back());
    }
  }
  EXPECT_EQ(passed, std::none_of(out.begin(), out.end(), [](auto const& b) { return b[0] == 'E'; }));
  return out;
}

class HABMChecker : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }
  void reset() { top_ = HABMBlock::createTopBlock("top"); }

  // The block at `path` ("" for the top block), made with the blocks above it when missing.
  HABMBlock* at(std::string const& path) {
    HABMBlock* block = top_.get();
    std::istringstream names(path);
    for (std::string name; std::getline(names, name, '/');) {
      HABMBlock* next = block->getSubBlock(name);
      block = next != nullptr ? next : block->createSubBlock(name, "m_" + name, false);
    }
    return block;
  }
  HABMBlock* rsw(std::string const& path) {
    at(path)->setBlockRsw(true);
    return at(path);
  }
  // The NoC interface at "block/path/name".
  N* noc(std::string const& path, N::NocMode mode, N::NocProtocol protocol = N::PROTOCOL_AXIMM,
         N::NocCategory category = N::CATEGORY_PL) {
    std::size_t const slash = path.rfind('/');
    HABMBlock* block = at(slash == std::string::npos ? "" : path.substr(0, slash));
    return makeNocInterface(*block, path.substr(slash + 1), mode, protocol, category);
  }
  HABMNocConnection* link(std::string const& source, std::string const& target,
                          std::string const& holder = "") {
    HABMNocConnection* connection = at(holder)->createNocConnection(source, target, true);
    EXPECT_NE(connection, nullptr) << source << " -> " << target;
    return connection;
  }
  Briefs briefs(RuleSet set, Briefs* texts = nullptr) { return run(set, *top_, texts); }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
};

TEST_F(HABMChecker, ValidateAllSendsEveryFindingAfterTheLastRuleSetInRuleSetOrder) {
  at("u0")->setBlockStub(true);
  rsw("r0")->setModuleVlnv("acme:blockdesign_ref:r0:1.0");
  rsw("r1");
  noc("lonely", N::MODE_NMU);
  ComMsgScopeGuard traces("HABM");
  ComMsgCapture capture;
  EXPECT_FALSE(HABMBlockChecker::validate_all(*top_));

  Briefs texts;
  for (ComMsgRecord const& r : capture.records()) {
    texts.push_back(r.shape == ComMsgShape::DEFERRED ? brief(r, r.text) : r.text);
  }
  // Each of the six rule sets traces its start; the findings follow the last one.
  ASSERT_EQ(texts.size(), 9U);
  EXPECT_EQ(Briefs(texts.begin() + 5, texts.end()),
            (Briefs{"Validating RSW rules for block instance '/'...\n", "W101 top /u0 m_u0",
                    "E136 top /r0 /r1", "W491 top /lonely"}));
  ComMsgRecord const& violation = capture.records()[7];
  EXPECT_EQ(violation.format, "@90-6@%s%s");
  EXPECT_EQ(violation.text,
            "Design rule violation on module 'top': Found unsupported mix of BDI '/r0' and RTL '/r1' RSW "
            "implementations. Please refactor to use one RSW implementation only.");
}

TEST_F(HABMChecker, BlockStubsAreReportedByKindThenByPathAndNeverFail) {
  top_->setBlockStub(true);
  at("b_mref")->setModuleVlnv("acme:module_ref:mref:1.0");
  rsw("a_rsw")->setModuleVlnv("acme:blockdesign_ref:rswref:1.0");  // filed as a region alone
  at("c_bdr")->setModuleVlnv("acme:BlockDesign_Ref:bdr:1.0");
  for (char const* stub : {"b_mref", "a_rsw", "c_bdr", "d/e", "z"}) {
    at(stub)->setBlockStub(true);
  }
  rsw("r");  // a region that is no stub
  // Module references and regions are lowered to information.
  EXPECT_EQ(briefs(Checker::validate_block_stubs),
            (Briefs{"I72 /b_mref m_b_mref", "I82 /a_rsw m_a_rsw", "W92 /c_bdr m_c_bdr", "W101 / top",
                    "W101 /d/e m_e", "W101 /z m_z"}));
}

TEST_F(HABMChecker, RegionsMustShareOneImplementationKindAndTheTopBlockDoesNotCount) {
  top_->setBlockRsw(true);
  rsw("b0")->setModuleVlnv("acme:blockdesign_ref:x:1.0");
  rsw("b1")->setModuleVlnv("acme:blockdesign_ref:x:1.0");
  EXPECT_TRUE(briefs(Checker::validate_rsw_blocks).empty());
  rsw("b0/q");
  rsw("s");
  // Search order: a sub-block's own finds before the direct sub-blocks.
  EXPECT_EQ(briefs(Checker::validate_rsw_blocks), (Briefs{"E136 /b0, /b1 /b0/q, /s"}));
}

// Logic blocks whose M_AXI feeds the bus interface S_AXI of "opm", an OPM NoC module whose widths are its
// generics ADDR_WIDTH 64 and DATA_WIDTH 128; a logic block states its widths as parameters of M_AXI.
TEST_F(HABMChecker, BusWidthsAcrossAnOpmModuleAreComparedAsText) {
  HABMBlock* opm = at("opm");
  opm->createAttribute("OPM_NOC", "NSU_MM");
  opm->createGeneric("ADDR_WIDTH", "64");
  opm->createGeneric("DATA_WIDTH", "128");
  opm->createInterface("S_AXI", false)->createParameter("DATA_WIDTH", "9");  // an OPM speaks by generics
  auto const master = [&](std::string const& block, std::string const& target) {
    EXPECT_NE(top_->createInterfaceConnection(block + "/M_AXI", target, true), nullptr);
    return at(block)->createInterface("M_AXI", false);
  };
  HABMInterface* same = master("same", "opm/S_AXI");  // equal, unset or empty values are no mismatch
  same->createParameter("ADDR_WIDTH", "64");
  same->createParameter("DATA_WIDTH", "");
  master("nowhere", "opm/NOPE")->createParameter("DATA_WIDTH", "32");
  master("both", "opm/S_AXI");
  at("both")->createAttribute("OPM_NOC", "NMU_MM");  // an OPM on both ends
  at("both")->createGeneric("DATA_WIDTH", "256");
  HABMInterface* logic = master("logic", "opm/S_AXI");
  logic->createParameter("ADDR_WIDTH", "0x40");
  logic->createParameter("DATA_WIDTH", "32");
  Briefs texts;
  EXPECT_EQ(briefs(Checker::validate_opm_connections, &texts),
            (Briefs{"E208 DATA_WIDTH /both/M_AXI /opm/S_AXI", "E208 ADDR_WIDTH /logic/M_AXI /opm/S_AXI",
                    "E208 DATA_WIDTH /logic/M_AXI /opm/S_AXI"}));
  EXPECT_EQ(
      texts.at(1),
      " Parameter 'ADDR_WIDTH' values differ from source interface '/logic/M_AXI' (value=0x40) to target "
      "interface '/opm/S_AXI' (value=64).");
}

TEST_F(HABMChecker, LogicTargetAperturesMustBeLargeAlignedPowersOfTwo) {
  noc("a", N::MODE_NSU)->setApertures({HABMAddrAperture(0x1000, 0x3000)});
  noc("b", N::MODE_NSU)->setApertures({HABMAddrAperture(0x8000, 0x10000)});
  noc("c", N::MODE_NSU)->setApertures({HABMAddrAperture(0x0, 0x8000)});
  noc("ddr", N::MODE_NSU, N::PROTOCOL_AXIMM, N::CATEGORY_DDR)
      ->setApertures({HABMAddrAperture(0x1000, 0x100)});
  noc("virtual", N::MODE_VNSU)->setApertures({HABMAddrAperture(0x1000, 0x100)});
  EXPECT_EQ(briefs(Checker::validate_noc_interfaces),
            (Briefs{"E237 /a 0x1000:0x3FFF 0x3000", "E243 /a 0x1000:0x3FFF 0x3000",
                    "E249 /a 0x1000:0x3FFF 0x1000 0x3000", "E249 /b 0x8000:0x1_7FFF 0x8000 0x1_0000",
                    "E243 /c 0x0:0x7FFF 0x8000"}));
}

TEST_F(HABMChecker, ParameterValuesAreCheckedLowerCasedAndReportedInNameOrder) {
  noc("a", N::MODE_NMU)->createParameter("DATA_WIDTH", "512");
  noc("b", N::MODE_NMU)->createParameter("READ_TRAFFIC_CLASS", "LOW_LATENCY");
  noc("c", N::MODE_NMU)->createParameter("SIDEBAND_PINS", "TRUE");
  noc("d", N::MODE_NMU)->createParameter("SIDEBAND_PINS", "maybe");
  noc("e", N::MODE_NMU)->createParameter("ADDR_WIDTH", "7");
  N* n = noc("n", N::MODE_NMU);
  n->createParameter("WRITE_TRAFFIC_CLASS", "LOW_LATENCY");
  n->createParameter("DATA_WIDTH", "1024");
  // The name's placeholder is a bare "%": the formatter reads "%' ha" as one directive, as hosts always had
  // it.
  Briefs const parts = {"'/d' parameter ' SIDEBAND_PINSs invalid value 'maybe'",
                        "'/n' parameter ' DATA_WIDTHs invalid value '1024'",
                        "'/n' parameter ' WRITE_TRAFFIC_CLASSs invalid value 'low_latency'"};
  Briefs texts;
  Briefs const found = briefs(Checker::validate_noc_interfaces, &texts);
  ASSERT_EQ(texts.size(), parts.size());
  for (std::size_t i = 0; i < parts.size(); ++i) {
    EXPECT_EQ(found[i].substr(0, 5), "E328 ");
    EXPECT_NE(texts[i].find(parts[i]), std::string::npos) << texts[i];
  }
}

// Interface "x" of a mode on block "e", with the ends it fans in from or out to beside it: an NMU n, an
// NSU s, a VNMU v, a VNSU w, or an inter-network VNMU i. The links are held by the top block and "e" is
// checked alone: links drawn above a block still count.
TEST_F(HABMChecker, FanRulesDependOnTheInterfaceKindAndCountVirtualEndsOnly) {
  struct Case {
    N::NocMode mode;
    bool editable;
    char const* sources;
    char const* targets;
    Briefs found;
  } const cases[] = {
      {N::MODE_NMU, false, "", "v1 v2", {"E415 /e/x /e/v1, /e/v2"}},
      {N::MODE_NMU, false, "", "v1 w1", {"E422 /e/x /e/v1, /e/w1"}},
      {N::MODE_NMU, false, "", "v1 s1", {}},
      {N::MODE_NMU, false, "", "v1 i1", {}},
      {N::MODE_NSU, false, "w1 w2", "", {"E439 /e/x /e/w1, /e/w2"}},
      {N::MODE_NSU, false, "w1 v1", "", {"E446 /e/x /e/v1, /e/w1"}},
      {N::MODE_UNKNOWN, false, "w1 w2", "", {"E439 /e/x /e/w1, /e/w2"}},
      {N::MODE_VNMU, false, "n1 n2", "", {"E344 /e/x"}},
      {N::MODE_VNMU, true, "", "v1 v2", {"E355 /e/x /e/v1, /e/v2"}},
      {N::MODE_VNMU, false, "", "w1 v1", {"E362 /e/x /e/v1, /e/w1"}},
      {N::MODE_VNSU, false, "w1 w2", "", {"E378 /e/x /e/w1, /e/w2"}},
      {N::MODE_VNSU, false, "v1 w1", "", {"E385 /e/x /e/v1, /e/w1"}},
      {N::MODE_VNSU, true, "", "s1 s2", {"E393 /e/x"}},
      {N::MODE_VNSU, false, "", "s1 s2", {}},
  };
  std::map<char, N::NocMode> const modes = {
      {'n', N::MODE_NMU}, {'s', N::MODE_NSU}, {'v', N::MODE_VNMU}, {'w', N::MODE_VNSU}, {'i', N::MODE_VNMU}};
  for (Case const& c : cases) {
    reset();
    noc("e/x", c.mode)->setEditable(c.editable);
    for (auto const& [list, in] : {std::pair{c.sources, true}, std::pair{c.targets, false}}) {
      std::istringstream names(list);
      for (std::string name; names >> name;) {
        noc("e/" + name, modes.at(name[0]), N::PROTOCOL_AXIMM,
            name[0] == 'i' ? N::CATEGORY_INI : N::CATEGORY_PL);
        link(in ? "e/" + name : "e/x", in ? "e/x" : "e/" + name);
      }
    }
    EXPECT_EQ(run(Checker::validate_noc_interfaces, *at("e")), c.found) << N::decodeNocMode(c.mode);
  }
}

TEST_F(HABMChecker, RemapsAcrossOpmModulesAndUnconnectedInterfacesAreNotices) {
  struct Case {
    N::NocCategory source;
    N::NocCategory target;
    char const* opm;  // the block "s" or "t" of the OPM module
    bool reported;
  } const cases[] = {
      {N::CATEGORY_PL, N::CATEGORY_DDR, "s", false}, {N::CATEGORY_PL, N::CATEGORY_PL, "t", false},
      {N::CATEGORY_DDR, N::CATEGORY_PL, "s", true},  {N::CATEGORY_PL, N::CATEGORY_CPU_NCO, "t", true},
      {N::CATEGORY_DDR, N::CATEGORY_DDR, "", false},
  };
  for (Case const& c : cases) {
    reset();
    noc("s/nmu", N::MODE_NMU, N::PROTOCOL_AXIMM, c.source);
    noc("t/nsu", N::MODE_NSU, N::PROTOCOL_AXIMM, c.target);
    if (*c.opm != '\0') {
      at(c.opm)->createAttribute("OPM_NOC", "NMU_MM");
    }
    link("s/nmu", "t/nsu")->setRemaps({HABMAddrRemap(0x1000, 0x0, 0x1000)});
    EXPECT_EQ(briefs(Checker::validate_noc_connections),
              c.reported ? Briefs{"W483 /s/nmu /t/nsu"} : Briefs{});
  }
  // Either end of a link connects an interface; a link without remaps is no notice, and a dead end of a
  // remapped link is named by its path.
  reset();
  at("opm")->createAttribute("OPM_NOC", "NMU_MM");
  noc("opm/nmu", N::MODE_NMU, N::PROTOCOL_AXIMM, N::CATEGORY_DDR);
  noc("only_target", N::MODE_NSU);
  noc("idle1", N::MODE_NSU);
  noc("idle2", N::MODE_VNMU);
  link("opm/nmu", "only_target");
  link("opm/nmu", "gone")->setRemaps({HABMAddrRemap(0x0, 0x1000, 0x1000)});
  EXPECT_EQ(briefs(Checker::validate_noc_connections),
            (Briefs{"W483 /opm/nmu /gone", "W491 /idle1", "W491 /idle2"}));
}

TEST_F(HABMChecker, DuplicatePathsStopThePathRules) {
  noc("n", N::MODE_NMU);
  noc("s", N::MODE_NSU);
  for (char const* v : {"v1", "v2"}) {
    noc(v, N::MODE_VNMU);
    link("n", v);
    link(v, "s");
  }
  rsw("outer");
  rsw("outer/inner");  // a nested region, which a later stage would report
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"E527 /n /s"}));
}

// A static NMU "n" reaches the NSU inside region "rp" through its VNMU "vm"; the primary link vm -> core/s
// lies inside the region, so the static part does not own the path.
TEST_F(HABMChecker, RegionNoticesLeaveTheOwnershipStageRunningAndANestedRegionStopsIt) {
  rsw("rp")->createGeneric("DEPTH", "4");
  noc("n", N::MODE_NMU);
  noc("rp/vm", N::MODE_VNMU);
  noc("rp/core/s", N::MODE_NSU)->setApertures({HABMAddrAperture(0x0, 0x10000)});
  link("n", "rp/vm");
  link("vm", "core/s", "rp");
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"W544 /rp", "W553 vm /rp", "E631 /n /rp/core/s"}));
  rsw("rp/inner");
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"E559 /rp/inner", "W544 /rp", "W553 vm /rp"}));
}

TEST_F(HABMChecker, ARegionThatOnlyPassesTrafficThroughIsReportedUnlessNested) {
  for (std::string const region : {"outer", "outer/inner"}) {
    rsw(region);
    noc(region + "/in", N::MODE_VNSU, N::PROTOCOL_AXIS);
    noc(region + "/out", N::MODE_VNMU, N::PROTOCOL_AXIS);
    link("in", "out", region);
  }
  EXPECT_EQ(briefs(Checker::validate_noc_paths),
            (Briefs{"E559 /outer/inner", "E575 /outer /outer/in /outer/out"}));
}

TEST_F(HABMChecker, OwnershipOfPathsBetweenRegionsAndTheStaticPart) {
  // Regions that send from core/nmu through their VNSU "out", the primary link held inside the region.
  auto const sendingRegion = [&](std::string const& name) {
    rsw(name);
    noc(name + "/core/nmu", N::MODE_NMU, N::PROTOCOL_AXIS);
    noc(name + "/out", N::MODE_VNSU, N::PROTOCOL_AXIS);
    link("core/nmu", "out", name);
  };
  noc("s", N::MODE_NSU, N::PROTOCOL_AXIS);  // regions into one static NSU
  for (std::string const name : {"r1", "r2"}) {
    sendingRegion(name);
    link(name + "/out", "s");
  }
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"E651 /s"}));
  top_->removeSubBlock("r2");
  EXPECT_TRUE(briefs(Checker::validate_noc_paths).empty());  // one region may own its way out

  reset();  // from one region into another
  sendingRegion("r1");
  rsw("r2");
  noc("r2/in", N::MODE_VNMU, N::PROTOCOL_AXIS);
  noc("r2/core/nsu", N::MODE_NSU, N::PROTOCOL_AXIS);
  link("in", "core/nsu", "r2");
  link("r1/out", "r2/in");
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"E621 /r1/core/nmu /r2/core/nsu"}));

  reset();  // an incomplete path is excused when its region arrives at run time
  noc("n", N::MODE_NMU, N::PROTOCOL_AXIS);
  rsw("rp");
  noc("rp/v", N::MODE_VNSU, N::PROTOCOL_AXIS);
  link("n", "rp/v");
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"E611 /n /rp/v"}));
  at("rp")->setBlockStub(true);
  EXPECT_TRUE(briefs(Checker::validate_noc_paths).empty());
}

// A stream NMU "n" of the block design (on block "bd") with direct links to NSUs on block "ep".
class HABMStreamFanout : public HABMChecker {
 protected:
  HABMStreamFanout() { noc("bd/n", N::MODE_NMU, N::PROTOCOL_AXIS); }

  // A stream NSU with destination ids `tdest` of a `width`, linked from `from`.
  N* endpoint(std::string const& path, std::string const& tdest, std::string const& from = "bd/n",
              std::string const& width = "5") {
    N* nsu = noc(path, N::MODE_NSU, N::PROTOCOL_AXIS);
    nsu->setTdestWidth(width);
    EXPECT_TRUE(nsu->setTdestId(tdest)) << tdest;
    link(from, path);
    return nsu;
  }
};

TEST_F(HABMStreamFanout, DestinationIdsMustBeSetAndDisjoint) {
  endpoint("ep/s0", "");
  EXPECT_TRUE(briefs(Checker::validate_noc_paths).empty());  // no fan-out yet
  for (auto const& [name, tdest] : {std::pair{"ep/s1", "1:3"}, {"ep/s2", "0x3:4"}, {"ep/s4", "0:1"}}) {
    endpoint(name, tdest);
  }
  EXPECT_EQ(briefs(Checker::validate_noc_paths),
            (Briefs{"E746 /ep/s0 ", "E738 /bd/n /ep/s2 0x3", "E738 /bd/n /ep/s4 0x1"}));
  // A range over several taken ones gives one finding per taken id, and takes the ids between them.
  endpoint("ep/s5", "6:7");
  endpoint("ep/s6", "0:9");
  endpoint("ep/s7", "5");
  Briefs const found = briefs(Checker::validate_noc_paths);
  EXPECT_EQ(Briefs(found.begin() + 3, found.end()),
            (Briefs{"E738 /bd/n /ep/s6 0x0", "E738 /bd/n /ep/s6 0x1", "E738 /bd/n /ep/s6 0x2",
                    "E738 /bd/n /ep/s6 0x3", "E738 /bd/n /ep/s6 0x4", "E738 /bd/n /ep/s6 0x6",
                    "E738 /bd/n /ep/s6 0x7", "E738 /bd/n /ep/s7 0x5"}));
}

// A file may claim ids of any width: two endpoints that share 2^80 ids are reported in bounded time.
TEST_F(HABMStreamFanout, HugeOverlapsAreReportedUpToALimit) {
  endpoint("ep/s1", "0:0xFFFF_FFFF_FFFF_FFFF_FFFF", "bd/n", "96");
  endpoint("ep/s2", "0:0xFFFF_FFFF_FFFF_FFFF_FFFF", "bd/n", "96");
  EXPECT_EQ(briefs(Checker::validate_noc_paths).size(), 4096U);
}

TEST_F(HABMStreamFanout, SeventeenEndpointsAreTooManyAndTheIdChecksGoOn) {
  for (int i = 1; i <= 16; ++i) {
    endpoint("ep/s" + std::to_string(i), std::to_string(i % 16));
  }
  EXPECT_TRUE(briefs(Checker::validate_noc_paths).empty());
  endpoint("ep/s17", "0x1");
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"E696 /bd/n 16", "E738 /bd/n /ep/s17 0x1"}));
}

TEST_F(HABMStreamFanout, EndpointsBehindAnInterNetworkLinkCountOnce) {
  N* ini = endpoint("ep/ini", "1");
  ini->setNocMode(N::MODE_VNSU);
  ini->setNocCategory(N::CATEGORY_INI);
  endpoint("ep/a", "1", "ep/ini");
  endpoint("ep/b", "1", "ep/ini");
  EXPECT_TRUE(briefs(Checker::validate_noc_paths).empty());
  endpoint("ep/z", "1");
  EXPECT_EQ(briefs(Checker::validate_noc_paths), (Briefs{"E738 /bd/n /ep/z 0x1"}));
}

TEST_F(HABMStreamFanout, TheStructuralFlowSwitchesABlockDesignNmuBetweenTwoRules) {
  at("opm")->createAttribute("OPM_NOC", "NSU_STRM");
  endpoint("ep/s1", "1");
  endpoint("opm/o1", "2");
  for (auto const& [structural, nxm, found] : {std::tuple{"false", "true", "E722 /bd/n /opm/o1"},
                                               {"true", "false", "E722 /bd/n /opm/o1"},
                                               {"true", "true", "E758 /bd/n"}}) {
    HPAParamOverride structuralFlow("bd.noc.nxm_streaming_structural_rtl_mux", structural);
    HPAParamOverride nxmFlow("project.enableMNocNxMFlow", nxm);
    EXPECT_EQ(briefs(Checker::validate_noc_paths), Briefs{found}) << structural << nxm;
  }
  // With two endpoints of its own the block design may fan out to OPM modules as well.
  endpoint("ep/s2", "3");
  HPAParamOverride structural("bd.noc.nxm_streaming_structural_rtl_mux", "true");
  HPAParamOverride nxm("project.enableMNocNxMFlow", "true");
  EXPECT_TRUE(briefs(Checker::validate_noc_paths).empty());
}

// The checks take the far ends of interfaces and the paths of regions from one index of the links; it must
// agree with what each interface and each block finds for itself, whatever block holds a link.
TEST(HABMNocLinks, AgreeWithThePerInterfaceSearchesOnRandomTrees) {
  std::mt19937 random(7);
  auto const pick = [&](auto const& items) { return items[random() % items.size()]; };
  auto const sorted = [](std::vector<N*> items) {
    std::sort(items.begin(), items.end());
    return items;
  };
  for (int round = 0; round < 40; ++round) {
    auto top = HABMBlock::createTopBlock("top");
    std::vector<HABMBlock*> blocks = {top.get()};
    for (int i = 0; i < 12; ++i) {
      blocks.push_back(pick(blocks)->createSubBlock("b" + std::to_string(i), "m", false));
    }
    std::vector<N*> ifaces;
    for (int i = 0; i < 16; ++i) {
      auto const mode = static_cast<N::NocMode>(random() % 4);
      ifaces.push_back(makeNocInterface(*pick(blocks), "i" + std::to_string(i), mode));
    }
    // Links held by a random block: an end outside the holder's subtree is a dead end.
    for (int i = 0; i < 30; ++i) {
      HABMBlock* holder = pick(blocks);
      std::string const prefix = holder == top.get() ? "/" : holder->getInstancePath() + "/";
      auto const relative = [&](N const* iface) {
        std::string const path = iface->getPath();
        return path.compare(0, prefix.size(), prefix) == 0 ? path.substr(prefix.size()) : "x/none";
      };
      HABMNocConnection* connection = holder->createNocConnection("", true);
      connection->setSourcePath(relative(pick(ifaces)));
      connection->setTargetPath(relative(pick(ifaces)));
    }
    habm_detail::NocLinks const fromTop(*top);
    for (HABMBlock const* checked : blocks) {
      habm_detail::NocLinks const links(*checked);
      for (N const* iface : checked->findNocInterfaces("", true, false)) {
        std::vector<N*> targets;
        for (auto const& link : links.drivenBy(iface)) {
          if (link.target != nullptr) {
            targets.push_back(link.target);
          }
        }
        EXPECT_EQ(sorted(links.driversOf(iface)), sorted(iface->getSourceInterfaces())) << iface->getPath();
        EXPECT_EQ(sorted(targets), sorted(iface->getTargetInterfaces())) << iface->getPath();
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
