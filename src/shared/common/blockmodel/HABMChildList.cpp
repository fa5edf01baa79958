// HABMChildList.cpp: the type-independent half of the child containers: slots, the name index and its
// chains of same-named children, compaction.
#include "blockmodel/HABMChildList.h"

#include <cassert>
#include <new>
#include <unordered_map>
#include <utility>

namespace {

// Below this many children a linear search is as fast as hashing, and costs no memory.
constexpr std::size_t kLinearLimit = 8;

}  // namespace

// A chain holds the slots of the children of one name in ascending order; `next` links them.
struct HABMChildListBase::Index {
  struct Chain {
    std::uint32_t first;
    std::uint32_t last;
  };
  std::unordered_map<std::string, Chain> chains;
  std::vector<std::uint32_t> next;  // parallel to the slots
};

HABMChildListBase::HABMChildListBase(Keys keys, NameOf nameOfItem, Destroy destroy)
    : keys_(keys), nameOf_(nameOfItem), destroy_(destroy) {}

HABMChildListBase::~HABMChildListBase() {
  destroyAll();
}

std::size_t HABMChildListBase::firstSlot(std::string const& name) const {
  if (index_) {
    auto const it = index_->chains.find(name);
    if (it == index_->chains.end()) {
      return slots_.size();
    }
    // A UNIQUE key keeps pointing at a child renamed behind the container's back; that child does not
    // answer to the key any more.
    std::size_t const slot = it->second.first;
    return nameOf(slot) == name ? slot : slots_.size();
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
  if (!index_ && (keys_ == Keys::UNIQUE || live_ >= kLinearLimit)) {
    buildIndex();
  }
  slots_.reserve(slots_.size() + 1);
  auto const slot = static_cast<std::uint32_t>(slots_.size());
  if (index_) {
    index_->next.reserve(slots_.size() + 1);
    std::string const& name = nameOf_(item);
    auto const it = index_->chains.find(name);
    if (it == index_->chains.end()) {
      index_->chains.emplace(name, Index::Chain{slot, slot});
    } else if (keys_ == Keys::UNIQUE) {
      if (nameOf(it->second.first) == name) {
        orphans_.push_back(item);
        return item;
      }
      it->second = Index::Chain{slot, slot};  // the key was left by a child renamed behind our back
    } else {
      index_->next[it->second.last] = slot;
      it->second.last = slot;
    }
    index_->next.push_back(NONE);
  }
  slots_.push_back(item);
  ++live_;
  return item;
}

void* HABMChildListBase::release(std::string const& name) {
  std::size_t const slot = firstSlot(name);
  if (slot == slots_.size()) {
    return nullptr;
  }
  void* const item = slots_[slot];
  if (index_) {
    auto const it = index_->chains.find(name);
    std::uint32_t const after = index_->next[slot];
    if (after == NONE) {
      index_->chains.erase(it);
    } else {
      it->second.first = after;
      index_->next[slot] = NONE;
    }
  }
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
  std::vector<void*> orphans;
  orphans.swap(orphans_);
  index_.reset();
  live_ = 0;
  for (void* item : items) {
    if (item != nullptr) {
      destroy_(item);
    }
  }
  for (void* item : orphans) {
    destroy_(item);
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
  index_.reset();
  destroyAll();  // the orphans
  return items;
}

void HABMChildListBase::noteRenamed(void const* item, std::string const& oldName) {
  if (!index_ || keys_ == Keys::UNIQUE) {
    return;  // a linear search reads the new name; a UNIQUE key stays as inserted
  }
  std::string const& newName = nameOf_(item);
  if (newName == oldName) {
    return;
  }
  auto const old = index_->chains.find(oldName);
  assert(old != index_->chains.end() && "a renamed child was filed under its old name");
  auto& next = index_->next;
  std::uint32_t prev = NONE;
  std::uint32_t slot = old->second.first;
  while (slot != NONE && slots_[slot] != item) {
    prev = slot;
    slot = next[slot];
  }
  assert(slot != NONE && "a renamed child was filed under its old name");
  if (prev == NONE && next[slot] == NONE) {
    index_->chains.erase(old);
  } else {
    (prev == NONE ? old->second.first : next[prev]) = next[slot];
    if (old->second.last == slot) {
      old->second.last = prev;
    }
  }
  next[slot] = NONE;

  auto const now = index_->chains.find(newName);
  if (now == index_->chains.end()) {
    index_->chains.emplace(newName, Index::Chain{slot, slot});
    return;
  }
  // Insert in slot order, so that the chain's head stays the first of the name.
  Index::Chain& chain = now->second;
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
  auto index = std::make_unique<Index>();  // installed only once complete
  index->chains.reserve(live_ * 2);
  index->next.assign(slots_.size(), NONE);
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    if (slots_[i] == nullptr) {
      continue;
    }
    auto const slot = static_cast<std::uint32_t>(i);
    auto const it = index->chains.find(nameOf(i));
    if (it == index->chains.end()) {
      index->chains.emplace(nameOf(i), Index::Chain{slot, slot});
    } else {
      index->next[it->second.last] = slot;
      it->second.last = slot;
    }
  }
  index_ = std::move(index);
}

void HABMChildListBase::compact() noexcept {
  // Closing the holes only saves space and time: when there is no memory for it, they stay a while.
  std::vector<std::uint32_t> moved;
  std::vector<std::uint32_t> next;
  try {
    moved.assign(slots_.size(), NONE);
    if (index_) {
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
  if (!index_) {
    return;
  }
  for (std::size_t i = 0; i < moved.size(); ++i) {
    if (moved[i] != NONE && index_->next[i] != NONE) {
      next[moved[i]] = moved[index_->next[i]];
    }
  }
  index_->next.swap(next);
  for (auto& entry : index_->chains) {
    entry.second.first = moved[entry.second.first];
    entry.second.last = moved[entry.second.last];
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
  if (!index_) {
    return std::string();
  }
  if (index_->next.size() != slots_.size()) {
    return "the index has another number of slots";
  }
  std::size_t chained = 0;
  for (auto const& entry : index_->chains) {
    std::uint32_t slot = entry.second.first;
    std::uint32_t last = NONE;
    while (slot != NONE) {
      if (slot >= slots_.size() || slots_[slot] == nullptr || (last != NONE && slot <= last)) {
        return "the chain of '" + entry.first + "' is broken";
      }
      bool const answers = nameOf(slot) == entry.first;
      // Only a UNIQUE key may name a child renamed behind the container's back.
      if (!answers && keys_ == Keys::FIRST_MATCH) {
        return "'" + nameOf(slot) + "' is filed under '" + entry.first + "'";
      }
      last = slot;
      slot = index_->next[slot];
      ++chained;
    }
    if (last != entry.second.last) {
      return "the chain of '" + entry.first + "' ends elsewhere";
    }
  }
  if (keys_ == Keys::FIRST_MATCH && chained != live_) {
    return "the index holds another number of children than the sequence";
  }
  return std::string();
}
