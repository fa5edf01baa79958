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

/// Owns children in creation order and finds the first child of a name in constant time. Duplicate names
/// are allowed (forced creation) and the index always points at the first of them, so a look-up gives the
/// same answer as a linear search in container order. Removal keeps the order of the others.
template <class T>
class HABMChildList {
 public:
  HABMChildList() = default;
  HABMChildList(HABMChildList const&) = delete;
  HABMChildList& operator=(HABMChildList const&) = delete;

  /// The first child of that name, or null; the container keeps ownership.
  T* get(std::string const& name) const {
    auto const it = first_.find(name);
    return it == first_.end() ? nullptr : items_[it->second].get();
  }
  /// Whether a child of that name exists.
  bool has(std::string const& name) const { return first_.count(name) != 0; }
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
    first_.emplace(nameOf(*item), items_.size());
    items_.push_back(std::move(item));
    return items_.back().get();
  }

  /// Takes the first child of that name out, closing the gap; empty when the name is unknown.
  std::unique_ptr<T> take(std::string const& name) {
    auto const it = first_.find(name);
    if (it == first_.end()) {
      return nullptr;
    }
    std::size_t const pos = it->second;
    std::unique_ptr<T> out = std::move(items_[pos]);
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(pos));
    first_.erase(it);
    for (auto& entry : first_) {
      if (entry.second > pos) {
        --entry.second;
      }
    }
    // A forced duplicate behind the removed child becomes the first of its name.
    reindexFrom(name, pos);
    return out;
  }

  /// Destroys every child.
  void clear() {
    first_.clear();
    items_.clear();
  }

  /// Tells the index that `item`, a child of this container, was renamed from `oldName`. Const because
  /// the index is a cache of the sequence, which does not change.
  void renamed(T const& item, std::string const& oldName) const {
    std::string const& newName = nameOf(item);
    if (newName == oldName) {
      return;
    }
    std::size_t pos = 0;
    while (pos < items_.size() && items_[pos].get() != &item) {
      ++pos;
    }
    assert(pos < items_.size() && "renamed child is not in this container");
    auto const old = first_.find(oldName);
    if (old != first_.end() && old->second == pos) {
      first_.erase(old);
      reindexFrom(oldName, pos + 1);
    }
    auto const now = first_.find(newName);
    if (now == first_.end()) {
      first_.emplace(newName, pos);
    } else if (now->second > pos) {
      now->second = pos;
    }
  }

  /// The automatic name for a new child: `pattern` ("interface_%d") with its "%d" replaced by the current
  /// count in decimal, counting up until free unless `force` takes the first candidate untested.
  std::string autoName(std::string const& pattern, bool force) const {
    return habmAutoName(*this, pattern, force);
  }

  /// Whether the index agrees with a linear search; for the invariant checks of tests.
  bool checkIndex() const {
    std::unordered_map<std::string, std::size_t> expected;
    for (std::size_t i = 0; i < items_.size(); ++i) {
      expected.emplace(nameOf(*items_[i]), i);
    }
    return expected == first_;
  }

 private:
  static std::string const& nameOf(T const& item) { return HABMChildName<T>::of(item); }

  // Points the index for `name` at its first child at or after `from`, if any.
  void reindexFrom(std::string const& name, std::size_t from) const {
    for (std::size_t i = from; i < items_.size(); ++i) {
      if (nameOf(*items_[i]) == name) {
        first_.emplace(name, i);
        return;
      }
    }
  }

  std::vector<std::unique_ptr<T>> items_;
  // Name -> position of its first child; a cache of `items_`, hence mutable for renames seen from a child.
  mutable std::unordered_map<std::string, std::size_t> first_;
};
