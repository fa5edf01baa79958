// HABMPortConnectionTest.cpp: path storage, the connect check, the creators, validity and the finds.
#include "blockmodel/HABMPortConnection.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPort.h"
#include "msg/ComMsgMgr.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned int kBlockMask = 0x1000000U;
constexpr unsigned int kChildMask = 0x1000002U;

using Paths = std::set<std::string>;

// top with port "clk"; "/u0" with "clk", "d", and "/u0/u1" with "p"; "/u2" with "p"; "/u10" with "p".
class HABMPortConnectionTree : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("top");
    clk_ = top_->createPort("clk", false);
    u0_ = top_->createSubBlock("u0", "m0", false);
    u0clk_ = u0_->createPort("clk", false);
    u0d_ = u0_->createPort("d", false);
    u1_ = u0_->createSubBlock("u1", "m1", false);
    u1_->createPort("p", false);
    u2p_ = top_->createSubBlock("u2", "m", false)->createPort("p", false);
    top_->createSubBlock("u10", "m", false)->createPort("p", false);
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  std::unique_ptr<HABMBlock> top_;
  HABMBlock* u0_ = nullptr;
  HABMBlock* u1_ = nullptr;
  HABMPort* clk_ = nullptr;
  HABMPort* u0clk_ = nullptr;
  HABMPort* u0d_ = nullptr;
  HABMPort* u2p_ = nullptr;
};

// Paths.

TEST_F(HABMPortConnectionTree, SourceOutsideTheBlockEmptiesTheSource) {
  HABMPortConnection* c = u0_->createPortConnection("n", false);
  EXPECT_TRUE(c->setSourcePath("/u0/clk"));
  EXPECT_EQ(c->getSourcePath(false), "clk");
  EXPECT_EQ(c->getSourcePath(true), "/u0/clk");
  EXPECT_FALSE(c->setSourcePath("/other/p"));
  EXPECT_EQ(c->getSourcePath(false), "");
  EXPECT_EQ(c->getSourcePath(true), "");
  EXPECT_EQ(c->getSourcePort(), nullptr);
}

TEST_F(HABMPortConnectionTree, TargetsOutsideTheBlockAreSkippedAndReported) {
  HABMPortConnection* c = u0_->createPortConnection("n", false);
  c->insertTargetPath("old");
  EXPECT_FALSE(c->setTargetPaths({"a", "/other/b", "/u0/c"}));
  EXPECT_EQ(c->getTargetPaths(false), (Paths{"a", "c"}));
  EXPECT_EQ(c->getTargetPaths(true), (Paths{"/u0/a", "/u0/c"}));
  EXPECT_TRUE(c->setTargetPaths({}));
  EXPECT_TRUE(c->getTargetPaths(false).empty());
}

TEST_F(HABMPortConnectionTree, TargetSetIsOrderedByBytesWithoutDuplicates) {
  HABMPortConnection* c = top_->createPortConnection("n", false);
  EXPECT_TRUE(c->insertTargetPath("u2/p"));
  EXPECT_TRUE(c->insertTargetPath("/u10/p"));
  EXPECT_TRUE(c->insertTargetPath("u1/p"));
  EXPECT_TRUE(c->insertTargetPath("u2/p"));
  EXPECT_FALSE(c->insertTargetPath(""));
  EXPECT_EQ(c->getTargetPaths(false), (Paths{"u1/p", "u10/p", "u2/p"}));
  EXPECT_EQ(*c->getTargetPaths(false).begin(), "u1/p");
  c->removeTargetPath("/u1/p");
  c->removeTargetPath("nope");
  EXPECT_EQ(c->getTargetPaths(false), (Paths{"u10/p", "u2/p"}));
  c->clearTargetPaths();
  EXPECT_TRUE(c->getTargetPaths(false).empty());
}

TEST_F(HABMPortConnectionTree, PathsResolveAtAnyDepthAndSkipDanglingTargets) {
  HABMPortConnection* c = top_->createPortConnection("n", false);
  c->setSourcePath("u0/u1/p");
  c->setTargetPaths({"u2/p", "u0/gone", "clk"});
  EXPECT_EQ(c->getSourcePort(), u1_->getPort("p"));
  EXPECT_EQ(c->getTargetPorts(), (std::vector<HABMPort*>{clk_, u2p_}));
}

TEST(HABMPortConnectionTexts, TypesReadLowerCased) {
  EXPECT_EQ(HABMPortConnection::encodeConnectionType("HARD"), HABMPortConnection::HARD);
  EXPECT_EQ(HABMPortConnection::encodeConnectionType("soft"), HABMPortConnection::SOFT);
  EXPECT_EQ(HABMPortConnection::encodeConnectionType("firm"), HABMPortConnection::UNKNOWN);
  EXPECT_EQ(HABMPortConnection::decodeConnectionType(HABMPortConnection::HARD), "hard");
  EXPECT_EQ(HABMPortConnection::decodeConnectionType(HABMPortConnection::UNKNOWN), "");
}

// The connect check.

TEST_F(HABMPortConnectionTree, CanConnectReachesOneLevelAndRefusesSelfLoops) {
  struct Case {
    char const* source;
    Paths targets;
    bool expected;
  };
  for (Case const& c :
       {Case{"clk", {"u0/clk"}, true}, Case{"/clk", {"/u0/clk", "u2/p"}, true}, Case{"clk", {}, true},
        Case{"clk", {"clk"}, false}, Case{"clk", {"/clk"}, false}, Case{"u0/u1/p", {"clk"}, false},
        Case{"clk", {"u0/u1/p"}, false}, Case{"nope", {"clk"}, false}, Case{"clk", {"u0/clk", "nope"}, false},
        Case{"", {"clk"}, false}}) {
    EXPECT_EQ(HABMPortConnection::canConnect(*top_, c.source, c.targets), c.expected) << c.source;
  }
  EXPECT_TRUE(HABMPortConnection::canConnect(*u0_, "/u0/clk", {"u1/p"}));
  EXPECT_FALSE(HABMPortConnection::canConnect(*u0_, "/clk", {"u1/p"}));
}

// Creators.

TEST_F(HABMPortConnectionTree, NamedCreatorGivesAutomaticNamesAndRefusesTakenOnesUnlessForced) {
  EXPECT_EQ(top_->createPortConnection("", false)->getName(), "port_connection_0");
  EXPECT_EQ(top_->createPortConnection("port_connection_2", false)->getName(), "port_connection_2");
  EXPECT_EQ(top_->createPortConnection("", false)->getName(), "port_connection_3");
  EXPECT_EQ(top_->createPortConnection("", true)->getName(), "port_connection_3");
  EXPECT_EQ(top_->createPortConnection("a/b", true), nullptr);
  EXPECT_EQ(top_->createPortConnection("port_connection_0", false), nullptr);
  HABMPortConnection* second = top_->createPortConnection("port_connection_0", true);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(top_->getPortConnection("port_connection_0"), second);
  EXPECT_EQ(top_->getPortConnections().size(), 5U);
  EXPECT_EQ(second->getConnectionType(), HABMPortConnection::SOFT);
  EXPECT_EQ(second->getPath(), "/port_connection_0");
}

TEST_F(HABMPortConnectionTree, ByEndsCreatorStoresRelativePaths) {
  HABMPortConnection* c = u0_->createPortConnection("/u0/clk", {"/u0/u1/p", "d"}, false);
  ASSERT_NE(c, nullptr);
  EXPECT_EQ(c->getName(), "port_connection_0");
  EXPECT_EQ(c->getSourcePath(false), "clk");
  EXPECT_EQ(c->getTargetPaths(false), (Paths{"d", "u1/p"}));
  EXPECT_TRUE(c->isValid());
  EXPECT_EQ(u0_->createPortConnection("clk", {"clk"}, false), nullptr);
  EXPECT_EQ(u0_->getPortConnections().size(), 1U);
  // No target at all passes the check but does not make a valid connection.
  HABMPortConnection* empty = top_->createPortConnection("clk", {}, false);
  ASSERT_NE(empty, nullptr);
  EXPECT_FALSE(empty->isValid());
}

TEST_F(HABMPortConnectionTree, ForceSkipsTheConnectCheck) {
  HABMPortConnection* c = top_->createPortConnection("u0/u1/p", {"clk", "/elsewhere"}, true);
  ASSERT_NE(c, nullptr);
  EXPECT_EQ(c->getSourcePath(false), "u0/u1/p");
  EXPECT_EQ(c->getTargetPaths(false),
            (Paths{"clk", "elsewhere"}));  // from the top every absolute path is inside
  EXPECT_TRUE(c->isValid());               // a stored source resolves at any depth, unlike the check
}

TEST_F(HABMPortConnectionTree, ByEndsTracesCreationThenConnection) {
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  u0_->createPortConnection("clk", {"u1/p", "d"}, false);
  u0_->createPortConnection("clk", {"u1/gone", "d"}, false);
  using T = std::pair<std::string, unsigned int>;
  std::vector<T> seen;
  for (auto const& r : capture.records()) {
    seen.emplace_back(r.text, r.mask);
  }
  EXPECT_EQ(seen,
            (std::vector<T>{
                {"Created port connection 'port_connection_0' on block '/u0'.\n", kChildMask},
                {"Connected port connection '/u0/port_connection_0' from source port '/u0/clk' to target "
                 "ports '/u0/d, /u0/u1/p'.\n",
                 kChildMask},
                {"Failed to create port connection from source port 'clk' to target ports 'd, u1/gone' on "
                 "block '/u0'.\n",
                 kBlockMask},
            }));
}

TEST_F(HABMPortConnectionTree, RemoveTracesAndKeepsTheOthers) {
  top_->createPortConnection("a", false);
  top_->createPortConnection("b", false);
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  EXPECT_TRUE(top_->removePortConnection("a"));
  EXPECT_FALSE(top_->removePortConnection("a"));
  ASSERT_EQ(capture.texts(), (std::vector<std::string>{"Removed port connection 'a' from block '/'.\n"}));
  EXPECT_EQ(top_->getPortConnections().size(), 1U);
  top_->clearPortConnections();
  EXPECT_FALSE(top_->hasPortConnections());
}

// Validity.

TEST_F(HABMPortConnectionTree, RemovedTargetDanglesUntilPruned) {
  HABMPortConnection* c = top_->createPortConnection("clk", {"u0/clk", "u0/d"}, false);
  ASSERT_TRUE(u0_->removePort("d"));
  EXPECT_EQ(c->getTargetPorts(), (std::vector<HABMPort*>{u0clk_}));
  EXPECT_TRUE(c->isValid());
  EXPECT_EQ(c->getTargetPaths(false).size(), 2U);
  EXPECT_TRUE(c->isValid(true));
  EXPECT_EQ(c->getTargetPaths(false), (Paths{"u0/clk"}));
  ASSERT_TRUE(u0_->removePort("clk"));
  EXPECT_FALSE(c->isValid(false));
  EXPECT_EQ(c->getTargetPaths(false).size(), 1U);
  EXPECT_FALSE(c->isValid(true));
  EXPECT_TRUE(c->getTargetPaths(false).empty());
}

TEST_F(HABMPortConnectionTree, RemovedSourceMakesItInvalid) {
  HABMPortConnection* c = top_->createPortConnection("u0/d", {"clk"}, false);
  top_->removeSubBlock("u0");
  EXPECT_EQ(c->getSourcePort(), nullptr);
  EXPECT_FALSE(c->isValid());
}

// Finds.

TEST_F(HABMPortConnectionTree, FindsUseTheConnectionPath) {
  HABMPortConnection* onTop = top_->createPortConnection("n", false);
  HABMPortConnection* inU0 = u0_->createPortConnection("n", false);
  HABMPortConnection* inU1 = u1_->createPortConnection("m", false);
  EXPECT_EQ(top_->findPortConnection("n", false), onTop);
  EXPECT_EQ(top_->findPortConnection("/u0/n", false), inU0);
  EXPECT_EQ(top_->findPortConnection("u0/u1/m", false), nullptr);
  EXPECT_EQ(top_->findPortConnection("u0/u1/m", true), inU1);
  EXPECT_EQ(top_->findPortConnections("", false), (std::vector<HABMPortConnection*>{onTop}));
  EXPECT_EQ(top_->findPortConnections("*n", true), (std::vector<HABMPortConnection*>{onTop, inU0}));
  EXPECT_EQ(top_->findPortConnections("", true), (std::vector<HABMPortConnection*>{onTop, inU0, inU1}));
}

}  // namespace
