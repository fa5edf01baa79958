// HABMChildListTest.cpp: the name index under forced duplicates, removals and renames, and automatic names.
#include "blockmodel/HABMChildList.h"

#include <gtest/gtest.h>

namespace {

struct Item {
  std::string name;
  int id;
  std::string const& getName() const { return name; }
};

class HABMChildListTest : public ::testing::Test {
 protected:
  Item* add(std::string const& name) { return list_.append(std::make_unique<Item>(Item{name, next_++})); }
  std::vector<int> ids() const {
    std::vector<int> out;
    for (Item const* item : list_.list()) {
      out.push_back(item->id);
    }
    return out;
  }
  HABMChildList<Item> list_;
  int next_ = 0;
};

TEST_F(HABMChildListTest, DuplicatesKeepTheFirstAndRemovalPromotesTheNext) {
  add("a");
  add("b");
  add("a");
  add("a");
  EXPECT_EQ(list_.get("a")->id, 0);
  EXPECT_EQ(list_.take("a")->id, 0);
  EXPECT_EQ(list_.get("a")->id, 2);
  EXPECT_EQ(ids(), (std::vector<int>{1, 2, 3}));
  EXPECT_TRUE(list_.checkIndex());
  EXPECT_EQ(list_.take("b")->id, 1);
  EXPECT_EQ(list_.get("a")->id, 2);
  EXPECT_TRUE(list_.checkIndex());
  EXPECT_EQ(list_.take("zz"), nullptr);
}

TEST_F(HABMChildListTest, RenameKeepsTheIndexExact) {
  Item* a = add("a");
  Item* b = add("b");
  add("a");
  b->name = "a";  // b now shares a's name but comes after it
  list_.renamed(*b, "b");
  EXPECT_EQ(list_.get("a"), a);
  EXPECT_EQ(list_.get("b"), nullptr);
  a->name = "c";
  list_.renamed(*a, "a");
  EXPECT_EQ(list_.get("a"), b);
  EXPECT_EQ(list_.get("c"), a);
  EXPECT_TRUE(list_.checkIndex());
}

TEST_F(HABMChildListTest, AutomaticNamesStartAtTheCountAndSkipTakenNamesUnlessForced) {
  add("a");
  add("b");
  EXPECT_EQ(list_.autoName("interface_%d", false), "interface_2");
  add("interface_2");
  list_.take("a");
  EXPECT_EQ(list_.autoName("interface_%d", false), "interface_3");
  EXPECT_EQ(list_.autoName("interface_%d", true), "interface_2");
}

}  // namespace
