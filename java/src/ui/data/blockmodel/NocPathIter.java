// NocPathIter.java: an iterator over native HABMNocPath pointers.
package ui.data.blockmodel;

/** Walks a native container of HABMNocPath pointers. */
public final class NocPathIter extends NativeIterator<NocPath> {
  NocPathIter(long handle, Object container) {
    super(handle, container, blockmodeli::NocPathIter_hasNext, blockmodeli::NocPathIter_next,
        blockmodeli::delete_NocPathIter, NocPath::of);
  }
}
