// HABMAddrApertureUtils.h: set algebra over ordered sets of apertures.
#pragma once

#include "blockmodel/HABMAddrAperture.h"

#include <set>

/// Static operations on aperture sets (ordered by base, then range). None changes its arguments; each
/// returns a new value. An empty aperture counts as the single address of its base wherever apertures are
/// related to each other.
class HABMAddrApertureUtils {
 public:
  using ApertureSet = std::set<HABMAddrAperture>;

  HABMAddrApertureUtils() = delete;

  /// Cuts each aperture into pieces whose bases are aligned to their size (`alignedBases`, first) and then
  /// whose ranges are powers of two (`powerOfTwoRanges`). Empty apertures that need a cut are dropped; both
  /// flags false gives a copy.
  static ApertureSet adjust(ApertureSet const& set, bool const& powerOfTwoRanges, bool const& alignedBases);
  /// adjust() of the one-element set.
  static ApertureSet adjust(HABMAddrAperture const& aperture, bool const& powerOfTwoRanges,
                            bool const& alignedBases);
  /// The maximal regions of overlapping or touching apertures, then adjust(); empty for an empty set.
  static ApertureSet compress(ApertureSet const& set, bool const& powerOfTwoRanges, bool const& alignedBases);
  /// The set without the apertures that lie wholly inside another; partial overlaps stay.
  static ApertureSet prune(ApertureSet const& set);
  /// The bounding span from the lowest base to the highest high address, its range rounded up to a power
  /// of two if asked (the base stays); ILLEGAL() for an empty set.
  static HABMAddrAperture combine(ApertureSet const& set, bool const& powerOfTwoRange);
  /// True when the aperture lies inside one contiguous region covered by the set.
  static bool allocated(ApertureSet const& set, HABMAddrAperture const& aperture);
  /// True when every aperture of `first` lies inside one contiguous region covered by `second`; true for
  /// an empty `first`.
  static bool checkConeRule(ApertureSet const& first, ApertureSet const& second);
  /// As above, and `offenders` receives the apertures of `first` that fail (it is emptied first).
  static bool checkConeRule(ApertureSet const& first, ApertureSet const& second, ApertureSet& offenders);
  /// The merged regions of both sets together.
  static ApertureSet getCompressions(ApertureSet const& setA, ApertureSet const& setB);
  /// getCompressions() with a one-element second set.
  static ApertureSet getCompressions(ApertureSet const& setA, HABMAddrAperture const& aperture);
  /// Every non-empty pairwise intersection of an element of `setA` with one of `setB`, unmerged.
  static ApertureSet getIntersections(ApertureSet const& setA, ApertureSet const& setB);
  /// Every non-empty intersection of an element of `setA` with the aperture.
  static ApertureSet getIntersections(ApertureSet const& setA, HABMAddrAperture const& aperture);
  /// The merged regions of both sets to which each of the two sets contributes addresses.
  static ApertureSet getUnifications(ApertureSet const& setA, ApertureSet const& setB);
  /// getUnifications() with a one-element second set.
  static ApertureSet getUnifications(ApertureSet const& setA, HABMAddrAperture const& aperture);
  /// What is left of `b` outside `a`: none, one or two pieces; `b` itself when they do not overlap.
  static ApertureSet getRelativeComplements(HABMAddrAperture const& a, HABMAddrAperture const& b);
  /// The pieces of the elements of `setB` outside everything in `setA`, unmerged; a copy of `setB` for an
  /// empty `setA`.
  static ApertureSet getRelativeComplements(ApertureSet const& setA, ApertureSet const& setB);
};
