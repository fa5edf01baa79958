// NocInterfaceIter.java: an iterator over native HABMNocInterface pointers.
package ui.data.blockmodel;

/** Walks a native container of HABMNocInterface pointers. */
public final class NocInterfaceIter extends NativeIterator<NocInterface> {
  NocInterfaceIter(long handle, Object container) {
    super(handle, container, blockmodeli::NocInterfaceIter_hasNext, blockmodeli::NocInterfaceIter_next,
        blockmodeli::delete_NocInterfaceIter, (element, owner) -> NocInterface.fromHandle(element));
  }
}
