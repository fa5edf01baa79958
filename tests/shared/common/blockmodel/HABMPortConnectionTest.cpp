// HABMPortConnectionTest.cpp: path storage, resolution and pruning, the connect check, and the creator by
// ends with its traces.
#include "blockmodel/HABMPortConnection.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPort.h"
#include "msg/ComMsgMgr.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

constexpr unsigned int kBlockMask = 0x1000000U;

using Paths = std::set<std::string>;

// top with port "clk"; "/u0" with "clk", "d", and "/u0/u1" with "p"; "/u2" with "p"; "/u10" with "p".
class HABMPortConnectionTree : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
  HABMPort* clk_ = top_->createPort("clk", false);
  HABMBlock* u0_ = top_->createSubBlock("u0", "m0", false);
  HABMPort* u0clk_ = u0_->createPort("clk", false);
  HABMPort* u0d_ = u0_->createPort("d", false);
  HABMBlock* u1_ = u0_->createSubBlock("u1", "m1", false);
  HABMPort* u1p_ = u1_->createPort("p", false);
  HABMPort* u2p_ = top_->createSubBlock("u2", "m", false)->createPort("p", false);
  HABMPort* u10p_ = top_->createSubBlock("u10", "m", false)->createPort("p", false);
};

// Paths.

TEST_F(HABMPortConnectionTree, PathsAreStoredRelativeAndThoseOutsideTheBlockAreDropped) {
  HABMPortConnection* c = u0_->createPortConnection("n", false);
  EXPECT_TRUE(c->setSourcePath("/u0/clk"));
  EXPECT_EQ(c->getSourcePath(false), "clk");
  EXPECT_FALSE(c->setSourcePath("/other/p"));
  c->insertTargetPath("old");
  EXPECT_FALSE(c->setTargetPaths({"a", "/other/b", "/u0/c"}));
  EXPECT_EQ(c->getTargetPaths(false), (Paths{"a", "c"}));
  EXPECT_FALSE(c->insertTargetPath("/other/d"));
  c->removeTargetPath("/u0/a");
  EXPECT_EQ(c->getTargetPaths(false), (Paths{"c"}));
}

TEST_F(HABMPortConnectionTree, PathsResolveAtAnyDepthInByteOrderAndDanglingTargetsArePrunedOnRequest) {
  HABMPortConnection* c = top_->createPortConnection("u0/u1/p", {"u2/p", "/u10/p", "clk", "u0/d"}, true);
  EXPECT_EQ(c->getSourcePort(), u1p_);
  ASSERT_TRUE(u0_->removePort("d"));
  EXPECT_EQ(c->getTargetPorts(), (std::vector<HABMPort*>{clk_, u10p_, u2p_}));
  EXPECT_TRUE(c->isValid(false));
  EXPECT_EQ(c->getTargetPaths(false).size(), 4U);
  EXPECT_TRUE(c->isValid(true));
  EXPECT_EQ(c->getTargetPaths(false), (Paths{"clk", "u10/p", "u2/p"}));
  u0_->clearSubBlocks();  // the source goes
  EXPECT_FALSE(c->isValid(true));
}

// The connect check and the creator by ends.

TEST_F(HABMPortConnectionTree, CanConnectReachesOneLevelAndRefusesSelfLoops) {
  using Ends = std::pair<char const*, Paths>;
  for (auto const& [source, targets] :
       {Ends{"clk", {"u0/clk"}}, Ends{"/clk", {"/u0/clk", "u2/p"}}, Ends{"clk", {}}}) {
    EXPECT_TRUE(HABMPortConnection::canConnect(*top_, source, targets)) << source;
  }
  for (auto const& [source, targets] :
       {Ends{"clk", {"clk"}}, Ends{"clk", {"/clk"}}, Ends{"u0/u1/p", {"clk"}}, Ends{"clk", {"u0/u1/p"}},
        Ends{"nope", {"clk"}}, Ends{"clk", {"u0/clk", "nope"}}, Ends{"", {"clk"}}}) {
    EXPECT_FALSE(HABMPortConnection::canConnect(*top_, source, targets)) << source << " " << targets.size();
  }
  EXPECT_TRUE(HABMPortConnection::canConnect(*u0_, "/u0/clk", {"u1/p"}));
  EXPECT_FALSE(HABMPortConnection::canConnect(*u0_, "/clk", {"u1/p"}));
}

// A created link is traced as it stands, a refusal by the ends as given.
TEST_F(HABMPortConnectionTree, ByEndsCreatorTracesTheLinkOrTheRefusalAndForceSkipsTheCheck) {
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  EXPECT_NE(u0_->createPortConnection("/u0/clk", {"/u0/u1/p", "d"}, false), nullptr);
  EXPECT_EQ(u0_->createPortConnection("clk", {"u1/gone", "d"}, false), nullptr);
  ASSERT_EQ(capture.texts().size(), 3U);  // the creation first, traced as every child's
  EXPECT_EQ(capture.texts()[1],
            "Connected port connection '/u0/port_connection_0' from source port '/u0/clk' to target ports "
            "'/u0/d, /u0/u1/p'.\n");
  EXPECT_EQ(capture.texts()[2],
            "Failed to create port connection from source port 'clk' to target ports 'd, u1/gone' on block "
            "'/u0'.\n");
  EXPECT_EQ(capture.records()[2].mask, kBlockMask);
  // No target at all passes the check but does not make a valid connection.
  EXPECT_FALSE(top_->createPortConnection("clk", {}, false)->isValid());
  HABMPortConnection* forced = top_->createPortConnection("u0/u1/p", {"clk", "/elsewhere"}, true);
  ASSERT_NE(forced, nullptr);
  EXPECT_EQ(forced->getTargetPaths(false), (Paths{"clk", "elsewhere"}));  // from the top all is inside
  EXPECT_TRUE(forced->isValid());  // a stored source resolves at any depth, unlike the check
}

}  // namespace
