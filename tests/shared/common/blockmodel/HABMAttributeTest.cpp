// HABMAttributeTest.cpp: the attribute vocabulary and the four interface-attribute grammars.
#include "blockmodel/HABMAttribute.h"

#include <gtest/gtest.h>

namespace {

using A = HABMAttribute;

TEST(HABMAttributeVocabulary, NamesAreTheirTextsExceptTheDowngradeWarning) {
  EXPECT_EQ(A::BLACK_BOX(), "BLACK_BOX");
  EXPECT_EQ(A::QDK_KERNAL(), "QDK_KERNAL");
  EXPECT_EQ(A::DOWNGRADE_IP_WARNINGS(), "DowngradeIPIdentifiedWarnings");
}

TEST(HABMAttributeVocabulary, BlockAndPortNamesAreRecognisedIgnoringCase) {
  EXPECT_TRUE(A::isBlockAttribute("dont_touch"));
  EXPECT_TRUE(A::isBlockAttribute("downgradeipidentifiedwarnings"));
  EXPECT_FALSE(A::isBlockAttribute("DOWNGRADE_IP_WARNINGS"));
  EXPECT_FALSE(A::isBlockAttribute("MARK_DEBUG"));
  EXPECT_TRUE(A::isPortAttribute("mark_debug"));
  EXPECT_TRUE(A::isPortAttribute("OV_INTERFACE_INFO"));
  EXPECT_FALSE(A::isPortAttribute("OPM_NOC"));
  EXPECT_FALSE(A::isPortAttribute(""));
  EXPECT_FALSE(A::isBlockAttribute(""));
}

TEST(HABMAttributeInfo, ThreeWordsFillTheRecordAndALoneFourthIsDropped) {
  EXPECT_TRUE(A::encodeInterfaceInfo("a b").vlnv.empty());
  auto const four = A::encodeInterfaceInfo("a b c d");
  EXPECT_EQ(four.logicalName, "c");
  EXPECT_TRUE(four.extra0.empty());
  auto const spaced = A::encodeInterfaceInfo("  a   b  c ");
  EXPECT_EQ(spaced.vlnv + spaced.interfaceName + spaced.logicalName, "abc");
  auto const five = A::encodeInterfaceInfo("a b c d e f");
  EXPECT_EQ(A::decodeInterfaceInfo(five), "a b c d e");
}

TEST(HABMAttributeInfo, DecodeWritesTheExtraPairOnlyWhenBothAreSet) {
  A::InterfaceInfo info{"v", "i", "l", "x", ""};
  EXPECT_EQ(A::decodeInterfaceInfo(info), "v i l");
  info.logicalName.clear();
  EXPECT_EQ(A::decodeInterfaceInfo(info), "");
}

TEST(HABMAttributeInfo, ListSkipsMalformedEntriesBothWays) {
  auto const infos = A::encodeInterfaceInfos(
      "orvane:interface:aximm:1.0 S_AXI AWADDR, bad entry, orvane:interface:aximm:1.0 S_AXI AWVALID");
  ASSERT_EQ(infos.size(), 2U);
  EXPECT_EQ(infos[1].logicalName, "AWVALID");
  std::vector<A::InterfaceInfo> withEmpty{infos[0], A::InterfaceInfo{}, infos[1]};
  EXPECT_EQ(A::decodeInterfaceInfos(withEmpty),
            "orvane:interface:aximm:1.0 S_AXI AWADDR, orvane:interface:aximm:1.0 S_AXI AWVALID");
}

TEST(HABMAttributeParameter, BlankAndEqualsSeparateAlikeAndAnInnerEqualsIsLost) {
  for (char const* text : {"FREQ_HZ 100000000", "FREQ_HZ=100000000", " FREQ_HZ = 100000000 "}) {
    auto const p = A::encodeInterfaceParameter(text);
    EXPECT_EQ(p.name, "FREQ_HZ") << text;
    EXPECT_EQ(p.value, "100000000") << text;
  }
  EXPECT_EQ(A::encodeInterfaceParameter("A B=C").value, "B C");
  EXPECT_TRUE(A::encodeInterfaceParameter("A").name.empty());
  auto const trailing = A::encodeInterfaceParameter("A =");
  EXPECT_EQ(trailing.name, "A");
  EXPECT_EQ(trailing.value, "");
  EXPECT_EQ(A::decodeInterfaceParameter(trailing), "");
  EXPECT_EQ(A::decodeInterfaceParameter({"A", "1", "x"}), "A 1");
}

TEST(HABMAttributeParameter, InterfaceKeywordScopesTheFollowingEntries) {
  auto const ps = A::encodeInterfaceParameters(
      "X 0, ORV_INTERFACENAME S_AXI, FREQ_HZ 100, A =, orv_interfacename M_AXI, FREQ_HZ 200");
  ASSERT_EQ(ps.size(), 3U);
  EXPECT_EQ(ps[0].interfaceName, "");
  EXPECT_EQ(ps[1].interfaceName + ps[1].value, "S_AXI100");
  EXPECT_EQ(ps[2].interfaceName + ps[2].value, "M_AXI200");
  EXPECT_TRUE(A::encodeInterfaceParameters("ORV_INTERFACENAME x").empty());
  EXPECT_TRUE(A::encodeInterfaceParameters("orv_interfacename x").empty());
}

TEST(HABMAttributeParameter, DecodeNamesEachInterfaceOnceAndKeepsItOverUnscopedEntries) {
  std::vector<A::InterfaceParameter> ps{
      {"A", "1", "s"}, {"B", "2", "s"}, {"C", "3", ""}, {"", "x", "m"}, {"D", "4", "m"}};
  EXPECT_EQ(A::decodeInterfaceParameters(ps), "ORV_INTERFACENAME s, A 1, B 2, C 3, ORV_INTERFACENAME m, D 4");
  auto const back = A::encodeInterfaceParameters(A::decodeInterfaceParameters(ps));
  ASSERT_EQ(back.size(), 4U);
  EXPECT_EQ(back[2].interfaceName, "s");  // an unscoped entry after a keyword reads back scoped
}

TEST(HABMAttributeMode, SecondWordIsTheMonitoredModeOnlyForMonitor) {
  auto const slave = A::encodeInterfaceMode("slave S_AXI");
  EXPECT_EQ(slave.interfaceName, "S_AXI");
  auto const monitor = A::encodeInterfaceMode("Monitor slave S_AXI");
  EXPECT_EQ(monitor.monitoredMode, "slave");
  EXPECT_EQ(monitor.interfaceName, "S_AXI");
  EXPECT_EQ(A::decodeInterfaceMode(monitor), "Monitor slave S_AXI");
  auto const third = A::encodeInterfaceMode("slave a b");
  EXPECT_EQ(third.interfaceName, "b");
  auto const bare = A::encodeInterfaceMode("monitor");
  EXPECT_EQ(bare.mode, "monitor");
  EXPECT_EQ(A::decodeInterfaceMode(bare), "");
  EXPECT_EQ(A::decodeInterfaceMode(A::encodeInterfaceMode("")), "");
}

TEST(HABMAttributeAddressing, ScanStopsAtTheFirstUnknownParameter) {
  auto const stopped = A::encodeInterfaceAddressing("ORV_INTERFACENAME x, FOO 1, MODE slave");
  EXPECT_EQ(stopped.interfaceName, "x");
  EXPECT_EQ(stopped.mode, "");
  auto const full = A::encodeInterfaceAddressing("ORV_INTERFACENAME M, mode Master, AddressSpaceRef as0");
  EXPECT_EQ(A::decodeInterfaceAddressing(full), "ORV_INTERFACENAME M, MODE Master, ADDRESSSPACEREF as0");
  EXPECT_EQ(A::decodeInterfaceAddressing({"S", "slave", "mm"}),
            "ORV_INTERFACENAME S, MODE slave, MEMORYMAPREF mm");
  EXPECT_EQ(A::decodeInterfaceAddressing({"S", "", "mm"}), "");
}

}  // namespace
