// HSTFwdIter.h: the abstract forward iterator that carries a container's elements to a host language.
#pragma once

/// A forward iterator seen through one handle, whatever container lies under it. `hasNext` is read
/// directly by the host; `next` hands out the element and moves on.
template <class T>
class HSTFwdIter {
 public:
  /// False once every element has been handed out.
  bool hasNext = false;

  /// The current element; moves on and updates hasNext. Not to be called when hasNext is false.
  virtual T next() = 0;
  virtual ~HSTFwdIter() = default;

 protected:
  HSTFwdIter() = default;
  HSTFwdIter(HSTFwdIter const&) = default;
  HSTFwdIter& operator=(HSTFwdIter const&) = default;
};
