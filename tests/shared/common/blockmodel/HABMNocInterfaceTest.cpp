// HABMNocInterfaceTest.cpp: NoC interface vocabularies, the checked setters, the walk to connections, the
// INI filters of a block, and the interfaces inferred for an OPM NoC module.
#include "blockmodel/HABMNocInterface.h"

#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMParameter.h"

#include "HABMNocTestUtil.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

using namespace std::string_literals;
using N = HABMNocInterface;
using habm_test::makeNocInterface;

TEST(HABMNocInterface, VocabulariesFoldCaseAndRangesFollowTheirGrammar) {
  EXPECT_EQ(N::encodeNocTrafficClass("Low_Latency"), N::TRAFFIC_LOW_LATENCY);
  EXPECT_EQ(N::encodeNocProtocol("axi"), N::PROTOCOL_UNKNOWN);
  struct Case {
    char const* text;
    char const* location;
    char const* tdest;
  };
  for (Case const& c :
       {Case{"A", "A", ""}, Case{"10", "10", "0xA"}, Case{"A:B", "A:B", ""}, Case{"A::B", "A:B", ""},
        Case{"A:A", "A", ""}, Case{"A:B:C", "", ""}, Case{":A", "", ""}, Case{"3:5", "3:5", "0x3:0x5"},
        Case{"3 : 5", "3 : 5", "0x3:0x5"}, Case{"5:2", "5:2", ""}, Case{"", "", ""}}) {
    EXPECT_EQ(N::decodeLocationRange(N::encodeLocationRange(c.text)), c.location) << c.text;
    EXPECT_EQ(N::decodeDestinationIdRange(N::encodeDestinationIdRange(c.text)), c.tdest) << c.text;
  }
}

TEST(HABMNocInterface, LocationIsRefusedOnVirtualInterfacesAndTrafficClassesOnAllButAnNmu) {
  auto top = HABMBlock::createTopBlock("t");
  HABMNocInterface* nmu = makeNocInterface(*top, "n", N::MODE_NMU);
  std::string error = "stale";
  EXPECT_TRUE(nmu->setLocation("A::B", error));
  EXPECT_EQ(error, "");
  EXPECT_EQ(nmu->getLocation(), "A:B");
  EXPECT_FALSE(nmu->setLocation("A:B:C", error));
  EXPECT_EQ(error, "LOCATION format is invalid.");
  nmu->setNocMode(N::MODE_VNMU);  // the mode is stored first, so the location cannot be cleared
  EXPECT_EQ(nmu->getLocation(), "A:B");
  EXPECT_FALSE(nmu->setLocation("", error));
  EXPECT_EQ(error, "LOCATION can only be set on NMU or NSU interfaces.");
  // Only an NMU takes traffic classes.
  nmu->setNocMode(N::MODE_NMU);
  EXPECT_TRUE(nmu->setReadTrafficClass(N::TRAFFIC_ISOCHRONOUS));
  EXPECT_EQ(nmu->getParameter(N::READ_TRAFFIC_CLASS())->getValue(), "isochronous");
  nmu->setParameter(N::WRITE_TRAFFIC_CLASS(), "BEST_EFFORT", true);
  EXPECT_EQ(nmu->getWriteTrafficClass(), N::TRAFFIC_BEST_EFFORT);
  for (N::NocMode mode : {N::MODE_NSU, N::MODE_VNMU}) {
    HABMNocInterface* other = makeNocInterface(*top, N::decodeNocMode(mode), mode);
    EXPECT_FALSE(other->setWriteTrafficClass(N::TRAFFIC_BEST_EFFORT));
    EXPECT_TRUE(other->getParameters().empty());
  }
}

TEST(HABMNocInterface, StreamDestinationIdsAreCheckedAgainstTheirWidth) {
  auto top = HABMBlock::createTopBlock("t");
  HABMNocInterface* nsu = makeNocInterface(*top, "s", N::MODE_NSU, N::PROTOCOL_AXIS);
  HABMNocInterface* mm = makeNocInterface(*top, "m", N::MODE_NSU);
  HABMNocInterface* vnsu = makeNocInterface(*top, "v", N::MODE_VNSU, N::PROTOCOL_AXIS);
  std::string error;
  EXPECT_FALSE(mm->setTdestId("3", error));
  EXPECT_EQ(error, "TDEST_ID can be set on AXIS NSU (or) VNSU (INI) only.");
  EXPECT_FALSE(vnsu->setTdestId("3", error));
  vnsu->setNocCategory(N::CATEGORY_INI);
  vnsu->setTdestWidth("4");
  EXPECT_TRUE(vnsu->setTdestId("3", error)) << error;

  // Without DST_ID_WIDTH the width is 4: a small id is stored, and the answer still says why it is false;
  // an unreadable width is 4, silently.
  using Step = std::tuple<char const*, char const*, char const*, char const*>;  // width, id, error, stored id
  for (auto const& [width, id, why, stored] : {
           Step{"", "15", "TDEST_WIDTH parameter not found.", "0xF"},
           Step{"", "16", "TDEST_ID exceeds maximum available bits.", "0xF"},
           Step{"2", "3", "", "0x3"},
           Step{"2", "4", "TDEST_ID exceeds maximum available bits.", "0x3"},
           Step{"2", "5:2", "TDEST_ID format is invalid.", "0x3"},
           Step{"wide", "1:15", "", "0x1:0xF"},
           Step{"wide", "", "", ""},
       }) {
    nsu->setTdestWidth(width);
    bool const ok = nsu->setTdestId(id, error);
    EXPECT_EQ(error, why) << width << " " << id;
    EXPECT_EQ(ok, error.empty()) << width << " " << id;
    EXPECT_EQ(nsu->getTdestId(), stored) << width << " " << id;
  }
  nsu->setTdestWidth("");
  EXPECT_EQ(nsu->getParameter(N::DST_ID_WIDTH()), nullptr);
}

TEST(HABMNocInterface, CreatorsSayWhyFindsLeaveIniOutWhenAskedAndConnectionsAreFoundOnEveryBlockAbove) {
  auto top = HABMBlock::createTopBlock("t");
  HABMBlock* u0 = top->createSubBlock("u0", "m", false);
  std::string error;
  EXPECT_EQ(top->createNocInterface("", error), nullptr);
  EXPECT_EQ(top->createNocInterface("a/b", error), nullptr);
  EXPECT_EQ(error, "NOC interface name 'a/b' is invalid.");
  HABMNocInterface* ini =
      makeNocInterface(*top, "noc_interface_1", N::MODE_NMU, N::PROTOCOL_AXIMM, N::CATEGORY_INI);
  EXPECT_EQ(top->createNocInterface("noc_interface_1", error), nullptr);
  EXPECT_EQ(error, "A NOC interface named 'noc_interface_1' already exists.");
  HABMNocInterface* automatic = top->createNocInterface();  // counts from 1, which is taken
  EXPECT_EQ(automatic->getName(), "noc_interface_2");
  HABMNocInterface* below = makeNocInterface(*u0, "x", N::MODE_NSU);
  EXPECT_EQ(top->getNocInterfaces(true), std::vector<HABMNocInterface*>{automatic});
  EXPECT_EQ(top->findNocInterfaces("", true, false), (std::vector<HABMNocInterface*>{ini, automatic, below}));
  EXPECT_EQ(top->findNocInterfaces("*x", true, true), std::vector<HABMNocInterface*>{below});
  EXPECT_TRUE(top->hasNocInterface(below, true));
  EXPECT_FALSE(top->hasNocInterface(below, false));
  EXPECT_FALSE(top->hasEditableNocInterfaces());
  below->setEditable(true);
  EXPECT_TRUE(top->hasEditableNocInterfaces());
  // Connections are found on every block above.
  HABMBlock* mid = top->createSubBlock("mid", "m", false);
  HABMBlock* low = mid->createSubBlock("low", "l", false);
  HABMNocInterface* nmu = makeNocInterface(*low, "nmu", N::MODE_NMU);
  HABMNocInterface* vnsu = makeNocInterface(*low, "vnsu", N::MODE_VNSU);
  HABMNocInterface* nsu = makeNocInterface(*top, "nsu", N::MODE_NSU);
  HABMNocConnection* inside = low->createNocConnection("nmu", "vnsu", true);
  HABMNocConnection* across = top->createNocConnection("mid/low/vnsu", "nsu", true);
  EXPECT_EQ(vnsu->getSourceConnections(), std::vector<HABMNocConnection*>{inside});
  EXPECT_EQ(vnsu->getTargetConnections(), std::vector<HABMNocConnection*>{across});
  EXPECT_EQ(vnsu->getSourceInterfaces(), std::vector<HABMNocInterface*>{nmu});
  EXPECT_EQ(nsu->getSourceInterfaces(), std::vector<HABMNocInterface*>{vnsu});
  EXPECT_TRUE(nmu->getSourceConnections().empty());
  low->setBlockRsw(true);
  EXPECT_TRUE(nmu->isRswInterface());
  EXPECT_EQ(nsu->getRswAncestor(), nullptr);
}

// OPM NoC modules.

void addBus(HABMBlock& block, char const* name, HABMInterface::InterfaceType type, bool force = false) {
  block.createInterface(name, force)->setInterfaceVlnv(HABMInterface::decodeInterfaceVlnv(type));
}

TEST(HABMNocInterface, OpmNocModulesGetOneInterfacePerAxiBus) {
  struct Case {
    char const* opm;
    char const* fabric;  // null: no NOC_FABRIC generic
    char const* suffix;  // of the names of the interfaces made, after "S_AXI" and "S_AXIS"; null: none
    N::NocMode mode;
    N::NocProtocol protocol;
    N::NocCategory category;
    std::size_t apertures;
  };
  for (Case const& c : {
           Case{"NMU_MM", nullptr, "_nmu", N::MODE_NMU, N::PROTOCOL_AXIMM, N::CATEGORY_PL, 0},
           Case{"nsu_strm", nullptr, "_nsu", N::MODE_NSU, N::PROTOCOL_AXIS, N::CATEGORY_PL, 0},
           Case{"NSU_MM", nullptr, "_nsu", N::MODE_NSU, N::PROTOCOL_AXIMM, N::CATEGORY_PL, 1},
           Case{"NSU_MM", "fab_hbm", "_nsu", N::MODE_NSU, N::PROTOCOL_AXIMM, N::CATEGORY_FAB_HBM, 0},
           Case{"NOC_NMU_MM", nullptr, nullptr, N::MODE_UNKNOWN, N::PROTOCOL_AXIMM, N::CATEGORY_PL, 0},
       }) {
    SCOPED_TRACE(c.opm);
    auto top = HABMBlock::createTopBlock("opm");
    top->createAttribute(HABMAttribute::OPM_NOC(), c.opm);
    if (c.fabric != nullptr) {
      top->createGeneric(HABMNocInterface::NOC_FABRIC(), c.fabric);
    }
    top->createGeneric(HABMNocInterface::DATA_WIDTH(), "128");
    top->createNocInterface("old");
    addBus(*top, "S_AXI", HABMInterface::TYPE_AXIMM);
    addBus(*top, "ACLK", HABMInterface::TYPE_CLOCK);
    addBus(*top, "S_AXIS", HABMInterface::TYPE_AXIS);
    EXPECT_EQ(top->getOpmNocMode(), c.mode);
    EXPECT_EQ(top->getOpmNocCategory(), c.category);
    top->inferNocInterfaces();
    std::string names;
    for (HABMNocInterface const* iface : top->getNocInterfaces(false)) {
      names += iface->getName() + ' ';
      EXPECT_EQ(iface->getNocProtocol(), c.protocol);
      EXPECT_EQ(iface->getNocCategory(), c.category);
      EXPECT_EQ(iface->getApertures().size(), c.apertures);
      EXPECT_EQ(iface->getParameter(N::DATA_WIDTH())->getValue(), "128");
      EXPECT_EQ(iface->getParameter(N::READ_TRAFFIC_CLASS()) != nullptr, iface->isSource());
    }
    EXPECT_EQ(names, c.suffix == nullptr ? "" : "S_AXI"s + c.suffix + " S_AXIS" + c.suffix + ' ');
  }
}

TEST(HABMNocInterface, InferenceKeepsGenericTextsAndSkipsNameClashes) {
  auto top = HABMBlock::createTopBlock("opm");
  top->createAttribute(HABMAttribute::OPM_NOC(), "NMU_MM");
  top->createGeneric(N::READ_TRAFFIC_CLASS(), "LOW_LATENCY");
  addBus(*top, "A", HABMInterface::TYPE_AXIMM);
  addBus(*top, "A", HABMInterface::TYPE_AXIMM, true);
  addBus(*top, "B", HABMInterface::TYPE_AXIMM);
  top->inferNocInterfaces();
  std::vector<std::string> names;
  for (HABMNocInterface const* iface : top->getNocInterfaces(false)) {
    names.push_back(iface->getName());
    EXPECT_EQ(iface->getParameter(N::READ_TRAFFIC_CLASS())->getValue(), "LOW_LATENCY");
    EXPECT_EQ(iface->getParameter(N::WRITE_TRAFFIC_CLASS())->getValue(), "BEST_EFFORT");
  }
  EXPECT_EQ(names, (std::vector<std::string>{"A_nmu", "B_nmu"}));
}

}  // namespace
