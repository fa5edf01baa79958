// HABMNocConnectionTest.cpp: the rules of a legal NoC link, the link's defaults and parameters, renames,
// the grouping around a block, and the paths walked through the links.
#include "blockmodel/HABMNocConnection.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocPath.h"
#include "blockmodel/HABMParameter.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"

#include "HABMNocTestUtil.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

using N = HABMNocInterface;
using C = HABMNocConnection;
using habm_test::makeNocInterface;

// top holds "a" (with NoC interfaces of its own, so it is a NoC scope) holding "b"; "c" beside "a".
class HABMNocTree : public ::testing::Test {
 protected:
  std::string refusal(std::string const& source, std::string const& target) const {
    std::string error = "stale";
    bool const legal = C::canConnect(*top_, source, target, error);
    EXPECT_EQ(legal, error.empty());
    return error;
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
  HABMBlock* a_ = top_->createSubBlock("a", "ma", false);
  HABMBlock* b_ = a_->createSubBlock("b", "mb", false);
  HABMBlock* c_ = top_->createSubBlock("c", "mc", false);
};

TEST_F(HABMNocTree, CanConnectAppliesTheRulesInOrder) {
  makeNocInterface(*top_, "nmu", N::MODE_NMU);
  makeNocInterface(*top_, "nsu", N::MODE_NSU);
  makeNocInterface(*top_, "nsu2", N::MODE_NSU);
  makeNocInterface(*top_, "axis", N::MODE_NSU, N::PROTOCOL_AXIS);
  makeNocInterface(*top_, "ini", N::MODE_NSU, N::PROTOCOL_AXIMM, N::CATEGORY_INI);
  makeNocInterface(*top_, "ddr", N::MODE_NSU, N::PROTOCOL_AXIMM, N::CATEGORY_DDR);
  makeNocInterface(*top_, "vnsu", N::MODE_VNSU);
  makeNocInterface(*top_, "vnmu", N::MODE_VNMU);
  makeNocInterface(*a_, "nmu", N::MODE_NMU);
  makeNocInterface(*b_, "nmu", N::MODE_NMU);
  makeNocInterface(*b_, "nsu", N::MODE_NSU);
  makeNocInterface(*c_, "nsu", N::MODE_NSU);
  top_->createNocConnection("vnsu", "nsu2", true);
  top_->createNocConnection("nmu", "vnmu", true);
  top_->createNocConnection("nmu", "nsu", true);
  using Case = std::tuple<char const*, char const*, char const*>;  // source, target, refusal
  for (auto const& [source, target, error] : {
           Case{"nope", "nsu", "Source NOC interface not found."},
           Case{"nmu", "/nope", "Target NOC interface not found."},
           Case{"nmu", "/nmu", "Source and Target NOC interfaces are the same NOC interface."},
           Case{"nmu", "axis", "Source and Target NOC protocols do not match."},
           Case{"nmu", "ini", "Source and Target NOC categories do not match."},
           Case{"nmu", "ddr", ""},  // categories other than ini do not matter
           Case{"nsu", "nsu2", "Source NOC mode 'nsu' and Target NOC mode 'nsu' are incompatible."},
           Case{"vnsu", "vnmu", "Source NOC mode 'vnsu' and Target NOC mode 'vnmu' are incompatible."},
           Case{"vnsu", "nsu",
                "Source VNSU interface must connect to a single Target VNSU or NSU interface."},
           Case{"a/nmu", "vnmu",
                "Target VNMU interface must connect from a single Source NMU or VNMU interface."},
           Case{"a/nmu", "c/nsu", ""},  // both in the scope of the top block
           Case{"a/b/nmu", "c/nsu", "Source and Target NOC interfaces must exist within the same NOC scope."},
           Case{"/a/nmu", "a/b/nsu", ""},  // the source's block is the target's scope
           Case{"nmu", "nsu", "Duplicate NOC connection already exists at '/noc_connection_2'."},
       }) {
    EXPECT_EQ(refusal(source, target), error) << source << " -> " << target;
  }
}

TEST_F(HABMNocTree, ALinkGetsTheDefaultsOfItsEndsAndOnlyValidParameters) {
  makeNocInterface(*top_, "nmu", N::MODE_NMU);
  makeNocInterface(*top_, "nsu", N::MODE_NSU);
  makeNocInterface(*top_, "smu", N::MODE_NMU, N::PROTOCOL_AXIS);
  makeNocInterface(*top_, "ssu", N::MODE_NSU, N::PROTOCOL_AXIS);
  makeNocInterface(*top_, "vnmu", N::MODE_VNMU);
  C* mm = top_->createNocConnection("nmu", "nsu", false);
  C* stream = top_->createNocConnection("smu", "ssu", false);
  C* carrier = top_->createNocConnection("nmu", "vnmu", false);
  EXPECT_EQ(mm->getParameters().size(), 12U);
  EXPECT_EQ(mm->getParameter(C::READ_LATENCY())->getValue(), "300");
  EXPECT_EQ(stream->getParameters().size(), 9U);
  EXPECT_TRUE(carrier->getParameters().empty());
  EXPECT_TRUE(mm->isPrimary() && mm->isAddressable());
  EXPECT_FALSE(carrier->isPrimary());

  mm->clearParameters();
  EXPECT_NE(mm->createParameter("read_latency", "10"), nullptr);  // the spelling given is kept
  EXPECT_EQ(mm->getParameter("read_latency")->getValue(), "10");
  EXPECT_EQ(stream->createParameter("read_latency", "10"), nullptr);
  EXPECT_EQ(carrier->createParameter(C::WRITE_LATENCY(), "1"), nullptr);

  EXPECT_EQ(C::getVisibleParameterNames(*mm).count(C::HIGH_PRIORITY_ROUTING()), 0U);
  EXPECT_EQ(C::getVisibleParameterNames(*mm).count(C::PHASE_SETTINGS()), 0U);
  HPAParamOverride phases("project.enableNocPhases", "true");
  EXPECT_EQ(C::getVisibleParameterNames(*mm).count(C::PHASE_SETTINGS()), 1U);
}

// Only blocks that hold both ends can draw a link between them; the highest such link is named, and a link
// drawn above the block asked about does not count.
TEST_F(HABMNocTree, ADuplicateIsTheFirstLinkBetweenTheSameEndsInTheBlockOrBelow) {
  makeNocInterface(*b_, "nmu", N::MODE_NMU);
  makeNocInterface(*b_, "nsu", N::MODE_NSU);
  b_->createNocConnection("nmu", "nsu", true)->setSourcePath("elsewhere/nmu");
  a_->createNocConnection("b/nmu", "b/nsu", true);
  EXPECT_EQ(refusal("a/b/nmu", "a/b/nsu"),
            "Duplicate NOC connection already exists at '/a/noc_connection_0'.");
  top_->createNocConnection("a/b/nmu", "a/b/nsu", true);
  EXPECT_EQ(refusal("a/b/nmu", "a/b/nsu"), "Duplicate NOC connection already exists at '/noc_connection_0'.");
  std::string error;
  EXPECT_TRUE(C::canConnect(*b_, "nmu", "nsu", error)) << error;
}

TEST_F(HABMNocTree, RefusedLinksAndRenamesAreTraced) {
  makeNocInterface(*top_, "nmu", N::MODE_NMU);
  makeNocInterface(*top_, "nsu", N::MODE_NSU);
  ComMsgScopeGuard on("HABM");
  ComMsgCapture capture;
  std::string error;
  EXPECT_EQ(top_->createNocConnection("nsu", "nmu", error, false), nullptr);
  EXPECT_EQ(
      capture.texts().back(),
      "Failed to create noc connection from 'nsu' to 'nmu' on block '/'. Source NOC mode 'nsu' and Target "
      "NOC mode 'nmu' are incompatible.\n");
  C* forced = top_->createNocConnection("nsu", "nmu", error, true);
  ASSERT_NE(forced, nullptr);
  EXPECT_TRUE(error.empty());
  C* other = top_->createNocConnection("x", false);
  capture.clear();
  EXPECT_TRUE(top_->renameNocConnection(forced->getName(), forced->getName()));  // silently
  for (auto const& [from, to] : {std::pair{"noc_connection_0", "x"}, {"nope", "y"}, {"x", "a/b"}}) {
    EXPECT_FALSE(top_->renameNocConnection(from, to)) << from << " " << to;
  }
  EXPECT_TRUE(top_->renameNocConnection("x", "y"));
  EXPECT_EQ(top_->getNocConnection("y"), other);
  EXPECT_EQ(top_->getNocConnection("x"), nullptr);
  ASSERT_EQ(capture.texts().size(), 4U);
  EXPECT_EQ(capture.texts()[2], "Failed to rename noc connection from 'x' to 'a/b' on block '/'.\n");
  EXPECT_EQ(capture.texts()[3], "Renamed noc connection from 'x' to 'y' on block '/'.\n");
}

TEST_F(HABMNocTree, LinksGroupByHowTheyMeetABlock) {
  makeNocInterface(*top_, "t", N::MODE_NSU);
  makeNocInterface(*a_, "va", N::MODE_VNSU);
  makeNocInterface(*b_, "nmu", N::MODE_NMU);
  makeNocInterface(*b_, "nsu", N::MODE_NSU);
  makeNocInterface(*c_, "n", N::MODE_NSU);
  C* inside = b_->createNocConnection("nmu", "nsu", true);
  C* out = a_->createNocConnection("b/nmu", "va", true);
  C* up = top_->createNocConnection("a/va", "t", true);
  C* away = top_->createNocConnection("c/n", "t", true);
  C* in = top_->createNocConnection("t", "a/b/nsu", true);
  std::vector<C*> others, internal, outgoing, incoming;
  EXPECT_TRUE(C::groupNocConnections(*a_, others, internal, outgoing, incoming));
  EXPECT_EQ(internal, (std::vector<C*>{out, inside}));
  EXPECT_EQ(outgoing, std::vector<C*>{});
  EXPECT_EQ(others, (std::vector<C*>{up, away}));
  EXPECT_EQ(incoming, std::vector<C*>{in});
  C::groupNocConnections(*b_, others, internal, outgoing, incoming);
  EXPECT_EQ(internal, std::vector<C*>{inside});
  EXPECT_EQ(others, (std::vector<C*>{up, away, in, out}));
  EXPECT_TRUE(C::isExportNocConnection(b_->getNocInterface("nmu"), a_->getNocInterface("va")));
  EXPECT_TRUE(C::isImportNocConnection(top_->getNocInterface("t"), b_->getNocInterface("nsu")));
  EXPECT_FALSE(C::isExportNocConnection(b_->getNocInterface("nmu"), b_->getNocInterface("nsu")));
}

// Paths.

std::vector<std::string> names(std::set<HABMNocPath> const& paths) {
  std::vector<std::string> out;
  for (HABMNocPath const& path : paths) {
    out.push_back(path.getName());
  }
  return out;
}

TEST_F(HABMNocTree, PathsRunFromHeadsThroughVirtualInterfacesToEachEnd) {
  HABMNocInterface* nmu = makeNocInterface(*b_, "nmu", N::MODE_NMU);
  HABMNocInterface* vnmu = makeNocInterface(*b_, "out", N::MODE_VNMU);
  HABMNocInterface* vnsu = makeNocInterface(*c_, "in", N::MODE_VNSU);
  HABMNocInterface* nsu = makeNocInterface(*c_, "nsu", N::MODE_NSU);
  makeNocInterface(*c_, "nsu2", N::MODE_NSU);
  b_->createNocConnection("nmu", "out", true);
  C* primary = top_->createNocConnection("a/b/out", "c/in", true);
  c_->createNocConnection("in", "nsu", true);
  c_->createNocConnection("in", "nsu2", true);
  top_->createNocConnection("a/b/out", "c/in", true);  // a second link between the same two: one path
  makeNocInterface(*top_, "lone", N::MODE_NMU);
  std::set<HABMNocPath> const paths = HABMNocPath::createNocPaths(top_.get());
  EXPECT_EQ(names(paths), (std::vector<std::string>{"/a/b/nmu->/a/b/out->/c/in->/c/nsu",
                                                    "/a/b/nmu->/a/b/out->/c/in->/c/nsu2"}));
  HABMNocPath const& first = *paths.begin();
  EXPECT_EQ(first.getVNocInterfaces(), (std::vector<HABMNocInterface*>{vnmu, vnsu}));
  EXPECT_EQ(first.getNmuInterface(), nmu);
  EXPECT_EQ(first.getNsuInterface(), nsu);
  EXPECT_EQ(first.getPrimaryConnection(), primary);
  EXPECT_TRUE(first.isCompletePath() && first.isOwnedByStatic() && first.isAddressable());
  c_->setBlockRsw(true);
  EXPECT_TRUE(first.hasRswInterface());
  EXPECT_EQ(first.getTargetRswBlock(), c_);
  EXPECT_EQ(first.getSourceRswBlock(), nullptr);

  // Seen from "c", the path starts at the virtual interface fed from outside: it has no NMU.
  std::set<HABMNocPath> const inC = HABMNocPath::createNocPaths(c_);
  ASSERT_EQ(inC.size(), 2U);
  EXPECT_EQ(inC.begin()->getSourceInterface(), vnsu);
  EXPECT_FALSE(inC.begin()->isCompletePath());
  EXPECT_TRUE(HABMNocPath::createNocPaths(nullptr).empty());
}

TEST_F(HABMNocTree, CyclesEndAndDeadEndsGiveNothing) {
  makeNocInterface(*top_, "v1", N::MODE_VNMU);
  makeNocInterface(*top_, "v2", N::MODE_VNMU);
  makeNocInterface(*top_, "nmu", N::MODE_NMU);
  top_->createNocConnection("nmu", "v1", true);
  top_->createNocConnection("v1", "v2", true);
  top_->createNocConnection("v2", "v1", true);
  top_->createNocConnection("v1", "gone", true);  // resolves to nothing
  EXPECT_TRUE(HABMNocPath::createNocPaths(top_.get()).empty());
  HABMNocPath const chain(top_->getNocConnections(false));
  EXPECT_EQ(chain.getName(), "/nmu->/v1->/v2");
  EXPECT_EQ(chain.getPrimaryConnection(), nullptr);
  EXPECT_FALSE(chain.isOwnedByStatic());
}

}  // namespace
