// HABMSVlogInterfaceTest.cpp: the SystemVerilog interface records keep what they are given, in order.
#include "blockmodel/HABMSVlogInterface.h"

#include "blockmodel/HABMSVlogModPort.h"
#include "blockmodel/HABMSVlogWire.h"

#include <gtest/gtest.h>

namespace {

TEST(HABMSVlogInterfaceTest, AddingAppendsWithoutDuplicateChecks) {
  HABMSVlogInterface iface("aximm_if");
  auto const wire = std::make_shared<HABMSVlogWire>("AWADDR", 32U);
  auto const modPort = std::make_shared<HABMSVlogModPort>("master");
  iface.addWire(wire);
  iface.addWire(wire);
  iface.addModPort(modPort);
  iface.addDefinitionParam("ADDR_WIDTH");
  iface.addDefinitionParam("ADDR_WIDTH");
  EXPECT_EQ(iface.getWires(), (std::vector<std::shared_ptr<HABMSVlogWire>>{wire, wire}));
  EXPECT_EQ(iface.getModPorts().size(), 1U);
  EXPECT_EQ(iface.getDefinitionParams(), (std::vector<std::string>{"ADDR_WIDTH", "ADDR_WIDTH"}));

  HABMSVlogInterface const copy = iface;
  iface.markInstantiated();
  EXPECT_TRUE(iface.isInstantiated());
  EXPECT_FALSE(copy.isInstantiated());
  EXPECT_EQ(copy.getWires()[0], wire);  // copies share the wires
}

TEST(HABMSVlogInterfaceTest, NewWireIsUnconnectedAndFixedInSize) {
  HABMSVlogWire wire("TDATA", 64U);
  EXPECT_EQ(wire.getSource(), nullptr);
  EXPECT_TRUE(wire.getDestinations().empty());
  EXPECT_FALSE(wire.isSizeParametrized());
  wire.setSizeParametrized();
  wire.addDestination(nullptr);
  wire.addDestination(nullptr);
  EXPECT_TRUE(wire.isSizeParametrized());
  EXPECT_EQ(wire.getDestinations().size(), 2U);
}

}  // namespace
