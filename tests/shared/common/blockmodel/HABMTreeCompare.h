// HABMTreeCompare.h: compares two block trees field by field for tests; each kind of object lists the
// getters of the fields a block model file keeps.
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

#include <functional>

namespace habm_test {

/// Every getter gives equal values on `a` and `b`; a failure names the getter by its position.
template <class T, class... Get>
void expectSame(T const& a, T const& b, Get... get) {
  int field = 0;
  auto const check = [&](auto const& g) {
    ++field;
    EXPECT_EQ(std::invoke(g, a), std::invoke(g, b)) << "getter #" << field;
  };
  (check(get), ...);
}

/// Equal lengths, then `each` on the pairs matched by position.
template <class T, class Each>
void expectEach(std::vector<T*> const& a, std::vector<T*> const& b, Each each) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    each(*a[i], *b[i]);
  }
}

// The relative forms a file keeps.
inline constexpr auto kSource = [](auto const& x) { return x.getSourcePath(false); };
inline constexpr auto kTarget = [](auto const& x) { return x.getTargetPath(false); };

/// Name and value of each, in container order.
template <class T>
void expectSameValues(std::vector<T*> const& a, std::vector<T*> const& b, std::string const& where) {
  SCOPED_TRACE(where);
  expectEach(a, b, [](T const& x, T const& y) { expectSame(x, y, &T::getName, &T::getValue); });
}

inline void expectSameSpace(HABMAddrSpace const& a, HABMAddrSpace const& b) {
  using S = HABMAddrSegment;
  SCOPED_TRACE(a.getPath());
  expectSame(a, b, &HABMAddrSpace::getName, &HABMAddrSpace::getRange);
  expectEach(a.getAddrSegments(), b.getAddrSegments(), [](S const& x, S const& y) {
    expectSame(x, y, &S::getName, &S::getMemoryType, &S::getAperture);
  });
}

inline void expectSameMap(HABMMemoryMap const& a, HABMMemoryMap const& b) {
  using B = HABMAddrBlock;
  using R = HABMRegister;
  using F = HABMRegisterField;
  SCOPED_TRACE(a.getPath());
  expectSame(a, b, &HABMMemoryMap::getName, &HABMMemoryMap::getRange);
  expectEach(a.getAddrBlocks(), b.getAddrBlocks(), [](B const& x, B const& y) {
    expectSame(x, y, &B::getName, &B::getMemoryType, &B::getMemoryAccess, &B::getAperture);
    expectEach(x.getRegisters(), y.getRegisters(), [](R const& r, R const& s) {
      SCOPED_TRACE(r.getPath());
      expectSame(r, s, &R::getName, &R::getDescription, &R::getAccess, &R::getOffset, &R::getWidth,
                 &R::getValue, &R::getReset);
      expectSameValues(r.getParameters(), s.getParameters(), "parameters");
      expectEach(r.getFields(), s.getFields(), [](F const& f, F const& g) {
        expectSame(f, g, &F::getName, &F::getAccess, &F::getOffset, &F::getWidth, &F::getReset);
      });
    });
  });
}

inline void expectSameAssign(HABMAddrAssign const& a, HABMAddrAssign const& b) {
  using A = HABMAddrAssign;
  SCOPED_TRACE(a.getPath());
  expectSame(a, b, &A::getName, &A::getAssignType, kSource, kTarget, &A::getAperture);
}

inline void expectSameInterface(HABMInterface const& a, HABMInterface const& b) {
  using I = HABMInterface;
  using M = HABMPortMap;
  SCOPED_TRACE(a.getInterfacePath());
  expectSame(a, b, &I::getInterfaceName, &I::getInterfaceVlnv, &I::getInterfaceMode, &I::getEnablement,
             &I::getAddrSpaceRef, &I::getMemoryMapRef, &I::getBaseAddress,
             [](I const& x) { return x.getApertures(false); });
  expectSameValues(a.getParameters(), b.getParameters(), "parameters");
  expectEach(a.getPortMaps(), b.getPortMaps(), [](M const& x, M const& y) {
    expectSame(x, y, &M::getLogName, &M::getPhyName, &M::getLogLeft, &M::getLogRight, &M::getPhyLeft,
               &M::getPhyRight);
  });
}

/// Everything a block model file keeps, compared recursively; the top blocks' instance names are not.
inline void expectSameTree(HABMBlock const& a, HABMBlock const& b) {
  using B = HABMBlock;
  using P = HABMPort;
  SCOPED_TRACE(a.getInstancePath());
  expectSame(a, b, &B::getModuleName, &B::getModuleVlnv, &B::getEnablement, &B::getBaseAddress,
             &B::getValidated, &B::getLocked, &B::getTransparent);
  expectSameValues(a.getAttributes(), b.getAttributes(), "attributes");
  expectSameValues(a.getGenerics(), b.getGenerics(), "generics");
  expectSameValues(a.getParameters(), b.getParameters(), "parameters");
  expectEach(a.getPorts(), b.getPorts(), [](P const& x, P const& y) {
    expectSame(x, y, &P::getPortName, &P::getPortType, &P::getPortDirection, &P::getPortLeft,
               &P::getPortRight);
    expectSameValues(x.getAttributes(), y.getAttributes(), x.getPortPath() + " attributes");
  });
  expectEach(a.getPortConnections(), b.getPortConnections(), [](auto const& x, auto const& y) {
    expectSame(x, y, &HABMPortConnection::getName, &HABMPortConnection::getConnectionType, kSource,
               [](HABMPortConnection const& c) { return c.getTargetPaths(false); });
  });
  expectEach(a.getAddrSpaces(), b.getAddrSpaces(), expectSameSpace);
  expectEach(a.getMemoryMaps(), b.getMemoryMaps(), expectSameMap);
  expectEach(a.getAddrAssigns(), b.getAddrAssigns(), expectSameAssign);
  expectEach(a.getInterfaces(), b.getInterfaces(), expectSameInterface);
  expectEach(a.getBridges(), b.getBridges(), [](HABMBridge const& x, HABMBridge const& y) {
    expectSame(x, y, &HABMBridge::getName, &HABMBridge::getSourceName, &HABMBridge::getTargetName,
               &HABMBridge::getRemaps);
  });
  expectEach(a.getInterfaceConnections(), b.getInterfaceConnections(), [](auto const& x, auto const& y) {
    expectSame(x, y, &HABMInterfaceConnection::getName, &HABMInterfaceConnection::getConnectionType, kSource,
               kTarget);
  });
  expectEach(a.getSubBlocks(), b.getSubBlocks(), [](B const& x, B const& y) {
    EXPECT_EQ(x.getInstanceName(), y.getInstanceName());
    expectSameTree(x, y);
  });
}

}  // namespace habm_test
