// BmDotTest.cpp: bmtool dot: edges join the objects their paths name, at every depth; loose ends; NoC paths
// and their legend; and names of any bytes drawn by the real Graphviz.
#include "BmDot.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMPortConnection.h"
#include "util/HUTFile.h"

#include "../../shared/common/blockmodel/HABMNocTestUtil.h"
#include "../../shared/common/blockmodel/HABMTestFiles.h"
#include "BmCli.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace {

using BmDot = habm_test::TempDirTest;
using Edges = std::set<std::pair<std::string, std::string>>;

// The parts of a picture a test looks at, by tooltip (the instance path): clusters, edges between nodes,
// the style of each edge, and the loose ends with their colour.
struct Picture {
  std::set<std::string> clusters;
  Edges edges;
  std::map<std::pair<std::string, std::string>, std::string> edgeStyles;
  std::map<std::string, std::string> looseEnds;
  std::vector<std::string> legend;
  std::string text;
};

std::string unquote(std::string const& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    bool const escaped = text[i] == '\\' && i + 1 < text.size();
    char const c = text[escaped ? ++i : i];
    out += escaped && c == 'n' ? '\n' : c;
  }
  return out;
}

Picture draw(HABMBlock const& block, bmtool::DotOptions const& options) {
  std::ostringstream out;
  bmtool::writeDot(out, block, options);
  Picture picture{{}, {}, {}, {}, {}, out.str()};
  static std::regex const quotedAttr(R"re((\w+)="((?:[^"\\]|\\.)*)")re");
  static std::regex const edge(R"re(^\s*(\w+) -> (\w+) \[(.*)\];$)re");
  static std::regex const node(R"re(^\s*(\w+) \[(.*)\];$)re");
  std::map<std::string, std::string> tooltipOf;
  std::vector<std::smatch> edges;  // drawn once every node is known
  std::istringstream lines(picture.text);
  std::vector<std::string> all;
  for (std::string line; std::getline(lines, line);) {
    all.push_back(line);
  }
  for (std::string const& l : all) {
    std::map<std::string, std::string> attrs;
    for (auto it = std::sregex_iterator(l.begin(), l.end(), quotedAttr); it != std::sregex_iterator(); ++it) {
      attrs[(*it)[1]] = unquote((*it)[2]);
    }
    std::smatch m;
    if (std::regex_match(l, m, edge)) {
      edges.push_back(m);
    } else if (l.find("; tooltip=") != std::string::npos) {
      picture.clusters.insert(attrs["tooltip"]);
    } else if (std::regex_match(l, m, node) && attrs.count("tooltip") != 0) {
      tooltipOf[m[1]] = attrs["tooltip"];
      if (l.find("shape=plaintext") != std::string::npos) {
        picture.looseEnds[attrs["tooltip"]] = attrs["fontcolor"];
      }
    } else if (std::regex_match(l, m, node) && attrs.count("fontcolor") != 0) {
      picture.legend.push_back(attrs["label"]);
    }
  }
  for (std::smatch const& m : edges) {
    std::pair<std::string, std::string> const ends{tooltipOf[m[1]], tooltipOf[m[2]]};
    picture.edges.insert(ends);
    picture.edgeStyles[ends] = m[3];
  }
  return picture;
}

// Each depth draws the blocks down to it; an end below it, or naming nothing, is a loose end.
TEST_F(BmDot, EdgesJoinTheObjectsTheirPathsNameAndLooseEndsSayWhy) {
  auto top = HABMBlock::createTopBlock("t");
  top->createPort("clk", false);
  HABMBlock* u0 = top->createSubBlock("u0", "m0", false);
  u0->createPort("clk", false);
  u0->createInterface("M", false);
  u0->createSubBlock("u1", "m1", false)->createPort("d", false);
  top->createPortConnection("clk", {"u0/clk", "gone/x", "u0/u1/d"}, true);
  top->createInterfaceConnection("u0/M", "gone/S", true);
  std::string const red = "#b91c1c";
  std::string const grey = "#6b7280";
  struct {
    std::optional<unsigned> depth;
    std::set<std::string> clusters;
    Edges edges;
    std::map<std::string, std::string> looseEnds;
  } const cases[] = {
      {std::nullopt,
       {"/", "/u0", "/u0/u1"},
       {{"/clk", "/u0/clk"}, {"/clk", "/gone/x"}, {"/clk", "/u0/u1/d"}, {"/u0/M", "/gone/S"}},
       {{"/gone/x", red}, {"/gone/S", red}}},
      {1,
       {"/", "/u0"},
       {{"/clk", "/u0/clk"}, {"/clk", "/gone/x"}, {"/clk", "/u0/u1/d"}, {"/u0/M", "/gone/S"}},
       {{"/gone/x", red}, {"/gone/S", red}, {"/u0/u1/d", grey}}},
      {0, {"/"}, {}, {}},
  };
  for (auto const& c : cases) {
    Picture const picture = draw(*top, {c.depth, false});
    EXPECT_EQ(picture.clusters, c.clusters) << c.depth.value_or(99);
    EXPECT_EQ(picture.edges, c.edges) << c.depth.value_or(99);
    EXPECT_EQ(picture.looseEnds, c.looseEnds) << c.depth.value_or(99);
  }
  EXPECT_NE(draw(*top, {0, false}).text.find("t\\n1 sub-block not drawn"), std::string::npos);
  EXPECT_NE(draw(*top, {1, false}).text.find("u0\\n(m0)\\n1 sub-block not drawn"), std::string::npos);
}

// Each path has its line in the legend; the links of an incomplete path are dashed, those on no path
// dotted; without --noc nothing of the NoC is drawn.
TEST_F(BmDot, NocPathsAreColouredAndIncompleteOnesMarked) {
  using I = HABMNocInterface;
  auto top = HABMBlock::createTopBlock("t");
  habm_test::makeNocInterface(*top->createSubBlock("a", "m", false), "m", I::MODE_NMU);
  habm_test::makeNocInterface(*top->createSubBlock("b", "s", false), "s", I::MODE_NSU);
  habm_test::makeNocInterface(*top->createSubBlock("c", "v", false), "v", I::MODE_VNMU);
  HABMBlock* loop = top->createSubBlock("d", "loop", false);
  habm_test::makeNocInterface(*loop, "x", I::MODE_VNMU);
  habm_test::makeNocInterface(*loop, "y", I::MODE_VNMU);
  for (auto const& [source, target] :
       {std::pair{"a/m", "b/s"}, {"a/m", "c/v"}, {"d/x", "d/y"}, {"d/y", "d/x"}}) {
    ASSERT_NE(top->createNocConnection(source, target, true), nullptr) << source;
  }
  Picture const picture = draw(*top, {std::nullopt, true});
  EXPECT_EQ(picture.edges, (Edges{{"/a/m", "/b/s"}, {"/a/m", "/c/v"}, {"/d/x", "/d/y"}, {"/d/y", "/d/x"}}));
  EXPECT_EQ(picture.legend,
            (std::vector<std::string>{"P1: /a/m -> /b/s",
                                      "P2: /a/m -> /c/v  (incomplete: no NSU, no primary link)"}));
  auto const style = [&](char const* from, char const* to) { return picture.edgeStyles.at({from, to}); };
  EXPECT_EQ(style("/a/m", "/b/s").find("dashed"), std::string::npos);
  EXPECT_NE(style("/a/m", "/c/v").find("style=dashed"), std::string::npos);
  EXPECT_NE(style("/d/x", "/d/y").find("style=dotted"), std::string::npos);

  Picture const plain = draw(*top, {std::nullopt, false});
  EXPECT_TRUE(plain.edges.empty());
  EXPECT_TRUE(plain.legend.empty());
  EXPECT_EQ(plain.text.find("octagon"), std::string::npos);
}

// Names with quotes, backslashes, line breaks and bytes that are no UTF-8 reach Graphviz as text it takes.
TEST_F(BmDot, GraphvizDrawsNamesOfAnyBytesAndItsAbsenceIsSaid) {
  auto top = HABMBlock::createTopBlock("q\"b\\s\nx\xFFy");
  top->createSubBlock("u\\n", "\x01\x7F", false)->createPort("p\"", false);
  ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("odd.bm")), *top, false));
  std::ostringstream out;
  std::ostringstream err;
  ASSERT_EQ(bmtool::runCli({"dot", path("odd.bm"), path("odd.svg")}, out, err), bmtool::EXIT_OK) << err.str();
  std::string const svg = habm_test::bytes(path("odd.svg"));
  EXPECT_EQ(svg.rfind("<?xml", 0), 0U);
  EXPECT_NE(svg.find("q&quot;b\\s"), std::string::npos);
  EXPECT_NE(svg.find("x\\xFFy"), std::string::npos);

  EXPECT_EQ(bmtool::runCli({"dot", path("odd.bm"), path("odd.txt")}, out, err), bmtool::EXIT_USAGE);
  std::string const saved = std::getenv("PATH");
  setenv("PATH", path("nothing").c_str(), 1);
  int const code = bmtool::runCli({"dot", path("odd.bm"), path("none.png")}, out, err);
  setenv("PATH", saved.c_str(), 1);
  EXPECT_EQ(code, bmtool::EXIT_FAILED);
  EXPECT_NE(err.str().find("'dot' of Graphviz (Debian package graphviz), which is not on PATH"),
            std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(path("none.png")));
}

}  // namespace
