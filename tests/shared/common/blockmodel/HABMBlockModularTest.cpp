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
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"

#include "HABMNocTestUtil.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>

namespace {

using B = HABMBlock;
using N = HABMNocInterface;
using habm_test::makeNocInterface;
using Reasons = std::vector<std::string>;

std::set<HABMAddrAperture> apertures(char const* text) {
  return {HABMAddrAperture(std::string(text)), HABMAddrAperture("0x8000[4K]")};
}

// One object of every compared kind.
void fillBoundary(B& b) {
  b.createGeneric("WIDTH", "8");
  b.createPort("clk", false)->setPortType(HABMPort::TYPE_WIRE);
  b.createPort("data", false)->setPortLeft(7);
  HABMMemoryMap* map = b.createMemoryMap("mm");
  map->setRange(HABMAddrValue(0x2000U));
  map->createAddrBlock("regs")->setAperture(HABMAddrAperture("0x0[4K]"));
  HABMAddrSpace* space = b.createAddrSpace("as");
  space->createAddrSegment("seg")->setAperture(HABMAddrAperture("0x0[4K]"));
  HABMInterface* slave = b.createInterface("S_AXI", false);
  slave->setInterfaceVlnv("orvane:interface:aximm:1.0");
  slave->setInterfaceMode(HABMInterface::MODE_SLAVE);
  slave->setMemoryMapRef("mm");
  slave->setApertures(apertures("0x0[4K]"), false);
  slave->createParameter("FREQ", "100");
  b.createInterface("M_AXI", false)->setAddrSpaceRef("as");
  N* nsu = makeNocInterface(b, "nsu", N::MODE_NSU);
  nsu->setApertures(apertures("0x0[4K]"));
  nsu->createParameter("DATA_WIDTH", "128");
}

// A reason without the words every reason of the fixture shares, which must be there exactly: "Port 'x'
// missing", "Port 'x' exists" (on the source only), "Port 'x' has LEFT mismatch: (source)'1' != '0'(target)".
std::string key(std::string reason) {
  for (std::string const shared : {" between source module 'src' and target instance '/u'",
                                   " from source module 'src' but exists on target instance '/u'.",
                                   " on source module 'src' but missing from target instance '/u'."}) {
    std::size_t const at = reason.find(shared);
    if (at != std::string::npos) {
      reason.erase(at, shared.size());
    }
  }
  return reason;
}

// The source module "src", a top block, and the target instance "/u" of a design, with equal boundaries.
class HABMBoundaryCheck : public ::testing::Test {
 protected:
  void SetUp() override {
    fillBoundary(*source_);
    fillBoundary(*target_);
  }
  // The keys of the reasons; with `mergeBoundary` the source's boundary is to replace the target's.
  Reasons reasons(bool mergeBoundary) const {
    Reasons out = {"stale"};
    bool const agree = B::canMergeBlock(*source_, *target_, out, mergeBoundary);
    EXPECT_EQ(agree, out.empty());
    for (std::string& reason : out) {
      reason = key(reason);
    }
    return out;
  }

  std::unique_ptr<B> source_ = B::createTopBlock("src");
  std::unique_ptr<B> design_ = B::createTopBlock("design");
  B* target_ = design_->createSubBlock("u", "dst", false);
};

// Every kind at once, in kind order; within a kind the target's objects in order, then what only the
// source has. With the source's boundary to replace the target's, the reasons that the source has more go.
// A case per set of changes that would hide each other: the first difference of an object ends its
// comparison.
TEST_F(HABMBoundaryCheck, EachDifferenceIsOneSentenceKindByKindTargetsFirst) {
  EXPECT_EQ(reasons(false), Reasons());
  struct Case {
    char const* what;
    std::function<void(B& source, B& target)> change;
    Reasons expected;
  };
  Case const cases[] = {
      {"generics; ports, the type not compared; interfaces, VLNV and mode; a range hides the address blocks",
       [](B& s, B& t) {
         s.createGeneric("EXTRA", "1");
         s.getGeneric("WIDTH")->setValue("16");
         t.createGeneric("MINE", "1");
         s.getPort("clk")->setPortType(HABMPort::TYPE_VECTOR);
         s.getPort("clk")->setPortLeft(3);
         s.getPort("data")->setPortDirection(HABMPort::DIR_OUT);
         s.getPort("data")->setPortLeft(1);
         s.createPort("extra", false);
         t.createPort("mine", false);
         s.getInterface("S_AXI")->setInterfaceVlnv("x:y:z:1");
         s.getInterface("M_AXI")->setInterfaceMode(HABMInterface::MODE_MASTER);
         s.getInterface("M_AXI")->setAddrSpaceRef("other");
         s.createInterface("EXTRA", false);
         t.createInterface("MINE", false);
         s.getMemoryMap("mm")->setRange(HABMAddrValue(0x1000U));
         s.getMemoryMap("mm")->getAddrBlock("regs")->setMemoryType(HABMAddrBlock::TYPE_MEMORY);
         s.createMemoryMap("extra");
         t.createMemoryMap("mine");
       },
       {"Generic 'WIDTH' has VALUE mismatch: (source)'16' != '8'(target)", "Generic 'MINE' missing",
        "Generic 'EXTRA' exists", "Port 'clk' has LEFT mismatch: (source)'3' != '0'(target)",
        "Port 'data' has DIRECTION mismatch: (source)'out' != 'in'(target)", "Port 'mine' missing",
        "Port 'extra' exists",
        "Interface 'S_AXI' has VLNV mismatch: (source)'x:y:z:1' != 'orvane:interface:aximm:1.0'(target)",
        "Interface 'M_AXI' has MODE mismatch: (source)'master' != ''(target)", "Interface 'MINE' missing",
        "Interface 'EXTRA' exists", "Memory map 'mm' has RANGE mismatch.", "Memory map 'mine' is missing",
        "Memory map 'extra' exists"}},
      {"address spaces and segments; NoC protocol hides the mode; INI interfaces count",
       [](B& s, B& t) {
         s.getAddrSpace("as")->setRange(HABMAddrValue(0x1000U));
         HABMAddrSpace* mine = t.createAddrSpace("mine");
         mine->createAddrSegment("gone");
         mine->createAddrSegment("moved")->setAperture(HABMAddrAperture("0x0[1K]"));
         s.createAddrSpace("mine")->createAddrSegment("moved");
         s.createAddrSpace("extra");
         s.getNocInterface("nsu")->setNocProtocol(N::PROTOCOL_AXIS);
         s.getNocInterface("nsu")->setNocMode(N::MODE_NMU);
         makeNocInterface(s, "extra", N::MODE_NMU, N::PROTOCOL_AXIMM, N::CATEGORY_INI);
         makeNocInterface(t, "mine", N::MODE_NMU);
       },
       {"Address space 'as' has RANGE mismatch.", "Address segment 'mine/gone' missing",
        "Address segment 'mine/moved' has APERTURE mismatch.", "Address space 'extra' exists",
        "NOC interface 'nsu' has TYPE mismatch: (source)'axis' != 'aximm'(target)",
        "NOC interface 'mine' missing", "NOC interface 'extra' exists"}},
      {"interface references; address blocks: aperture before memory type, the source's own not reported; "
       "NoC mode, then category, then parameters",
       [](B& s, B& t) {
         s.getInterface("S_AXI")->setMemoryMapRef("other");
         s.getInterface("M_AXI")->setAddrSpaceRef("other");
         HABMMemoryMap* map = t.getMemoryMap("mm");
         map->getAddrBlock("regs")->setAperture(HABMAddrAperture("0x0[8K]"));
         map->getAddrBlock("regs")->setMemoryType(HABMAddrBlock::TYPE_MEMORY);
         map->createAddrBlock("mine");
         map->createAddrBlock("ram")->setMemoryType(HABMAddrBlock::TYPE_MEMORY);
         s.getMemoryMap("mm")->createAddrBlock("ram");
         s.getMemoryMap("mm")->createAddrBlock("extra");
         s.getNocInterface("nsu")->setNocMode(N::MODE_VNSU);
         makeNocInterface(t, "ini", N::MODE_NSU)->createParameter("ADDR_WIDTH", "64");
         makeNocInterface(s, "ini", N::MODE_NSU, N::PROTOCOL_AXIMM, N::CATEGORY_INI);
         N* p = makeNocInterface(t, "p", N::MODE_NSU);
         p->createParameter("DATA_WIDTH", "128");
         p->createParameter("ADDR_WIDTH", "64");
         makeNocInterface(s, "p", N::MODE_NSU)->createParameter("DATA_WIDTH", "256");
       },
       {"Interface 'S_AXI' has MEMORY MAP mismatch: (source)'other' != 'mm'(target)",
        "Interface 'M_AXI' has ADDRESS SPACE mismatch: (source)'other' != 'as'(target)",
        "Address block 'mm/regs' has APERTURE mismatch.", "Address block 'mm/mine' is missing",
        "Address block 'mm/ram' has MEMORYTYPE mismatch.",
        "NOC interface 'nsu' has MODE mismatch: (source)'vnsu' != 'nsu'(target)",
        "NOC interface 'ini' has CATEGORY mismatch: (source)'ini' != 'pl'(target)",
        "NOC interface parameter 'p/DATA_WIDTH' has VALUE mismatch: (source)'256' != '128'(target)",
        "NOC interface parameter 'p/ADDR_WIDTH' missing"}},
      {"interfaces: an empty reference on the target, then the target's parameters",
       [](B& s, B& t) {
         t.getInterface("M_AXI")->setAddrSpaceRef("");
         s.getInterface("M_AXI")->setMemoryMapRef("mm");
         s.getInterface("S_AXI")->getParameter("FREQ")->setValue("200");
         s.getInterface("S_AXI")->createParameter("ONLY_SOURCE", "1");
         t.getInterface("S_AXI")->createParameter("ONLY_TARGET", "1");
       },
       {"Interface parameter 'S_AXI/FREQ' has VALUE mismatch.",
        "Interface parameter 'S_AXI/ONLY_TARGET' missing"}},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.what);
    source_ = B::createTopBlock("src");
    design_->clearSubBlocks();
    target_ = design_->createSubBlock("u", "dst", false);
    fillBoundary(*source_);
    fillBoundary(*target_);
    c.change(*source_, *target_);
    EXPECT_EQ(reasons(false), c.expected);
    Reasons fromTarget;
    std::copy_if(c.expected.begin(), c.expected.end(), std::back_inserter(fromTarget),
                 [](std::string const& r) { return r.find("' exists") == std::string::npos; });
    EXPECT_EQ(reasons(true), fromTarget);
  }
}

// Which side must serve the other's apertures depends on whether the source's interface takes requests.
TEST_F(HABMBoundaryCheck, AperturesFollowTheConeRuleFromTheSideThatTakesRequests) {
  B* driver = source_->createSubBlock("drv", "drv", false);
  makeNocInterface(*driver, "nmu", N::MODE_NMU);
  driver->createInterface("M", false);
  for (bool const noc : {false, true}) {
    SCOPED_TRACE(noc);
    auto const set = [&](B& b, char const* text) {
      noc ? b.getNocInterface("nsu")->setApertures(apertures(text))
          : b.getInterface("S_AXI")->setApertures(apertures(text), false);
    };
    std::string const what = noc ? "NOC interface 'nsu'" : "Interface 'S_AXI'";
    set(*source_, "0x0[8K]");
    EXPECT_EQ(reasons(false), Reasons());  // unrequested, the target's fewer apertures are served
    set(*source_, "0x0[2K]");
    EXPECT_EQ(reasons(false), Reasons{what + " has APERTURES mismatch. Source module 'src' must service the "
                                             "following aperture requests: '0x0[4K]'."});
    set(*source_, "0x0[8K]");
    noc ? (void)source_->createNocConnection("drv/nmu", "nsu", true)
        : (void)source_->createInterfaceConnection("drv/M", "S_AXI", true);
    EXPECT_EQ(reasons(false), Reasons{what + " has APERTURES mismatch. Target instance '/u' must service the "
                                             "following aperture requests: '0x0[8K]'."});
    set(*source_, "0x0[4K]");
  }
}

TEST_F(HABMBoundaryCheck, SkippingTheBoundaryCheckKeepsPortsModesAndNocInterfaces) {
  HPAParamOverride skip("project.skipBlockModelBoundaryCheck", "true");
  source_->getGeneric("WIDTH")->setValue("16");
  source_->getInterface("S_AXI")->setMemoryMapRef("other");
  source_->getMemoryMap("mm")->setRange(HABMAddrValue(1U));
  source_->createAddrSpace("extra");
  EXPECT_EQ(reasons(false), Reasons());
  source_->getInterface("M_AXI")->setInterfaceMode(HABMInterface::MODE_SLAVE);
  source_->getPort("data")->setPortRight(1);
  source_->getNocInterface("nsu")->setNocMode(N::MODE_VNSU);
  EXPECT_EQ(reasons(false),
            (Reasons{"Port 'data' has RIGHT mismatch: (source)'1' != '0'(target)",
                     "Interface 'M_AXI' has MODE mismatch: (source)'slave' != ''(target)",
                     "NOC interface 'nsu' has MODE mismatch: (source)'vnsu' != 'nsu'(target)"}));
}

// The softening is on unless a host turns it off: the library registers it so.
TEST_F(HABMBoundaryCheck, KnownLibraryCoresSkipPortsAndInterfaces) {
  source_->getGeneric("WIDTH")->setValue("16");
  source_->createPort("extra", false);
  Reasons const generic = {"Generic 'WIDTH' has VALUE mismatch: (source)'16' != '8'(target)"};
  Reasons const full = {generic[0], "Port 'extra' exists"};
  ComMsgScopeGuard on("HABM");
  for (auto const& [vlnv, softened] : {std::pair{"ORVANE:ip:Link64_Core:1.0", true},
                                       {"tessel:IP:pkt_proc_core:2", true},
                                       {"acme:ip:link64_core:1.0", false},
                                       {"orvane:bd:link64_core:1.0", false},
                                       {"orvane:ip:link64:1", false}}) {
    SCOPED_TRACE(vlnv);
    source_->setModuleVlnv(vlnv);
    ComMsgCapture capture;
    EXPECT_EQ(reasons(false), softened ? generic : full);
    ASSERT_EQ(capture.records().size(), softened ? 1U : 0U);
    if (softened) {
      EXPECT_EQ(capture.records()[0].mask, 0x1000001U);
      EXPECT_EQ(capture.texts()[0],
                "Skipped PORT and INTERFACE checks from source module 'src' into target instance '/u'.\n");
    }
  }
  HPAParamOverride off("blockmodel.softenCanMergeChecks", "false");
  source_->setModuleVlnv("orvane:ip:link64_core:1.0");
  EXPECT_EQ(reasons(false), full);
}

bool said(ComMsgCapture const& capture, std::string const& text) {
  Reasons const texts = capture.texts();
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// top holds "a" holding "b" holding "c"; "x" beside "a". NoC interfaces sit only on the leaves c and x, so
// that no block between "a" and "c" is a NoC scope of its own and links can be cut at "a".
class HABMSplitMerge : public ::testing::Test {
 protected:
  void SetUp() override {
    makeNocInterface(*c_, "nmu", N::MODE_NMU);
    makeNocInterface(*c_, "nsu", N::MODE_NSU)->setApertures(apertures("0x0[64K]"));
    makeNocInterface(*x_, "nmu", N::MODE_NMU);
    makeNocInterface(*x_, "nsu", N::MODE_NSU);
    a_->createPort("clk", false);
    a_->createAttribute("KEEP", "yes");
    top_->setValidated(true);
  }
  void TearDown() override { EXPECT_EQ(top_->check(), Reasons()); }

  std::unique_ptr<B> top_ = B::createTopBlock("top");
  B* a_ = top_->createSubBlock("a", "ma", false);
  B* b_ = a_->createSubBlock("b", "mb", false);
  B* c_ = b_->createSubBlock("c", "mc", false);
  B* x_ = top_->createSubBlock("x", "mx", false);
};

// What the generated designs of HABMModularRoundTripTest cannot tell apart: a split keeps the top's
// validation on a miss, the part is no stub and takes the module's VLNV; a merge either refuses and leaves
// everything, or takes the boundary (VLNV, ports) but not the configuration.
TEST_F(HABMSplitMerge, ASplitLeavesAStubAndAMergeFillsItAgain) {
  for (char const* miss : {"/nope", "/", "", "x/nmu"}) {
    EXPECT_EQ(B::splitTopBlock(*top_, miss, true), nullptr) << miss;
    EXPECT_FALSE(B::mergeTopBlock(*top_, miss, *top_, true)) << miss;
  }
  EXPECT_TRUE(top_->getValidated());
  a_->setModuleVlnv("acme:ip:ma:1.0");
  a_->setLocked(B::LOCKED);
  auto const part = B::splitTopBlock(*top_, "a", false);
  ASSERT_NE(part, nullptr);
  EXPECT_EQ(part->getInstancePath() + part->getModuleVlnv(), "/acme:ip:ma:1.0");
  EXPECT_FALSE(part->isBlockStub());
  EXPECT_FALSE(top_->getValidated());

  // Without the boundary, a port that only the module has is a difference; nothing changes then.
  top_->setValidated(true);
  part->setModuleVlnv("acme:ip:ma:2.0");
  part->createAttribute("FROM_PART", "1");
  part->createPort("clk2", false);
  ComMsgCapture capture;
  EXPECT_FALSE(B::mergeTopBlock(*top_, "/a", *part, false));
  ASSERT_EQ(capture.records().size(), 1U);
  EXPECT_EQ(capture.records()[0].format, "@90-3@%s%s%s");
  EXPECT_EQ(capture.records()[0].mask, 0x10000000U);
  EXPECT_EQ(capture.records()[0].args,
            (Reasons{"ma", "/a",
                     " Port 'clk2' exists on source module 'ma' but missing from target instance '/a'."}));
  EXPECT_TRUE(a_->isBlockStub() && top_->getValidated());

  ComMsgScopeGuard on("HABM");
  capture.clear();
  ASSERT_TRUE(B::mergeTopBlock(*top_, "/a", *part, true));
  EXPECT_EQ(a_->getModuleVlnv(), "acme:ip:ma:2.0");
  EXPECT_NE(a_->getPort("clk2"), nullptr);
  EXPECT_EQ(a_->getAttribute("FROM_PART"), nullptr);  // the configuration stays the instance's
  EXPECT_TRUE(said(capture, "MNOC: Resetting lock state from 'locked' to 'unknown' for block 'ma'.\n"));
}

// A run-time swapped block keeps its boundary, and takes the lock state of the module swapped in.
TEST_F(HABMSplitMerge, ARunTimeSwappedBlockKeepsItsBoundaryAndTakesTheLock) {
  a_->setBlockRsw(true);
  auto const part = B::splitTopBlock(*top_, "/a", false);
  ASSERT_NE(part, nullptr);
  part->setLocked(B::UNLOCKED);
  part->setModuleVlnv("acme:ip:ma:2.0");
  part->createPort("extra", false);  // harmless only if the boundary were taken
  EXPECT_FALSE(B::mergeTopBlock(*top_, "/a", *part, true));
  part->removePort("extra");
  ComMsgScopeGuard on("HABM");
  ComMsgCapture capture;
  EXPECT_TRUE(B::mergeTopBlock(*top_, "/a", *part, true));
  EXPECT_EQ(a_->getModuleVlnv(), "");
  EXPECT_TRUE(said(capture, "MNOC: Copied lock state 'unlocked' for block 'ma'.\n"));
}

// Only links into or out of blocks below the cut block bar a split, each with its reason; links on its own
// boundary stay with it.
TEST_F(HABMSplitMerge, CrossingLinksBarASplitEachWithItsReason) {
  makeNocInterface(*a_, "vnsu", N::MODE_VNSU);
  top_->createNocConnection("x/nmu", "a/vnsu", true);
  a_->createNocConnection("vnsu", "b/c/nsu", true);
  Reasons reasons = {"stale"};
  EXPECT_TRUE(B::canSplitBlock(*a_, reasons));
  EXPECT_EQ(reasons, Reasons());
  top_->createNocConnection("x/nmu", "a/b/c/nsu", true);
  top_->createNocConnection("a/b/c/nmu", "x/nsu", true);
  ComMsgCapture capture;
  EXPECT_EQ(B::splitTopBlock(*top_, "/a", false), nullptr);
  ASSERT_EQ(capture.records().size(), 1U);
  EXPECT_EQ(capture.records()[0].format, "@90-5@%s%s%s");
  EXPECT_EQ(
      capture.records()[0].args,
      (Reasons{"/a", "ma",
               " Reason(s):\n  * Sub-block instance '/a' has an exported NOC connection from source NOC "
               "interface '/a/b/c/nmu' to target NOC interface '/x/nsu'. A VNMU or VNSU interface is "
               "required to split this NOC connection.\n  * Sub-block instance '/a' has an imported NOC "
               "connection from source NOC interface '/x/nmu' to target NOC interface '/a/b/c/nsu'. A "
               "VNMU or VNSU interface is required to split this NOC connection."}));
}

// The outer half keeps the link; the inner half goes with the block, drawn to or from a new virtual
// interface named after those there, whose mode fits the link's end inside and which serves its apertures.
TEST_F(HABMSplitMerge, VirtualInterfacesCutCrossingLinksInTwo) {
  makeNocInterface(*a_, "noc_interface_0", N::MODE_VNMU);
  HABMNocConnection* entering = top_->createNocConnection("x/nmu", "a/b/c/nsu", true);
  HABMNocConnection* leaving = top_->createNocConnection("a/b/c/nmu", "x/nsu", true);
  auto const part = B::splitTopBlock(*top_, "/a", true);
  ASSERT_NE(part, nullptr);
  EXPECT_EQ(a_->getNocInterface("noc_interface_1")->getNocMode(), N::MODE_VNSU);
  EXPECT_EQ(a_->getNocInterface("noc_interface_1")->getApertures(), apertures("0x0[64K]"));
  EXPECT_EQ(a_->getNocInterface("noc_interface_2")->getNocMode(), N::MODE_VNMU);
  EXPECT_EQ(entering->getTargetPath(false) + " " + leaving->getSourcePath(false),
            "a/noc_interface_1 a/noc_interface_2");
  EXPECT_EQ(part->getNocConnections(false).size(), 2U);
}

// A half the link rules refuse leaves the link whole, and it bars the split. Here "b" is a NoC scope of
// its own, which the new interface of "a" is not part of.
TEST_F(HABMSplitMerge, ALinkThatCannotBeCutStaysWholeAndBarsTheSplit) {
  makeNocInterface(*b_, "scope", N::MODE_NSU);
  HABMNocConnection* entering = top_->createNocConnection("x/nmu", "a/b/c/nsu", true);
  EXPECT_EQ(B::splitTopBlock(*top_, "/a", true), nullptr);
  EXPECT_EQ(entering->getTargetPath(false), "a/b/c/nsu");
  EXPECT_FALSE(a_->hasNocInterfaces(false));
}

// A link drawn above the block between two of its insides moves into it under an automatic name, even
// when a forced link of the same name stands before it; the move stays when the split is refused.
TEST_F(HABMSplitMerge, LinksDrawnAboveBetweenInsidesMoveIn) {
  top_->createNocConnection("noc_connection_0", false);
  HABMNocConnection* above = top_->createNocConnection("noc_connection_0", true);
  above->setSourcePath("a/b/c/nmu");
  above->setTargetPath("a/b/c/nsu");
  above->setEditable(true);
  above->setRemaps({HABMAddrRemap(HABMAddrValue(0U), HABMAddrValue(0x1000U), HABMAddrValue(0x1000U))});
  above->setParameter(HABMNocConnection::WRITE_BANDWIDTH(), "700", true);
  top_->createNocConnection("a/b/c/nmu", "x/nsu", true);  // crosses, and bars the split
  a_->createNocConnection("own", false);
  EXPECT_EQ(B::splitTopBlock(*top_, "/a", false), nullptr);
  EXPECT_EQ(top_->getNocConnections(false).size(), 2U);
  EXPECT_EQ(top_->getNocConnection("noc_connection_0")->getSourcePath(false), "");
  HABMNocConnection const* moved = a_->getNocConnection("noc_connection_1");
  ASSERT_NE(moved, nullptr);
  EXPECT_EQ(moved->getSourcePath(false) + " " + moved->getTargetPath(false), "b/c/nmu b/c/nsu");
  EXPECT_TRUE(moved->getEditable());
  EXPECT_EQ(moved->getRemaps().size(), 1U);
  EXPECT_EQ(moved->getParameter(HABMNocConnection::WRITE_BANDWIDTH())->getValue(), "700");
}

}  // namespace
