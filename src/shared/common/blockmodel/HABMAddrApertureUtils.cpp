// HABMAddrApertureUtils.cpp: set algebra over apertures. Every operation walks its sets in their order,
// as the results depend on it; lookups use sorted indexes so that large sets stay n log n.
#include "blockmodel/HABMAddrApertureUtils.h"

#include <algorithm>
#include <cstddef>
#include <vector>

using ApertureSet = HABMAddrApertureUtils::ApertureSet;

namespace {

HABMAddrValue const& zero() {
  return HABMAddrValue::CONST_0();
}

HABMAddrValue const& one() {
  return HABMAddrValue::CONST_1();
}

// An aperture whose high address wrapped past 2^128 below its base. Such an aperture never has a
// non-empty intersection with anything, so the indexes below leave it out.
bool wraps(HABMAddrAperture const& a) {
  return a.getHighAddress() < a.getBaseAddress();
}

// The aperture from `low` to `high`, both included; `high` is not below `low`.
HABMAddrAperture span(HABMAddrValue const& low, HABMAddrValue const& high) {
  HABMAddrAperture out(low, zero());
  out.setHighAddress(high);
  return out;
}

// Bases in set order with the running maximum of the high addresses. Answers "is there an element with
// base <= x and high >= y" in log time, which decides both containment in some element and overlap.
class PrefixIndex {
 public:
  explicit PrefixIndex(ApertureSet const& set, bool skipWrapping) {
    bases_.reserve(set.size());
    maxHigh_.reserve(set.size());
    for (auto const& a : set) {
      if (skipWrapping && wraps(a)) {
        continue;
      }
      HABMAddrValue const high = a.getHighAddress();
      bases_.push_back(a.getBaseAddress());
      maxHigh_.push_back(maxHigh_.empty() || maxHigh_.back() < high ? high : maxHigh_.back());
    }
  }
  bool any(HABMAddrValue const& baseAtMost, HABMAddrValue const& highAtLeast) const {
    auto const count = std::upper_bound(bases_.begin(), bases_.end(), baseAtMost) - bases_.begin();
    return count > 0 && maxHigh_[static_cast<std::size_t>(count - 1)] >= highAtLeast;
  }

 private:
  std::vector<HABMAddrValue> bases_;
  std::vector<HABMAddrValue> maxHigh_;
};

// The non-wrapping elements of a set with a segment tree of their high addresses: lists, in set order,
// all elements that overlap a span, in time proportional to their number times log n.
class OverlapIndex {
 public:
  explicit OverlapIndex(ApertureSet const& set) {
    for (auto const& a : set) {
      if (!wraps(a)) {
        items_.push_back(a);
      }
    }
    if (!items_.empty()) {
      maxHigh_.resize(4 * items_.size());
      build(1, 0, items_.size());
    }
  }
  void overlapping(HABMAddrAperture const& b, std::vector<HABMAddrAperture const*>& out) const {
    out.clear();
    HABMAddrValue const high = b.getHighAddress();
    auto const end =
        static_cast<std::size_t>(std::upper_bound(items_.begin(), items_.end(), high,
                                                  [](HABMAddrValue const& v, HABMAddrAperture const& a) {
                                                    return v < a.getBaseAddress();
                                                  }) -
                                 items_.begin());
    if (end > 0) {
      collect(1, 0, items_.size(), end, b.getBaseAddress(), out);
    }
  }

 private:
  HABMAddrValue const& build(std::size_t node, std::size_t l, std::size_t r) {
    if (r - l == 1) {
      return maxHigh_[node] = items_[l].getHighAddress();
    }
    std::size_t const mid = l + (r - l) / 2;
    HABMAddrValue const& left = build(2 * node, l, mid);
    HABMAddrValue const& right = build(2 * node + 1, mid, r);
    return maxHigh_[node] = left < right ? right : left;
  }
  void collect(std::size_t node, std::size_t l, std::size_t r, std::size_t end, HABMAddrValue const& low,
               std::vector<HABMAddrAperture const*>& out) const {
    if (l >= end || maxHigh_[node] < low) {
      return;
    }
    if (r - l == 1) {
      out.push_back(&items_[l]);
      return;
    }
    std::size_t const mid = l + (r - l) / 2;
    collect(2 * node, l, mid, end, low, out);
    collect(2 * node + 1, mid, r, end, low, out);
  }

  std::vector<HABMAddrAperture> items_;
  std::vector<HABMAddrValue> maxHigh_;
};

ApertureSet cutToAlignedBases(ApertureSet const& set) {
  ApertureSet out;
  for (auto const& a : set) {
    if (a.aligned()) {
      out.insert(out.end(), a);
      continue;
    }
    // Cut from the low end, each piece as large as the alignment of its base allows.
    HABMAddrValue base = a.getBaseAddress();
    HABMAddrValue remaining = a.getRange();
    while (remaining > zero()) {
      HABMAddrValue chunk = one() << static_cast<int>(base.getAddressableBits());
      if (remaining < chunk) {
        chunk = remaining;
      }
      HABMAddrAperture const piece(base, chunk);
      out.insert(out.end(), piece);
      base = piece.getHighAddress() + one();
      remaining = chunk < remaining ? remaining - chunk : zero();
    }
  }
  return out;
}

ApertureSet cutToPowersOfTwo(ApertureSet const& set) {
  ApertureSet out;
  for (auto const& a : set) {
    if (a.getRange().isPow2()) {
      out.insert(out.end(), a);
      continue;
    }
    // Largest piece first; a range of 0 leaves nothing.
    HABMAddrValue base = a.getBaseAddress();
    HABMAddrValue remaining = a.getRange();
    while (remaining > zero()) {
      HABMAddrValue const chunk = remaining.roundDownPow2();
      out.insert(out.end(), HABMAddrAperture(base, chunk));
      base += chunk;
      remaining = chunk < remaining ? remaining - chunk : zero();
    }
  }
  return out;
}

// The maximal merged regions: one pass in set order suffices, since unification takes both overlapping
// and touching neighbours.
ApertureSet mergeRegions(ApertureSet const& set) {
  ApertureSet out;
  auto it = set.begin();
  if (it == set.end()) {
    return out;
  }
  HABMAddrAperture current = *it;
  for (++it; it != set.end(); ++it) {
    HABMAddrAperture const merged = current.unification(*it);
    if (merged.getRange() > zero()) {
      current = merged;
    } else {
      out.insert(out.end(), current);
      current = *it;
    }
  }
  out.insert(out.end(), current);
  return out;
}

}  // namespace

ApertureSet HABMAddrApertureUtils::adjust(ApertureSet const& set, bool const& powerOfTwoRanges,
                                          bool const& alignedBases) {
  if (!alignedBases) {
    return powerOfTwoRanges ? cutToPowersOfTwo(set) : set;
  }
  ApertureSet aligned = cutToAlignedBases(set);
  return powerOfTwoRanges ? cutToPowersOfTwo(aligned) : aligned;
}

ApertureSet HABMAddrApertureUtils::adjust(HABMAddrAperture const& aperture, bool const& powerOfTwoRanges,
                                          bool const& alignedBases) {
  return adjust(ApertureSet{aperture}, powerOfTwoRanges, alignedBases);
}

ApertureSet HABMAddrApertureUtils::compress(ApertureSet const& set, bool const& powerOfTwoRanges,
                                            bool const& alignedBases) {
  ApertureSet regions = mergeRegions(set);
  if (!powerOfTwoRanges && !alignedBases) {
    return regions;
  }
  return adjust(regions, powerOfTwoRanges, alignedBases);
}

ApertureSet HABMAddrApertureUtils::prune(ApertureSet const& set) {
  ApertureSet out;
  auto it = set.begin();
  if (it == set.end()) {
    return out;
  }
  // The keeper so far swallows the apertures it covers and gives way to one that covers it.
  HABMAddrAperture current = *it;
  for (++it; it != set.end(); ++it) {
    if (current.subset(*it)) {
      current = *it;
    } else if (!current.superset(*it)) {
      out.insert(out.end(), current);
      current = *it;
    }
  }
  out.insert(out.end(), current);
  return out;
}

HABMAddrAperture HABMAddrApertureUtils::combine(ApertureSet const& set, bool const& powerOfTwoRange) {
  if (set.empty()) {
    return HABMAddrAperture::ILLEGAL();
  }
  HABMAddrValue low = HABMAddrValue::CONST_MAX();
  HABMAddrValue high = zero();
  for (auto const& a : set) {
    if (a.getBaseAddress() < low) {
      low = a.getBaseAddress();
    }
    HABMAddrValue const h = a.getHighAddress();
    if (h > high) {
      high = h;
    }
  }
  HABMAddrAperture out(low, zero());
  out.setHighAddress(high);
  if (powerOfTwoRange) {
    out.setRange(out.getRange().roundUpPow2());
  }
  return out;
}

bool HABMAddrApertureUtils::allocated(ApertureSet const& set, HABMAddrAperture const& aperture) {
  ApertureSet const regions = mergeRegions(set);
  return std::any_of(regions.begin(), regions.end(),
                     [&aperture](HABMAddrAperture const& r) { return aperture.subset(r); });
}

bool HABMAddrApertureUtils::checkConeRule(ApertureSet const& first, ApertureSet const& second) {
  ApertureSet offenders;
  return checkConeRule(first, second, offenders);
}

bool HABMAddrApertureUtils::checkConeRule(ApertureSet const& first, ApertureSet const& second,
                                          ApertureSet& offenders) {
  // Built aside and swapped in at the end, so that `offenders` may be one of the inputs.
  ApertureSet failed;
  if (!first.empty()) {
    PrefixIndex const regions(mergeRegions(second), false);
    for (auto const& request : first) {
      // Served when some region starts at or below its base and ends at or above its high address.
      if (!regions.any(request.getBaseAddress(), request.getHighAddress())) {
        failed.insert(failed.end(), request);
      }
    }
  }
  offenders.swap(failed);
  return offenders.empty();
}

ApertureSet HABMAddrApertureUtils::getCompressions(ApertureSet const& setA, ApertureSet const& setB) {
  ApertureSet both = setA;
  both.insert(setB.begin(), setB.end());
  return mergeRegions(both);
}

ApertureSet HABMAddrApertureUtils::getCompressions(ApertureSet const& setA,
                                                   HABMAddrAperture const& aperture) {
  return getCompressions(setA, ApertureSet{aperture});
}

ApertureSet HABMAddrApertureUtils::getIntersections(ApertureSet const& setA, ApertureSet const& setB) {
  ApertureSet out;
  for (auto const& a : setA) {
    for (auto const& b : setB) {
      HABMAddrAperture const i = a.intersection(b);
      if (i.getRange() > zero()) {
        out.insert(i);
      }
    }
  }
  return out;
}

ApertureSet HABMAddrApertureUtils::getIntersections(ApertureSet const& setA,
                                                    HABMAddrAperture const& aperture) {
  return getIntersections(setA, ApertureSet{aperture});
}

ApertureSet HABMAddrApertureUtils::getUnifications(ApertureSet const& setA, ApertureSet const& setB) {
  // A region takes part when some element of each set overlaps it. Wrapping elements and regions are left
  // out: their intersections are always empty.
  PrefixIndex const indexA(setA, true);
  PrefixIndex const indexB(setB, true);
  ApertureSet out;
  for (auto const& region : getCompressions(setA, setB)) {
    if (wraps(region)) {
      continue;
    }
    HABMAddrValue const high = region.getHighAddress();
    if (indexA.any(high, region.getBaseAddress()) && indexB.any(high, region.getBaseAddress())) {
      out.insert(out.end(), region);
    }
  }
  return out;
}

ApertureSet HABMAddrApertureUtils::getUnifications(ApertureSet const& setA,
                                                   HABMAddrAperture const& aperture) {
  return getUnifications(setA, ApertureSet{aperture});
}

ApertureSet HABMAddrApertureUtils::getRelativeComplements(HABMAddrAperture const& a,
                                                          HABMAddrAperture const& b) {
  HABMAddrAperture const i = a.intersection(b);
  if (!(i.getRange() > zero())) {
    return ApertureSet{b};
  }
  ApertureSet out;
  if (b.getBaseAddress() < i.getBaseAddress()) {
    HABMAddrAperture low = b;
    low.setHighAddress(i.getBaseAddress() - one());
    out.insert(low);
  }
  if (b.getHighAddress() > i.getHighAddress()) {
    out.insert(span(i.getHighAddress() + one(), b.getHighAddress()));
  }
  return out;
}

ApertureSet HABMAddrApertureUtils::getRelativeComplements(ApertureSet const& setA, ApertureSet const& setB) {
  if (setA.empty()) {
    return setB;
  }
  // Taking the hits away one after the other, lowest base first, leaves the runs of `b` between them; a
  // sweep over the hits yields those runs directly. Wrapping apertures intersect nothing, so a wrapping
  // `b` stays whole and wrapping hits take nothing away.
  OverlapIndex const index(setA);
  std::vector<HABMAddrAperture const*> hits;
  ApertureSet out;
  for (auto const& b : setB) {
    if (!wraps(b)) {
      index.overlapping(b, hits);
    } else {
      hits.clear();
    }
    if (hits.empty()) {
      out.insert(out.end(), b);
      continue;
    }
    HABMAddrValue const high = b.getHighAddress();
    HABMAddrValue cursor = b.getBaseAddress();
    bool open = true;
    for (HABMAddrAperture const* hit : hits) {
      HABMAddrValue const hitBase = std::max(hit->getBaseAddress(), b.getBaseAddress());
      HABMAddrValue const hitHigh = std::min(hit->getHighAddress(), high);
      if (hitBase > cursor) {
        out.insert(out.end(), span(cursor, hitBase - one()));
      }
      if (hitHigh >= cursor) {
        if (hitHigh == high) {
          open = false;
          break;
        }
        cursor = hitHigh + one();
      }
    }
    if (open) {
      out.insert(out.end(), span(cursor, high));
    }
  }
  return out;
}
