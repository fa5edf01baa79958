// HABMChildList.h: the owned, ordered, name-indexed container behind every kind of child of a block.
#pragma once

#include <cassert>
#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// How a container reads the name of its element. Kinds with `getName()` need nothing; a kind named
/// otherwise specialises this.
template <class T>
struct HABMChildName {
  static std::string const& of(T const& item) { return item.getName(); }
};

/// The automatic name rule shared by the child containers: `pattern` with its "%d" replaced by the
/// container's count, counting up while `list.has` finds the candidate, unless `force` takes the first.
template <class List>
std::string habmAutoName(List const& list, std::string const& pattern, bool force) {
  auto const hole = pattern.find("%d");
  assert(hole != std::string::npos && "an automatic name pattern holds one %d");
  auto const make = [&](std::size_t counter) {
    return pattern.substr(0, hole) + std::to_string(counter) + pattern.substr(hole + 2);
  };
  std::size_t counter = list.size();
  std::string candidate = make(counter);
  while (!force && list.has(candidate)) {
    candidate = make(++counter);
  }
  return candidate;
}

/// Owns children in creation order and finds the first child of a name. Duplicate names are allowed
/// (forced creation) and a look-up always gives the first of them, as a linear search in container order
/// would. Removal keeps the order of the others. Small containers (most of them: a block's attributes,
/// generics, parameters) are searched linearly; a hash index is built only once a container grows past
/// a few children, so that a block stays small and a wide block stays fast.
template <class T>
class HABMChildList {
 public:
  HABMChildList() = default;
  HABMChildList(HABMChildList const&) = delete;
  HABMChildList& operator=(HABMChildList const&) = delete;

  /// The first child of that name, or null; the container keeps ownership.
  T* get(std::string const& name) const {
    if (index_) {
      auto const it = index_->find(name);
      return it == index_->end() ? nullptr : it->second;
    }
    for (auto const& item : items_) {
      if (nameOf(*item) == name) {
        return item.get();
      }
    }
    return nullptr;
  }
  /// Whether a child of that name exists.
  bool has(std::string const& name) const { return get(name) != nullptr; }
  /// A fresh vector of the children in container order; the container keeps ownership.
  std::vector<T*> list() const {
    std::vector<T*> out;
    out.reserve(items_.size());
    for (auto const& item : items_) {
      out.push_back(item.get());
    }
    return out;
  }
  /// Number of children.
  std::size_t size() const { return items_.size(); }
  /// True when there is no child.
  bool empty() const { return items_.empty(); }
  /// The owned children in order, for walks that must not copy.
  std::vector<std::unique_ptr<T>> const& items() const { return items_; }

  /// Appends and takes ownership; returns the child. A name already present keeps its first child.
  T* append(std::unique_ptr<T> item) {
    assert(item && "a container holds no empty pointer");
    items_.push_back(std::move(item));
    T* child = items_.back().get();
    if (index_) {
      index_->emplace(nameOf(*child), child);
    } else if (items_.size() > kLinearLimit) {
      buildIndex();
    }
    return child;
  }

  /// Takes the first child of that name out, closing the gap; empty when the name is unknown.
  std::unique_ptr<T> take(std::string const& name) {
    T* const child = get(name);
    if (child == nullptr) {
      return nullptr;
    }
    std::size_t const pos = positionOf(child);
    std::unique_ptr<T> out = std::move(items_[pos]);
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(pos));
    if (index_) {
      index_->erase(name);
      // A forced duplicate behind the removed child becomes the first of its name.
      indexFirstFrom(name, pos);
    }
    return out;
  }

  /// Destroys every child.
  void clear() {
    index_.reset();
    items_.clear();
  }

  /// Tells the index that `item`, a child of this container, was renamed from `oldName`. Const because
  /// the index is a cache of the sequence, which does not change.
  void renamed(T const& item, std::string const& oldName) const {
    std::string const& newName = nameOf(item);
    if (!index_ || newName == oldName) {
      return;
    }
    std::size_t const pos = positionOf(&item);
    auto const old = index_->find(oldName);
    if (old != index_->end() && old->second == &item) {
      index_->erase(old);
      indexFirstFrom(oldName, pos + 1);
    }
    auto const now = index_->find(newName);
    if (now == index_->end()) {
      index_->emplace(newName, const_cast<T*>(&item));
    } else if (positionOf(now->second) > pos) {
      now->second = const_cast<T*>(&item);
    }
  }

  /// The automatic name for a new child: `pattern` ("interface_%d") with its "%d" replaced by the current
  /// count in decimal, counting up until free unless `force` takes the first candidate untested.
  std::string autoName(std::string const& pattern, bool force) const {
    return habmAutoName(*this, pattern, force);
  }

  /// Whether the index, if there is one, agrees with a linear search; for the invariant checks of tests.
  bool checkIndex() const {
    if (!index_) {
      return true;
    }
    std::unordered_map<std::string, T*> expected;
    for (auto const& item : items_) {
      expected.emplace(nameOf(*item), item.get());
    }
    return expected == *index_;
  }

 private:
  // Below this many children a linear search is as fast as hashing, and costs no memory.
  static constexpr std::size_t kLinearLimit = 8;

  static std::string const& nameOf(T const& item) { return HABMChildName<T>::of(item); }

  std::size_t positionOf(T const* child) const {
    std::size_t pos = 0;
    while (pos < items_.size() && items_[pos].get() != child) {
      ++pos;
    }
    assert(pos < items_.size() && "child is not in this container");
    return pos;
  }

  void buildIndex() const {
    index_ = std::make_unique<std::unordered_map<std::string, T*>>();
    index_->reserve(items_.size() * 2);
    for (auto const& item : items_) {
      index_->emplace(nameOf(*item), item.get());
    }
  }

  // Points the index for `name` at its first child at or after `from`, if any.
  void indexFirstFrom(std::string const& name, std::size_t from) const {
    for (std::size_t i = from; i < items_.size(); ++i) {
      if (nameOf(*items_[i]) == name) {
        index_->emplace(name, items_[i].get());
        return;
      }
    }
  }

  std::vector<std::unique_ptr<T>> items_;
  // Name -> its first child, once the container is large; a cache of `items_`, hence mutable for renames
  // seen from a child.
  mutable std::unique_ptr<std::unordered_map<std::string, T*>> index_;
};
