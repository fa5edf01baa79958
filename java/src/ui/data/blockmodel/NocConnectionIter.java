// NocConnectionIter.java: an iterator over native HABMNocConnection pointers.
package ui.data.blockmodel;

/** Walks a native container of HABMNocConnection pointers. */
public final class NocConnectionIter extends NativeIterator<NocConnection> {
  NocConnectionIter(long handle, Object container) {
    super(handle, container, blockmodeli::NocConnectionIter_hasNext, blockmodeli::NocConnectionIter_next,
        blockmodeli::delete_NocConnectionIter, (element, owner) -> NocConnection.fromHandle(element));
  }
}
