// DesignBlockIter.java: an iterator over native HABMBlock pointers.
package ui.data.blockmodel;

/** Walks a native container of HABMBlock pointers. */
public final class DesignBlockIter extends NativeIterator<DesignBlock> {
  DesignBlockIter(long handle, Object container) {
    super(handle, container, blockmodeli::DesignBlockIter_hasNext, blockmodeli::DesignBlockIter_next,
        blockmodeli::delete_DesignBlockIter, (element, owner) -> DesignBlock.fromHandle(element));
  }
}
