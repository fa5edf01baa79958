// HSTFwdSTLIter.h: HSTFwdIter over a pair of standard library iterators.
#pragma once

#include "blockmodel/bindings/HSTFwdIter.h"

/// Walks [begin, end) of a standard container. It holds no reference to the container, which must
/// outlive it and stay unchanged while it is used.
template <class Iterator, class T>
class HSTFwdSTLIter : public HSTFwdIter<T> {
 public:
  HSTFwdSTLIter(Iterator begin, Iterator end) : previous_(begin), current_(begin), end_(end) {
    this->hasNext = !(begin == end);
  }

  /// The element at the current position; past the end the behaviour is undefined, as for the
  /// underlying iterator.
  T next() override {
    previous_ = current_;
    ++current_;
    if (current_ == end_) {
      this->hasNext = false;
    }
    return *previous_;
  }

 private:
  Iterator previous_;
  Iterator current_;
  Iterator end_;
};
