// HABMAddrApertureUtilsTest.cpp: the aperture set algebra, on fixed cases, against an address bitmap and
// against plain nested-loop forms of the operations.
#include "blockmodel/HABMAddrApertureUtils.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bitset>
#include <iterator>
#include <random>
#include <vector>

namespace {

using V = HABMAddrValue;
using A = HABMAddrAperture;
using U = HABMAddrApertureUtils;
using Set = U::ApertureSet;

A ap(std::uint64_t base, std::uint64_t range) {
  return A(V(0, base), V(0, range));
}

TEST(HABMAddrApertureUtils, FixedCasesOfAdjustCombineTheConeRuleAndAComplementWithManyHoles) {
  EXPECT_EQ(U::adjust(Set{ap(0x1000, 0x4800)}, false, true),
            (Set{ap(0x1000, 0x1000), ap(0x2000, 0x2000), ap(0x4000, 0x1800)}));
  EXPECT_EQ(U::adjust(Set{ap(0x1000, 0x5000)}, true, false), (Set{ap(0x1000, 0x4000), ap(0x5000, 0x1000)}));
  EXPECT_EQ(U::adjust(Set{ap(0x1000, 0x3000)}, true, true), (Set{ap(0x1000, 0x1000), ap(0x2000, 0x2000)}));
  EXPECT_EQ(U::compress(Set{ap(0, 0x3000)}, true, true), (Set{ap(0, 0x2000), ap(0x2000, 0x1000)}));
  EXPECT_EQ(U::adjust(Set{ap(0x1000, 0), ap(0x1001, 0)}, false, true), Set{ap(0x1000, 0)});
  EXPECT_EQ(U::adjust(Set{ap(0x1000, 0)}, true, false), Set{});
  // Combine spans from the lowest base to the highest address, rounded up if asked.
  Set const s{ap(0x1000, 0x1000), ap(0x8000, 0x1000)};
  EXPECT_EQ(U::combine(s, false), ap(0x1000, 0x8000));
  EXPECT_EQ(U::combine(s, true), ap(0x1000, 0x8000));
  EXPECT_EQ(U::combine(Set{ap(0x1000, 0x1000), ap(0x3000, 1)}, true), ap(0x1000, 0x4000));
  EXPECT_EQ(U::combine(Set{}, false), A::ILLEGAL());
  // The cone rule may put its offenders into its own first argument.
  Set same{ap(0, 0x2000)};
  EXPECT_FALSE(U::checkConeRule(same, Set{ap(0, 0x1000)}, same));
  EXPECT_EQ(same, Set{ap(0, 0x2000)});
  // The relative complement of a whole span with many holes needs no deep recursion.
  Set holes;
  for (std::uint64_t i = 0; i < 20000; ++i) {
    holes.insert(ap(2 * i, 1));
  }
  EXPECT_EQ(U::getRelativeComplements(holes, Set{ap(0, 40000)}).size(), 20000U);
}

// ---- Random sets against an address bitmap and against the nested-loop forms. ----

using Bits = std::bitset<512>;

// Addresses of the set, an empty aperture counting as its base (as the relations see it) or as nothing.
Bits cover(Set const& s, bool emptyIsOneAddress) {
  Bits b;
  for (auto const& a : s) {
    auto const base = a.getBaseAddress().getUInt64Value(), range = a.getRange().getUInt64Value();
    for (auto i = base; i < base + std::max<std::uint64_t>(range, emptyIsOneAddress ? 1 : 0); ++i) {
      b.set(i);
    }
  }
  return b;
}

Bits cover(A const& a) {
  return cover(Set{a}, true);
}

Set randomSet(std::mt19937_64& rng, V const& origin, unsigned count, unsigned maxRange) {
  Set s;
  for (unsigned i = 0; i < count; ++i) {
    s.insert(A(origin + V(0, rng() % 256), V(0, rng() % (maxRange + 1))));
  }
  return s;
}

// Nested-loop forms, taken straight from the operations' definitions.
Set loopRelativeComplements(Set const& a, Set pieces) {
  for (auto const& h : a) {  // cut each aperture of the first set out of every piece left
    Set next;
    for (auto const& x : pieces) {
      Set const rest = h.overlaps(x) ? U::getRelativeComplements(h, x) : Set{x};
      next.insert(rest.begin(), rest.end());
    }
    pieces = next;
  }
  return pieces;
}

Set loopUnifications(Set const& a, Set const& b) {
  Set const all = U::getCompressions(a, b);
  Set out;
  std::copy_if(all.begin(), all.end(), std::inserter(out, out.end()), [&](A const& r) {
    return !U::getIntersections(a, Set{r}).empty() && !U::getIntersections(b, Set{r}).empty();
  });
  return out;
}

Set loopConeOffenders(Set const& first, Set const& second) {
  Set const regions = U::compress(second, false, false);
  Set out;
  std::copy_if(first.begin(), first.end(), std::inserter(out, out.end()), [&regions](A const& f) {
    return std::none_of(regions.begin(), regions.end(), [&f](A const& r) { return f.subset(r); });
  });
  return out;
}

// Near the top of the address space apertures wrap past 2^128, where no bitmap reaches: there the indexed
// forms must still agree with the nested loops, and nothing may recurse without end.
TEST(HABMAddrApertureUtilsModel, SetAlgebraMatchesTheAddressBitmapAndTheLoopsEvenAtTheTopOfTheSpace) {
  std::mt19937_64 rng(12345);
  for (auto const& [origin, maxRange, rounds] :
       {std::tuple{V(), 64U, 4000}, {V::CONST_MAX() - V(200U), 400U, 3000}}) {
    for (int round = 0; round < rounds; ++round) {
      Set const s = randomSet(rng, origin, static_cast<unsigned>(rng() % 12), maxRange);
      Set const t = randomSet(rng, origin, static_cast<unsigned>(rng() % 12), maxRange);
      ASSERT_EQ(U::getRelativeComplements(s, t), loopRelativeComplements(s, t));
      ASSERT_EQ(U::getUnifications(s, t), loopUnifications(s, t));
      Set offenders{ap(999, 1)};  // emptied first
      bool const ok = U::checkConeRule(t, s, offenders);
      ASSERT_EQ(offenders, loopConeOffenders(t, s));
      if (origin != V()) {
        continue;
      }
      Bits const cs = cover(s, true), ct = cover(t, true);
      Set const regions = U::compress(s, false, false);
      ASSERT_EQ(cover(regions, true), cs);
      for (auto it = regions.begin(); it != regions.end() && std::next(it) != regions.end(); ++it) {
        ASSERT_LT(it->getHighAddress() + V(1U), std::next(it)->getBaseAddress()) << *it;
      }

      Set const pruned = U::prune(s);
      ASSERT_EQ(cover(pruned, true), cs);
      for (auto const& x : s) {
        bool const contained = std::any_of(s.begin(), s.end(), [&x](A const& y) {
          return y != x && x.subset(y) && (!y.subset(x) || x < y);
        });
        ASSERT_NE(pruned.count(x) == 1, contained) << x;
      }

      ASSERT_EQ(cover(U::getRelativeComplements(s, t), true), ct & ~cs);

      ASSERT_EQ(cover(U::getIntersections(s, t), true), cs & ct);
      Set const unified = U::getUnifications(s, t);
      for (auto const& r : U::getCompressions(s, t)) {
        ASSERT_EQ(unified.count(r) == 1, (cover(r) & cs).any() && (cover(r) & ct).any()) << r;
      }

      Set expected;
      for (auto const& f : t) {
        if ((cover(f) & ~cs).any()) {
          expected.insert(f);
        }
        ASSERT_EQ(U::allocated(s, f), expected.count(f) == 0) << f;
      }
      ASSERT_EQ(offenders, expected);
      ASSERT_EQ(ok, expected.empty());
      ASSERT_EQ(U::checkConeRule(t, s), ok);

      // The one-aperture forms: the complement against the bitmap, the others as the one-element set forms.
      A const x = s.empty() ? A() : *s.begin();
      for (A const& y : t) {
        ASSERT_EQ(cover(U::getRelativeComplements(x, y), true), cover(y) & ~cover(x)) << x << ' ' << y;
        ASSERT_EQ(U::adjust(y, true, false), U::adjust(Set{y}, true, false)) << y;
        ASSERT_EQ(U::getUnifications(s, y), U::getUnifications(s, Set{y})) << y;
      }

      for (int pa = 0; pa < 4; ++pa) {  // each of pow2 and aligned, alone, together or neither
        bool const p = pa & 1, a = pa & 2;
        Set const cut = U::adjust(s, p, a);
        ASSERT_EQ(cover(cut, false), cover(s, false));
        for (auto const& piece : cut) {
          ASSERT_TRUE(!a || piece.aligned()) << piece;
          ASSERT_TRUE(!p || piece.getRange().isPow2()) << piece;
        }
      }
    }
  }
}

}  // namespace
