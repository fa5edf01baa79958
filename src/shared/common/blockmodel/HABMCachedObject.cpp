// HABMCachedObject.cpp: the destructor hook of the cached model classes, instantiated for each of them.
#include "blockmodel/HABMCachedObject.h"

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"

template <class T>
void HABMCachedObject<T>::leaveObjectCaches() const noexcept {
  // No shell caches model objects yet: nothing holds a script object that could dangle.
}

template class HABMCachedObject<HABMAddrAssign>;
template class HABMCachedObject<HABMAddrBlock>;
template class HABMCachedObject<HABMAddrSpace>;
template class HABMCachedObject<HABMBlock>;
template class HABMCachedObject<HABMNocConnection>;
template class HABMCachedObject<HABMNocInterface>;
