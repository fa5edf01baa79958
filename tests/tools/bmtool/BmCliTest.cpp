// BmCliTest.cpp: bmtool's dispatch, common options, exit codes and the addr command.
#include "BmCli.h"

#include "param/HPAParamMgr.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <regex>
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
      {{"info"}, bmtool::EXIT_USAGE},
      {{"info", "a", "b"}, bmtool::EXIT_USAGE},
      {{"info", "/no/such/file.bm"}, bmtool::EXIT_FAILED},
      {{"convert", "/no/such/file.bm", "/tmp/x.bm"}, bmtool::EXIT_FAILED},
      {{"generate", "/tmp/x.bm", "--depth", "x"}, bmtool::EXIT_USAGE},
      {{"generate", "/tmp/x.bm", "--depth=40", "--fanout=10"}, bmtool::EXIT_USAGE},
      {{"generate", "/tmp/x.bm", "--depth"}, bmtool::EXIT_USAGE},
      {{"infer", "/no/such/file.bm", "/tmp/x.bm"}, bmtool::EXIT_FAILED},
      {{"infer", "/tmp/x.bm"}, bmtool::EXIT_USAGE},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(run(c.args).code, c.code) << ::testing::PrintToString(c.args);
  }
}

TEST(BmCliTest, AddrPrintsEveryFormAndTreatsNegativeNumbersAsTexts) {
  CliRun const r = run({"addr", "0x1_0000", "-1", "--", "-v", "zz"});
  ASSERT_EQ(r.code, bmtool::EXIT_OK) << r.err;
  std::istringstream lines(r.out);
  std::string header, first, second, third, fourth;
  for (std::string* line : {&header, &first, &second, &third, &fourth}) {
    std::getline(lines, *line);
  }
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

TEST(BmCliTest, GenerateConvertAndInfoAgreeOnTheDesign) {
  std::string const plain = ::testing::TempDir() + "bmcli_gen.bm";
  std::string const packed = ::testing::TempDir() + "bmcli_gen.bm.gz";
  CliRun const gen = run({"generate", plain, "--depth", "2", "--fanout=3", "--attrs", "1"});
  ASSERT_EQ(gen.code, bmtool::EXIT_OK) << gen.err;
  EXPECT_NE(gen.out.find("wrote 13 blocks"), std::string::npos) << gen.out;
  ASSERT_EQ(run({"convert", plain, packed, "--pretty"}).code, bmtool::EXIT_OK);
  CliRun const info = run({"info", packed});
  ASSERT_EQ(info.code, bmtool::EXIT_OK) << info.err;
  for (char const* line :
       {"\n/u2/u1  +cell_l2_1", "\nblocks +13\n", "\nattributes +13\n", "\nparameters +13\n"}) {
    EXPECT_TRUE(std::regex_search(info.out, std::regex(line))) << line << " in\n" << info.out;
  }
  std::remove(plain.c_str());
  std::remove(packed.c_str());
}

TEST(BmCliTest, InferRebuildsTheNamedBlockOnly) {
  std::string const in = ::testing::TempDir() + "bmcli_infer_in.bm";
  std::string const out = ::testing::TempDir() + "bmcli_infer_out.bm";
  std::ofstream(in)
      << R"({"top_block":{"module_name":"top","contents":{"sub_blocks":{"u0":{"module_name":"m",)"
      << R"("boundary":{"ports":{"clk":{"type":"wire","direction":"in","attributes":{)"
      << R"("OV_INTERFACE_INFO":{"value":"orvane:signal:clock:1.0 CLK CLK"}}}}}}}}}})";
  auto const countInterfaces = [&](std::string const& file) {
    CliRun const info = run({"info", file});
    std::smatch m;
    return std::regex_search(info.out, m, std::regex("\ninterfaces +([0-9]+)\n")) ? m[1].str() : info.out;
  };
  ASSERT_EQ(run({"infer", in, out, "--instance", "/u0"}).code, bmtool::EXIT_OK);
  EXPECT_EQ(countInterfaces(out), "1");
  ASSERT_EQ(run({"infer", out, out}).code, bmtool::EXIT_OK);  // the top block alone: u0 keeps its interface
  EXPECT_EQ(countInterfaces(out), "1");
  CliRun const missing = run({"infer", in, out, "--instance", "/u9"});
  EXPECT_EQ(missing.code, bmtool::EXIT_FAILED);
  EXPECT_NE(missing.err.find("no block at '/u9'"), std::string::npos) << missing.err;
  std::remove(in.c_str());
  std::remove(out.c_str());
}

TEST(BmCliTest, FailedReadsPrintTheCatalogueSentence) {
  CliRun const r = run({"info", "/no/such/file.bm"});
  EXPECT_NE(r.err.find("ERROR: [90-4] Could not read the block model file '/no/such/file.bm'."),
            std::string::npos)
      << r.err;
}

}  // namespace
