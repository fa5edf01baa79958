// HABMChildListTest.cpp: the child containers under random operations, against a plain vector searched
// linearly (first match) and a plain key map (unique keys).
#include "blockmodel/HABMChildList.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

struct Item {
  std::string name;
  int id;
  std::string const& getName() const { return name; }
};

using Keys = HABMChildListBase::Keys;

// What the container must answer, done the slow and obvious way.
struct Model {
  Keys keys;
  std::vector<Item*> sequence;
  std::map<std::string, Item*> uniqueKeys;  // UNIQUE only: the key each listed child was filed under

  Item* get(std::string const& name) const {
    if (keys == Keys::UNIQUE) {
      auto const it = uniqueKeys.find(name);
      return it != uniqueKeys.end() && it->second->name == name ? it->second : nullptr;
    }
    for (Item* item : sequence) {
      if (item->name == name) {
        return item;
      }
    }
    return nullptr;
  }
  void append(Item* item) {
    if (keys == Keys::UNIQUE) {
      if (get(item->name) != nullptr) {
        return;  // an orphan: owned, never listed
      }
      uniqueKeys[item->name] = item;
    }
    sequence.push_back(item);
  }
  void take(Item* item) {
    sequence.erase(std::find(sequence.begin(), sequence.end(), item));
    if (keys == Keys::UNIQUE) {
      uniqueKeys.erase(item->name);
    }
  }
};

void runRandomOperations(Keys keys, unsigned seed) {
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  auto const pick = [&](std::size_t n) {
    return std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
  };
  auto const randomName = [&] { return "n" + std::to_string(pick(24)); };

  HABMChildList<Item> list(keys);
  Model model{keys, {}, {}};
  int nextId = 0;
  for (int step = 0; step < 2000; ++step) {
    std::string const name = randomName();
    switch (pick(8)) {
      case 0:
      case 1:
      case 2: {
        model.append(list.append(std::make_unique<Item>(Item{name, nextId++})));
        break;
      }
      case 3:
      case 4: {
        Item* expected = model.get(name);
        std::unique_ptr<Item> const taken = list.take(name);
        ASSERT_EQ(taken.get(), expected) << "step " << step;
        if (expected != nullptr) {
          model.take(expected);
        }
        break;
      }
      case 5: {
        if (model.sequence.empty()) {
          break;
        }
        Item* item = model.sequence[pick(model.sequence.size())];
        std::string const old = item->name;
        item->name = name;
        if (keys == Keys::FIRST_MATCH) {
          list.renamed(*item, old);  // a UNIQUE key stays as filed, renamed or not
        }
        break;
      }
      case 6:
        ASSERT_EQ(list.autoName("n%d", false), list.autoName("n%d", false));
        if (keys == Keys::FIRST_MATCH) {
          std::string const automatic = list.autoName("n%d", false);
          ASSERT_EQ(model.get(automatic), nullptr);
          ASSERT_EQ(list.autoName("n%d", true), "n" + std::to_string(model.sequence.size()));
        }
        break;
      default:
        ASSERT_EQ(list.get(name), model.get(name)) << "step " << step << " name " << name;
        break;
    }
    ASSERT_EQ(list.list(), model.sequence) << "step " << step;
    ASSERT_EQ(list.size(), model.sequence.size());
    ASSERT_EQ(list.checkIndex(), "") << "step " << step;
  }
  for (int i = 0; i < 24; ++i) {
    std::string const name = "n" + std::to_string(i);
    EXPECT_EQ(list.get(name), model.get(name)) << name;
  }
}

TEST(HABMChildList, FirstMatchAgreesWithALinearSearchUnderRandomOperations) {
  for (unsigned seed = 1; seed <= 10; ++seed) {
    runRandomOperations(Keys::FIRST_MATCH, seed);
  }
}

TEST(HABMChildList, UniqueKeysAgreeWithAKeyMapUnderRandomOperations) {
  for (unsigned seed = 1; seed <= 10; ++seed) {
    runRandomOperations(Keys::UNIQUE, seed);
  }
}

}  // namespace
