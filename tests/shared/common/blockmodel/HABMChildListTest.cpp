// HABMChildListTest.cpp: the child containers under random operations, against a plain vector searched
// linearly (first match) and a plain key map (unique keys).
#include "blockmodel/HABMChildList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace {

struct Item {
  std::string name;
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
    auto const it = std::find_if(sequence.begin(), sequence.end(), [&](Item* i) { return i->name == name; });
    return it == sequence.end() ? nullptr : *it;
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

  HABMChildList<Item> list(keys);
  Model model{keys, {}, {}};
  for (int step = 0; step < 2000; ++step) {
    std::string const name = "n" + std::to_string(pick(24));
    switch (pick(8)) {
      case 0:
      case 1:
      case 2:
        model.append(list.append(std::make_unique<Item>(Item{name})));
        break;
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
          ASSERT_EQ(model.get(list.autoName("n%d", false)), nullptr);
          ASSERT_EQ(list.autoName("n%d", true), "n" + std::to_string(model.sequence.size()));
        }
        break;
      default:
        for (int i = 0; i < 24; ++i) {
          ASSERT_EQ(list.get("n" + std::to_string(i)), model.get("n" + std::to_string(i))) << "step " << step;
        }
        break;
    }
    ASSERT_EQ(list.list(), model.sequence) << "step " << step;
    ASSERT_EQ(list.size(), model.sequence.size());
    ASSERT_EQ(list.checkIndex(), "") << "step " << step;
  }
}

// First match against a linear search, unique keys against a key map.
TEST(HABMChildList, AgreesWithItsModelUnderRandomOperations) {
  for (Keys const keys : {Keys::FIRST_MATCH, Keys::UNIQUE}) {
    SCOPED_TRACE(keys == Keys::UNIQUE ? "unique keys" : "first match");
    for (unsigned seed = 1; seed <= 10; ++seed) {
      runRandomOperations(keys, seed);
    }
  }
}

}  // namespace
