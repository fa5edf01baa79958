// HABMTreeCompare.h: compares two block trees field by field for tests; each kind of object adds its
// comparison here.
#pragma once

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/HABMPortMap.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"

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

inline void expectSameSegment(HABMAddrSegment const& a, HABMAddrSegment const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getMemoryType(), b.getMemoryType());
  EXPECT_EQ(a.getAperture(), b.getAperture());
}

inline void expectSameSpace(HABMAddrSpace const& a, HABMAddrSpace const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getRange(), b.getRange());
  auto const as = a.getAddrSegments();
  auto const bs = b.getAddrSegments();
  ASSERT_EQ(as.size(), bs.size());
  for (std::size_t i = 0; i < as.size(); ++i) {
    expectSameSegment(*as[i], *bs[i]);
  }
}

inline void expectSameField(HABMRegisterField const& a, HABMRegisterField const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getAccess(), b.getAccess());
  EXPECT_EQ(a.getOffset(), b.getOffset());
  EXPECT_EQ(a.getWidth(), b.getWidth());
  EXPECT_EQ(a.getReset(), b.getReset());
}

inline void expectSameRegister(HABMRegister const& a, HABMRegister const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getDescription(), b.getDescription());
  EXPECT_EQ(a.getAccess(), b.getAccess());
  EXPECT_EQ(a.getOffset(), b.getOffset());
  EXPECT_EQ(a.getWidth(), b.getWidth());
  EXPECT_EQ(a.getValue(), b.getValue());
  EXPECT_EQ(a.getReset(), b.getReset());
  auto const af = a.getFields();
  auto const bf = b.getFields();
  ASSERT_EQ(af.size(), bf.size());
  for (std::size_t i = 0; i < af.size(); ++i) {
    expectSameField(*af[i], *bf[i]);
  }
  auto const ap = a.getParameters();
  auto const bp = b.getParameters();
  ASSERT_EQ(ap.size(), bp.size());
  for (std::size_t i = 0; i < ap.size(); ++i) {
    EXPECT_EQ(ap[i]->getName(), bp[i]->getName());
    EXPECT_EQ(ap[i]->getValue(), bp[i]->getValue());
  }
}

inline void expectSameAddrBlock(HABMAddrBlock const& a, HABMAddrBlock const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getMemoryType(), b.getMemoryType());
  EXPECT_EQ(a.getMemoryAccess(), b.getMemoryAccess());
  EXPECT_EQ(a.getAperture(), b.getAperture());
  auto const ar = a.getRegisters();
  auto const br = b.getRegisters();
  ASSERT_EQ(ar.size(), br.size());
  for (std::size_t i = 0; i < ar.size(); ++i) {
    expectSameRegister(*ar[i], *br[i]);
  }
}

inline void expectSameMap(HABMMemoryMap const& a, HABMMemoryMap const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getRange(), b.getRange());
  auto const ab = a.getAddrBlocks();
  auto const bb = b.getAddrBlocks();
  ASSERT_EQ(ab.size(), bb.size());
  for (std::size_t i = 0; i < ab.size(); ++i) {
    expectSameAddrBlock(*ab[i], *bb[i]);
  }
}

inline void expectSameAssign(HABMAddrAssign const& a, HABMAddrAssign const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getAssignType(), b.getAssignType());
  EXPECT_EQ(a.getSourcePath(false), b.getSourcePath(false));
  EXPECT_EQ(a.getTargetPath(false), b.getTargetPath(false));
  EXPECT_EQ(a.getAperture(), b.getAperture());
}

/// Compares the address objects that two blocks hold themselves, matched by position.
inline void expectSameAddrObjects(HABMBlock const& a, HABMBlock const& b) {
  SCOPED_TRACE(a.getInstancePath());
  auto const as = a.getAddrSpaces();
  auto const bs = b.getAddrSpaces();
  ASSERT_EQ(as.size(), bs.size());
  for (std::size_t i = 0; i < as.size(); ++i) {
    expectSameSpace(*as[i], *bs[i]);
  }
  auto const am = a.getMemoryMaps();
  auto const bm = b.getMemoryMaps();
  ASSERT_EQ(am.size(), bm.size());
  for (std::size_t i = 0; i < am.size(); ++i) {
    expectSameMap(*am[i], *bm[i]);
  }
  auto const aa = a.getAddrAssigns();
  auto const ba = b.getAddrAssigns();
  ASSERT_EQ(aa.size(), ba.size());
  for (std::size_t i = 0; i < aa.size(); ++i) {
    expectSameAssign(*aa[i], *ba[i]);
  }
}

inline void expectSameInterface(HABMInterface const& a, HABMInterface const& b) {
  SCOPED_TRACE(a.getInterfacePath());
  EXPECT_EQ(a.getInterfaceName(), b.getInterfaceName());
  EXPECT_EQ(a.getInterfaceVlnv(), b.getInterfaceVlnv());
  EXPECT_EQ(a.getInterfaceMode(), b.getInterfaceMode());
  EXPECT_EQ(a.getEnablement(), b.getEnablement());
  EXPECT_EQ(a.getAddrSpaceRef(), b.getAddrSpaceRef());
  EXPECT_EQ(a.getMemoryMapRef(), b.getMemoryMapRef());
  EXPECT_EQ(a.getBaseAddress(), b.getBaseAddress());
  EXPECT_EQ(a.getApertures(false), b.getApertures(false));
  expectSameValues(a.getParameters(), b.getParameters(), "parameters");
  auto const am = a.getPortMaps();
  auto const bm = b.getPortMaps();
  ASSERT_EQ(am.size(), bm.size());
  for (std::size_t i = 0; i < am.size(); ++i) {
    EXPECT_EQ(am[i]->getLogName(), bm[i]->getLogName());
    EXPECT_EQ(am[i]->getPhyName(), bm[i]->getPhyName());
    EXPECT_EQ(am[i]->getLogLeft(), bm[i]->getLogLeft());
    EXPECT_EQ(am[i]->getLogRight(), bm[i]->getLogRight());
    EXPECT_EQ(am[i]->getPhyLeft(), bm[i]->getPhyLeft());
    EXPECT_EQ(am[i]->getPhyRight(), bm[i]->getPhyRight());
  }
}

/// Compares the bus objects that two blocks hold themselves, matched by position.
inline void expectSameBusObjects(HABMBlock const& a, HABMBlock const& b) {
  SCOPED_TRACE(a.getInstancePath());
  auto const ai = a.getInterfaces();
  auto const bi = b.getInterfaces();
  ASSERT_EQ(ai.size(), bi.size());
  for (std::size_t i = 0; i < ai.size(); ++i) {
    expectSameInterface(*ai[i], *bi[i]);
  }
  auto const ab = a.getBridges();
  auto const bb = b.getBridges();
  ASSERT_EQ(ab.size(), bb.size());
  for (std::size_t i = 0; i < ab.size(); ++i) {
    EXPECT_EQ(ab[i]->getName(), bb[i]->getName());
    EXPECT_EQ(ab[i]->getSourceName(), bb[i]->getSourceName());
    EXPECT_EQ(ab[i]->getTargetName(), bb[i]->getTargetName());
    EXPECT_EQ(ab[i]->getRemaps(), bb[i]->getRemaps()) << ab[i]->getPath();
  }
  auto const ac = a.getInterfaceConnections();
  auto const bc = b.getInterfaceConnections();
  ASSERT_EQ(ac.size(), bc.size());
  for (std::size_t i = 0; i < ac.size(); ++i) {
    EXPECT_EQ(ac[i]->getName(), bc[i]->getName());
    EXPECT_EQ(ac[i]->getConnectionType(), bc[i]->getConnectionType()) << ac[i]->getPath();
    EXPECT_EQ(ac[i]->getSourcePath(false), bc[i]->getSourcePath(false)) << ac[i]->getPath();
    EXPECT_EQ(ac[i]->getTargetPath(false), bc[i]->getTargetPath(false)) << ac[i]->getPath();
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
  expectSameAddrObjects(a, b);
  expectSameBusObjects(a, b);
  auto const subsA = a.getSubBlocks();
  auto const subsB = b.getSubBlocks();
  ASSERT_EQ(subsA.size(), subsB.size()) << where;
  for (std::size_t i = 0; i < subsA.size(); ++i) {
    EXPECT_EQ(subsA[i]->getInstanceName(), subsB[i]->getInstanceName()) << where;
    expectSameTree(*subsA[i], *subsB[i]);
  }
}

}  // namespace habm_test
