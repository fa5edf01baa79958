// HABMChildList.cpp: the type-independent half of the child containers: slots, the name index and its
// chains of same-named children, compaction.
#include "blockmodel/HABMChildList.h"

#include <algorithm>
#include <cassert>
#include <functional>
#include <new>
#include <string_view>
#include <utility>

namespace {

// Below this many children a linear search is as fast as hashing, and costs no memory.
constexpr std::size_t kLinearLimit = 8;
constexpr std::size_t kSmallestTable = 16;

std::uint64_t hashOf(std::string const& name) {
  return std::hash<std::string_view>{}(name);
}

// Room for one more element, grown geometrically: `reserve(size() + 1)` would copy the whole vector on
// every append.
template <class T>
void reserveOneMore(std::vector<T>& items) {
  if (items.size() == items.capacity()) {
    items.reserve(std::max<std::size_t>(4, items.capacity() * 2));
  }
}

}  // namespace

// The index is an open-addressed table of chains, probed linearly: each entry holds the hash of its name
// and the first and last slot of the children of that name, and `next` threads a chain in ascending slot
// order. The name itself is read from the chain's first child, so the table stores no text and a name
// costs one hash and no allocation.
struct HABMChildListBase::Side {
  struct Entry {
    std::uint64_t hash = 0;
    std::uint32_t first = NONE;  // NONE: a free entry
    std::uint32_t last = NONE;
  };

  std::vector<Entry> table;  // empty, or a power of two in size and at most three quarters used
  std::size_t used = 0;
  std::vector<std::uint32_t> next;  // parallel to the slots while indexed
  std::vector<void*> orphans;

  std::size_t home(std::uint64_t hash) const { return static_cast<std::size_t>(hash) & (table.size() - 1); }
  std::size_t after(std::size_t at) const { return (at + 1) & (table.size() - 1); }

  // The entry of `hash` whose first child `heads` says yes, or the table's size.
  template <class Heads>
  std::size_t locate(std::uint64_t hash, Heads heads) const {
    for (std::size_t at = home(hash);; at = after(at)) {
      Entry const& entry = table[at];
      if (entry.first == NONE) {
        return table.size();
      }
      if (entry.hash == hash && heads(entry.first)) {
        return at;
      }
    }
  }

  // Makes room for one more entry; the only step that allocates, so it comes before any change.
  void reserveOne() {
    if ((used + 1) * 4 > table.size() * 3) {
      rehash(std::max(kSmallestTable, table.size() * 2));
    }
  }

  void rehash(std::size_t capacity) {
    std::vector<Entry> old(capacity);
    old.swap(table);
    for (Entry const& entry : old) {
      if (entry.first != NONE) {
        place(entry);
      }
    }
  }

  void place(Entry const& entry) {
    std::size_t at = home(entry.hash);
    while (table[at].first != NONE) {
      at = after(at);
    }
    table[at] = entry;
  }

  void insert(std::uint64_t hash, std::uint32_t slot) {
    place(Entry{hash, slot, slot});
    ++used;
  }

  // Frees an entry and moves back the ones after it that probing would otherwise no longer reach.
  void erase(std::size_t hole) {
    for (std::size_t at = after(hole); table[at].first != NONE; at = after(at)) {
      std::size_t const want = home(table[at].hash);
      // The entry may fill the hole when its home does not lie in the cyclic range (hole, at].
      bool const reachable = hole <= at ? (want > hole && want <= at) : (want > hole || want <= at);
      if (!reachable) {
        table[hole] = table[at];
        hole = at;
      }
    }
    table[hole] = Entry{};
    --used;
  }
};

HABMChildListBase::HABMChildListBase(Keys keys, Traits const& traits) : traits_(&traits), keys_(keys) {}

HABMChildListBase::~HABMChildListBase() {
  destroyAll();
}

std::size_t HABMChildListBase::orphanCount() const {
  return side_ ? side_->orphans.size() : 0;
}

bool HABMChildListBase::indexed() const {
  return side_ && !side_->table.empty();
}

std::size_t HABMChildListBase::firstSlot(std::string const& name) const {
  if (indexed()) {
    // The first child must still answer to the name: a UNIQUE key keeps pointing at a child renamed
    // behind the container's back.
    Side const& side = *side_;
    std::size_t const at =
        side.locate(hashOf(name), [&](std::uint32_t slot) { return nameOf(slot) == name; });
    return at < side.table.size() ? side.table[at].first : slots_.size();
  }
  for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
    if (slots_[slot] != nullptr && nameOf(slot) == name) {
      return slot;
    }
  }
  return slots_.size();
}

void* HABMChildListBase::find(std::string const& name) const {
  std::size_t const slot = firstSlot(name);
  return slot < slots_.size() ? slots_[slot] : nullptr;
}

void* HABMChildListBase::add(void* item) {
  assert(item != nullptr && "a container holds no empty pointer");
  assert(slots_.size() < NONE && "more children than a container can number");
  // Everything that can run out of memory comes before the first change, so that a failed add leaves
  // the container as it was (and the item with the caller).
  if (!indexed() && (keys_ == Keys::UNIQUE || live_ >= kLinearLimit)) {
    buildIndex();
  }
  reserveOneMore(slots_);
  auto const slot = static_cast<std::uint32_t>(slots_.size());
  if (indexed()) {
    Side& side = *side_;
    reserveOneMore(side.next);
    side.reserveOne();
    std::string const& name = traits_->nameOf(item);
    std::uint64_t const hash = hashOf(name);
    std::size_t at = side.locate(hash, [&](std::uint32_t head) { return nameOf(head) == name; });
    if (at < side.table.size()) {
      if (keys_ == Keys::UNIQUE) {
        side.orphans.push_back(item);
        return item;
      }
      side.next[side.table[at].last] = slot;
      side.table[at].last = slot;
    } else {
      if (keys_ == Keys::UNIQUE) {
        // A key left by a child renamed behind our back passes to the new child of that name.
        at = side.locate(hash, [&](std::uint32_t head) { return hashOf(nameOf(head)) != hash; });
      }
      if (at < side.table.size()) {
        side.table[at].first = side.table[at].last = slot;
      } else {
        side.insert(hash, slot);
      }
    }
    side.next.push_back(NONE);
  }
  slots_.push_back(item);
  ++live_;
  return item;
}

void* HABMChildListBase::release(std::string const& name) {
  std::size_t slot = slots_.size();
  if (indexed()) {
    Side& side = *side_;
    std::size_t const at =
        side.locate(hashOf(name), [&](std::uint32_t head) { return nameOf(head) == name; });
    if (at == side.table.size()) {
      return nullptr;
    }
    slot = side.table[at].first;
    std::uint32_t const later = side.next[slot];
    if (later == NONE) {
      side.erase(at);
    } else {
      side.table[at].first = later;
      side.next[slot] = NONE;
    }
  } else {
    slot = firstSlot(name);
    if (slot == slots_.size()) {
      return nullptr;
    }
  }
  void* const item = slots_[slot];
  slots_[slot] = nullptr;
  --live_;
  if (slots_.size() - live_ > live_) {
    compact();
  }
  return item;
}

void HABMChildListBase::destroyAll() {
  // Detached first, so that a destructor that looks at this container sees it empty.
  std::vector<void*> items;
  items.swap(slots_);
  std::unique_ptr<Side> side = std::move(side_);
  live_ = 0;
  for (void* item : items) {
    if (item != nullptr) {
      traits_->destroy(item);
    }
  }
  if (side) {
    for (void* item : side->orphans) {
      traits_->destroy(item);
    }
  }
}

std::vector<void*> HABMChildListBase::releaseAll() {
  std::vector<void*> items;
  items.reserve(live_);
  for (void* item : slots_) {
    if (item != nullptr) {
      items.push_back(item);
    }
  }
  slots_.clear();
  live_ = 0;
  destroyAll();  // the orphans
  return items;
}

void HABMChildListBase::noteRenamed(void const* item, std::string const& oldName) {
  if (!indexed() || keys_ == Keys::UNIQUE) {
    return;  // a linear search reads the new name; a UNIQUE key stays as inserted
  }
  std::string const& newName = traits_->nameOf(item);
  if (newName == oldName) {
    return;
  }
  Side& side = *side_;
  side.reserveOne();
  // The renamed child may head its old chain, and then no longer answers to the old name.
  std::size_t const old = side.locate(
      hashOf(oldName), [&](std::uint32_t head) { return slots_[head] == item || nameOf(head) == oldName; });
  assert(old < side.table.size() && "a renamed child was filed under its old name");
  auto& next = side.next;
  std::uint32_t prev = NONE;
  std::uint32_t slot = side.table[old].first;
  while (slot != NONE && slots_[slot] != item) {
    prev = slot;
    slot = next[slot];
  }
  assert(slot != NONE && "a renamed child was filed under its old name");
  if (prev == NONE && next[slot] == NONE) {
    side.erase(old);
  } else {
    Side::Entry& chain = side.table[old];
    (prev == NONE ? chain.first : next[prev]) = next[slot];
    if (chain.last == slot) {
      chain.last = prev;
    }
  }
  next[slot] = NONE;

  std::uint64_t const hash = hashOf(newName);
  std::size_t const now = side.locate(hash, [&](std::uint32_t head) { return nameOf(head) == newName; });
  if (now == side.table.size()) {
    side.insert(hash, slot);
    return;
  }
  // Insert in slot order, so that the chain's head stays the first of the name.
  Side::Entry& chain = side.table[now];
  if (slot < chain.first) {
    next[slot] = chain.first;
    chain.first = slot;
    return;
  }
  std::uint32_t at = chain.first;
  while (next[at] != NONE && next[at] < slot) {
    at = next[at];
  }
  next[slot] = next[at];
  next[at] = slot;
  if (chain.last == at) {
    chain.last = slot;
  }
}

void HABMChildListBase::buildIndex() {
  Side index;  // installed only once complete
  std::size_t capacity = kSmallestTable;
  while (capacity * 3 < (live_ + 1) * 4) {
    capacity *= 2;
  }
  index.table.resize(capacity);
  index.next.assign(slots_.size(), NONE);
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    if (slots_[i] == nullptr) {
      continue;
    }
    auto const slot = static_cast<std::uint32_t>(i);
    std::string const& name = nameOf(i);
    std::uint64_t const hash = hashOf(name);
    std::size_t const at = index.locate(hash, [&](std::uint32_t head) { return nameOf(head) == name; });
    if (at == index.table.size()) {
      index.insert(hash, slot);
    } else {
      index.next[index.table[at].last] = slot;
      index.table[at].last = slot;
    }
  }
  if (!side_) {
    side_ = std::make_unique<Side>();
  }
  side_->table.swap(index.table);
  side_->next.swap(index.next);
  side_->used = index.used;
}

void HABMChildListBase::compact() noexcept {
  // Closing the holes only saves space and time: when there is no memory for it, they stay a while.
  std::vector<std::uint32_t> moved;
  std::vector<std::uint32_t> next;
  try {
    moved.assign(slots_.size(), NONE);
    if (indexed()) {
      next.assign(live_, NONE);
    }
  } catch (std::bad_alloc const&) {
    return;
  }
  // Renumbers rather than re-reads names: a UNIQUE key may name a child that was renamed since.
  std::size_t kept = 0;
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    if (slots_[i] != nullptr) {
      moved[i] = static_cast<std::uint32_t>(kept);
      slots_[kept++] = slots_[i];
    }
  }
  slots_.resize(kept);
  if (!indexed()) {
    return;
  }
  Side& side = *side_;
  for (std::size_t i = 0; i < moved.size(); ++i) {
    if (moved[i] != NONE && side.next[i] != NONE) {
      next[moved[i]] = moved[side.next[i]];
    }
  }
  side.next.swap(next);
  for (Side::Entry& entry : side.table) {
    if (entry.first != NONE) {
      entry.first = moved[entry.first];
      entry.last = moved[entry.last];
    }
  }
}

std::string HABMChildListBase::autoName(std::string const& pattern, bool force) const {
  auto const hole = pattern.find("%d");
  assert(hole != std::string::npos && "an automatic name pattern holds one %d");
  auto const make = [&](std::size_t counter) {
    return pattern.substr(0, hole) + std::to_string(counter) + pattern.substr(hole + 2);
  };
  std::size_t counter = live_;
  std::string candidate = make(counter);
  while (!force && find(candidate) != nullptr) {
    candidate = make(++counter);
  }
  return candidate;
}

std::string HABMChildListBase::checkIndex() const {
  std::size_t counted = 0;
  for (void* item : slots_) {
    counted += item != nullptr ? 1 : 0;
  }
  if (counted != live_) {
    return "the count disagrees with the slots";
  }
  if (!indexed()) {
    return std::string();
  }
  Side const& side = *side_;
  if (side.next.size() != slots_.size()) {
    return "the index has another number of slots";
  }
  std::size_t chained = 0;
  std::size_t entries = 0;
  for (std::size_t at = 0; at < side.table.size(); ++at) {
    Side::Entry const& entry = side.table[at];
    if (entry.first == NONE) {
      continue;
    }
    ++entries;
    if (entry.first >= slots_.size() || slots_[entry.first] == nullptr) {
      return "an entry of the index names an empty slot";
    }
    std::string const& key = nameOf(entry.first);
    // Probing from the entry's home must reach it before a free entry.
    for (std::size_t probe = side.home(entry.hash); probe != at; probe = side.after(probe)) {
      if (side.table[probe].first == NONE) {
        return "the index cannot reach the entry of '" + key + "'";
      }
    }
    std::uint32_t slot = entry.first;
    std::uint32_t last = NONE;
    while (slot != NONE) {
      if (slot >= slots_.size() || slots_[slot] == nullptr || (last != NONE && slot <= last)) {
        return "the chain of '" + key + "' is broken";
      }
      // Only a UNIQUE key may name a child renamed behind the container's back.
      if (keys_ == Keys::FIRST_MATCH && (nameOf(slot) != key || hashOf(key) != entry.hash)) {
        return "'" + nameOf(slot) + "' is filed under another name";
      }
      last = slot;
      slot = side.next[slot];
      ++chained;
    }
    if (last != entry.last) {
      return "the chain of '" + key + "' ends elsewhere";
    }
  }
  if (entries != side.used) {
    return "the index counts another number of names";
  }
  if (keys_ == Keys::FIRST_MATCH && chained != live_) {
    return "the index holds another number of children than the sequence";
  }
  return std::string();
}
