// HABMChildTable.h: the owned container of a kind whose names are unique keys (the ports of a block).
#pragma once

#include "blockmodel/HABMChildList.h"

#include <cassert>
#include <cstddef>
#include <iterator>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Owns children in insertion order under a hash index with unique keys, every operation in constant
/// time, so that a block with a million ports is built, searched and trimmed linearly.
///
/// The index holds its own copy of each key. A child renamed behind the table's back keeps its place in
/// the sequence, but is found neither by its old name nor by its new one; the key it left becomes free.
///
/// A forced append of a name whose key is taken leaves the table as it was. The child is then an orphan:
/// the table still owns it (it is never handed out in `list`), and it lives until `clear` or the table's end,
/// so the pointer the caller received stays valid as long as any other child's would.
template <class T>
class HABMChildTable {
 public:
  HABMChildTable() = default;
  HABMChildTable(HABMChildTable const&) = delete;
  HABMChildTable& operator=(HABMChildTable const&) = delete;

  /// The child of that name, or null; the table keeps ownership.
  T* get(std::string const& name) const {
    auto const it = index_.find(name);
    if (it == index_.end()) {
      return nullptr;
    }
    T* child = it->second->get();
    return nameOf(*child) == name ? child : nullptr;
  }
  /// Whether a child of that name is found.
  bool has(std::string const& name) const { return get(name) != nullptr; }
  /// A fresh vector of the children in insertion order, orphans excluded; the table keeps ownership.
  std::vector<T*> list() const {
    std::vector<T*> out;
    out.reserve(items_.size());
    for (auto const& item : items_) {
      out.push_back(item.get());
    }
    return out;
  }
  /// Number of children in the sequence, orphans excluded.
  std::size_t size() const { return items_.size(); }
  /// True when the sequence is empty.
  bool empty() const { return items_.empty(); }
  /// Number of orphans kept from forced duplicates.
  std::size_t orphanCount() const { return orphans_.size(); }

  /// Appends and takes ownership; returns the child. When the name is already found, the child becomes an
  /// orphan instead (see the class comment) and the sequence and index stay as they were.
  T* append(std::unique_ptr<T> item) {
    assert(item && "a table holds no empty pointer");
    std::string const& name = nameOf(*item);
    auto const it = index_.find(name);
    if (it != index_.end() && nameOf(**it->second) == name) {
      orphans_.push_back(std::move(item));
      return orphans_.back().get();
    }
    items_.push_back(std::move(item));
    auto const pos = std::prev(items_.end());
    if (it != index_.end()) {
      it->second = pos;  // the key was left by a renamed child
    } else {
      index_.emplace(name, pos);
    }
    return pos->get();
  }

  /// Takes the child of that name out; empty when no child is found by that name.
  std::unique_ptr<T> take(std::string const& name) {
    auto const it = index_.find(name);
    if (it == index_.end() || nameOf(**it->second) != name) {
      return nullptr;
    }
    std::unique_ptr<T> out = std::move(*it->second);
    items_.erase(it->second);
    index_.erase(it);
    return out;
  }

  /// Destroys every child, orphans included.
  void clear() {
    index_.clear();
    items_.clear();
    orphans_.clear();
  }

  /// The automatic name rule of the child containers.
  std::string autoName(std::string const& pattern, bool force) const {
    return habmAutoName(*this, pattern, force);
  }

  /// Whether every key points at a distinct child of the sequence; for the invariant checks of tests.
  bool checkIndex() const {
    std::unordered_set<T const*> inSequence;
    for (auto const& item : items_) {
      inSequence.insert(item.get());
    }
    std::unordered_set<T const*> indexed;
    for (auto const& entry : index_) {
      T const* child = entry.second->get();
      if (inSequence.count(child) == 0 || !indexed.insert(child).second) {
        return false;
      }
    }
    return true;
  }

 private:
  using Sequence = std::list<std::unique_ptr<T>>;

  static std::string const& nameOf(T const& item) { return HABMChildName<T>::of(item); }

  Sequence items_;
  std::unordered_map<std::string, typename Sequence::iterator> index_;
  std::vector<std::unique_ptr<T>> orphans_;
};
