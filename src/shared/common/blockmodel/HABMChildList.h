// HABMChildList.h: the owned, ordered, name-indexed container behind every kind of child.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace habm_detail {
/// The kinds of child, each described by one record (`Kind<id>`); owners befriend the records.
enum class ChildKind : unsigned char;
template <ChildKind>
struct Kind;
}  // namespace habm_detail

/// How a container reads the name of its element. Kinds with `getName()` need nothing; a kind named
/// otherwise specialises this.
template <class T>
struct HABMChildName {
  static std::string const& of(T const& item) { return item.getName(); }
};

/// The part of a child container that does not depend on the element type: ownership, creation order,
/// first-match look-up and removal, for every kind at once.
///
/// Children sit in slots in creation order. A small container is searched linearly; past a few children
/// a hash index names the first child of each name and threads the later ones of the same name behind
/// it, so that get, append, take and rename cost constant time (rename: the number of children that
/// share the name) and a look-up always gives what a linear search would. A taken child leaves an empty
/// slot; the slots close up once half of them are empty, so any sequence of removals is linear.
///
/// A block holds one container per kind, most of them empty, so an empty container is kept small: the
/// index and the orphans live in a side record made on first need.
class HABMChildListBase {
 public:
  /// What a second child of a name already present becomes.
  enum class Keys {
    /// It joins the sequence; look-ups keep giving the first of the name.
    FIRST_MATCH,
    /// It is owned aside, never listed or found (the port table); names are keys fixed at insertion, so
    /// a child renamed without telling the container is found by neither name. (The index keeps a key's
    /// 64-bit hash, not its text: only two names of equal hash could tell the difference.)
    UNIQUE
  };

  HABMChildListBase(HABMChildListBase const&) = delete;
  HABMChildListBase& operator=(HABMChildListBase const&) = delete;

  /// Number of children in the sequence (orphans of UNIQUE not counted).
  std::size_t size() const { return live_; }
  /// True when the sequence is empty.
  bool empty() const { return live_ == 0; }
  /// Number of children owned aside by a UNIQUE container.
  std::size_t orphanCount() const;

  /// The automatic name for a new child: `pattern` ("interface_%d") with its "%d" replaced by the count
  /// in decimal, counting up while the name is taken unless `force` takes the first candidate untested.
  std::string autoName(std::string const& pattern, bool force) const;

  /// Empty when the index agrees with the sequence; otherwise what disagrees. For invariant checks.
  std::string checkIndex() const;

 protected:
  /// What the type-independent half needs to know of the element type.
  struct Traits {
    std::string const& (*nameOf)(void const* item);
    void (*destroy)(void* item);
  };

  HABMChildListBase(Keys keys, Traits const& traits);
  ~HABMChildListBase();

  /// The first child of that name, or null.
  void* find(std::string const& name) const;
  /// Takes ownership of `item` and appends it; returns it.
  void* add(void* item);
  /// Gives up the first child of that name to the caller; null when there is none.
  void* release(std::string const& name);
  /// Destroys every child, orphans included.
  void destroyAll();
  /// Gives up every child of the sequence to the caller, in order, and destroys the orphans.
  std::vector<void*> releaseAll();
  /// Re-files `item`, a child of this container, which was renamed from `oldName`.
  void noteRenamed(void const* item, std::string const& oldName);
  /// The slots in creation order; null where a child was taken.
  std::vector<void*> const& slots() const { return slots_; }

 private:
  struct Side;
  static constexpr std::uint32_t NONE = UINT32_MAX;

  std::string const& nameOf(std::size_t slot) const { return traits_->nameOf(slots_[slot]); }
  std::size_t firstSlot(std::string const& name) const;
  bool indexed() const;
  void buildIndex();
  void compact() noexcept;

  Traits const* traits_;
  std::vector<void*> slots_;
  std::uint32_t live_ = 0;
  Keys keys_;
  std::unique_ptr<Side> side_;  // the index and the orphans; null while neither is needed
};

/// Owns children of type T in creation order and finds the first child of a name (see the base). Hands
/// out plain pointers; the container keeps ownership.
template <class T>
class HABMChildList : public HABMChildListBase {
 public:
  /// Walks the children in order without copying.
  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T*;
    using difference_type = std::ptrdiff_t;
    using pointer = T* const*;
    using reference = T*;

    Iterator(void* const* at, void* const* end) : at_(at), end_(end) { skip(); }
    T* operator*() const { return static_cast<T*>(*at_); }
    Iterator& operator++() {
      ++at_;
      skip();
      return *this;
    }
    bool operator==(Iterator const& other) const { return at_ == other.at_; }
    bool operator!=(Iterator const& other) const { return at_ != other.at_; }

   private:
    void skip() {
      while (at_ != end_ && *at_ == nullptr) {
        ++at_;
      }
    }
    void* const* at_;
    void* const* end_;
  };

  explicit HABMChildList(Keys keys = Keys::FIRST_MATCH) : HABMChildListBase(keys, kTraits) {}

  /// The first child of that name, or null.
  T* get(std::string const& name) const { return static_cast<T*>(find(name)); }
  /// Whether a child of that name is found.
  bool has(std::string const& name) const { return find(name) != nullptr; }
  /// A fresh vector of the children in order.
  std::vector<T*> list() const {
    std::vector<T*> out;
    out.reserve(size());
    for (T* item : *this) {
      out.push_back(item);
    }
    return out;
  }
  Iterator begin() const { return Iterator(slots().data(), slots().data() + slots().size()); }
  Iterator end() const { return Iterator(slots().data() + slots().size(), slots().data() + slots().size()); }

  /// Appends and takes ownership; returns the child (an orphan when UNIQUE and the name is taken). When
  /// memory runs out the container stays as it was and the item is destroyed.
  T* append(std::unique_ptr<T> item) {
    T* child = static_cast<T*>(add(item.get()));
    item.release();
    return child;
  }
  /// Takes the first child of that name out; empty when there is none.
  std::unique_ptr<T> take(std::string const& name) {
    return std::unique_ptr<T>(static_cast<T*>(release(name)));
  }
  /// Destroys every child.
  void clear() { destroyAll(); }
  /// Takes every child out, in order, leaving the container empty.
  std::vector<std::unique_ptr<T>> takeAll() {
    std::vector<std::unique_ptr<T>> out;
    for (void* item : releaseAll()) {
      out.emplace_back(static_cast<T*>(item));
    }
    return out;
  }
  /// Tells the container that `item`, one of its children, now bears another name than `oldName`.
  void renamed(T const& item, std::string const& oldName) { noteRenamed(&item, oldName); }

 private:
  static std::string const& nameOfItem(void const* item) {
    return HABMChildName<T>::of(*static_cast<T const*>(item));
  }
  static void destroyItem(void* item) { delete static_cast<T*>(item); }
  static constexpr Traits kTraits{&nameOfItem, &destroyItem};
};
