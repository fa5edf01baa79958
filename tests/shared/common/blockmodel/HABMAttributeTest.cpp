// HABMAttributeTest.cpp: which names are known, and the four interface-attribute grammars, each read and
// written back.
#include "blockmodel/HABMAttribute.h"

#include <gtest/gtest.h>

namespace {

using A = HABMAttribute;

TEST(HABMAttributeVocabulary, BlockAndPortNamesAreRecognisedIgnoringCase) {
  EXPECT_TRUE(A::isBlockAttribute("dont_touch"));
  EXPECT_TRUE(A::isBlockAttribute("downgradeipidentifiedwarnings"));  // by its text, not its constant's name
  EXPECT_FALSE(A::isBlockAttribute("DOWNGRADE_IP_WARNINGS"));
  EXPECT_FALSE(A::isBlockAttribute("MARK_DEBUG"));
  EXPECT_TRUE(A::isPortAttribute("mark_debug"));
  EXPECT_FALSE(A::isPortAttribute("OPM_NOC"));
}

TEST(HABMAttributeInfo, ThreeWordsMakeAnEntryAndTheExtraPairIsWrittenOnlyWhole) {
  auto const info = [](auto t) { return A::decodeInterfaceInfo(A::encodeInterfaceInfo(t)); };
  EXPECT_EQ(info("a b"), "");
  EXPECT_EQ(info("  a   b  c "), "a b c");
  EXPECT_EQ(info("a b c d"), "a b c");
  EXPECT_EQ(info("a b c d e f"), "a b c d e");
  EXPECT_EQ(A::decodeInterfaceInfo({"v", "i", "", "x", "y"}), "");
  // Lists skip malformed entries both ways.
  EXPECT_EQ(A::decodeInterfaceInfos(A::encodeInterfaceInfos("v i A, bad entry, v i B")), "v i A, v i B");
  EXPECT_EQ(A::decodeInterfaceInfos({A::InterfaceInfo{"v", "i", "l", "x", ""}, A::InterfaceInfo{}}), "v i l");
}

TEST(HABMAttributeParameter, BlankAndEqualsSeparateAlikeAndAnInnerEqualsIsLost) {
  auto const one = [](auto t) { return A::decodeInterfaceParameter(A::encodeInterfaceParameter(t)); };
  for (char const* text : {"FREQ_HZ 100", "FREQ_HZ=100", " FREQ_HZ = 100 "}) {
    EXPECT_EQ(one(text), "FREQ_HZ 100") << text;
  }
  EXPECT_EQ(one("A B=C"), "A B C");
  EXPECT_EQ(one("A"), "");
  EXPECT_EQ(A::encodeInterfaceParameter("A =").name, "A");
  EXPECT_EQ(one("A ="), "");
  EXPECT_EQ(A::decodeInterfaceParameter({"A", "1", "x"}), "A 1");
}

TEST(HABMAttributeParameter, InterfaceKeywordScopesTheFollowingEntriesBothWays) {
  auto const list = [](auto t) { return A::decodeInterfaceParameters(A::encodeInterfaceParameters(t)); };
  EXPECT_EQ(list("X 0, ORV_INTERFACENAME S_AXI, FREQ_HZ 100, A =, orv_interfacename M_AXI, FREQ_HZ 200"),
            "X 0, ORV_INTERFACENAME S_AXI, FREQ_HZ 100, ORV_INTERFACENAME M_AXI, FREQ_HZ 200");
  EXPECT_EQ(list("ORV_INTERFACENAME x"), "");
  std::vector<A::InterfaceParameter> const ps{
      {"A", "1", "s"}, {"C", "3", ""}, {"", "x", "m"}, {"D", "4", "m"}};
  EXPECT_EQ(A::decodeInterfaceParameters(ps), "ORV_INTERFACENAME s, A 1, C 3, ORV_INTERFACENAME m, D 4");
  // An unscoped entry written after a keyword reads back scoped.
  EXPECT_EQ(A::encodeInterfaceParameters(A::decodeInterfaceParameters(ps)).at(1).interfaceName, "s");
}

TEST(HABMAttributeMode, SecondWordIsTheMonitoredModeOnlyForMonitor) {
  auto const mode = [](auto t) { return A::decodeInterfaceMode(A::encodeInterfaceMode(t)); };
  EXPECT_EQ(mode("slave S_AXI"), "slave S_AXI");
  EXPECT_EQ(mode("Monitor slave S_AXI"), "Monitor slave S_AXI");
  EXPECT_EQ(mode("slave a b"), "slave b");
  EXPECT_EQ(mode("monitor"), "");
}

TEST(HABMAttributeAddressing, ScanStopsAtTheFirstUnknownParameterAndTheModeNamesTheReference) {
  auto const stopped = A::encodeInterfaceAddressing("ORV_INTERFACENAME x, FOO 1, MODE slave");
  EXPECT_EQ(stopped.interfaceName + "|" + stopped.mode, "x|");
  auto const full = A::encodeInterfaceAddressing("ORV_INTERFACENAME M, mode Master, AddressSpaceRef as0");
  EXPECT_EQ(A::decodeInterfaceAddressing(full), "ORV_INTERFACENAME M, MODE Master, ADDRESSSPACEREF as0");
  EXPECT_EQ(A::decodeInterfaceAddressing({"S", "slave", "mm"}),
            "ORV_INTERFACENAME S, MODE slave, MEMORYMAPREF mm");
  EXPECT_EQ(A::decodeInterfaceAddressing({"S", "", "mm"}), "");
}

}  // namespace
