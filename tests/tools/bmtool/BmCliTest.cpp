// BmCliTest.cpp: bmtool's dispatch, common options, exit codes and the addr command.
#include "BmCli.h"

#include "param/HPAParamMgr.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

struct CliRun {
  int code;
  std::string out;
  std::string err;
};

CliRun run(std::vector<std::string> const& args) {
  std::ostringstream out;
  std::ostringstream err;
  int const code = bmtool::runCli(args, out, err);
  return {code, out.str(), err.str()};
}

TEST(BmCliTest, ExitCodesSeparateUsageErrorsFromSuccess) {
  struct {
    std::vector<std::string> args;
    int code;
  } const cases[] = {
      {{}, bmtool::EXIT_USAGE},
      {{"frobnicate"}, bmtool::EXIT_USAGE},
      {{"addr"}, bmtool::EXIT_USAGE},
      {{"addr", "--bogus", "1"}, bmtool::EXIT_USAGE},
      {{"addr", "--param"}, bmtool::EXIT_USAGE},
      {{"addr", "--param", "novalue", "1"}, bmtool::EXIT_USAGE},
      {{"--help"}, bmtool::EXIT_OK},
      {{"addr", "--help"}, bmtool::EXIT_OK},
      {{"addr", "zz"}, bmtool::EXIT_OK},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(run(c.args).code, c.code) << ::testing::PrintToString(c.args);
  }
}

TEST(BmCliTest, AddrPrintsEveryFormAndTreatsNegativeNumbersAsTexts) {
  CliRun const r = run({"addr", "0x1_0000", "-1", "--", "-v", "zz"});
  ASSERT_EQ(r.code, bmtool::EXIT_OK) << r.err;
  std::istringstream lines(r.out);
  std::string header;
  std::string first;
  std::string second;
  std::string third;
  std::string fourth;
  std::getline(lines, header);
  std::getline(lines, first);
  std::getline(lines, second);
  std::getline(lines, third);
  std::getline(lines, fourth);
  EXPECT_EQ(header.rfind("text", 0), 0U);
  EXPECT_NE(first.find("yes"), std::string::npos);
  EXPECT_NE(first.find("0x1_0000"), std::string::npos);
  EXPECT_NE(first.find("64K"), std::string::npos);
  EXPECT_NE(second.find("0xFFFF_FFFF_FFFF_FFFF_FFFF_FFFF_FFFF_FFFF"), std::string::npos);
  EXPECT_EQ(third.rfind("-v ", 0), 0U);  // after "--" even "-v" is a text
  EXPECT_NE(fourth.find("no"), std::string::npos);
}

TEST(BmCliTest, ParamOptionReachesTheParameterManager) {
  CliRun const r = run({"addr", "--param", "project.cli.test=true", "--param=project.cli.other=0", "1"});
  ASSERT_EQ(r.code, bmtool::EXIT_OK) << r.err;
  EXPECT_TRUE(HPAParamMgr::getParamMgr().getValueIfExistAsBool("project.cli.test", false));
  EXPECT_FALSE(HPAParamMgr::getParamMgr().getValueIfExistAsBool("project.cli.other", true));
}

}  // namespace
