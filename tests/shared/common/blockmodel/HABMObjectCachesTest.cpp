// HABMObjectCachesTest.cpp: the destructors of the cached classes empty the Tcl and Python object caches,
// checked with recording stand-ins for the interpreters' functions.
#include "blockmodel/HABMObjectCaches.h"

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using hwk::pyinfra::py_native_cache;
using hwk::pyinfra::py_native_cache_base;
using hwk::tcltasks::native_cache;
using hwk::tcltasks::native_cache_base;

// What the stand-ins were asked to do, in order: "tcl-invalid 0", "tcl-release 0", "py-invalid 2", ...
std::vector<std::string>& calls() {
  static std::vector<std::string> log;
  return log;
}

// Script objects are only stored and compared, so the addresses of these slots stand for them.
int scriptSlots[4];
Tcl_Obj* tclObj(int i) {
  return reinterpret_cast<Tcl_Obj*>(&scriptSlots[i]);
}
_object* pyObj(int i) {
  return reinterpret_cast<_object*>(&scriptSlots[i]);
}
std::string slotOf(void* object) {
  return std::to_string(static_cast<int*>(object) - scriptSlots);
}

class HABMObjectCachesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    calls().clear();
    native_cache_base::interpreter_hooks tcl;
    tcl.mark_invalid = [](Tcl_Obj* o) { calls().push_back("tcl-invalid " + slotOf(o)); };
    tcl.decr_refcount = [](Tcl_Obj* o) { calls().push_back("tcl-release " + slotOf(o)); };
    tcl.error = [](char const* text) { calls().push_back(text); };
    native_cache_base::install_hooks(tcl);
    py_native_cache_base::interpreter_hooks py;
    py.mark_invalid = [](_object* o) { calls().push_back("py-invalid " + slotOf(o)); };
    py.error = [](char const* text) { calls().push_back(text); };
    py_native_cache_base::install_hooks(py);
  }
  void TearDown() override {
    native_cache_base::install_hooks({});
    py_native_cache_base::install_hooks({});
  }

  // Registers script object `i` for `native` in the Tcl or the Python cache of T, as the packages do.
  template <class T>
  static void addTcl(T const* native, int i) {
    native_cache<T*>::get_t2n_cache()[tclObj(i)] = native;
    native_cache<T*>::get_n2t_cache().emplace(native, tclObj(i));
  }
  template <class T>
  static void addPy(T const* native, int i) {
    py_native_cache<T*>::get_py2n_cache()[pyObj(i)] = native;
    py_native_cache<T*>::get_n2py_cache().emplace(native, pyObj(i));
  }
  template <class T>
  static std::size_t entries() {
    return native_cache<T*>::get_t2n_cache().size() + native_cache<T*>::get_n2t_cache().size() +
           py_native_cache<T*>::get_py2n_cache().size() + py_native_cache<T*>::get_n2py_cache().size();
  }
  // The calls made since the last look, sorted.
  static std::vector<std::string> told() {
    std::vector<std::string> sorted = calls();
    std::sort(sorted.begin(), sorted.end());
    calls().clear();
    return sorted;
  }
  static void setExiting(bool exiting) {
    native_cache_base::set_tcl_exiting(exiting);
    py_native_cache_base::set_py_exiting(exiting);
  }

  // Make one object, give it two Tcl objects and one Python object, let its owner destroy it, and expect
  // every script object told once and both caches empty.
  template <class T>
  void expectBothShellsTold(T* object, std::function<void()> const& destroy) {
    ASSERT_NE(object, nullptr);
    addTcl(object, 0);
    addTcl(object, 1);
    addPy(object, 2);
    destroy();
    EXPECT_EQ(told(), (std::vector<std::string>{"py-invalid 2", "tcl-invalid 0", "tcl-invalid 1",
                                                "tcl-release 0", "tcl-release 1"}));
    EXPECT_EQ(entries<T>(), 0U);
  }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
};

TEST_F(HABMObjectCachesTest, EachCachedClassTellsBothShellsWhenItDies) {
  HABMBlock& top = *top_;
  expectBothShellsTold(top.createSubBlock("u0", "m", false), [&] { top.clearSubBlocks(); });
  expectBothShellsTold(top.createAddrSpace("s"), [&] { top.clearAddrSpaces(); });
  HABMMemoryMap* map = top.createMemoryMap("m");
  expectBothShellsTold(map->createAddrBlock("regs"), [&] { map->clearAddrBlocks(); });
  expectBothShellsTold(top.createAddrAssign("a"), [&] { top.removeAddrAssign("a"); });
  expectBothShellsTold(top.createNocInterface("n"), [&] { top.clearNocInterfaces(); });
  expectBothShellsTold(top.createNocConnection("c", false), [&] { top.removeNocConnection("c"); });
  // Objects deep in a dropped tree are told too, each for itself.
  HABMBlock* leaf = top.createSubBlock("u1", "m", false)->createSubBlock("u2", "m", false);
  expectBothShellsTold(leaf->createNocInterface("deep"), [&] { top_.reset(); });
}

// The maps are left alone while a shell exits, and when no map was ever looked at. A map getter sets the
// observers flag, so a flag still false afterwards proves that no map was looked at; an exiting shell is
// the one way to bring the flag back down in a process that has used the maps.
TEST_F(HABMObjectCachesTest, DestructionLeavesTheMapsAloneWhileExitingOrWithoutObservers) {
  for (bool const exitingWhileDestroyed : {true, false}) {
    SCOPED_TRACE(exitingWhileDestroyed);
    auto top = HABMBlock::createTopBlock("t");
    HABMBlock* sub = top->createSubBlock("u0", "m", false);
    addTcl<HABMBlock>(sub, 0);
    addPy<HABMBlock>(sub, 1);
    setExiting(true);
    ASSERT_FALSE(native_cache<HABMBlock*>::observers());
    ASSERT_FALSE(py_native_cache<HABMBlock*>::observers());
    setExiting(exitingWhileDestroyed);
    top.reset();
    setExiting(false);
    EXPECT_FALSE(native_cache<HABMBlock*>::observers());
    EXPECT_FALSE(py_native_cache<HABMBlock*>::observers());
    EXPECT_TRUE(calls().empty());
    EXPECT_EQ(entries<HABMBlock>(), 4U);
    native_cache<HABMBlock*>::get_t2n_cache().clear();
    native_cache<HABMBlock*>::get_n2t_cache().clear();
    py_native_cache<HABMBlock*>::get_py2n_cache().clear();
    py_native_cache<HABMBlock*>::get_n2py_cache().clear();
  }
}

TEST_F(HABMObjectCachesTest, ACorruptPairIsReportedAndTheWalkGoesOn) {
  HABMNocInterface* iface = top_->createNocInterface("n");
  addTcl(iface, 0);
  native_cache<HABMNocInterface*>::get_n2t_cache().emplace(iface, tclObj(1));  // not in the first map
  addPy(iface, 2);
  py_native_cache<HABMNocInterface*>::get_n2py_cache().emplace(iface, pyObj(3));
  top_->clearNocInterfaces();
  EXPECT_EQ(told(), (std::vector<std::string>{"native_cache<> corrupt", "py-invalid 2", "py-invalid 3",
                                              "py_native_cache<> corrupt", "tcl-invalid 0", "tcl-invalid 1",
                                              "tcl-release 0", "tcl-release 1"}));
  EXPECT_EQ(entries<HABMNocInterface>(), 0U);
}

}  // namespace
