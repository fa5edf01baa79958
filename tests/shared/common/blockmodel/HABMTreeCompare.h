// HABMTreeCompare.h: compares two block trees for tests: the walk goes over the kinds each owner holds,
// and each kind of object lists the getters of the fields a block model file keeps.
#pragma once

#include "blockmodel/detail/HABMKinds.h"

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

// The relative forms a file keeps.
inline constexpr auto kSource = [](auto const& x) { return x.getSourcePath(false); };
inline constexpr auto kTarget = [](auto const& x) { return x.getTargetPath(false); };

// The fields of each kind of object, children apart.

inline void expectFields(HABMBlock const& a, HABMBlock const& b) {
  using B = HABMBlock;
  expectSame(a, b, &B::getModuleName, &B::getModuleVlnv, &B::getEnablement, &B::getBaseAddress,
             &B::getValidated, &B::getLocked, &B::getTransparent);
}
inline void expectFields(HABMNamedValue const& a, HABMNamedValue const& b) {
  expectSame(a, b, &HABMNamedValue::getValue);
}
inline void expectFields(HABMPort const& a, HABMPort const& b) {
  using P = HABMPort;
  expectSame(a, b, &P::getPortType, &P::getPortDirection, &P::getPortLeft, &P::getPortRight);
}
inline void expectFields(HABMPortConnection const& a, HABMPortConnection const& b) {
  expectSame(a, b, &HABMPortConnection::getConnectionType, kSource,
             [](HABMPortConnection const& c) { return c.getTargetPaths(false); });
}
inline void expectFields(HABMInterface const& a, HABMInterface const& b) {
  using I = HABMInterface;
  expectSame(a, b, &I::getInterfaceVlnv, &I::getInterfaceMode, &I::getEnablement, &I::getAddrSpaceRef,
             &I::getMemoryMapRef, &I::getBaseAddress, [](I const& x) { return x.getApertures(false); });
}
inline void expectFields(HABMPortMap const& a, HABMPortMap const& b) {
  using M = HABMPortMap;
  expectSame(a, b, &M::getPhyName, &M::getLogLeft, &M::getLogRight, &M::getPhyLeft, &M::getPhyRight);
}
inline void expectFields(HABMAddrSpace const& a, HABMAddrSpace const& b) {
  expectSame(a, b, &HABMAddrSpace::getRange);
}
inline void expectFields(HABMAddrSegment const& a, HABMAddrSegment const& b) {
  expectSame(a, b, &HABMAddrSegment::getMemoryType, &HABMAddrSegment::getAperture);
}
inline void expectFields(HABMMemoryMap const& a, HABMMemoryMap const& b) {
  expectSame(a, b, &HABMMemoryMap::getRange);
}
inline void expectFields(HABMAddrBlock const& a, HABMAddrBlock const& b) {
  using B = HABMAddrBlock;
  expectSame(a, b, &B::getMemoryType, &B::getMemoryAccess, &B::getAperture);
}
inline void expectFields(HABMRegister const& a, HABMRegister const& b) {
  using R = HABMRegister;
  expectSame(a, b, &R::getDescription, &R::getAccess, &R::getOffset, &R::getWidth, &R::getValue,
             &R::getReset);
}
inline void expectFields(HABMRegisterField const& a, HABMRegisterField const& b) {
  using F = HABMRegisterField;
  expectSame(a, b, &F::getAccess, &F::getOffset, &F::getWidth, &F::getReset);
}
inline void expectFields(HABMAddrAssign const& a, HABMAddrAssign const& b) {
  expectSame(a, b, &HABMAddrAssign::getAssignType, kSource, kTarget, &HABMAddrAssign::getAperture);
}
inline void expectFields(HABMBridge const& a, HABMBridge const& b) {
  expectSame(a, b, &HABMBridge::getSourceName, &HABMBridge::getTargetName, &HABMBridge::getRemaps);
}
inline void expectFields(HABMInterfaceConnection const& a, HABMInterfaceConnection const& b) {
  expectSame(a, b, &HABMInterfaceConnection::getConnectionType, kSource, kTarget);
}

inline void expectFields(HABMNocInterface const& a, HABMNocInterface const& b) {
  using N = HABMNocInterface;
  expectSame(a, b, &N::getNocMode, &N::getNocProtocol, &N::getNocCategory, &N::getMemoryMapRef,
             &N::getApertures, &N::getLocation, &N::getDestId, &N::getTdestId, &N::getEditable);
}
inline void expectFields(HABMNocConnection const& a, HABMNocConnection const& b) {
  expectSame(a, b, kSource, kTarget, &HABMNocConnection::getRemaps, &HABMNocConnection::getEditable);
}

/// The children of every kind of the two owners, in container order, by name, fields and children.
template <class Owner>
void expectSameChildren(Owner const& a, Owner const& b) {
  habm_detail::forEachKind(typename habm_detail::KindsOf<Owner>::type{}, [&](auto kind) {
    using K = decltype(kind);
    auto const x = K::list(a).list();
    auto const y = K::list(b).list();
    ASSERT_EQ(x.size(), y.size()) << K::ownerPath(a) << " " << K::key();
    for (std::size_t i = 0; i < x.size(); ++i) {
      std::string const& name = HABMChildName<typename K::Child>::of(*x[i]);
      SCOPED_TRACE(K::ownerPath(a) + " " + K::key() + " '" + name + "'");
      EXPECT_EQ(name, HABMChildName<typename K::Child>::of(*y[i]));
      expectFields(*x[i], *y[i]);
      expectSameChildren(*x[i], *y[i]);
    }
  });
}

/// Everything a block model file keeps, compared recursively; the top blocks' instance names are not.
inline void expectSameTree(HABMBlock const& a, HABMBlock const& b) {
  expectFields(a, b);
  expectSameChildren(a, b);
}

}  // namespace habm_test
