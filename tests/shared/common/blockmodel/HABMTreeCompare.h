// HABMTreeCompare.h: compares two block trees field by field for tests; each kind of object adds its
// comparison here.
#pragma once

#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"

#include <gtest/gtest.h>

namespace habm_test {

// Name and value of each, in container order.
template <class T>
void expectSameValues(std::vector<T*> const& a, std::vector<T*> const& b, std::string const& where) {
  ASSERT_EQ(a.size(), b.size()) << where;
  for (std::size_t i = 0; i < a.size(); ++i) {
    EXPECT_EQ(a[i]->getName(), b[i]->getName()) << where;
    EXPECT_EQ(a[i]->getValue(), b[i]->getValue()) << where << " " << a[i]->getName();
  }
}

/// Everything a block model file keeps, compared recursively; the top blocks' instance names are not.
inline void expectSameTree(HABMBlock const& a, HABMBlock const& b) {
  std::string const where = a.getInstancePath();
  EXPECT_EQ(a.getModuleName(), b.getModuleName()) << where;
  EXPECT_EQ(a.getModuleVlnv(), b.getModuleVlnv()) << where;
  EXPECT_EQ(a.getEnablement(), b.getEnablement()) << where;
  EXPECT_EQ(a.getBaseAddress(), b.getBaseAddress()) << where;
  EXPECT_EQ(a.getValidated(), b.getValidated()) << where;
  EXPECT_EQ(a.getLocked(), b.getLocked()) << where;
  EXPECT_EQ(a.getTransparent(), b.getTransparent()) << where;
  expectSameValues(a.getAttributes(), b.getAttributes(), where + " attributes");
  expectSameValues(a.getGenerics(), b.getGenerics(), where + " generics");
  expectSameValues(a.getParameters(), b.getParameters(), where + " parameters");
  auto const portsA = a.getPorts();
  auto const portsB = b.getPorts();
  ASSERT_EQ(portsA.size(), portsB.size()) << where;
  for (std::size_t i = 0; i < portsA.size(); ++i) {
    HABMPort const& pa = *portsA[i];
    HABMPort const& pb = *portsB[i];
    EXPECT_EQ(pa.getPortName(), pb.getPortName()) << where;
    EXPECT_EQ(pa.getPortType(), pb.getPortType()) << pa.getPortPath();
    EXPECT_EQ(pa.getPortDirection(), pb.getPortDirection()) << pa.getPortPath();
    EXPECT_EQ(pa.getPortLeft(), pb.getPortLeft()) << pa.getPortPath();
    EXPECT_EQ(pa.getPortRight(), pb.getPortRight()) << pa.getPortPath();
    expectSameValues(pa.getAttributes(), pb.getAttributes(), pa.getPortPath() + " attributes");
  }
  auto const netsA = a.getPortConnections();
  auto const netsB = b.getPortConnections();
  ASSERT_EQ(netsA.size(), netsB.size()) << where;
  for (std::size_t i = 0; i < netsA.size(); ++i) {
    EXPECT_EQ(netsA[i]->getName(), netsB[i]->getName()) << where;
    EXPECT_EQ(netsA[i]->getConnectionType(), netsB[i]->getConnectionType()) << netsA[i]->getPath();
    EXPECT_EQ(netsA[i]->getSourcePath(false), netsB[i]->getSourcePath(false)) << netsA[i]->getPath();
    EXPECT_EQ(netsA[i]->getTargetPaths(false), netsB[i]->getTargetPaths(false)) << netsA[i]->getPath();
  }
  auto const subsA = a.getSubBlocks();
  auto const subsB = b.getSubBlocks();
  ASSERT_EQ(subsA.size(), subsB.size()) << where;
  for (std::size_t i = 0; i < subsA.size(); ++i) {
    EXPECT_EQ(subsA[i]->getInstanceName(), subsB[i]->getInstanceName()) << where;
    expectSameTree(*subsA[i], *subsB[i]);
  }
}

}  // namespace habm_test
