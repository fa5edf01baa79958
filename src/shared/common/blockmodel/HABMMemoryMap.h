// HABMMemoryMap.h: a memory map of a block: what a slave-side interface exposes, with its address blocks.
#pragma once

#include "blockmodel/HABMAddrValue.h"
#include "blockmodel/HABMChildList.h"

#include <string>
#include <vector>

class HABMAddrBlock;
class HABMBlock;

/// A named memory map on a block: a total range and named address blocks in creation order. Only the
/// block makes one; the map owns its address blocks and hands out plain pointers.
class HABMMemoryMap {
 public:
  ~HABMMemoryMap();
  HABMMemoryMap(HABMMemoryMap const&) = delete;
  HABMMemoryMap& operator=(HABMMemoryMap const&) = delete;

  /// The owning block; never null.
  HABMBlock const* getParent() const { return parent_; }
  /// The name, unique among the block's memory maps.
  std::string const& getName() const { return name_; }
  /// The total size of the map; 4G by default. Independent of the address blocks.
  HABMAddrValue const& getRange() const { return range_; }
  /// Sets the total size; the address blocks are not touched or checked.
  void setRange(HABMAddrValue const& range) { range_ = range; }
  /// The block's instance path, terminated, then the name ("/u1/m").
  std::string getPath() const;

  /// Appends an address block; null, silently, for an empty name, a name with "/" or a taken name. The
  /// map owns the result.
  HABMAddrBlock* createAddrBlock(std::string const& name);
  /// The first address block of that exact name, or null.
  HABMAddrBlock* getAddrBlock(std::string const& name) const;
  /// The address blocks in creation order; the map keeps ownership.
  std::vector<HABMAddrBlock*> getAddrBlocks() const;
  /// Destroys the first address block of that name; false, silently, when there is none.
  bool removeAddrBlock(std::string const& name);
  /// Destroys every address block, silently.
  void clearAddrBlocks();

 private:
  friend class HABMBlock;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMMemoryMap(HABMBlock* parent, std::string const& name);
  // Copies the range and the address blocks of `source` into this map, which already bears its name.
  void clone(HABMMemoryMap const& source);

  HABMBlock* parent_;
  std::string name_;
  HABMAddrValue range_;
  HABMChildList<HABMAddrBlock> addrBlocks_;
};
