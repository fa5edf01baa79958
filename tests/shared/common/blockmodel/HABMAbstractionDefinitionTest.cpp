// HABMAbstractionDefinitionTest.cpp: the abstraction definition behind an interface's port maps: its
// look-ups, its variable-size rule and its shared ports.
#include "blockmodel/HABMAbstractionDefinition.h"

#include "blockmodel/HABMAbstractionDefinitionPort.h"

#include <gtest/gtest.h>

namespace {

// Arguments: logical name, slave then master presence, on slave and on master, slave then master width,
// slave then master direction.
HABMAbstractionDefinition makeDefinition() {
  HABMAbstractionDefinition def;
  def.addAbstractionDefinitionPort("WDATA", "required", "optional", true, false, -1, 32, "in", "out");
  def.addAbstractionDefinitionPort("RDATA", "optional", "required", false, true, 8, -1, "", "in");
  def.addAbstractionDefinitionPort("WVALID", "required", "required", true, true, 1, 1, "in", "out");
  def.addAbstractionDefinitionPort("WDATA", "optional", "optional", true, true, 8, 8, "in", "out");
  return def;
}

TEST(HABMAbstraction, LookUpIsExactAndFindsTheFirstAndVariableSizeIsOnEitherSide) {
  HABMAbstractionDefinition const def = makeDefinition();
  EXPECT_EQ(def.findPortByLogicalName("WDATA"), def.getAbstractionDefinitionPorts()[0]);
  EXPECT_EQ(def.findPortByLogicalName("wdata"), nullptr);
  EXPECT_TRUE(def.isPortHavingVariableSize("WDATA"));
  EXPECT_TRUE(def.isPortHavingVariableSize("RDATA"));
  EXPECT_FALSE(def.isPortHavingVariableSize("WVALID"));
  EXPECT_FALSE(def.isPortHavingVariableSize("NONE"));
}

TEST(HABMAbstraction, CopiesShareThePortsButNotTheList) {
  HABMAbstractionDefinition def = makeDefinition();
  HABMAbstractionDefinition const copy = def;
  def.addAbstractionDefinitionPort("X", "", "", false, false, 0, 0, "", "");
  EXPECT_EQ(copy.getAbstractionDefinitionPorts().size(), 4U);
  EXPECT_EQ(copy.findPortByLogicalName("RDATA"), def.findPortByLogicalName("RDATA"));
}

}  // namespace
